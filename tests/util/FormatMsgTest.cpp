#include "util/FormatMsg.h"

#include <gtest/gtest.h>

namespace {

std::wstring format(const wchar_t* pattern, const wchar_t* a = nullptr, const wchar_t* b = nullptr,
                    const wchar_t* c = nullptr)
{
    std::wstring out = L"stale";
    Util::FormatMsg(out, pattern, a, b, c);
    return out;
}

TEST(FormatMsg, PlaceholdersInsertArgumentsByPosition)
{
    EXPECT_EQ(format(L"Cannot open %1.", L"plan.dwg"), L"Cannot open plan.dwg.");
    EXPECT_EQ(format(L"%2 before %1", L"one", L"two"), L"two before one");
    EXPECT_EQ(format(L"%1, %1 and %3", L"a", L"b", L"c"), L"a, a and c");
}

TEST(FormatMsg, PercentSignsThatAreNotPlaceholdersStay)
{
    EXPECT_EQ(format(L"100%% done"), L"100% done");
    EXPECT_EQ(format(L"50% of %1", L"it"), L"50% of it");
    EXPECT_EQ(format(L"%0 and %x"), L"%0 and %x");
    EXPECT_EQ(format(L"ends with %"), L"ends with %");
}

TEST(FormatMsg, NullArgumentsAndFormatGiveEmptyPieces)
{
    EXPECT_EQ(format(L"[%1]", nullptr), L"[]");
    std::wstring out = L"stale";
    Util::FormatMsg(out, nullptr);
    EXPECT_TRUE(out.empty());
}

TEST(MakeWideString, ConvertsUtf8AndQt)
{
    EXPECT_EQ(Util::MakeWideString("Gr\xC3\xBC\xC3\x9F"
                                   "e"),
              L"Gr\u00FC\u00DFe");
    EXPECT_EQ(Util::MakeWideString(QStringLiteral("Plan")), L"Plan");
    EXPECT_TRUE(Util::MakeWideString(static_cast<const char*>(nullptr)).empty());
}

// The quick conversion must agree with Qt's everywhere, including where it hands over to Qt:
// characters beyond the basic plane, lone surrogates and values that are no characters at all.
TEST(ToQString, AgreesWithQtsConversionForEveryKindOfCharacter)
{
    const std::wstring texts[] = {
        L"",
        L"Ref-10.dwg",
        L"Gr\u00FC\u00DFe \u4E2D\u6587 \uFFFD\uFFFF\uE000",
        std::wstring(L"plan ") + wchar_t(0x1F600) + L" end",
        std::wstring(L"lone ") + wchar_t(0xD800) + L" and " + wchar_t(0xDFFF),
        std::wstring(L"too big ") + wchar_t(0x110000),
        std::wstring(1, wchar_t(0)) + L"after a null",
        std::wstring(100'000, L'x'),
    };
    for (const std::wstring& text : texts) {
        const QString expected = QString::fromStdWString(text);
        const QString quick = Util::ToQString(text);
        EXPECT_EQ(quick, expected) << expected.toStdString();
        EXPECT_EQ(quick.size(), expected.size());
    }
}

} // namespace
