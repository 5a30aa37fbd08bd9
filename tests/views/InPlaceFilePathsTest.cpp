#include "views/editors/InPlaceFilePaths.h"
#include "support/QtPrinters.h"
#include "support/ShortcutFileBuilder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

namespace {

class FilePathsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        for (const char* name : {"b.dwg", "A.DWG", "c.dwg.bak", "notes", "plan 1.dwg", "sub/x.dwg",
                                 "sub/y.DWG", "sub/z.pdf"})
            touch(QString::fromUtf8(name));
    }
    void touch(const QString& name)
    {
        const QString file = m_dir.filePath(name);
        QDir().mkpath(QFileInfo(file).absolutePath());
        ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(file, "x"));
    }
    QString folder() const { return m_dir.path(); }

    QTemporaryDir m_dir;
};

TEST(FilePathsSplitTest, quotesBlanksAndEmptyPiecesAreDropped)
{
    EXPECT_EQ(CInPlaceFilePaths::SplitText(
                  QStringLiteral("  \"a b.dwg\" ;;c.dwg;  ;\"\";\"d\"\"e\" ; f ")),
              (QStringList{QStringLiteral("a b.dwg"), QStringLiteral("c.dwg"), QStringLiteral("de"),
                           QStringLiteral("f")}));
    EXPECT_TRUE(CInPlaceFilePaths::SplitText(QStringLiteral(" ; \" \" ;")).isEmpty());
    EXPECT_TRUE(CInPlaceFilePaths::SplitText(QString()).isEmpty());
}

TEST_F(FilePathsTest, wildCardsExpandInTheirFolderAndKeepTheFolderAsWritten)
{
    const QStringList entries = CInPlaceFilePaths::ParseText(
        QStringLiteral("\"plan 1.dwg\"; *.dwg ;; sub\\*.dwg;sub/?.pdf; none*.zz; /no/such/*.dwg"),
        folder());
    EXPECT_EQ(entries, (QStringList{QStringLiteral("plan 1.dwg"), QStringLiteral("A.DWG"),
                                    QStringLiteral("b.dwg"), QStringLiteral("plan 1.dwg"),
                                    QStringLiteral("sub\\x.dwg"), QStringLiteral("sub\\y.DWG"),
                                    QStringLiteral("sub/z.pdf")}));
}

TEST_F(FilePathsTest, wildCardsInAFolderPartOrAWindowsFolderMatchNothing)
{
    EXPECT_TRUE(CInPlaceFilePaths::ParseText(QStringLiteral("s*/x.dwg"), folder()).isEmpty());
    EXPECT_TRUE(CInPlaceFilePaths::ParseText(QStringLiteral("C:\\*.dwg"), folder()).isEmpty());
    // A name without wild cards is kept whether it exists or not.
    EXPECT_EQ(CInPlaceFilePaths::ParseText(QStringLiteral("missing.dwg"), folder()),
              QStringList{QStringLiteral("missing.dwg")});
}

