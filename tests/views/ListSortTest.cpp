// The list view's header sort: the order of each column, the rows that never take part, ties,
// and the date column's reading of its texts.

#include "ListViewFixture.h"

#include "util/DateTime.h"
#include "util/Order.h"
#include "views/TroveListDateKey_p.h"

#include <QHeaderView>
#include <QRandomGenerator>

#include <algorithm>
#include <cstring>
#include <typeinfo>

namespace {

using Names = std::vector<std::wstring>;

/// A second item class, for the class part of the type-icon order.
class OtherItem : public TestXrefItem
{
public:
    using TestXrefItem::TestXrefItem;
};

/// Makes the user's locale @p name for one test.
class ScopedLocale
{
public:
    explicit ScopedLocale(const char* name) { QLocale::setDefault(QLocale(QLatin1String(name))); }
    ~ScopedLocale() { QLocale::setDefault(m_previous); }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;

private:
    QLocale m_previous;
};

class ListSortTest : public ListViewFixture
{
protected:
    /// Clicks the header of @p column until the list sorts it in the wanted direction.
    void sortBy(int column, bool ascending)
    {
        QHeaderView* header = list().header();
        const QPoint centre(header->sectionViewportPosition(column) +
                                header->sectionSize(column) / 2,
                            header->height() / 2);
        for (int i = 0; i < 2; ++i) {
            if (list().GetSortColumn() == column && list().IsSortAscending() == ascending && i > 0)
                break;
            QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
        }
        ASSERT_EQ(list().GetSortColumn(), column);
        ASSERT_EQ(list().IsSortAscending(), ascending);
    }

