#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>

#include <cstdint>
#include <optional>

/// Writes drawing files with a preview block for tests: the version magic, the maintenance
/// byte, the preview address, the sentinel, the entry count and the directory can all be set
/// to anything, including values that point past the end of the file.
class DrawingFileBuilder
{
public:
    enum Code : unsigned char { Header = 1, Bmp = 2, Wmf = 3, Png = 6 };

    static const QByteArray& Sentinel();
    /// A PNG file of @p image.
    static QByteArray PngBytes(const QImage& image);
    /// A 24-bit packed DIB of @p image.
    static QByteArray BmpBytes(const QImage& image);

    DrawingFileBuilder& Magic(QByteArray magic);
    DrawingFileBuilder& MaintenanceByte(unsigned char value);
    /// The preview block's address as written at offset 13 (by default where it really is).
    DrawingFileBuilder& Seeker(std::uint32_t offset);
    /// Where the preview block starts (by default right after the 1,024-byte header).
    DrawingFileBuilder& BlockAt(std::uint32_t offset);
    DrawingFileBuilder& SentinelBytes(QByteArray sentinel);
    /// The entry count as written (by default the number of entries added).
    DrawingFileBuilder& EntryCount(unsigned char count);

    /// An entry whose data follows the directory. The offset and size written in the directory
    /// may be overridden to lie.
    DrawingFileBuilder& AddEntry(unsigned char code, QByteArray data,
                                 std::optional<std::uint32_t> offset = std::nullopt,
                                 std::optional<std::uint32_t> size = std::nullopt);
    DrawingFileBuilder& AddBmp(QByteArray dib) { return AddEntry(Bmp, std::move(dib)); }
    DrawingFileBuilder& AddPng(QByteArray png) { return AddEntry(Png, std::move(png)); }
    DrawingFileBuilder& AddWmf(QByteArray wmf) { return AddEntry(Wmf, std::move(wmf)); }
    DrawingFileBuilder& AddHeaderEntry() { return AddEntry(Header, QByteArray(80, '\x11')); }

    /// Filler bytes after the entries, so that the file has at least @p bytes.
    DrawingFileBuilder& PadTo(qint64 bytes);
    /// Cuts the file after @p bytes.
    DrawingFileBuilder& TruncateAt(qint64 bytes);

    QByteArray Bytes() const;
    /// Writes the file; false when it cannot be written.
    bool Write(const QString& path) const;

private:
    struct Entry
    {
        unsigned char code;
        QByteArray data;
        std::optional<std::uint32_t> offset;
        std::optional<std::uint32_t> size;
    };

    QByteArray m_magic = "KV1032";
    unsigned char m_maintenance = 1;
    std::optional<std::uint32_t> m_seeker;
    std::uint32_t m_blockAt = 1024;
    std::optional<QByteArray> m_sentinel;
    std::optional<unsigned char> m_count;
    QList<Entry> m_entries;
    qint64 m_padTo = 0;
    std::optional<qint64> m_truncateAt;
};
