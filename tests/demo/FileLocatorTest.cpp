// Finding a reference's file: the saved path first, then the drawings' folders, then the
// project's search folders.

#include "DemoProject.h"
#include "FileStatus.h"

namespace {

struct Lookup
{
    const char* what;
    QString savedPath;
    FoundBy foundBy;
    /// Relative to the project; empty when nothing is found.
    QString foundAt;
};

} // namespace

class FileLocatorTest : public DemoProject
{
protected:
    void SetUp() override
    {
        // site/ holds the open drawing; site/xrefs/ a nested drawing that holds the reference.
        WriteBytes(QStringLiteral("site/xrefs/Grid.dwg"), "grid");
        WriteBytes(QStringLiteral("site/Beside host.dwg"), "beside");
        WriteBytes(QStringLiteral("site/xrefs/Beside holder.dwg"), "holder");
        WriteBytes(QStringLiteral("site/parts/Relative to host.dwg"), "host");
        WriteBytes(QStringLiteral("library/first/Shared.dwg"), "first");
        WriteBytes(QStringLiteral("library/second/Shared.dwg"), "second");
        WriteBytes(QStringLiteral("library/second/Only here.dwg"), "second");
        QDir().mkpath(Path(QStringLiteral("site/xrefs/Folder.dwg")));
    }

    FileLocator Locator() const
    {
        return FileLocator(Path(QStringLiteral("site")), {Path(QStringLiteral("library/first")),
                                                          QStringLiteral("../library/second")});
    }
};

TEST_F(FileLocatorTest, looksInTheUsualOrder)
{
    const QString holder = Path(QStringLiteral("site/xrefs"));
    const Lookup cases[] = {
        {"relative to the holding drawing", QStringLiteral("./Grid.dwg"), FoundBy::SavedPath,
         QStringLiteral("site/xrefs/Grid.dwg")},
        {"absolute", Path(QStringLiteral("site/xrefs/Grid.dwg")), FoundBy::SavedPath,
         QStringLiteral("site/xrefs/Grid.dwg")},
        {"backslashes", QStringLiteral("..\\xrefs\\Grid.dwg"), FoundBy::SavedPath,
         QStringLiteral("site/xrefs/Grid.dwg")},
        {"moved project, beside the holder", QStringLiteral("/old/project/Beside holder.dwg"),
         FoundBy::DrawingFolder, QStringLiteral("site/xrefs/Beside holder.dwg")},
        {"drive of another system", QStringLiteral("C:\\old\\Beside holder.dwg"),
         FoundBy::DrawingFolder, QStringLiteral("site/xrefs/Beside holder.dwg")},
        {"relative path from the open drawing", QStringLiteral("parts/Relative to host.dwg"),
         FoundBy::DrawingFolder, QStringLiteral("site/parts/Relative to host.dwg")},
        {"beside the open drawing", QStringLiteral("elsewhere/Beside host.dwg"),
         FoundBy::DrawingFolder, QStringLiteral("site/Beside host.dwg")},
        {"first search folder wins", QStringLiteral("Shared.dwg"), FoundBy::SearchPath,
         QStringLiteral("library/first/Shared.dwg")},
        {"relative search folder", QStringLiteral("x/Only here.dwg"), FoundBy::SearchPath,
         QStringLiteral("library/second/Only here.dwg")},
        {"a folder is no file", QStringLiteral("Folder.dwg"), FoundBy::NotFound, {}},
        {"nowhere", QStringLiteral("../../Missing.dwg"), FoundBy::NotFound, {}},
        {"blank", QStringLiteral("  "), FoundBy::NotFound, {}},
    };
    const FileLocator locator = Locator();
    for (const Lookup& c : cases) {
        const Resolution found = locator.Resolve(c.savedPath, holder);
        EXPECT_EQ(found.foundBy, c.foundBy) << c.what;
        EXPECT_EQ(found.foundAt,
                  c.foundAt.isEmpty() ? QString() : QFileInfo(Path(c.foundAt)).canonicalFilePath())
            << c.what;
    }
}

TEST_F(FileLocatorTest, savedLocationNamesWhereTheSavedPathPoints)
{
    const QString holder = Path(QStringLiteral("site/xrefs"));
    const FileLocator locator = Locator();
    EXPECT_EQ(locator.Resolve(QStringLiteral("..\\gone\\.\\A.dwg"), holder).savedLocation,
              Path(QStringLiteral("site/gone/A.dwg")));
    // A path of another system is kept as it is, not put under a folder of this one.
    EXPECT_EQ(locator.Resolve(QStringLiteral("D:\\plans\\A.dwg"), holder).savedLocation,
              QStringLiteral("D:/plans/A.dwg"));
}

TEST_F(FileLocatorTest, linkedPathsFindTheSameFile)
{
    ASSERT_TRUE(QFile::link(Path(QStringLiteral("site/xrefs")), Path(QStringLiteral("linked"))));
    const FileLocator locator = Locator();
    EXPECT_EQ(locator.Resolve(Path(QStringLiteral("linked/Grid.dwg")), {}).foundAt,
              locator.Resolve(Path(QStringLiteral("site/xrefs/Grid.dwg")), {}).foundAt);
}

TEST_F(FileLocatorTest, factsOfAFile)
{
    const QString drawing = Drawing(QStringLiteral("Old.dwg"), {}, "KV1024");
    const FileFacts facts = ReadFileFacts(drawing, true);
    EXPECT_TRUE(facts.exists);
    EXPECT_EQ(facts.size, QFileInfo(drawing).size());
    EXPECT_EQ(facts.modified, QFileInfo(drawing).lastModified());
    EXPECT_EQ(facts.fileVersion, 1024);
    EXPECT_EQ(ReadFileFacts(drawing, false).fileVersion, 0);
    EXPECT_FALSE(ReadFileFacts(Path(QStringLiteral("site/xrefs/Folder.dwg")), true).exists);
}
