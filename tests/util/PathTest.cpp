#include "util/Path.h"

#include <gtest/gtest.h>

namespace {

struct ExtensionCase
{
    const wchar_t* path;
    const wchar_t* extension;
};

class Extension : public testing::TestWithParam<ExtensionCase>
{};

TEST_P(Extension, IsTheLastDotPartOfTheFileName)
{
    EXPECT_EQ(Util::Path::GetExtension(GetParam().path), std::wstring(GetParam().extension));
}

INSTANTIATE_TEST_SUITE_P(Table, Extension,
                         testing::Values(ExtensionCase{L"plan.dwg", L".dwg"},
                                         ExtensionCase{L"C:\\jobs\\site.plan.DWG", L".DWG"},
                                         ExtensionCase{L"/srv/jobs/a.b/readme", L""},
                                         ExtensionCase{L"c:\\a.b\\readme", L""},
                                         ExtensionCase{L".profile", L""},
                                         ExtensionCase{L"name.", L""}, ExtensionCase{L"", L""},
                                         ExtensionCase{L"photo.jpeg", L".jpeg"},
                                         ExtensionCase{L"link.LNK", L".LNK"}));

TEST(Path, FileNameIsTheLastComponentWhateverTheSeparator)
{
    EXPECT_EQ(Util::Path::GetFileName(L"C:\\a\\b.dwg"), L"b.dwg");
    EXPECT_EQ(Util::Path::GetFileName(L"/a/b/c.dwg"), L"c.dwg");
    EXPECT_EQ(Util::Path::GetFileName(L"c.dwg"), L"c.dwg");
    EXPECT_EQ(Util::Path::GetFileName(L"dir/"), L"");
}

} // namespace
