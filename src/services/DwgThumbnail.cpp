#include "services/DwgThumbnail.h"

#include "host/ZuIntImgServices.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <cstring>
#include <optional>

namespace {

// The layout of a drawing file's preview is fixed by the file format; nothing in Qt reads it.
constexpr qint64 kHeaderBytes = 1024;
constexpr qint64 kSeekerOffset = 13;
constexpr qint64 kMaintenanceByteOffset = 11;
constexpr qint64 kEntryBytes = 9;
constexpr std::uint32_t kMaxEntryBytes = 100000000;

enum EntryCode : unsigned char { HeaderEntry = 1, BmpEntry = 2, WmfEntry = 3, PngEntry = 6 };

constexpr std::array<unsigned char, 16> kSentinel = {
    0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28, 0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};

struct VersionMagic
{
    const char* text;
    int compared;
    bool needsMaintenanceByte;
};

// Compared in this order. "KV1015" files written before the first maintenance release carry
// no preview block, which is what a zero maintenance byte tells.
constexpr std::array<VersionMagic, 10> kVersions = {{
    {"KV402", 5, false},
    {"KV401", 5, false},
    {"KV1800", 6, false},
    {"KV1018", 6, false},
    {"KV1021", 6, false},
    {"KV701a", 6, false},
    {"KV1024", 6, false},
    {"KV1027", 6, false},
    {"KV1032", 6, false},
    {"KV1015", 6, true},
}};

bool isAcceptedVersion(const QByteArray& header)
{
    if (header.size() <= kMaintenanceByteOffset)
        return false;
    for (const VersionMagic& version : kVersions) {
        if (std::memcmp(header.constData(), version.text, size_t(version.compared)) != 0)
            continue;
        if (version.needsMaintenanceByte && header[int(kMaintenanceByteOffset)] == 0)
            continue;
        return true;
    }
    return false;
}

std::uint32_t u32At(const QByteArray& bytes, qint64 offset)
{
    return qFromLittleEndian<std::uint32_t>(bytes.constData() + offset);
}

// Exactly `count` bytes at `offset` of a device of `size` bytes, or nothing when they are not
// all there. The size is the caller's, asked once: every question to an unbuffered file is a
// system call, and they cost more than the few bytes read here.
std::optional<QByteArray> readAt(QIODevice& device, qint64 size, qint64 offset, qint64 count)
{
    if (offset < 0 || count < 0 || offset > size || count > size - offset)
        return std::nullopt;
    if (device.pos() != offset && !device.seek(offset))
        return std::nullopt;
    QByteArray bytes = device.read(count);
    if (bytes.size() != count)
        return std::nullopt;
    return bytes;
}

PackedDib decodePngEntry(const QByteArray& png)
{
    ZuIntImgServices* services = getZuIntImgServices();
    const QImage image = services->DecodePng(png);
    if (!services->IsValid(image))
        return {};
    return services->ImageToDib(image);
}

} // namespace

namespace TroveUI {

PackedDib ExtractDwgThumbnail(const std::wstring& path)
{
    if (path.empty())
        return {};
    const QString name = QString::fromStdWString(path);
    // Regular files only: opening a named pipe waits for a writer, and that would freeze the
    // user interface while the pointer rests on a reference.
    if (!QFileInfo(name).isFile())
        return {};
    QFile file(name);
    // Unbuffered: the reader touches a few small regions of a possibly large file, and a read
    // buffer would pull in more than that.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    return ExtractDwgThumbnail(file);
}

PackedDib ExtractDwgThumbnail(QIODevice& device)
{
    if (!device.isReadable() || device.isSequential())
        return {};
    const qint64 fileSize = device.size();
    const std::optional<QByteArray> header =
        readAt(device, fileSize, 0, std::min<qint64>(kHeaderBytes, fileSize));
    if (!header || header->size() < kSeekerOffset + 4 || !isAcceptedVersion(*header))
        return {};

    // Sentinel, the block's overall size (not needed) and the entry count, in one read.
    const qint64 seeker = u32At(*header, kSeekerOffset);
    const qint64 blockHeaderBytes = qint64(kSentinel.size()) + 4 + 1;
    const std::optional<QByteArray> blockHeader =
        readAt(device, fileSize, seeker, blockHeaderBytes);
    if (!blockHeader ||
        std::memcmp(blockHeader->constData(), kSentinel.data(), kSentinel.size()) != 0)
        return {};
    const int entries = static_cast<unsigned char>((*blockHeader)[int(blockHeaderBytes - 1)]);

    // The whole directory in one read. A directory cut short by the end of the file still
    // serves the entries before the cut.
    const qint64 directoryOffset = seeker + blockHeaderBytes;
    const qint64 directoryBytes =
        std::min<qint64>(entries * kEntryBytes, fileSize - directoryOffset);
    const std::optional<QByteArray> directory =
        readAt(device, fileSize, directoryOffset, std::max<qint64>(directoryBytes, 0));
    if (!directory)
        return {};

    PackedDib result;
    for (int i = 0; i < entries; ++i) {
        const qint64 at = i * kEntryBytes;
        if (at + kEntryBytes > directory->size())
            return {};
        const auto code = static_cast<unsigned char>((*directory)[int(at)]);
        const std::uint32_t offset = u32At(*directory, at + 1);
        const std::uint32_t size = u32At(*directory, at + 5);
        if ((code != BmpEntry && code != PngEntry) || size > kMaxEntryBytes)
            continue;
        // readAt refuses an entry that reaches past the end of the file before allocating it.
        const std::optional<QByteArray> data = readAt(device, fileSize, offset, size);
        if (!data)
            return {};
        result = code == BmpEntry ? PackedDib(*data) : decodePngEntry(*data);
        if (result.IsNull())
            return {};
        break;
    }

    // A DIB whose header size field is zero is no picture.
    if (result.Bytes().size() < 4 || u32At(result.Bytes(), 0) == 0)
        return {};
    return result;
}

QImage DibToImage(const PackedDib& dib)
{
    const std::optional<BitmapInfoHeader> header = dib.Header();
    if (!header)
        return {};
    qint64 colors = 0;
    if (header->biBitCount <= 8)
        colors =
            header->biClrUsed != 0 ? qint64(header->biClrUsed) : (qint64(1) << header->biBitCount);
    return dib.ToImage(qint64(header->biSize) + colors * 4);
}

QPixmap CopyBitmapInfo(const PackedDib& dib)
{
    const QImage image = DibToImage(dib);
    if (image.isNull())
        return {};
    return QPixmap::fromImage(image);
}

} // namespace TroveUI
