#include "util/ResourceFileCheck_p.h"

#include <QtEndian>

#include <array>
#include <vector>

namespace Util {

namespace {

// The layout the resource compiler writes: a header, then a table of fixed-size nodes, a table
// of names and the data, all big-endian, each found through an offset in the header.
constexpr qint64 kHeaderBytes = 20;         // magic, version, tree, data and names offsets
constexpr qint64 kVersion3HeaderBytes = 24; // and the file's compression flags
constexpr qint64 kNodeBytesV1 = 14;
constexpr qint64 kNodeBytes = 22; // version 2 on: a modification time follows
constexpr quint16 kCompressedZlib = 0x01;
constexpr quint16 kDirectory = 0x02;
constexpr quint16 kCompressedZstd = 0x04;

class Reader
{
public:
    explicit Reader(const QByteArray& bytes) : m_bytes(bytes) {}

    qint64 size() const { return m_bytes.size(); }
    bool has(qint64 offset, qint64 count) const
    {
        return offset >= 0 && count >= 0 && offset <= size() && count <= size() - offset;
    }
    quint16 u16(qint64 offset) const
    {
        return qFromBigEndian<quint16>(m_bytes.constData() + offset);
    }
    quint32 u32(qint64 offset) const
    {
        return qFromBigEndian<quint32>(m_bytes.constData() + offset);
    }
    const uchar* at(qint64 offset) const
    {
        return reinterpret_cast<const uchar*>(m_bytes.constData() + offset);
    }

private:
    const QByteArray& m_bytes;
};

// The size a zlib entry says it unpacks to: Qt's own packing puts it in front, big-endian.
bool zlibEntryFits(const uchar* data, qint64 size, qint64 maxEntryBytes)
{
    return size >= 4 && qint64(qFromBigEndian<quint32>(data)) <= maxEntryBytes;
}

// The content size a zstd frame header declares, which the decompressor allocates up front.
// A frame that declares none, or is no frame, is refused by the decompressor itself.
bool zstdEntryFits(const uchar* data, qint64 size, qint64 maxEntryBytes)
{
    if (size < 5 || qFromLittleEndian<quint32>(data) != 0xFD2FB528u)
        return true;
    const uchar descriptor = data[4];
    const int contentSizeFlag = descriptor >> 6;
    const bool singleSegment = (descriptor >> 5) & 1;
    constexpr std::array<int, 4> kDictionaryIdBytes = {0, 1, 2, 4};
    qint64 at = 5 + (singleSegment ? 0 : 1) + kDictionaryIdBytes[descriptor & 3];
    constexpr std::array<int, 4> kContentSizeBytes = {0, 2, 4, 8};
    const int fieldBytes =
        contentSizeFlag == 0 ? (singleSegment ? 1 : 0) : kContentSizeBytes[size_t(contentSizeFlag)];
    if (fieldBytes == 0 || at + fieldBytes > size)
        return true;
    quint64 content = 0;
    for (int i = fieldBytes - 1; i >= 0; --i)
        content = (content << 8) | data[at + i];
    if (fieldBytes == 2)
        content += 256;
    return content <= quint64(maxEntryBytes);
}

} // namespace

bool IsReadableResourceFile(const QByteArray& bytes, qint64 maxEntryBytes)
{
    const Reader file(bytes);
    if (!file.has(0, kHeaderBytes) || !bytes.startsWith("qres"))
        return false;
    const quint32 version = file.u32(4);
    if (version < 1 || version > 3 || (version == 3 && !file.has(0, kVersion3HeaderBytes)))
        return false;
    const qint64 tree = file.u32(8);
    const qint64 data = file.u32(12);
    const qint64 names = file.u32(16);
    const qint64 nodeBytes = version == 1 ? kNodeBytesV1 : kNodeBytes;
    if (!file.has(tree, nodeBytes) || !file.has(data, 0) || !file.has(names, 0))
        return false;
    const qint64 maxNodes = (file.size() - tree) / nodeBytes;
    // The root is a folder: every lookup starts by reading its children.
    if (!(file.u16(tree + 4) & kDirectory))
        return false;

    // Every node is checked once. Children always follow their parent in a compiled file, which
    // also keeps a damaged one from looping; and as every node but the root is the child of
    // exactly one folder, more children in all than nodes is no tree.
    std::vector<bool> seen(size_t(maxNodes), false);
    std::vector<qint64> pending{0};
    qint64 children = 0;
    while (!pending.empty()) {
        const qint64 node = pending.back();
        pending.pop_back();
        if (seen[size_t(node)])
            continue;
        seen[size_t(node)] = true;
        const qint64 at = tree + node * nodeBytes;

        const qint64 name = names + qint64(file.u32(at));
        if (!file.has(name, 6) || !file.has(name + 6, qint64(file.u16(name)) * 2))
            return false;

        const quint16 flags = file.u16(at + 4);
        if (flags & kDirectory) {
            const qint64 count = file.u32(at + 6);
            const qint64 first = file.u32(at + 10);
            children += count;
            if (children > maxNodes || (count > 0 && (first <= node || first + count > maxNodes)))
                return false;
            for (qint64 child = first; child < first + count; ++child)
                pending.push_back(child);
            continue;
        }
        const qint64 entry = data + qint64(file.u32(at + 10));
        if (!file.has(entry, 4))
            return false;
        const qint64 size = file.u32(entry);
        if (!file.has(entry + 4, size))
            return false;
        const uchar* content = file.at(entry + 4);
        if ((flags & kCompressedZlib) && !zlibEntryFits(content, size, maxEntryBytes))
            return false;
        if ((flags & kCompressedZstd) && !zstdEntryFits(content, size, maxEntryBytes))
            return false;
        if (!(flags & (kCompressedZlib | kCompressedZstd)) && size > maxEntryBytes)
            return false;
    }
    return true;
}

} // namespace Util
