#include "DrawingFormat.h"

#include "DrawingFormat_p.h"

#include "framework/PackedDib.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>
#include <QtEndian>

#include <boost/crc.hpp>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

struct KnownMagic
{
    const char* text;
    int compared;
};

// The drawing generations whose files carry the preview where the panel reads it.
constexpr std::array<KnownMagic, 10> kMagics = {{
    {"KV402", 5},
    {"KV401", 5},
    {"KV1800", 6},
    {"KV1018", 6},
    {"KV1021", 6},
    {"KV701a", 6},
    {"KV1024", 6},
    {"KV1027", 6},
    {"KV1032", 6},
    {"KV1015", 6},
}};

void appendU16(QByteArray& bytes, std::uint16_t value)
{
    char raw[2];
    qToLittleEndian(value, raw);
    bytes.append(raw, 2);
}

void appendU32(QByteArray& bytes, std::uint32_t value)
{
    char raw[4];
    qToLittleEndian(value, raw);
    bytes.append(raw, 4);
}

void putU32(QByteArray& bytes, int at, std::uint32_t value)
{
    qToLittleEndian(value, bytes.data() + at);
}

QByteArray encodeTable(const std::vector<ReferenceRecord>& references)
{
    QByteArray table;
    appendU16(table, std::uint16_t(references.size()));
    for (const ReferenceRecord& reference : references) {
        table.append(char(reference.kind));
        table.append(char((reference.overlay ? DrawingLayout::kOverlayFlag : 0) |
                          (reference.unloaded ? DrawingLayout::kUnloadedFlag : 0)));
        for (const QString* text : {&reference.name, &reference.savedPath}) {
            const QByteArray utf8 = text->toUtf8();
            appendU16(table, std::uint16_t(utf8.size()));
            table.append(utf8);
        }
    }
    return table;
}

QString recordFault(const ReferenceRecord& reference, std::size_t index)
{
    const QString which = QStringLiteral("reference %1").arg(index + 1);
    if (!IsKnownKind(std::uint8_t(reference.kind)))
        return QStringLiteral("%1 has an unknown kind").arg(which);
    const qsizetype nameBytes = reference.name.toUtf8().size();
    if (nameBytes == 0)
        return QStringLiteral("%1 has no name").arg(which);
    if (nameBytes > DrawingFormat::kMaxNameBytes)
        return QStringLiteral("the name of %1 is longer than %2 bytes")
            .arg(which)
            .arg(DrawingFormat::kMaxNameBytes);
    const qsizetype pathBytes = reference.savedPath.toUtf8().size();
    if (pathBytes == 0)
        return QStringLiteral("%1 has no saved path").arg(which);
    if (pathBytes > DrawingFormat::kMaxPathBytes)
        return QStringLiteral("the saved path of %1 is longer than %2 bytes")
            .arg(which)
            .arg(DrawingFormat::kMaxPathBytes);
    if (reference.overlay && reference.kind != ReferenceKind::Drawing)
        return QStringLiteral("%1 is an overlay but not a drawing").arg(which);
    return {};
}

} // namespace

bool IsKnownKind(std::uint8_t kind)
{
    return kind >= std::uint8_t(ReferenceKind::Drawing) &&
           kind <= std::uint8_t(ReferenceKind::DataLink);
}

namespace DrawingFormat {

QByteArray MatchMagic(const QByteArray& fileStart)
{
    for (const KnownMagic& known : kMagics) {
        if (fileStart.size() >= known.compared &&
            std::memcmp(fileStart.constData(), known.text, size_t(known.compared)) == 0)
            return QByteArray(known.text, known.compared);
    }
    return {};
}

int FileVersion(const QByteArray& magic)
{
    const QByteArray known = MatchMagic(magic);
    // The digits after "KV": the letter of "KV701a" marks a variant, not another version.
    int version = 0;
    for (int i = 2; i < known.size() && known[i] >= '0' && known[i] <= '9'; ++i)
        version = version * 10 + (known[i] - '0');
    return version;
}

DrawingPreview PngPreview(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        return {};
    return {DrawingPreview::Png, bytes};
}

DrawingPreview BmpPreview(const QImage& image)
{
    const PackedDib dib = PackedDib::FromImage(image.convertToFormat(QImage::Format_RGB32));
    if (dib.IsNull())
        return {};
    return {DrawingPreview::Bmp, dib.Bytes()};
}

} // namespace DrawingFormat

std::uint32_t DrawingLayout::Crc32(const QByteArray& bytes)
{
    boost::crc_32_type crc;
    crc.process_bytes(bytes.constData(), std::size_t(bytes.size()));
    return crc.checksum();
}