    TestXrefItem* item(int row) const { return static_cast<TestXrefItem*>(list().ItemOfRow(row)); }
};

TEST_F(ListSortTest, namesSortNaturallyWithoutCaseBothWays)
{
    Fill({L"Ref 10", L"ref 2", L"Ref 1", L"alpha"});
    sortBy(Column::ReferenceName, true);
    EXPECT_EQ(rowNames(), Names({L"alpha", L"Host", L"Ref 1", L"ref 2", L"Ref 10"}));
    sortBy(Column::ReferenceName, false);
    EXPECT_EQ(rowNames(), Names({L"Ref 10", L"ref 2", L"Ref 1", L"Host", L"alpha"}));
}

TEST_F(ListSortTest, rowsThatAreNoSortItemsStayFirstInTheirOrderBothWays)
{
    std::vector<TestXrefItem*> items = Fill({L"d", L"b", L"z", L"a", L"c"});
    root->sortItem = false;
    items[2]->sortItem = false; // "z"
    items[1]->sortItem = false; // "b"
    sortBy(Column::ReferenceName, true);
    EXPECT_EQ(rowNames(), Names({L"Host", L"b", L"z", L"a", L"c", L"d"}));
    sortBy(Column::ReferenceName, false);
    EXPECT_EQ(rowNames(), Names({L"Host", L"b", L"z", L"d", L"c", L"a"}));
}

TEST_F(ListSortTest, equalRowsKeepTheirOrderInEitherDirection)
{
    std::vector<TestXrefItem*> items = Fill({L"one", L"two", L"three", L"four"});
    for (TestXrefItem* each : items)
        each->SetType(L"Attach");
    root->SetType(L"Attach");
    items[2]->SetType(L"Overlay");
    // Sorting by size first puts the rows in an order the type sort must keep for ties.
    items[0]->SetSize(40);
    items[1]->SetSize(30);
    items[2]->SetSize(20);
    items[3]->SetSize(10);
    sortBy(Column::Size, false);
    ASSERT_EQ(rowNames(), Names({L"one", L"two", L"three", L"four", L"Host"}));

    // Equal names only: rename every row alike, then the type sort's name ties keep the rows.
    for (TestXrefItem* each : items)
        each->SetText(L"same");
    root->SetText(L"same");
    sortBy(Column::Type, true);
    EXPECT_EQ(rowNames().size(), 5u);
    EXPECT_EQ(list().ItemOfRow(4), items[2]) << "Overlay after Attach";
    EXPECT_EQ(list().ItemOfRow(0), items[0]);
    EXPECT_EQ(list().ItemOfRow(3), root);
    sortBy(Column::Type, false);
    EXPECT_EQ(list().ItemOfRow(0), items[2]);
    EXPECT_EQ(list().ItemOfRow(1), items[0]) << "ties keep the order they had";
    EXPECT_EQ(list().ItemOfRow(4), root);
}

TEST_F(ListSortTest, typeSortOrdersEqualTypesByNameInTheSameDirection)
{
    std::vector<TestXrefItem*> items = Fill({L"b2", L"a1", L"b1", L"a2"});
    root->SetType(L"Current");
    items[0]->SetType(L"Overlay");
    items[1]->SetType(L"Attach");
    items[2]->SetType(L"Overlay");
    items[3]->SetType(L"Attach");
    sortBy(Column::Type, true);
    EXPECT_EQ(rowNames(), Names({L"a1", L"a2", L"Host", L"b1", L"b2"}));
    sortBy(Column::Type, false);
    EXPECT_EQ(rowNames(), Names({L"b2", L"b1", L"Host", L"a2", L"a1"}));
}

TEST_F(ListSortTest, typeIconSortsByClassNameBytesThenIconThenBadge)
{
    Fill({});
    auto* other1 = new OtherItem(*panel);
    auto* other2 = new OtherItem(*panel);
    panel->InsertItem(*other1, *root, nullptr);
    panel->InsertItem(*other2, *root, nullptr);
    other1->SetText(L"o-pdf");
    other2->SetText(L"o-plain");
    other1->SetTypeIcon(QStringLiteral("pdf"));
    TestXrefItem* badged = Add(L"t-badge6");
    TestXrefItem* plain = Add(L"t-badge2");
    TestXrefItem* named = Add(L"t-icon");
    badged->SetTypeOverlayIcon(RefStatus::RefIcon(6));
    plain->SetTypeOverlayIcon(RefStatus::RefIcon(2));
    named->SetTypeIcon(QStringLiteral("dwf"));
    settle();

    sortBy(Column::TypeIcon, true);
    const bool otherFirst = std::strcmp(typeid(OtherItem).name(), typeid(TestXrefItem).name()) < 0;
    // Within the test class: no icon name before "dwf"; without one, badge 0 (the host row),
    // then 2, then 6. Rows of one class, icon and badge follow their names.
    const Names testRows = {L"Host", L"t-badge2", L"t-badge6", L"t-icon"};
    const Names otherRows = {L"o-plain", L"o-pdf"};
    Names expected = otherFirst ? otherRows : testRows;
    const Names& second = otherFirst ? testRows : otherRows;
    expected.insert(expected.end(), second.begin(), second.end());
    EXPECT_EQ(rowNames(), expected);
}

TEST_F(ListSortTest, sizeSortsByTheItemsByteSizeEvenWhenTheCellIsBlank)
{
    std::vector<TestXrefItem*> items = Fill({L"big", L"small", L"gone"});
    items[0]->SetSize(5000);
    items[1]->SetSize(10);
    items[2]->SetSize(900000);
    items[2]->SetSize(0); // a blank cell, and 0 bytes for the sort
    root->SetSize(100);
    sortBy(Column::Size, true);
    EXPECT_EQ(rowNames(), Names({L"gone", L"small", L"Host", L"big"}));
}

TEST_F(ListSortTest, statusSortsByTheShownText)
{
    std::vector<TestXrefItem*> items = Fill({L"a", L"b", L"c"});
    items[0]->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Value(3));
    items[1]->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Value(1));
    items[2]->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Value(3));
    root->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Value(2));
    sortBy(Column::Status, true);
    std::vector<std::pair<QString, std::wstring>> shown;
    for (int row = 0; row < model().RowCount(); ++row)
        shown.emplace_back(model().CellText(row, Column::Status), rowNames()[std::size_t(row)]);
    for (std::size_t i = 1; i < shown.size(); ++i)
        EXPECT_LE(Util::Order(shown[i - 1].first, shown[i].first, 1, 1), 0) << i;
}

