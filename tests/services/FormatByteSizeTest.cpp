#include "services/TroveUIFunctions.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <climits>

namespace {

struct SizeCase
{
    long long bytes;
    const wchar_t* text;
};

class ByteSize : public testing::TestWithParam<SizeCase>
{};

TEST_P(ByteSize, MatchesTheShellsText)
{
    EXPECT_EQ(TroveUI::FormatByteSize(GetParam().bytes), std::wstring(GetParam().text))
        << GetParam().bytes;
}

INSTANTIATE_TEST_SUITE_P(DocumentedExamples, ByteSize,
                         testing::Values(SizeCase{532, L"532 bytes"}, SizeCase{1340, L"1.30 KB"},
                                         SizeCase{23506, L"22.9 KB"}, SizeCase{2400016, L"2.28 MB"},
                                         SizeCase{2400000000LL, L"2.23 GB"},
                                         SizeCase{2147483647LL, L"1.99 GB"}));

INSTANTIATE_TEST_SUITE_P(
    Bytes, ByteSize,
    testing::Values(SizeCase{0, L"0 bytes"}, SizeCase{1, L"1 bytes"}, SizeCase{1023, L"1023 bytes"},
                    // Negative values count as bytes, as the low 32 bits print.
                    SizeCase{-1, L"-1 bytes"}, SizeCase{-5000, L"-5000 bytes"},
                    SizeCase{-4294967296LL - 7, L"-7 bytes"}, SizeCase{LLONG_MIN, L"0 bytes"}));

INSTANTIATE_TEST_SUITE_P(Truncation, ByteSize,
                         testing::Values(SizeCase{1024, L"1.00 KB"}, SizeCase{1535, L"1.49 KB"},
                                         SizeCase{1536, L"1.50 KB"}, SizeCase{2047, L"1.99 KB"},
                                         SizeCase{2048, L"2.00 KB"}, SizeCase{10239, L"9.99 KB"},
                                         SizeCase{10240, L"10.0 KB"}, SizeCase{102399, L"99.9 KB"},
                                         SizeCase{102400, L"100 KB"},
                                         SizeCase{1023999, L"999 KB"}));

// From 1000 of a unit on, the next unit shows with two decimals, so no text needs four digits.
INSTANTIATE_TEST_SUITE_P(
    UnitBoundaries, ByteSize,
    testing::Values(SizeCase{1024000, L"0.97 MB"}, SizeCase{1048575, L"0.99 MB"},
                    SizeCase{1048576, L"1.00 MB"}, SizeCase{1073741823LL, L"0.99 GB"},
                    SizeCase{1073741824LL, L"1.00 GB"}, SizeCase{1099511627776LL, L"1.00 TB"},
                    SizeCase{1099511627775LL, L"0.99 TB"}, SizeCase{10995116277760LL, L"10.0 TB"},
                    SizeCase{1125899906842624LL, L"1.00 PB"},
                    SizeCase{1152921504606846976LL, L"1.00 EB"}, SizeCase{LLONG_MAX, L"7.99 EB"}));

TEST(ByteSize, UsesTheUsersDecimalSeparator)
{
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(TroveUI::FormatByteSize(1340), L"1,30 KB");
    EXPECT_EQ(TroveUI::FormatByteSize(999), L"999 bytes");
    QLocale::setDefault(previous);
}

TEST(ByteSize, EveryTextHasAtMostThreeDigitsAndFitsTheBuffer)
{
    // Walk the whole range on a logarithmic grid, both sides of every power of two.
    for (int shift = 10; shift < 63; ++shift) {
        for (long long delta : {0LL, 1LL, 511LL}) {
            const long long value = (1LL << shift) + delta;
            const std::wstring text = TroveUI::FormatByteSize(value);
            int digits = 0;
            for (wchar_t c : text)
                digits += (c >= L'0' && c <= L'9');
            EXPECT_LE(digits, 3) << value;
            EXPECT_LT(text.size(), 256u);
        }
    }
}

} // namespace
