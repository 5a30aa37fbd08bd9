// Reading a drawing file. The bytes come from anywhere (a copy from another machine, a file cut
// short by a full disk), so every offset and length is checked against the file before it is
// followed or allocated, and a fault ends the read with a message instead of a guess.

#include "DrawingFormat.h"

#include "DrawingFormat_p.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <optional>

namespace {

using namespace DrawingLayout;

/// A fault found while reading; carries the reason for the "damaged" message.
struct Fault
{
    QString reason;
};

class DeviceReader
{
public:
    explicit DeviceReader(QIODevice& device) : m_device(device), m_size(device.size()) {}

    qint64 Size() const { return m_size; }

    bool Contains(qint64 offset, qint64 count) const
    {
        return offset >= 0 && count >= 0 && offset <= m_size && count <= m_size - offset;
    }

    /// Exactly @p count bytes at @p offset, or nothing when they are not all in the file.
    std::optional<QByteArray> Read(qint64 offset, qint64 count)
    {
        if (!Contains(offset, count) || !m_device.seek(offset))
            return std::nullopt;
        QByteArray bytes = m_device.read(count);
        if (bytes.size() != count)
            return std::nullopt;
        return bytes;
    }

private:
    QIODevice& m_device;
    qint64 m_size;
};

std::uint16_t u16At(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<std::uint16_t>(bytes.constData() + at);
}

std::uint32_t u32At(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<std::uint32_t>(bytes.constData() + at);
}

/// Walks the table's bytes; every read checks that the bytes are there.
class TableParser
{
public:
    explicit TableParser(const QByteArray& table) : m_table(table) {}

    std::optional<Fault> Parse(std::vector<ReferenceRecord>& out)
    {
        if (m_table.size() < 2)
            return Fault{QStringLiteral("the reference table is too short to hold its count")};
        const int count = u16At(m_table, 0);
        m_at = 2;
        // The count comes from the file: reserve no more than the table's bytes can hold.
        constexpr int kSmallestRecordBytes = 8;
        out.reserve(std::size_t(std::min<qsizetype>(count, m_table.size() / kSmallestRecordBytes)));
        for (int i = 0; i < count; ++i) {
            const QString which = QStringLiteral("reference %1").arg(i + 1);
            if (m_at + 2 > m_table.size())
                return Fault{QStringLiteral("the reference table ends inside %1").arg(which)};
            ReferenceRecord record;
            const auto kind = std::uint8_t(m_table[m_at]);
            const auto flags = std::uint8_t(m_table[m_at + 1]);
            m_at += 2;
            if (!IsKnownKind(kind))
                return Fault{QStringLiteral("%1 has an unknown kind (%2)").arg(which).arg(kind)};
            if ((flags & ~(kOverlayFlag | kUnloadedFlag)) != 0)
                return Fault{QStringLiteral("%1 has unknown flags (%2)").arg(which).arg(flags)};
            record.kind = ReferenceKind(kind);
            record.overlay = (flags & kOverlayFlag) != 0;
            record.unloaded = (flags & kUnloadedFlag) != 0;
            if (record.overlay && record.kind != ReferenceKind::Drawing)
                return Fault{QStringLiteral("%1 is an overlay but not a drawing").arg(which)};
            if (auto fault = text(record.name, DrawingFormat::kMaxNameBytes,
                                  QStringLiteral("the name of %1").arg(which)))
                return fault;
            if (auto fault = text(record.savedPath, DrawingFormat::kMaxPathBytes,
                                  QStringLiteral("the saved path of %1").arg(which)))
                return fault;
            out.push_back(std::move(record));
        }
        if (m_at != m_table.size())
            return Fault{QStringLiteral("%1 bytes are left over after the last reference")
                             .arg(m_table.size() - m_at)};
        return std::nullopt;
    }

private:
    std::optional<Fault> text(QString& out, int maxBytes, const QString& what)
    {
        if (m_at + 2 > m_table.size())
            return Fault{QStringLiteral("the reference table ends inside %1").arg(what)};
        const int length = u16At(m_table, m_at);
        m_at += 2;
        if (length == 0 || length > maxBytes)
            return Fault{QStringLiteral("%1 is %2 bytes long").arg(what).arg(length)};
        if (m_at + length > m_table.size())
            return Fault{QStringLiteral("the reference table ends inside %1").arg(what)};
        // A leading byte-order mark is part of the name: stripping it would change what is
        // written back. Stateless, so that a sequence cut off at the end is an error rather
        // than something kept for more bytes that never come.
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                         QStringDecoder::Flag::Stateless);
        out = decoder(QByteArrayView(m_table.constData() + m_at, length));
        if (decoder.hasError())
            return Fault{QStringLiteral("%1 is not UTF-8").arg(what)};
        m_at += length;
        return std::nullopt;
    }

