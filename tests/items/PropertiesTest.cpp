// Property values: size, date, file version, reference status and the property switchboard.

#include "ItemFixture.h"

#include "items/XrefPanelCtrlItemStatus.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "services/TroveUIFunctions.h"

namespace {

class PropertiesTest : public ItemFixture
{
protected:
    void SetUp() override
    {
        ItemFixture::SetUp();
        ref = Add(L"Detail");
    }
    TestXrefItem* ref = nullptr;
};

TEST_F(PropertiesTest, sizeBelowOneByteShowsNothing)
{
    ref->SetSize(2048);
    ASSERT_FALSE(ref->GetSizeDisplayText().empty());
    for (std::int64_t bytes : {std::int64_t(0), std::int64_t(-5)}) {
        ref->SetSize(bytes);
        EXPECT_EQ(Cell(*ref, Column::Size), QString()) << bytes;
        EXPECT_EQ(ref->GetSize(), bytes);
        EXPECT_TRUE(ref->GetProperty(Props::Size).has_value());
    }
    ref->SetSize(1);
    EXPECT_EQ(ref->GetSizeDisplayText(), TroveUI::FormatByteSize(1));
    ref->SetSize(1536);
    EXPECT_EQ(*ref->GetProperty(Props::Size), TroveUI::FormatByteSize(1536));
    ref->SetSize(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ref->GetSizeDisplayText(),
              TroveUI::FormatByteSize(std::numeric_limits<std::int64_t>::max()));
}

TEST_F(PropertiesTest, sizeAndDateCellsTakeFreeTextToo)
{
    ref->SetSize(4096);
    ref->SetProperty(Props::Size, L"unknown");
    EXPECT_EQ(ref->GetSizeDisplayText(), L"unknown");
    ref->SetDate(Util::DateTime(2024, 3, 5, 14, 30, 0));
    ref->SetProperty(Props::Date, L"yesterday");
    EXPECT_EQ(ref->GetDateDisplayText(), L"yesterday");
    ref->SetSize(4096);
    EXPECT_EQ(ref->GetSizeDisplayText(), TroveUI::FormatByteSize(4096));
}

TEST_F(PropertiesTest, dateTextsAndTheEmptyDate)
{
    const Util::DateTime date(2024, 3, 5, 14, 30, 15);
    ref->SetDate(date);
    EXPECT_EQ(ref->GetDateDisplayText(), date.ToString(L"G"));
    EXPECT_EQ(ref->GetDate(), date);

    ref->SetDate(Util::DateTime(1, 1, 1, 23, 59));
    EXPECT_EQ(Cell(*ref, Column::Date), QString());
    EXPECT_EQ(ref->GetDate(), Util::DateTime(1, 1, 1, 23, 59)) << "the field keeps the value";
    ref->SetDate(Util::DateTime(1, 1, 2));
    EXPECT_FALSE(ref->GetDateDisplayText().empty()) << "only 0001-01-01 is the empty date";
}

TEST_F(PropertiesTest, newItemIsDatedNow)
{
    const Util::DateTime before = Util::DateTime::get_Now();
    TestXrefItem fresh(*panel);
    EXPECT_GE(fresh.GetDate(), Util::DateTime(before.Date(), before.Time().addSecs(-1)));
    EXPECT_EQ(fresh.GetFileVersion(), 0);
    EXPECT_EQ(fresh.GetReferenceStatusIcon(), RefStatus::Blank);
    EXPECT_EQ(fresh.GetTypeOverlayIcon(), RefStatus::Blank);
    EXPECT_EQ(fresh.FileType(), 64);
}

TEST_F(PropertiesTest, fileVersionAndFoundAt)
{
    EXPECT_EQ(*ref->GetProperty(Props::FileVersion), L"");
    ref->SetFileVersion(27);
    EXPECT_EQ(*ref->GetProperty(Props::FileVersion), L"27");
    ref->SetFileVersion(1234567);
    EXPECT_EQ(*ref->GetProperty(Props::FileVersion), L"1234567") << "no digit grouping";
    ref->SetFileVersion(-3);
    EXPECT_EQ(*ref->GetProperty(Props::FileVersion), L"");

    ref->SetFoundAt(L"C:\\Work\\detail.dwg");
    EXPECT_EQ(*ref->GetProperty(Props::FoundAt), L"C:\\Work\\detail.dwg");
    ref->SetFoundAt(ref->GetFoundAt());
    EXPECT_EQ(ref->GetFoundAt(), L"C:\\Work\\detail.dwg");
}

TEST_F(PropertiesTest, propertiesWithoutColumnOrOutOfRange)
{
    for (int value : {8, 17, 28, 30, -1, 1000}) {
        EXPECT_FALSE(ref->GetProperty(Props(value)).has_value()) << value;
        EXPECT_FALSE(ref->SetProperty(Props(value), L"text")) << value;
    }
    EXPECT_FALSE(ref->SetProperty(Props::FoundAt, L"ignored"));
    EXPECT_EQ(ref->GetFoundAt(), L"") << "only the setter writes the field";
    EXPECT_TRUE(ref->SetProperty(Props::Name, L"Renamed"));
    EXPECT_EQ(Cell(*ref, Column::ReferenceName), QStringLiteral("Renamed"));
    EXPECT_EQ(ref->GetText(), L"Detail") << "the tree node keeps the name";
}

TEST_F(PropertiesTest, referenceStatusClampsIconAndKeepsUnknownCodes)
{
    ref->SetReferenceStatus(RefStatus::RefIcon(0), Trove::FileDataStatus::Value(12));
    EXPECT_EQ(ref->GetReferenceStatusIcon(), RefStatus::Blank);
    EXPECT_EQ(ref->GetReferenceStatusText(), 12);
    EXPECT_EQ(Cell(*ref, Column::Status), QString());
    EXPECT_EQ(List().Row(ref->LVItemIndex())->statusImage,
              CXrefPanelCtrlItemTypes::StatusImage(RefStatus::Blank));

    ref->SetTypeIcon(RefStatus::NoIcon, QString());
    ref->SetReferenceStatus(RefStatus::Unresolved, Trove::FileDataStatus::Code4);
    EXPECT_EQ(*ref->GetProperty(Props::Status), TroveUI::ResStringW(1189));
    EXPECT_EQ(List().Row(ref->LVItemIndex())->statusImage,
              CXrefPanelCtrlItemTypes::StatusImage(RefStatus::Unresolved));
    EXPECT_EQ(ref->GetTypeOverlayIcon(), RefStatus::Unresolved) << "status replaces the overlay";
    EXPECT_EQ(List().Row(ref->LVItemIndex())->Overlay(), 4);
    EXPECT_EQ(ref->GetTreeItem()->Overlay(), 4);

    ref->SetReferenceStatus(RefStatus::RefIcon(7), Trove::FileDataStatus::Value(-1));
    EXPECT_EQ(ref->GetReferenceStatusIcon(), RefStatus::Blank);
    EXPECT_EQ(ref->GetReferenceStatusText(), -1);
}

struct StatusCase
{
    int code;
    unsigned textId; // 0: not a code
};

class StatusTableTest : public testing::TestWithParam<StatusCase>
{};

TEST_P(StatusTableTest, codeMapsToItsTextAndValidates)
{
    const StatusCase c = GetParam();
    Trove::FileDataStatus::Value status(c.code);
    EXPECT_EQ(CXrefPanelCtrlItemStatus::ToString(status),
              c.textId ? TroveUI::ResString(c.textId) : QString());
    EXPECT_EQ(CXrefPanelCtrlItemStatus::Validate(status), c.textId != 0);
    EXPECT_EQ(status.code, c.textId ? c.code : 0);
}

INSTANTIATE_TEST_SUITE_P(
    AllCodes, StatusTableTest,
    testing::Values(StatusCase{0, 1185}, StatusCase{1, 1186}, StatusCase{2, 1187},
                    StatusCase{3, 1188}, StatusCase{4, 1189}, StatusCase{5, 1190},
                    StatusCase{6, 1191}, StatusCase{7, 1192}, StatusCase{8, 1193},
                    StatusCase{9, 1195}, StatusCase{10, 1196}, StatusCase{11, 1197},
                    StatusCase{12, 0}, StatusCase{13, 1198}, StatusCase{14, 0},
                    StatusCase{15, 1194}, StatusCase{16, 1199}, StatusCase{17, 1200},
                    StatusCase{18, 1201}, StatusCase{19, 1202}, StatusCase{20, 1203},
                    StatusCase{21, 1204}, StatusCase{22, 0}, StatusCase{-1, 0},
                    StatusCase{std::numeric_limits<int>::min(), 0}));

TEST(StatusTexts, everyKnownCodeHasText)
{
    for (int code = 0; code <= 21; ++code) {
        if (code == 12 || code == 14)
            continue;
        EXPECT_FALSE(CXrefPanelCtrlItemStatus::ToString(code).isEmpty()) << code;
    }
}

} // namespace
