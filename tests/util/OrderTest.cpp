#include "util/Order.h"

#include <QCollator>
#include <QLocale>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct OrderCase
{
    const wchar_t* a;
    const wchar_t* b;
    int expected; // sign
};

class NaturalOrder : public testing::TestWithParam<OrderCase>
{};

TEST_P(NaturalOrder, ComparesNumbersByValueAndIgnoresCase)
{
    const OrderCase& c = GetParam();
    EXPECT_EQ(Util::Order(std::wstring(c.a), std::wstring(c.b), 1, 1), c.expected)
        << QString::fromWCharArray(c.a).toStdString() << " vs "
        << QString::fromWCharArray(c.b).toStdString();
    EXPECT_EQ(Util::Order(std::wstring(c.b), std::wstring(c.a), 1, 1), -c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NaturalOrder,
    testing::Values(OrderCase{L"Ref 2", L"Ref 10", -1}, OrderCase{L"ref 2", L"Ref 10", -1},
                    OrderCase{L"Plan", L"plan", 0}, OrderCase{L"Level 9b", L"Level 10a", -1},
                    OrderCase{L"A100", L"a99", 1}, OrderCase{L"", L"a", -1},
                    OrderCase{L"Grid", L"Grid", 0}, OrderCase{L"apple", L"Banana", -1}));

TEST(Order, WorksUnderTheCLocale)
{
    // The test programs run with LANG=C.UTF-8: a collator built for that locale would compare
    // digit by digit.
    EXPECT_EQ(QLocale().language(), QLocale::C);
    EXPECT_LT(Util::Order(QStringLiteral("Ref 2"), QStringLiteral("Ref 10"), 1, 1), 0);
}

TEST(Order, CaseAndCodeUnitModes)
{
    EXPECT_NE(Util::Order(QStringLiteral("Plan"), QStringLiteral("plan"), 1, 0), 0);
    EXPECT_EQ(Util::Order(QStringLiteral("Plan"), QStringLiteral("plan"), 0, 1), 0);
    // Code-unit order does not read numbers.
    EXPECT_GT(Util::Order(QStringLiteral("Ref 2"), QStringLiteral("Ref 10"), 0, 1), 0);
    EXPECT_LT(Util::Order(QStringLiteral("B"), QStringLiteral("a"), 0, 0), 0);
}

TEST(Order, SortKeysAgreeWithComparison)
{
    QStringList names = {QStringLiteral("Ref 10"), QStringLiteral("ref 2"), QStringLiteral("Ref 1"),
                         QStringLiteral("Site"), QStringLiteral("REF 3")};
    const QCollator& collator = Util::NaturalCollator(1);
    std::vector<QCollatorSortKey> keys;
    for (const QString& name : names)
        keys.push_back(collator.sortKey(name));
    for (size_t i = 0; i < keys.size(); ++i) {
        for (size_t j = 0; j < keys.size(); ++j) {
            const int byKey = keys[i].compare(keys[j]);
            EXPECT_EQ((byKey > 0) - (byKey < 0), Util::Order(names[int(i)], names[int(j)], 1, 1));
        }
    }
    std::sort(names.begin(), names.end(),
              [](const QString& a, const QString& b) { return Util::Order(a, b, 1, 1) < 0; });
    EXPECT_EQ(names, (QStringList{QStringLiteral("Ref 1"), QStringLiteral("ref 2"),
                                  QStringLiteral("REF 3"), QStringLiteral("Ref 10"),
                                  QStringLiteral("Site")}));
}

} // namespace
