#include "ShortcutFileBuilder.h"

#include <QFile>

#include <cstdint>

namespace {

// Field values of the shell link layout.
constexpr uint32_t kHeaderSize = 0x4C;
constexpr uint32_t kHasLinkInfo = 0x02;
constexpr uint32_t kHasRelativePath = 0x08;
constexpr uint32_t kIsUnicode = 0x80;
constexpr uint32_t kFileAttributeArchive = 0x20;
constexpr uint32_t kShowNormal = 1;
constexpr uint32_t kVolumeIdAndLocalBasePath = 0x01;
constexpr uint32_t kDriveFixed = 3;
constexpr uint32_t kLinkInfoHeaderSize = 0x1C;
constexpr uint32_t kLinkInfoHeaderSizeUnicode = 0x24;
// 00021401-0000-0000-C000-000000000046 as stored: the first three fields little-endian.
constexpr unsigned char kLinkClassId[16] = {0x01, 0x14, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                            0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};

void put16(QByteArray& out, uint16_t value)
{
    out.append(char(value & 0xFF));
    out.append(char(value >> 8));
}

void put32(QByteArray& out, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.append(char((value >> shift) & 0xFF));
}

void set32(QByteArray& out, int offset, uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        out[offset + i] = char((value >> (8 * i)) & 0xFF);
}

QByteArray ansi(const QString& text)
{
    return text.toLatin1() + '\0';
}

QByteArray utf16(const QString& text)
{
    QByteArray out;
    for (const QChar c : text)
        put16(out, c.unicode());
    put16(out, 0);
    return out;
}

} // namespace

ShortcutFileBuilder& ShortcutFileBuilder::LocalBasePath(const QString& path, bool alsoUnicode)
{
    m_localBasePath = path;
    m_hasLocalBasePath = true;
    m_unicode = alsoUnicode;
    return *this;
}

ShortcutFileBuilder& ShortcutFileBuilder::CommonPathSuffix(const QString& suffix)
{
    m_suffix = suffix;
    return *this;
}

ShortcutFileBuilder& ShortcutFileBuilder::RelativePath(const QString& path)
{
    m_relativePath = path;
    return *this;
}

ShortcutFileBuilder& ShortcutFileBuilder::WrongClassId()
{
    m_wrongClassId = true;
    return *this;
}

QByteArray ShortcutFileBuilder::linkInfo() const
{
    const uint32_t headerSize = m_unicode ? kLinkInfoHeaderSizeUnicode : kLinkInfoHeaderSize;
    QByteArray volumeId;
    put32(volumeId, 0); // size, set below
    put32(volumeId, kDriveFixed);
    put32(volumeId, 0x1234ABCD); // drive serial number
    put32(volumeId, 0x10);       // volume label offset: right after these four fields
    volumeId.append(ansi(QStringLiteral("DATA")));
    set32(volumeId, 0, uint32_t(volumeId.size()));

    const uint32_t volumeIdOffset = headerSize;
    const uint32_t basePathOffset = volumeIdOffset + uint32_t(volumeId.size());
    const QByteArray basePath = ansi(m_localBasePath);
    const uint32_t suffixOffset = basePathOffset + uint32_t(basePath.size());
    const QByteArray suffix = ansi(m_suffix);
    const uint32_t basePathUnicodeOffset = suffixOffset + uint32_t(suffix.size());
    const QByteArray basePathUnicode = utf16(m_localBasePath);
    const uint32_t suffixUnicodeOffset = basePathUnicodeOffset + uint32_t(basePathUnicode.size());
    const QByteArray suffixUnicode = utf16(m_suffix);

    QByteArray info;
    put32(info, 0); // size, set below
    put32(info, headerSize);
    put32(info, kVolumeIdAndLocalBasePath);
    put32(info, volumeIdOffset);
    put32(info, basePathOffset);
    put32(info, 0); // no network link
    put32(info, suffixOffset);
    if (m_unicode) {
        put32(info, basePathUnicodeOffset);
        put32(info, suffixUnicodeOffset);
    }
    info.append(volumeId);
    info.append(basePath);
    info.append(suffix);
    if (m_unicode) {
        info.append(basePathUnicode);
        info.append(suffixUnicode);
    }
    set32(info, 0, uint32_t(info.size()));
    return info;
}

QByteArray ShortcutFileBuilder::Build() const
{
    uint32_t flags = kIsUnicode;
    if (m_hasLocalBasePath)
        flags |= kHasLinkInfo;
    if (!m_relativePath.isEmpty())
        flags |= kHasRelativePath;

    QByteArray out;
    put32(out, kHeaderSize);
    out.append(reinterpret_cast<const char*>(kLinkClassId), sizeof kLinkClassId);
    if (m_wrongClassId)
        out[4] = char(0x02);
    put32(out, flags);
    put32(out, kFileAttributeArchive);
    for (int i = 0; i < 3; ++i) { // creation, access and write times
        put32(out, 0);
        put32(out, 0);
    }
    put32(out, 0); // target size
    put32(out, 0); // icon index
    put32(out, kShowNormal);
    put16(out, 0); // hot key
    put16(out, 0); // reserved
    put32(out, 0);
    put32(out, 0);

    if (m_hasLocalBasePath)
        out.append(linkInfo());
    if (!m_relativePath.isEmpty()) {
        put16(out, uint16_t(m_relativePath.size()));
        out.append(utf16(m_relativePath).chopped(2)); // counted, not terminated
    }
    put32(out, 0); // terminal block
    return out;
}

bool ShortcutFileBuilder::Write(const QString& filePath) const
{
    return WriteBytes(filePath, Build());
}

bool ShortcutFileBuilder::WriteBytes(const QString& filePath, const QByteArray& bytes)
{
    QFile file(filePath);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}