TEST_F(ListSortTest, stateColumnSortsByTheStateImage)
{
    std::vector<TestXrefItem*> items = Fill({L"a", L"b", L"c"});
    root->SetTroveStateIconIndexListView(3);
    items[0]->SetTroveStateIconIndexListView(2);
    items[1]->SetTroveStateIconIndexListView(4);
    items[2]->SetTroveStateIconIndexListView(1);
    list().viewport()->repaint(); // the column opens when the list is drawn
    sortBy(Column::TroveState, false);
    EXPECT_EQ(rowNames(), Names({L"b", L"Host", L"a", L"c"}));
}

TEST_F(ListSortTest, selectionAndFocusFollowTheirRows)
{
    Fill({L"c", L"a", L"b"});
    click(1);                                             // "c"
    click(3, Column::ReferenceName, Qt::ControlModifier); // "b"
    QTest::keyRelease(&list(), Qt::Key_Control);
    sortBy(Column::ReferenceName, true);
    EXPECT_EQ(selectedNames(), Names({L"b", L"c"}));
    EXPECT_EQ(list().currentIndex().row(), 1) << "b, focused last";
    EXPECT_EQ(list().SpecialRow(), 3);
}

TEST_F(ListSortTest, changedNamesAreRankedAgainAmongTheKeptOnes)
{
    // Texts with numbers, case and accents, and equal texts, against Util::Order itself.
    const std::vector<std::wstring> stems = {L"Ref ", L"ref ", L"Áb ", L"ab ", L"Z-", L"z_"};
    QRandomGenerator random(42);
    const auto randomName = [&] {
        return stems[random.bounded(int(stems.size()))] + std::to_wstring(random.bounded(40));
    };
    std::vector<std::wstring> names;
    for (int i = 0; i < 300; ++i)
        names.push_back(randomName());
    std::vector<TestXrefItem*> items = Fill(names);

    const auto expectOrdered = [&](bool ascending) {
        const Names shown = rowNames();
        for (std::size_t i = 1; i < shown.size(); ++i) {
            const int order = Util::Order(shown[i - 1], shown[i], 1, 1);
            ASSERT_TRUE(ascending ? order <= 0 : order >= 0)
                << i << ": " << QString::fromStdWString(shown[i - 1]).toStdString() << " / "
                << QString::fromStdWString(shown[i]).toStdString();
        }
    };
    sortBy(Column::ReferenceName, true);
    expectOrdered(true);

    const auto rowItems = [&] {
        std::vector<const CXrefPanelCtrlItem*> result;
        for (int row = 0; row < model().RowCount(); ++row)
            result.push_back(list().ItemOfRow(row));
        return result;
    };
    // A few renamed rows are placed among the ranked ones; many make every rank new.
    for (int renamed : {5, 150}) {
        SCOPED_TRACE(renamed);
        for (int i = 0; i < renamed; ++i)
            items[std::size_t(random.bounded(int(items.size())))]->SetText(randomName());
        const std::vector<const CXrefPanelCtrlItem*> before = rowItems();
        sortBy(Column::ReferenceName, !list().IsSortAscending());
        expectOrdered(list().IsSortAscending());
        // Rows with equal names keep the order they had before this sort.
        const std::vector<const CXrefPanelCtrlItem*> after = rowItems();
        for (std::size_t i = 1; i < after.size(); ++i) {
            if (Util::Order(after[i - 1]->GetText(), after[i]->GetText(), 1, 1) != 0)
                continue;
            EXPECT_LT(std::find(before.begin(), before.end(), after[i - 1]),
                      std::find(before.begin(), before.end(), after[i]))
                << i;
        }
    }
}

