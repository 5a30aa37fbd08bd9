#include "items/XrefProperty.h"

#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

#include <utility>

namespace {

// The name ids in property order. They are not ascending: 5 and 6 swapped theirs, 1133 is the
// "differing values" text, and 25 to 27 were renumbered.
constexpr unsigned kNameIds[30] = {
    1044, 1045, 1046, 1047, 1048, 1050, 1049, 1056, 1124, 1125, 1126, 1127, 1128, 1129, 1130,
    1131, 1132, 1134, 1135, 1136, 1137, 1138, 1139, 1140, 1141, 1144, 1142, 1143, 1145, 32785,
};

} // namespace

std::map<CXrefProperty::XrefProperties, std::wstring> CXrefProperty::m_propertyNames;

CXrefProperty::CXrefProperty(XrefProperties property)
    : CXrefProperty(property, std::wstring(), NotEditable)
{}

CXrefProperty::CXrefProperty(XrefProperties property, std::wstring value,
                             XrefPropertyEditStyle editStyle)
    : m_property(property), m_value(std::move(value)), m_editStyle(editStyle)
{
    LoadPropertyNames();
    if (IsValidProperty(property))
        m_name = m_propertyNames[property];
}

CXrefProperty::CXrefProperty(CXrefProperty&& other) noexcept
    : m_property(other.m_property), m_name(std::move(other.m_name)),
      m_value(std::move(other.m_value)), m_editStyle(other.m_editStyle)
{
    other.m_name.clear();
    other.m_value.clear();
}

CXrefProperty& CXrefProperty::operator=(const CXrefProperty& other)
{
    if (this != &other) {
        m_property = other.m_property;
        m_name = other.m_name;
        m_value = other.m_value;
        m_editStyle = other.m_editStyle;
    }
    return *this;
}

CXrefProperty& CXrefProperty::operator=(CXrefProperty&& other) noexcept
{
    if (this != &other) {
        m_property = other.m_property;
        m_name = std::move(other.m_name);
        m_value = std::move(other.m_value);
        m_editStyle = other.m_editStyle;
        other.m_name.clear();
        other.m_value.clear();
    }
    return *this;
}

const std::wstring& CXrefProperty::GetName() const
{
    // Indexing, not lookup: an unknown property gets an empty catalogue entry of its own, which
    // callers have come to rely on as a stable empty name.
    return m_propertyNames[m_property];
}

void CXrefProperty::SetValue(const std::wstring& value)
{
    if (&value != &m_value)
        m_value = value;
}

bool CXrefProperty::IsValidProperty(XrefProperties property)
{
    return unsigned(property) < 30u;
}

void CXrefProperty::LoadPropertyNames()
{
    if (!m_propertyNames.empty())
        return;
    const Util::ResourceModule* module = TroveUI::ResourceInstance();
    for (int value = 0; value < 30; ++value)
        m_propertyNames[XrefProperties(value)] = Util::LoadStrW(module, kNameIds[value]);
}
