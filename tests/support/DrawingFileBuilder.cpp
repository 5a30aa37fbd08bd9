#include "support/DrawingFileBuilder.h"

#include "framework/PackedDib.h"

#include <QBuffer>
#include <QFile>
#include <QtEndian>

namespace {

void putU32(QByteArray& bytes, qint64 at, std::uint32_t value)
{
    if (bytes.size() < at + 4)
        bytes.resize(qsizetype(at + 4), '\0');
    qToLittleEndian(value, bytes.data() + at);
}

} // namespace

const QByteArray& DrawingFileBuilder::Sentinel()
{
    static const QByteArray sentinel = QByteArray::fromHex("1F256D07D43628289D57CA3F9D44102B");
    return sentinel;
}

QByteArray DrawingFileBuilder::PngBytes(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray DrawingFileBuilder::BmpBytes(const QImage& image)
{
    return PackedDib::FromImage(image.convertToFormat(QImage::Format_RGB32)).Bytes();
}

DrawingFileBuilder& DrawingFileBuilder::Magic(QByteArray magic)
{
    m_magic = std::move(magic);
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::MaintenanceByte(unsigned char value)
{
    m_maintenance = value;
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::Seeker(std::uint32_t offset)
{
    m_seeker = offset;
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::BlockAt(std::uint32_t offset)
{
    m_blockAt = offset;
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::SentinelBytes(QByteArray sentinel)
{
    m_sentinel = std::move(sentinel);
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::EntryCount(unsigned char count)
{
    m_count = count;
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::AddEntry(unsigned char code, QByteArray data,
                                                 std::optional<std::uint32_t> offset,
                                                 std::optional<std::uint32_t> size)
{
    m_entries.append(Entry{code, std::move(data), offset, size});
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::PadTo(qint64 bytes)
{
    m_padTo = bytes;
    return *this;
}

DrawingFileBuilder& DrawingFileBuilder::TruncateAt(qint64 bytes)
{
    m_truncateAt = bytes;
    return *this;
}

QByteArray DrawingFileBuilder::Bytes() const
{
    // The 1,024-byte header: magic, maintenance byte, preview address; the rest is filler that
    // must not look like anything.
    QByteArray file(qsizetype(std::max<std::uint32_t>(m_blockAt, 17)), '\x5A');
    file.replace(0, m_magic.size(), m_magic);
    file[11] = char(m_maintenance);
    putU32(file, 13, m_seeker.value_or(m_blockAt));
    file.resize(qsizetype(m_blockAt), '\x5A');

    const QByteArray sentinel = m_sentinel.value_or(Sentinel());
    file.append(sentinel);
    const qint64 directoryAt = file.size() + 5;
    qint64 dataAt = directoryAt + qint64(m_entries.size()) * 9;
    qint64 blockSize = dataAt - m_blockAt;
    for (const Entry& entry : m_entries)
        blockSize += entry.data.size();
    putU32(file, file.size(), std::uint32_t(blockSize));
    file.append(char(m_count.value_or(static_cast<unsigned char>(m_entries.size()))));
    for (const Entry& entry : m_entries) {
        file.append(char(entry.code));
        putU32(file, file.size(), entry.offset.value_or(std::uint32_t(dataAt)));
        putU32(file, file.size(), entry.size.value_or(std::uint32_t(entry.data.size())));
        dataAt += entry.data.size();
    }
    for (const Entry& entry : m_entries)
        file.append(entry.data);
    if (file.size() < m_padTo)
        file.append(QByteArray(qsizetype(m_padTo - file.size()), '\x33'));
    if (m_truncateAt)
        file.truncate(qsizetype(*m_truncateAt));
    return file;
}

bool DrawingFileBuilder::Write(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const QByteArray bytes = Bytes();
    return file.write(bytes) == bytes.size();
}
