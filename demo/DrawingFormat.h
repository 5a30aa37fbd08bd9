#pragma once

// The demo host's drawing file: the preview block the panel reads, the host's table of
// references and an opaque body. docs/drawing-format.md describes the bytes.

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

class QIODevice;
class QImage;

/// What a reference points at. The values are the kind bytes of the file.
enum class ReferenceKind : std::uint8_t {
    Drawing = 1,
    RasterImage = 2,
    PdfUnderlay = 3,
    DwfUnderlay = 4,
    DgnUnderlay = 5,
    PointCloud = 6,
    CoordinationModel = 7,
    DataLink = 8,
};

/// True for the kinds the file format knows.
bool IsKnownKind(std::uint8_t kind);

/// One row of a drawing's reference table.
struct ReferenceRecord
{
    ReferenceKind kind = ReferenceKind::Drawing;
    QString name;
    /// As the user gave it: absolute, or relative to the folder of the drawing holding the table.
    QString savedPath;
    /// Overlays are not carried into drawings that reference this one; only drawings can be.
    bool overlay = false;
    bool unloaded = false;

    friend bool operator==(const ReferenceRecord& a, const ReferenceRecord& b)
    {
        return a.kind == b.kind && a.name == b.name && a.savedPath == b.savedPath &&
               a.overlay == b.overlay && a.unloaded == b.unloaded;
    }
};

/// The picture entry of a drawing's preview block, as stored.
struct DrawingPreview
{
    enum Code : std::uint8_t { None = 0, Bmp = 2, Png = 6 };
    Code code = None;
    QByteArray data;
};

/// Everything a drawing file holds.
struct DrawingContents
{
    QByteArray versionMagic = "KV1032";
    std::vector<ReferenceRecord> references;
    DrawingPreview preview;
    /// The drawing's own data; the demo does not look inside.
    QByteArray body;
};

namespace DrawingFormat {

constexpr int kHeaderBytes = 64;
constexpr int kTableVersion = 1;
constexpr int kMaxNameBytes = 1024;
constexpr int kMaxPathBytes = 4096;
constexpr qint64 kMaxTableBytes = 8 * 1024 * 1024;
constexpr qint64 kMaxPreviewBytes = 100000000;
constexpr qint64 kMaxBodyBytes = 512LL * 1024 * 1024;
constexpr int kMaxReferences = 65535;

/// The known version magic that @p fileStart begins with ("KV1027", "KV402"), or empty.
QByteArray MatchMagic(const QByteArray& fileStart);
/// The file version a magic stands for (1027 for "KV1027"); 0 for a magic that is not read.
int FileVersion(const QByteArray& magic);

/// The PNG file of @p image as a preview entry.
DrawingPreview PngPreview(const QImage& image);
/// A 24-bit packed bitmap of @p image as a preview entry.
DrawingPreview BmpPreview(const QImage& image);

} // namespace DrawingFormat

/// Why a drawing could not be read.
enum class DrawingReadStatus {
    Ok,
    CannotOpen,
    NotADrawing,
    /// A drawing without the host's reference table.
    Foreign,
    NewerFormat,
    Damaged,
};

/// How much of a drawing to keep. Every part is checked either way.
enum class DrawingReadScope {
    /// Magic and references: what following nested drawings needs.
    References,
    /// Also the preview and the body, to write the drawing back.
    Everything,
};

struct DrawingReadResult
{
    DrawingReadStatus status = DrawingReadStatus::CannotOpen;
    /// For people: names the file and says what is wrong with it. Empty when it was read.
    QString message;
    DrawingContents contents;

    bool Ok() const { return status == DrawingReadStatus::Ok; }
};

/// Reads the drawing at @p path, opened read-only: the file is never changed.
DrawingReadResult ReadDrawing(const QString& path,
                              DrawingReadScope scope = DrawingReadScope::References);
/// Reads a drawing from @p device (open for reading, seekable); @p displayName names it in
/// messages.
DrawingReadResult ReadDrawing(QIODevice& device, const QString& displayName,
                              DrawingReadScope scope = DrawingReadScope::References);

/// Why @p contents cannot be written (a name too long, an overlay that is no drawing...), or an
/// empty text when it can.
QString CheckDrawing(const DrawingContents& contents);
/// The bytes of the file; empty when CheckDrawing finds a fault.
QByteArray EncodeDrawing(const DrawingContents& contents);

/// Writes @p contents to @p path through a temporary file that replaces the old drawing only
/// once it is complete. An empty text on success, else what went wrong; the old file is then
/// as it was.
QString SaveDrawing(const QString& path, const DrawingContents& contents);
