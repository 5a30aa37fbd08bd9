#include "util/ResourceModule.h"
#include "util/KvXrefUtil.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ResourceModuleTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        write(QStringLiteral("strings.json"),
              R"({"1": "One", "2": "Two", "x": "ignored", "3": 7})");
        QDir(m_dir.path()).mkpath(QStringLiteral("icons"));
        write(QStringLiteral("icons/A.svg"), "<svg/>");
    }

    void write(const QString& name, const QByteArray& data)
    {
        QFile file(m_dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
    }

    QTemporaryDir m_dir;
};

TEST_F(ResourceModuleTest, MissingStringsAreEmpty)
{
    const Util::ResourceModule module(m_dir.path());
    EXPECT_EQ(module.String(1), QStringLiteral("One"));
    EXPECT_TRUE(module.String(3).isEmpty()) << "non-text values are not strings";
    EXPECT_TRUE(module.String(99).isEmpty());
    EXPECT_FALSE(module.HasString(99));
    EXPECT_EQ(module.StringIds(), (QList<unsigned>{1, 2}));
}

TEST_F(ResourceModuleTest, FallbackFillsWhatAModuleLacks)
{
    QTemporaryDir other;
    QFile file(other.filePath(QStringLiteral("strings.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"({"2": "Zwei"})");
    file.close();
    const Util::ResourceModule base(m_dir.path());
    const Util::ResourceModule language(other.path(), QStringLiteral("de"), &base);
    EXPECT_EQ(language.String(2), QStringLiteral("Zwei"));
    EXPECT_EQ(language.String(1), QStringLiteral("One"));
    EXPECT_FALSE(language.FindFile(QStringLiteral("icons/A.svg")).isEmpty());
    EXPECT_TRUE(language.FindFile(QStringLiteral("icons/B.svg")).isEmpty());
    EXPECT_TRUE(language.Data(QStringLiteral("icons/B.svg")).isEmpty());
}

TEST_F(ResourceModuleTest, LoadStrUsesTheCurrentModuleWhenNoneIsGiven)
{
    const Util::ResourceModule module(m_dir.path());
    const Util::ResourceModule* previous = Util::CurrentResourceModule();
    Util::SetCurrentResourceModule(nullptr);
    EXPECT_TRUE(Util::LoadStrW(nullptr, 1).empty());
    Util::SetCurrentResourceModule(&module);
    EXPECT_EQ(Util::LoadStrW(nullptr, 2), L"Two");
    EXPECT_EQ(Util::LoadStrW(&module, 1), L"One");
    Util::SetCurrentResourceModule(previous);
}

TEST(ResourceModuleRcc, BrokenOrMissingFilesGiveNoModule)
{
    QString error;
    EXPECT_FALSE(
        Util::ResourceModule::LoadRcc(QStringLiteral("/nonexistent/x.rcc"), nullptr, &error));
    EXPECT_FALSE(error.isEmpty());
    QTemporaryDir dir;
    QFile junk(dir.filePath(QStringLiteral("junk.rcc")));
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write("this is not a resource file");
    junk.close();
    error.clear();
    EXPECT_FALSE(Util::ResourceModule::LoadRcc(junk.fileName(), nullptr, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(KvXrefUtilStart, InitialisationsNest)
{
    const int before = Util::CrtInitializeCount();
    EXPECT_EQ(kvXrefUtilCrtInitialize(), 1);
    EXPECT_EQ(kvXrefUtilCrtInitialize(), 1);
    EXPECT_EQ(Util::CrtInitializeCount(), before + 2);
    EXPECT_EQ(kvXrefUtilCrtTerminate(), 1);
    EXPECT_EQ(kvXrefUtilCrtTerminate(), 1);
    EXPECT_EQ(Util::CrtInitializeCount(), before);
    if (before == 0) {
        EXPECT_EQ(kvXrefUtilCrtTerminate(), 0);
    }
}

} // namespace