TEST_F(FilePathsTest, foldersThatCannotBeListedMatchNothing)
{
    // A file where the folder should be, and a folder without read permission (which only
    // stops a user other than root).
    EXPECT_TRUE(CInPlaceFilePaths::ParseText(QStringLiteral("notes/*.dwg"), folder()).isEmpty());
    const QString locked = m_dir.filePath(QStringLiteral("locked"));
    ASSERT_TRUE(QDir().mkpath(locked));
    touch(QStringLiteral("locked/in.dwg"));
    QFile::setPermissions(locked, QFileDevice::Permissions());
    const QStringList entries =
        CInPlaceFilePaths::ParseText(QStringLiteral("locked/*.dwg"), folder());
    EXPECT_TRUE(entries.isEmpty() || entries == QStringList{QStringLiteral("locked/in.dwg")});
    QFile::setPermissions(locked,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST_F(FilePathsTest, thousandsOfPiecesStayBoundedAndQuick)
{
    QStringList pieces;
    for (int i = 0; i < 20000; ++i)
        pieces << QStringLiteral("*") << QStringLiteral("name%1.dwg").arg(i);
    QElapsedTimer timer;
    timer.start();
    const QStringList entries = CInPlaceFilePaths::ParseText(pieces.join(';'), folder());
    EXPECT_EQ(entries.size(), CInPlaceFilePaths::kMaxEntries);
    EXPECT_LT(timer.elapsed(), 5000);

    // Thousands of different patterns that match nothing end as well.
    pieces.clear();
    for (int i = 0; i < 20000; ++i)
        pieces << QStringLiteral("*%1?*x*y*z").arg(i);
    timer.restart();
    EXPECT_TRUE(CInPlaceFilePaths::ParseText(pieces.join(';'), folder()).isEmpty());
    EXPECT_LT(timer.elapsed(), 5000);
}

struct WildCardCase
{
    const char* name;
    const char* pattern;
    bool matches;
};

class WildCardTest : public ::testing::TestWithParam<WildCardCase>
{};

TEST_P(WildCardTest, matchesLikeAWindowsFileSearch)
{
    const WildCardCase& c = GetParam();
    EXPECT_EQ(
        CInPlaceFilePaths::MatchesWildCard(QString::fromUtf8(c.name), QString::fromUtf8(c.pattern)),
        c.matches)
        << c.name << " ~ " << c.pattern;
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, WildCardTest,
    ::testing::Values(
        WildCardCase{"Plan.DWG", "*.dwg", true}, WildCardCase{"plan.dwg.bak", "*.dwg", false},
        WildCardCase{"a1.dwg", "a?.dwg", true}, WildCardCase{"a.dwg", "a?.dwg", false},
        WildCardCase{"notes", "*.*", true}, WildCardCase{"notes", "no*.*", true},
        WildCardCase{"notes.txt", "notes.*", true}, WildCardCase{"[1].dwg", "[1]*", true},
        WildCardCase{"1.dwg", "[1]*", false}, WildCardCase{"Straße.dwg", "STRASSE*", false},
        WildCardCase{"ÄRGER.dwg", "är*", true}, WildCardCase{"", "*", true},
        WildCardCase{"x", "", false},
        WildCardCase{"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
                     "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", false}));

TEST(FilePathsAbsoluteTest, bothThisSystemsAndWindowsRootsCountAsAbsolute)
{
    for (const char* path :
         {"/x.dwg", "C:\\x.dwg", "c:x.dwg", "\\x.dwg", "\\\\srv\\share\\x", "//srv/x"})
        EXPECT_TRUE(CInPlaceFilePaths::IsAbsolute(QString::fromUtf8(path))) << path;
    for (const char* path : {"x.dwg", "./x.dwg", "sub\\x.dwg", "sub/x.dwg", "", " /x"})
        EXPECT_FALSE(CInPlaceFilePaths::IsAbsolute(QString::fromUtf8(path))) << path;
}

struct FullPathCase
{
    const char* entry;
    const char* folder;
    const char* expected;
};

class FullPathTest : public ::testing::TestWithParam<FullPathCase>
{};

TEST_P(FullPathTest, entryBecomesAFullPath)
{
    const FullPathCase& c = GetParam();
    EXPECT_EQ(CInPlaceFilePaths::FullPath(QString::fromUtf8(c.entry), QString::fromUtf8(c.folder)),
              QString::fromUtf8(c.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, FullPathTest,
    ::testing::Values(
        // This system's paths: relative names come from the folder; backslashes separate.
        FullPathCase{"plan.dwg", "/data/site", "/data/site/plan.dwg"},
        FullPathCase{"xrefs\\..\\plan.dwg", "/data/site/", "/data/site/plan.dwg"},
        FullPathCase{"/abs//x/./plan.dwg", "/data", "/abs/x/plan.dwg"},
        FullPathCase{"", "/data/site", "/data/site"},
        FullPathCase{"../../../../up.dwg", "/data", "/up.dwg"},
        FullPathCase{"#odd %20 name;.dwg", "/d", "/d/#odd %20 name;.dwg"},
        // A colon after the root is part of a folder's name, not a drive, before and after
        // tidying (found by fuzzing: "//:a" became "/:a" and then "\\:a").
        FullPathCase{"//:a", "/d", "/:a"}, FullPathCase{"/:a", "/d", "/:a"},
        FullPathCase{"b.dwg", "/:a", "/:a/b.dwg"},
        // Windows paths stay Windows paths, tidied, and never climb above their root.
        FullPathCase{"C:/Projects\\.\\Tower\\..\\plan.dwg", "/data", "C:\\Projects\\plan.dwg"},
        FullPathCase{"C:\\..\\..\\plan.dwg", "/data", "C:\\plan.dwg"},
        FullPathCase{"\\\\server\\share\\a\\..\\b.dwg", "/data", "\\\\server\\share\\b.dwg"},
        FullPathCase{"\\\\server\\share\\..\\..", "/data", "\\\\server\\share"},
        FullPathCase{"\\Projects\\plan.dwg", "/data", "\\Projects\\plan.dwg"},
        // After a leading backslash a colon is part of a name: "\:" is no drive.
        FullPathCase{"\\:a\\..\\b", "/data", "\\b"},
        FullPathCase{"plan.dwg", "D:\\Site", "D:\\Site\\plan.dwg"},
        FullPathCase{"", "D:\\Site\\", "D:\\Site"}));

TEST(FilePathsJoinTest, joinedPathsParseBackToTheSameList)
{
    const QStringList paths{QStringLiteral("/data/a b.dwg"), QStringLiteral("/data/ü,#%.dwg"),
                            QStringLiteral("C:\\x\\y.dwg")};
    EXPECT_EQ(CInPlaceFilePaths::SplitText(CInPlaceFilePaths::JoinPaths(paths)), paths);
}

} // namespace
