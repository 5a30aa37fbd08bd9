#include "host/ShortcutResolver.h"
#include "support/QtPrinters.h"
#include "support/ShortcutFileBuilder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

class ShortcutResolverTest : public ::testing::Test
{
protected:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QString write(const QString& name, const ShortcutFileBuilder& builder) const
    {
        const QString file = path(name);
        EXPECT_TRUE(builder.Write(file));
        return file;
    }

    QTemporaryDir m_dir;
};

TEST(ShortcutPathTest, extensionIsComparedWithoutCase)
{
    EXPECT_TRUE(CShortcutResolver::IsShortcutPath(QStringLiteral("/p/Plan.lnk")));
    EXPECT_TRUE(CShortcutResolver::IsShortcutPath(QStringLiteral("/p/PLAN.LNK")));
    EXPECT_TRUE(CShortcutResolver::IsShortcutPath(QStringLiteral("C:\\p\\tool.Pif")));
    EXPECT_FALSE(CShortcutResolver::IsShortcutPath(QStringLiteral("/p/plan.lnkx")));
    EXPECT_FALSE(CShortcutResolver::IsShortcutPath(QStringLiteral("/p/planlnk")));
    EXPECT_FALSE(CShortcutResolver::IsShortcutPath(QStringLiteral("/p/plan.dwg")));
}

TEST_F(ShortcutResolverTest, builtShellLinkResolvesToItsLocalPath)
{
    const QString link =
        write(QStringLiteral("plan.lnk"),
              ShortcutFileBuilder().LocalBasePath(QStringLiteral("C:\\Projects\\Tower\\plan.dwg")));
    EXPECT_EQ(CShortcutResolver::ReadShellLink(link),
              QStringLiteral("C:\\Projects\\Tower\\plan.dwg"));
    EXPECT_EQ(CShortcutResolver::Resolve(link), QStringLiteral("C:\\Projects\\Tower\\plan.dwg"));
}

TEST_F(ShortcutResolverTest, localPathJoinsBaseAndSuffixAndReadsUnicode)
{
    const QString withSuffix =
        write(QStringLiteral("a.lnk"), ShortcutFileBuilder()
                                           .LocalBasePath(QStringLiteral("D:\\Site\\"))
                                           .CommonPathSuffix(QStringLiteral("survey.dwg")));
    EXPECT_EQ(CShortcutResolver::ReadShellLink(withSuffix), QStringLiteral("D:\\Site\\survey.dwg"));

    const QString name = QStringLiteral("D:\\Bauten\\Straße\\Ansicht Süd.dwg");
    const QString unicode =
        write(QStringLiteral("b.lnk"), ShortcutFileBuilder().LocalBasePath(name, true));
    EXPECT_EQ(CShortcutResolver::ReadShellLink(unicode), name);
}

TEST_F(ShortcutResolverTest, relativePathCountsFromTheLinkFolder)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("links")));
    const QString link =
        write(QStringLiteral("links/site.lnk"),
              ShortcutFileBuilder().RelativePath(QStringLiteral("..\\drawings\\site.dwg")));
    EXPECT_EQ(CShortcutResolver::ReadShellLink(link), path(QStringLiteral("drawings/site.dwg")));
}

TEST_F(ShortcutResolverTest, symbolicLinksAreFollowedToTheEndOfTheChain)
{
    const QString drawing = path(QStringLiteral("real.dwg"));
    ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(drawing, "drawing"));
    ASSERT_TRUE(QFile::link(drawing, path(QStringLiteral("first.lnk"))));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("first.lnk")), path(QStringLiteral("second.LNK"))));
    EXPECT_EQ(CShortcutResolver::Resolve(path(QStringLiteral("second.LNK"))),
              QFileInfo(drawing).canonicalFilePath());

    // A symbolic link to a shell link file ends at the shell link's target.
    const QString shellLink =
        write(QStringLiteral("shell.lnk"),
              ShortcutFileBuilder().LocalBasePath(QStringLiteral("E:\\x.dwg")));
    ASSERT_TRUE(QFile::link(shellLink, path(QStringLiteral("to-shell.lnk"))));
    EXPECT_EQ(CShortcutResolver::Resolve(path(QStringLiteral("to-shell.lnk"))),
              QStringLiteral("E:\\x.dwg"));
}