    const QByteArray& m_table;
    qsizetype m_at = 0;
};

/// The first picture entry of the preview block at @p blockAt, as the panel would pick it.
std::optional<Fault> readPreview(DeviceReader& reader, qint64 blockAt, bool keep,
                                 DrawingPreview& out)
{
    if (blockAt < DrawingFormat::kHeaderBytes)
        return Fault{QStringLiteral("the preview block overlaps the header")};
    const std::optional<QByteArray> head = reader.Read(blockAt, kPreviewBlockHeaderBytes);
    if (!head)
        return Fault{QStringLiteral("the preview block lies outside the file")};
    if (std::memcmp(head->constData(), kPreviewSentinel.data(), kPreviewSentinel.size()) != 0)
        return Fault{QStringLiteral("the preview block has no sentinel")};
    const int entries = std::uint8_t((*head)[kPreviewBlockHeaderBytes - 1]);
    const std::optional<QByteArray> directory =
        reader.Read(blockAt + kPreviewBlockHeaderBytes, qint64(entries) * kPreviewEntryBytes);
    if (!directory)
        return Fault{QStringLiteral("the preview directory runs past the end of the file")};
    for (int i = 0; i < entries; ++i) {
        const qsizetype at = qsizetype(i) * kPreviewEntryBytes;
        const auto code = std::uint8_t((*directory)[at]);
        const qint64 offset = u32At(*directory, at + 1);
        const qint64 size = u32At(*directory, at + 5);
        if (!reader.Contains(offset, size))
            return Fault{QStringLiteral("preview entry %1 lies outside the file").arg(i + 1)};
        if (out.code != DrawingPreview::None ||
            (code != DrawingPreview::Bmp && code != DrawingPreview::Png) || size == 0 ||
            size > DrawingFormat::kMaxPreviewBytes)
            continue;
        out.code = DrawingPreview::Code(code);
        if (keep) {
            std::optional<QByteArray> data = reader.Read(offset, size);
            if (!data)
                return Fault{QStringLiteral("preview entry %1 cannot be read").arg(i + 1)};
            out.data = std::move(*data);
        }
    }
    return std::nullopt;
}

/// A section (offset, length) named @p what: inside the file, after the header, not too long.
std::optional<Fault> checkSection(const DeviceReader& reader, qint64 offset, qint64 length,
                                  qint64 maxLength, const QString& what)
{
    if (length > maxLength)
        return Fault{QStringLiteral("the %1 claims %2 bytes").arg(what).arg(length)};
    if (length > 0 && offset < DrawingFormat::kHeaderBytes)
        return Fault{QStringLiteral("the %1 overlaps the header").arg(what)};
    if (!reader.Contains(offset, length))
        return Fault{QStringLiteral("the %1 lies outside the file").arg(what)};
    return std::nullopt;
}

DrawingReadResult failure(DrawingReadStatus status, QString message)
{
    DrawingReadResult result;
    result.status = status;
    result.message = std::move(message);
    return result;
}

} // namespace

DrawingReadResult ReadDrawing(const QString& path, DrawingReadScope scope)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    // Regular files only: opening a named pipe would wait for a writer for ever.
    if (!info.exists())
        return failure(DrawingReadStatus::CannotOpen,
                       QStringLiteral("\"%1\" cannot be opened: there is no such file.").arg(name));
    if (!info.isFile())
        return failure(DrawingReadStatus::CannotOpen,
                       QStringLiteral("\"%1\" cannot be opened: it is not a file.").arg(name));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failure(
            DrawingReadStatus::CannotOpen,
            QStringLiteral("\"%1\" cannot be opened: %2.").arg(name, file.errorString()));
    return ReadDrawing(file, name, scope);
}

