// Language modules are resource files read from disk. A damaged one must be refused before the
// resource system, which trusts every offset in it, walks its tree.

#include "util/ResourceFileCheck_p.h"
#include "util/ResourceModule.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

namespace {

constexpr qint64 kLimit = Util::ResourceModule::kMaxRccBytes;

// The German module as the resource compiler wrote it: a root folder and one file.
QByteArray germanModule()
{
    QFile file(QStringLiteral(KVX_BINARY_DIR "/resources/kvxreftroveui_de.rcc"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

struct Layout
{
    qint64 tree;
    qint64 data;
    qint64 node(int index) const { return tree + index * 22; }
};

Layout layoutOf(const QByteArray& rcc)
{
    return {qFromBigEndian<quint32>(rcc.constData() + 8),
            qFromBigEndian<quint32>(rcc.constData() + 12)};
}

void put16(QByteArray& bytes, qint64 at, quint16 value)
{
    qToBigEndian(value, bytes.data() + at);
}

void put32(QByteArray& bytes, qint64 at, quint32 value)
{
    qToBigEndian(value, bytes.data() + at);
}

class ResourceFileCheck : public testing::Test
{
protected:
    const QByteArray module = germanModule();
    const Layout layout = layoutOf(module);

    void SetUp() override
    {
        ASSERT_TRUE(module.startsWith("qres"));
        ASSERT_TRUE(Util::IsReadableResourceFile(module, kLimit));
    }

    // Loads @p bytes as a module and reads from it; false when it was refused.
    bool loadAndRead(const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(QStringLiteral("module.rcc"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        const auto loaded = Util::ResourceModule::LoadRcc(path);
        if (!loaded)
            return false;
        (void)loaded->String(1038);
        (void)loaded->Data(QStringLiteral("menus/2080.json"));
        (void)loaded->FindFile(QStringLiteral("icons/IDI_TYPE_DWG.svg"));
        return true;
    }

    QTemporaryDir m_dir;
};

TEST_F(ResourceFileCheck, aCutFileIsRefusedWhereverItEnds)
{
    for (qsizetype size = 0; size < module.size(); ++size)
        ASSERT_FALSE(Util::IsReadableResourceFile(module.left(size), kLimit)) << size;
}

// Before the check, damage like this crashed the resource system within a few runs of the
// fuzzer. Every byte of the file's structure (header, the data's size word, names and tree),
// damaged three ways, now gives a module or a refusal.
TEST_F(ResourceFileCheck, noDamagedByteCrashesTheLoader)
{
    const qint64 names = qFromBigEndian<quint32>(module.constData() + 16);
    int loaded = 0;
    for (qsizetype at = 0; at < module.size(); ++at) {
        const bool structure =
            at < 24 || (at >= layout.data && at < layout.data + 4) || at >= names;
        if (!structure)
            continue;
        for (const char value : {'\x00', '\x7F', '\xFF'}) {
            QByteArray damaged = module;
            damaged[at] = value;
            loaded += loadAndRead(damaged);
        }
    }
    EXPECT_GT(loaded, 0) << "damage to a modification time, for one, still loads";
}

TEST_F(ResourceFileCheck, treesThatLoopOrOverlapAreRefused)
{
    QByteArray self = module;
    put32(self, layout.node(0) + 10, 0); // the root is its own child
    EXPECT_FALSE(Util::IsReadableResourceFile(self, kLimit));

    QByteArray outside = module;
    put32(outside, layout.node(0) + 6, 1000000); // more children than the file could hold
    EXPECT_FALSE(Util::IsReadableResourceFile(outside, kLimit));

    QByteArray fileRoot = module;
    put16(fileRoot, layout.node(0) + 4, 0); // a root that is no folder
    EXPECT_FALSE(Util::IsReadableResourceFile(fileRoot, kLimit));

    QByteArray foreign = module;
    put32(foreign, 4, 4); // a version that does not exist yet
    EXPECT_FALSE(Util::IsReadableResourceFile(foreign, kLimit));
}

TEST_F(ResourceFileCheck, entriesThatWouldUnpackBeyondTheLimitAreRefused)
{
    const qint64 entry = layout.data; // the one file's size word, then its bytes
    const qint64 flags = layout.node(1) + 4;

    QByteArray zlib = module;
    put16(zlib, flags, 0x01);
    put32(zlib, entry + 4, 0x7FFFFFFF);
    EXPECT_FALSE(Util::IsReadableResourceFile(zlib, kLimit));
    put32(zlib, entry + 4, 1000);
    EXPECT_TRUE(Util::IsReadableResourceFile(zlib, kLimit));

    // A zstd frame whose header declares 2^40 bytes of content, in eight bytes.
    QByteArray zstd = module;
    put16(zstd, flags, 0x04);
    const QByteArray frame =
        QByteArray::fromHex("28B52FFDE0") + QByteArray::fromHex("0000000000010000");
    zstd.replace(int(entry + 4), frame.size(), frame);
    EXPECT_FALSE(Util::IsReadableResourceFile(zstd, kLimit));
    EXPECT_TRUE(Util::IsReadableResourceFile(zstd, qint64(1) << 41));

    QByteArray plain = module;
    EXPECT_FALSE(Util::IsReadableResourceFile(plain, 100)) << "the string table has 869 bytes";
}

} // namespace