QString CheckDrawing(const DrawingContents& contents)
{
    if (DrawingFormat::MatchMagic(contents.versionMagic) != contents.versionMagic)
        return QStringLiteral("the version magic \"%1\" is not one a drawing can carry")
            .arg(QString::fromLatin1(contents.versionMagic));
    if (contents.references.size() > std::size_t(DrawingFormat::kMaxReferences))
        return QStringLiteral("a drawing holds at most %1 references")
            .arg(DrawingFormat::kMaxReferences);
    for (std::size_t i = 0; i < contents.references.size(); ++i) {
        const QString fault = recordFault(contents.references[i], i);
        if (!fault.isEmpty())
            return fault;
    }
    const DrawingPreview& preview = contents.preview;
    if (preview.code != DrawingPreview::None && preview.code != DrawingPreview::Bmp &&
        preview.code != DrawingPreview::Png)
        return QStringLiteral("the preview is neither a PNG nor a bitmap");
    if (preview.code != DrawingPreview::None && preview.data.isEmpty())
        return QStringLiteral("the preview is empty");
    if (preview.data.size() > DrawingFormat::kMaxPreviewBytes)
        return QStringLiteral("the preview is larger than %1 bytes")
            .arg(DrawingFormat::kMaxPreviewBytes);
    if (contents.body.size() > DrawingFormat::kMaxBodyBytes)
        return QStringLiteral("the drawing's body is larger than %1 bytes")
            .arg(DrawingFormat::kMaxBodyBytes);
    if (encodeTable(contents.references).size() > DrawingFormat::kMaxTableBytes)
        return QStringLiteral("the reference table is larger than %1 bytes")
            .arg(DrawingFormat::kMaxTableBytes);
    return {};
}

QByteArray EncodeDrawing(const DrawingContents& contents)
{
    if (!CheckDrawing(contents).isEmpty())
        return {};
    using namespace DrawingLayout;
    const QByteArray table = encodeTable(contents.references);
    const bool hasPreview = contents.preview.code != DrawingPreview::None;
    const qint64 tableAt = DrawingFormat::kHeaderBytes;
    const qint64 previewAt = tableAt + table.size();
    const qint64 previewBytes =
        hasPreview ? kPreviewBlockHeaderBytes + kPreviewEntryBytes + contents.preview.data.size()
                   : 0;
    const qint64 bodyAt = previewAt + previewBytes;

    QByteArray file(DrawingFormat::kHeaderBytes, '\0');
    std::memcpy(file.data(), contents.versionMagic.constData(),
                std::size_t(contents.versionMagic.size()));
    file[kMaintenanceOffset] = 1;
    putU32(file, kPreviewSeekerOffset, hasPreview ? std::uint32_t(previewAt) : 0);
    std::memcpy(file.data() + kSignatureOffset, kSignature, 4);
    qToLittleEndian(std::uint16_t(DrawingFormat::kTableVersion), file.data() + kVersionOffset);
    putU32(file, kTableOffset, std::uint32_t(tableAt));
    putU32(file, kTableOffset + 4, std::uint32_t(table.size()));
    putU32(file, kTableOffset + 8, Crc32(table));
    putU32(file, kBodyOffset, std::uint32_t(bodyAt));
    putU32(file, kBodyOffset + 4, std::uint32_t(contents.body.size()));

    file.reserve(qsizetype(bodyAt + contents.body.size()));
    file.append(table);
    if (hasPreview) {
        file.append(reinterpret_cast<const char*>(kPreviewSentinel.data()),
                    qsizetype(kPreviewSentinel.size()));
        appendU32(file, std::uint32_t(previewBytes));
        file.append(char(1));
        file.append(char(contents.preview.code));
        appendU32(file, std::uint32_t(previewAt + kPreviewBlockHeaderBytes + kPreviewEntryBytes));
        appendU32(file, std::uint32_t(contents.preview.data.size()));
        file.append(contents.preview.data);
    }
    file.append(contents.body);
    return file;
}

QString SaveDrawing(const QString& path, const DrawingContents& contents)
{
    const QString name = QFileInfo(path).fileName();
    const QString fault = CheckDrawing(contents);
    if (!fault.isEmpty())
        return QStringLiteral("\"%1\" cannot be saved: %2.").arg(name, fault);
    const QByteArray bytes = EncodeDrawing(contents);
    // The temporary file replaces the drawing only on commit, so a save that fails midway (a
    // full disk, a quota) leaves the last good drawing in place.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("\"%1\" cannot be saved: %2.").arg(name, file.errorString());
    const auto failed = [&](const QString& reason) {
        file.cancelWriting();
        return QStringLiteral("\"%1\" could not be saved and is left as it was: %2.")
            .arg(name, reason);
    };
    const qint64 written = file.write(bytes);
    // A disk that fills up takes part of the data without reporting an error for it.
    if (written != bytes.size())
        return failed(file.error() != QFileDevice::NoError
                          ? file.errorString()
                          : QStringLiteral("only %1 of %2 bytes could be written")
                                .arg(std::max<qint64>(written, 0))
                                .arg(bytes.size()));
    if (!file.commit())
        return failed(file.errorString());
    return {};
}