DrawingReadResult ReadDrawing(QIODevice& device, const QString& displayName, DrawingReadScope scope)
{
    auto damaged = [&](const QString& reason) {
        return failure(DrawingReadStatus::Damaged,
                       QStringLiteral("\"%1\" is damaged: %2.").arg(displayName, reason));
    };
    if (!device.isReadable() || device.isSequential())
        return failure(DrawingReadStatus::CannotOpen,
                       QStringLiteral("\"%1\" cannot be read.").arg(displayName));
    DeviceReader reader(device);
    const std::optional<QByteArray> start =
        reader.Read(0, std::min<qint64>(reader.Size(), DrawingFormat::kHeaderBytes));
    if (!start)
        return failure(DrawingReadStatus::CannotOpen,
                       QStringLiteral("\"%1\" cannot be read.").arg(displayName));
    const QByteArray& header = *start;
    const QByteArray magic = DrawingFormat::MatchMagic(header);
    if (magic.isEmpty())
        return failure(DrawingReadStatus::NotADrawing,
                       QStringLiteral("\"%1\" is not a drawing.").arg(displayName));
    if (header.size() < DrawingFormat::kHeaderBytes)
        return damaged(QStringLiteral("the file ends inside its header"));
    if (std::memcmp(header.constData() + kSignatureOffset, kSignature, 4) != 0)
        return failure(DrawingReadStatus::Foreign,
                       QStringLiteral("\"%1\" is a drawing this program did not write: it has no "
                                      "reference table.")
                           .arg(displayName));
    const int tableVersion = u16At(header, kVersionOffset);
    if (tableVersion > DrawingFormat::kTableVersion)
        return failure(DrawingReadStatus::NewerFormat,
                       QStringLiteral("\"%1\" was written by a newer version of this program "
                                      "(reference table format %2; this version reads format %3).")
                           .arg(displayName)
                           .arg(tableVersion)
                           .arg(DrawingFormat::kTableVersion));
    if (tableVersion == 0)
        return damaged(QStringLiteral("its reference table has format 0"));

    const qint64 tableAt = u32At(header, kTableOffset);
    const qint64 tableBytes = u32At(header, kTableOffset + 4);
    if (auto fault = checkSection(reader, tableAt, tableBytes, DrawingFormat::kMaxTableBytes,
                                  QStringLiteral("reference table")))
        return damaged(fault->reason);
    const qint64 bodyAt = u32At(header, kBodyOffset);
    const qint64 bodyBytes = u32At(header, kBodyOffset + 4);
    if (auto fault = checkSection(reader, bodyAt, bodyBytes, DrawingFormat::kMaxBodyBytes,
                                  QStringLiteral("body")))
        return damaged(fault->reason);

    DrawingReadResult result;
    const std::optional<QByteArray> table = reader.Read(tableAt, tableBytes);
    if (!table)
        return damaged(QStringLiteral("its reference table cannot be read"));
    if (Crc32(*table) != u32At(header, kTableOffset + 8))
        return damaged(QStringLiteral("the reference table fails its checksum"));
    if (auto fault = TableParser(*table).Parse(result.contents.references))
        return damaged(fault->reason);

    const bool keep = scope == DrawingReadScope::Everything;
    const qint64 previewAt = u32At(header, kPreviewSeekerOffset);
    if (previewAt != 0) {
        if (auto fault = readPreview(reader, previewAt, keep, result.contents.preview))
            return damaged(fault->reason);
    }
    if (keep && bodyBytes > 0) {
        std::optional<QByteArray> body = reader.Read(bodyAt, bodyBytes);
        if (!body)
            return damaged(QStringLiteral("its body cannot be read"));
        result.contents.body = std::move(*body);
    }
    result.contents.versionMagic = magic;
    result.status = DrawingReadStatus::Ok;
    return result;
}