TEST_F(ListSortTest, datesSortAsTheirTextsReadInTheUsersLocale)
{
    ScopedLocale locale("en_US"); // short dates with two-digit years
    std::vector<TestXrefItem*> items = Fill({L"y2024", L"y1925", L"y1999", L"leap2000", L"text"});
    items[0]->SetDate(Util::DateTime(2024, 5, 1, 10, 0, 0));
    items[1]->SetDate(Util::DateTime(1925, 5, 1, 10, 0, 0)); // shown "25", read as 2025
    items[2]->SetDate(Util::DateTime(1999, 5, 1, 10, 0, 0));
    items[3]->SetDate(Util::DateTime(2000, 2, 29, 10, 0, 0)); // "00" reads as 1900: no such day
    items[4]->SetProperty(Trove::XrefProperties::Date, L"not a date");
    root->SetDate(Util::DateTime()); // the empty date: a blank cell
    sortBy(Column::Date, true);
    // Blank and unreadable texts are the zero date, before any real one; then in text order.
    EXPECT_EQ(rowNames(), Names({L"Host", L"leap2000", L"text", L"y1999", L"y2024", L"y1925"}));
    sortBy(Column::Date, false);
    EXPECT_EQ(rowNames(), Names({L"y1925", L"y2024", L"y1999", L"Host", L"leap2000", L"text"}));
}

TEST_F(ListSortTest, datesWithFractionsFollowTheHalfSecondRule)
{
    std::vector<TestXrefItem*> items = Fill({L"later", L"early", L"last"});
    // 0.6 s apart: that rounds to a whole second, so they differ.
    items[0]->SetProperty(Trove::XrefProperties::Date, L"2023-01-01T10:00:00.900");
    items[1]->SetProperty(Trove::XrefProperties::Date, L"2023-01-01T10:00:00.300");
    items[2]->SetProperty(Trove::XrefProperties::Date, L"2023-01-01T10:00:05.000");
    root->SetProperty(Trove::XrefProperties::Date, L"2023-01-01T10:00:05.400");
    sortBy(Column::Date, true);
    EXPECT_EQ(rowNames(), Names({L"early", L"later", L"Host", L"last"}))
        << "Host and last are 0.4 s apart: equal, in the order they were";
}

TEST(ListDateKey, differencesCountInWholeSecondsRoundedHalfAway)
{
    using TroveListDateKey::Compare;
    struct Case
    {
        std::int64_t a;
        std::int64_t b;
        int expected;
    };
    constexpr std::int64_t day = 86400000;
    constexpr std::int64_t wrap = 4294967296LL * 1000; // 2^32 seconds
    const Case cases[] = {
        {1000, 1000, 0},         {1499, 1000, 0}, // under half a second
        {1000, 1499, 0},         {1500, 1000, 1}, // half a second rounds away from zero
        {1000, 1500, -1},        {5 * day, 2 * day, 1},
        {-3 * day, 2 * day, -1}, {wrap, 0, 0}, // low 32 bits of the seconds all zero
        {wrap + 1000, 0, 1},     {0, wrap, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Compare(c.a, c.b), c.expected) << c.a << " vs " << c.b;
}

TEST(ListDateKey, valuesGiveWhatTheirTextsReadBackAs)
{
    // The shortcut from a value must agree with writing the text and reading it, in locales
    // with two- and four-digit years, with and without seconds shown.
    QRandomGenerator random(7);
    for (const char* name : {"C", "en_US", "de_DE", "en_GB", "ja_JP", "fr_FR"}) {
        const QLocale locale{QLatin1String(name)};
        const TroveListDateKey::ValueKeys keys(locale);
        EXPECT_TRUE(keys.UsesShortcut()) << name;
        for (int i = 0; i < 400; ++i) {
            const Util::DateTime date(1800 + int(random.bounded(300)), 1 + int(random.bounded(12)),
                                      1 + int(random.bounded(28)), int(random.bounded(24)),
                                      int(random.bounded(60)), int(random.bounded(60)),
                                      int(random.bounded(1000)));
            const std::int64_t msecs = TroveListDateKey::ToMsecs(date);
            const std::int64_t viaText =
                TroveListDateKey::FromText(date.ToString(QStringLiteral("G"), locale), locale);
            ASSERT_EQ(keys(msecs), viaText)
                << name << " " << date.ToString(QStringLiteral("G"), locale).toStdString();
        }
    }
    EXPECT_EQ(TroveListDateKey::FromText(QString()), TroveListDateKey::ZeroKey());
    EXPECT_EQ(TroveListDateKey::FromText(QStringLiteral("31 Feb 2020")),
              TroveListDateKey::ZeroKey());
}

} // namespace