TEST_F(ShortcutResolverTest, brokenShortcutsHaveNoTarget)
{
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("gone.dwg")), path(QStringLiteral("dangling.lnk"))));
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("loop-b.lnk")), path(QStringLiteral("loop-a.lnk"))));
    ASSERT_TRUE(
        QFile::link(path(QStringLiteral("loop-a.lnk")), path(QStringLiteral("loop-b.lnk"))));
    ASSERT_TRUE(
        ShortcutFileBuilder::WriteBytes(path(QStringLiteral("text.lnk")), QByteArray(200, 'x')));
    const QString wrongClass =
        write(QStringLiteral("class.lnk"),
              ShortcutFileBuilder().LocalBasePath(QStringLiteral("C:\\a.dwg")).WrongClassId());
    const QString noTarget = write(QStringLiteral("empty.lnk"), ShortcutFileBuilder());
    ASSERT_TRUE(QDir(m_dir.path()).mkdir(QStringLiteral("folder.lnk")));

    for (const QString& name :
         {QStringLiteral("missing.lnk"), QStringLiteral("dangling.lnk"),
          QStringLiteral("loop-a.lnk"), QStringLiteral("text.lnk"), QStringLiteral("class.lnk"),
          QStringLiteral("empty.lnk"), QStringLiteral("folder.lnk")}) {
        EXPECT_EQ(CShortcutResolver::Resolve(path(name)), std::nullopt) << name.toStdString();
    }
    EXPECT_EQ(CShortcutResolver::Resolve(QString()), std::nullopt);
}

TEST_F(ShortcutResolverTest, truncatedAndDamagedLinksGiveNoTargetAndNoCrash)
{
    const QByteArray good = ShortcutFileBuilder()
                                .LocalBasePath(QStringLiteral("C:\\Projects\\plan.dwg"), true)
                                .RelativePath(QStringLiteral("plan.dwg"))
                                .Build();
    const QString file = path(QStringLiteral("cut.lnk"));
    for (int size = 0; size < good.size(); ++size) {
        ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(file, good.left(size)));
        const std::optional<QString> target = CShortcutResolver::ReadShellLink(file);
        // A cut inside the strings may leave a shorter but readable path; never garbage.
        if (target) {
            EXPECT_TRUE(QStringLiteral("C:\\Projects\\plan.dwg").startsWith(*target) ||
                        target->endsWith(QStringLiteral("plan.dwg")))
                << size << " " << target->toStdString();
        }
    }

    // Random damage anywhere after the header.
    QRandomGenerator random(5);
    for (int round = 0; round < 300; ++round) {
        QByteArray damaged = good;
        for (int i = 0; i < 4; ++i)
            damaged[0x4C + int(random.bounded(damaged.size() - 0x4C))] = char(random.bounded(256));
        ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(file, damaged));
        CShortcutResolver::ReadShellLink(file);
    }
}

TEST_F(ShortcutResolverTest, filesThatCouldHangOrExhaustAreNotRead)
{
    // A pipe named like a shortcut would block a reader that opened it.
    const QString pipe = path(QStringLiteral("pipe.lnk"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(CShortcutResolver::Resolve(pipe), std::nullopt);
    EXPECT_LT(timer.elapsed(), 5000);

    // A valid link padded beyond the size limit is not read at all.
    QByteArray huge = ShortcutFileBuilder().LocalBasePath(QStringLiteral("C:\\a.dwg")).Build();
    huge.append(QByteArray(int(CShortcutResolver::kMaxShellLinkSize), '\0'));
    ASSERT_TRUE(ShortcutFileBuilder::WriteBytes(path(QStringLiteral("huge.lnk")), huge));
    EXPECT_EQ(CShortcutResolver::ReadShellLink(path(QStringLiteral("huge.lnk"))), std::nullopt);
}

} // namespace
