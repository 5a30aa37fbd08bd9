// The property catalogue: names by resource id, the shared name map and the row value type.

#include "items/XrefProperty.h"
#include "panel/XrefPanelCtrl.h"
#include "resources/TroveResources.h"

#include <gtest/gtest.h>

namespace {

using Props = CXrefPanelCtrl::XrefProperties;

class OpenProperty : public CXrefProperty
{
public:
    using CXrefProperty::CXrefProperty;
    using CXrefProperty::IsValidProperty;
};

TEST(PropertyCatalogue, namesFollowTheirOutOfOrderIds)
{
    EXPECT_EQ(CXrefProperty(Props::Name).GetName(), TroveUI::ResStringW(1044));
    EXPECT_EQ(CXrefProperty(Props::FoundAt).GetName(), TroveUI::ResStringW(1050));
    EXPECT_EQ(CXrefProperty(Props::SavedPath).GetName(), TroveUI::ResStringW(1049));
    EXPECT_EQ(CXrefProperty(Props::HostProperty17).GetName(), TroveUI::ResStringW(1134));
    EXPECT_EQ(CXrefProperty(Props::HostProperty25).GetName(), TroveUI::ResStringW(1144));
    EXPECT_EQ(CXrefProperty(Props::HostProperty26).GetName(), TroveUI::ResStringW(1142));
    EXPECT_EQ(CXrefProperty(Props::HostProperty27).GetName(), TroveUI::ResStringW(1143));
    EXPECT_EQ(CXrefProperty(Props::PendingRelativePath).GetName(), TroveUI::ResStringW(32785));
    for (int value = 0; value < 30; ++value)
        EXPECT_FALSE(CXrefProperty(Props(value)).GetName().empty()) << value;
}

TEST(PropertyCatalogue, outOfRangePropertyGetsAnEmptyEntryWhenAskedItsName)
{
    CXrefProperty property(Props(30));
    EXPECT_EQ(CXrefProperty::m_propertyNames.count(Props(30)), 0u);
    EXPECT_TRUE(property.GetName().empty());
    EXPECT_EQ(CXrefProperty::m_propertyNames.count(Props(30)), 1u);
    CXrefProperty::m_propertyNames.erase(Props(30));
}

TEST(PropertyCatalogue, validityAndEditability)
{
    EXPECT_TRUE(OpenProperty::IsValidProperty(Props(0)));
    EXPECT_TRUE(OpenProperty::IsValidProperty(Props(29)));
    EXPECT_FALSE(OpenProperty::IsValidProperty(Props(30)));
    EXPECT_FALSE(OpenProperty::IsValidProperty(Props(-1)));

    CXrefProperty property(Props::Type, L"Attach", CXrefProperty::NotEditable);
    EXPECT_FALSE(property.IsEditable());
    for (auto style : {CXrefProperty::TextEdit, CXrefProperty::FileEdit, CXrefProperty::ComboBox}) {
        property.SetEditStyle(style);
        EXPECT_TRUE(property.IsEditable()) << style;
    }
}

TEST(PropertyCatalogue, copyAndMove)
{
    CXrefProperty original(Props::SavedPath, L"..\\a.dwg", CXrefProperty::FileEdit);
    CXrefProperty copy(original);
    EXPECT_EQ(copy.GetEditStyle(), CXrefProperty::FileEdit);
    EXPECT_EQ(copy.GetValue(), L"..\\a.dwg");

    CXrefProperty assigned(Props::Name);
    assigned = original;
    EXPECT_EQ(assigned.GetProperty(), Props::SavedPath);
    EXPECT_EQ(assigned.GetValue(), L"..\\a.dwg");
    CXrefProperty& self = assigned;
    assigned = self;
    EXPECT_EQ(assigned.GetValue(), L"..\\a.dwg");

    CXrefProperty moved(std::move(copy));
    EXPECT_EQ(moved.GetValue(), L"..\\a.dwg");
    EXPECT_TRUE(copy.GetValue().empty());
    CXrefProperty moveAssigned(Props::Name);
    moveAssigned = std::move(moved);
    EXPECT_EQ(moveAssigned.GetEditStyle(), CXrefProperty::FileEdit);
    EXPECT_TRUE(moved.GetValue().empty());

    moveAssigned.SetValue(moveAssigned.GetValue());
    EXPECT_EQ(moveAssigned.GetValue(), L"..\\a.dwg");
}

} // namespace
