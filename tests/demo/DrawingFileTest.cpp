// The demo host's drawing file: what it keeps, what the panel reads of it, what it refuses.

#include "DemoProject.h"
#include "DrawingFormat_p.h"

#include "services/DwgThumbnail.h"
#include "support/DrawingFileBuilder.h"
#include "support/NamedPipe.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

#include <csignal>
#include <functional>
#include <sys/resource.h>

namespace {

QImage picture(QRgb color)
{
    QImage image(24, 16, QImage::Format_RGB32);
    image.fill(color);
    image.setPixel(3, 2, qRgb(255, 255, 255));
    return image;
}

DrawingContents fullDrawing()
{
    DrawingContents contents;
    contents.references = {
        {ReferenceKind::Drawing, QStringLiteral("Grid"), QStringLiteral("./xrefs/Grid.dwg"), true,
         false},
        {ReferenceKind::RasterImage, QStringLiteral("Luftbild Süd"),
         QStringLiteral("..\\images\\süd.png"), false, true},
        {ReferenceKind::DataLink, QStringLiteral("Doors"), QStringLiteral("/data/doors.csv"), false,
         false},
    };
    contents.preview = DrawingFormat::PngPreview(picture(qRgb(0, 0, 200)));
    contents.body = QByteArray("geometry").repeated(50);
    return contents;
}

DrawingReadResult readBytes(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return ReadDrawing(buffer, QStringLiteral("Site.dwg"), DrawingReadScope::Everything);
}

void putU32(QByteArray& bytes, int at, std::uint32_t value)
{
    qToLittleEndian(value, bytes.data() + at);
}

// A file whose reference table is replaced by @p table, with a checksum that fits it, so that
// the table's own checks are what rejects it.
QByteArray withTable(const QByteArray& table)
{
    QByteArray file = EncodeDrawing(DrawingContents{});
    file.truncate(DrawingFormat::kHeaderBytes);
    putU32(file, DrawingLayout::kTableOffset, DrawingFormat::kHeaderBytes);
    putU32(file, DrawingLayout::kTableOffset + 4, std::uint32_t(table.size()));
    putU32(file, DrawingLayout::kTableOffset + 8, DrawingLayout::Crc32(table));
    putU32(file, DrawingLayout::kBodyOffset, 0);
    putU32(file, DrawingLayout::kBodyOffset + 4, 0);
    return file + table;
}

QByteArray record(std::uint8_t kind, std::uint8_t flags, const QByteArray& name,
                  const QByteArray& path)
{
    QByteArray bytes;
    bytes.append(char(kind)).append(char(flags));
    for (const QByteArray* text : {&name, &path}) {
        char length[2];
        qToLittleEndian(std::uint16_t(text->size()), length);
        bytes.append(length, 2).append(*text);
    }
    return bytes;
}

QByteArray table(std::uint16_t count, const QByteArray& records)
{
    char raw[2];
    qToLittleEndian(count, raw);
    return QByteArray(raw, 2) + records;
}

} // namespace

using DrawingFileTest = DemoProject;

TEST_F(DrawingFileTest, savedDrawingReadsBackWhole)
{
    for (const QByteArray magic : {"KV1032", "KV402", "KV701a", "KV1015"}) {
        DrawingContents contents = fullDrawing();
        contents.versionMagic = magic;
        const QString path = Write(QStringLiteral("Site.dwg"), contents);

        const DrawingReadResult everything = ReadDrawing(path, DrawingReadScope::Everything);
        ASSERT_TRUE(everything.Ok()) << everything.message.toStdString();
        EXPECT_EQ(everything.contents.versionMagic, magic);
        EXPECT_EQ(everything.contents.references, contents.references);
        EXPECT_EQ(everything.contents.preview.code, DrawingPreview::Png);
        EXPECT_EQ(everything.contents.preview.data, contents.preview.data);
        EXPECT_EQ(everything.contents.body, contents.body);
        // Following nested drawings needs the table only.
        const DrawingReadResult references = ReadDrawing(path);
        ASSERT_TRUE(references.Ok());
        EXPECT_EQ(references.contents.references, contents.references);
        EXPECT_TRUE(references.contents.body.isEmpty());
    }
    EXPECT_EQ(DrawingFormat::FileVersion("KV1027"), 1027);
    EXPECT_EQ(DrawingFormat::FileVersion("KV701a"), 701);
    EXPECT_EQ(DrawingFormat::FileVersion("KV999"), 0);
}

TEST_F(DrawingFileTest, panelReadsThePreviewInEitherEncoding)
{
    const QImage source = picture(qRgb(0, 160, 0));
    for (const DrawingPreview& preview :
         {DrawingFormat::PngPreview(source), DrawingFormat::BmpPreview(source)}) {
        DrawingContents contents = fullDrawing();
        contents.preview = preview;
        const QString path = Write(QStringLiteral("Site.dwg"), contents);
        const QImage shown = TroveUI::DibToImage(TroveUI::ExtractDwgThumbnail(path.toStdWString()));
        ASSERT_EQ(shown.size(), source.size()) << int(preview.code);
        EXPECT_EQ(shown.pixel(10, 10), qRgb(0, 160, 0));
        EXPECT_EQ(shown.pixel(3, 2), qRgb(255, 255, 255)) << "rows stored upside down";
    }
    DrawingContents noPreview = fullDrawing();
    noPreview.preview = {};
    const QString path = Write(QStringLiteral("Bare.dwg"), noPreview);
    EXPECT_TRUE(TroveUI::ExtractDwgThumbnail(path.toStdWString()).IsNull());
    EXPECT_TRUE(ReadDrawing(path).Ok());
}

TEST_F(DrawingFileTest, foreignAndDamagedFilesAreRefusedWithTheReason)
{
    const QByteArray good = EncodeDrawing(fullDrawing());
    const auto patched = [&](const std::function<void(QByteArray&)>& change) {
        QByteArray bytes = good;
        change(bytes);
        return bytes;
    };
    const auto tableAt = [&](int offset) { return DrawingFormat::kHeaderBytes + offset; };
    const QByteArray previewAt = good.mid(DrawingLayout::kPreviewSeekerOffset, 4);
    const int preview = int(qFromLittleEndian<std::uint32_t>(previewAt.constData()));
    const QByteArray name = "Grid", path = "Grid.dwg";
    struct Case
    {
        const char* what;
        QByteArray bytes;
        DrawingReadStatus status;
        const char* reason;
    };
    const Case cases[] = {
        {"empty", {}, DrawingReadStatus::NotADrawing, "is not a drawing"},
        {"archive", QByteArray("PK\x03\x04", 4) + QByteArray(80, 'x'),
         DrawingReadStatus::NotADrawing, "is not a drawing"},
        {"cut in header", good.left(40), DrawingReadStatus::Damaged, "ends inside its header"},
        {"other program's drawing", DrawingFileBuilder().AddPng(good.left(10)).Bytes(),
         DrawingReadStatus::Foreign, "did not write"},
        {"newer table", patched([](QByteArray& b) { b[DrawingLayout::kVersionOffset] = 2; }),
         DrawingReadStatus::NewerFormat, "format 2"},
        {"table format 0", patched([](QByteArray& b) { b[DrawingLayout::kVersionOffset] = 0; }),
         DrawingReadStatus::Damaged, "format 0"},
        {"table past the end",
         patched([](QByteArray& b) { putU32(b, DrawingLayout::kTableOffset, 0xFFFFFFF0u); }),
         DrawingReadStatus::Damaged, "reference table lies outside"},
        {"table in the header",
         patched([](QByteArray& b) { putU32(b, DrawingLayout::kTableOffset, 8); }),
         DrawingReadStatus::Damaged, "overlaps the header"},
        {"huge table",
         patched([](QByteArray& b) { putU32(b, DrawingLayout::kTableOffset + 4, 0xFFFFFFFFu); }),
         DrawingReadStatus::Damaged, "claims 4294967295 bytes"},
        {"flipped byte", patched([&](QByteArray& b) { b[tableAt(5)] = char(b[tableAt(5)] ^ 1); }),
         DrawingReadStatus::Damaged, "checksum"},
        {"unknown kind", withTable(table(1, record(9, 0, name, path))), DrawingReadStatus::Damaged,
         "unknown kind (9)"},
        {"unknown flag", withTable(table(1, record(1, 0x80, name, path))),
         DrawingReadStatus::Damaged, "unknown flags"},
        {"image overlay", withTable(table(1, record(2, 1, name, path))), DrawingReadStatus::Damaged,
         "overlay but not a drawing"},
        {"no name", withTable(table(1, record(1, 0, {}, path))), DrawingReadStatus::Damaged,
         "name of reference 1 is 0 bytes"},
        {"name too long", withTable(table(1, record(1, 0, QByteArray(1025, 'n'), path))),
         DrawingReadStatus::Damaged, "1025 bytes"},
        {"not UTF-8", withTable(table(1, record(1, 0, "Gr\xff\xfe", path))),
         DrawingReadStatus::Damaged, "not UTF-8"},
        {"UTF-8 cut short", withTable(table(1, record(1, 0, "\xc2", path))),
         DrawingReadStatus::Damaged, "not UTF-8"},
        {"more counted than held", withTable(table(2, record(1, 0, name, path))),
         DrawingReadStatus::Damaged, "ends inside reference 2"},
        {"bytes left over", withTable(table(1, record(1, 0, name, path) + "zz")),
         DrawingReadStatus::Damaged, "2 bytes are left over"},
        {"table without count", withTable(QByteArray(1, '\0')), DrawingReadStatus::Damaged,
         "too short"},
        {"no sentinel", patched([&](QByteArray& b) { b[preview] = 0; }), DrawingReadStatus::Damaged,
         "no sentinel"},
        {"preview past the end",
         patched([](QByteArray& b) { putU32(b, DrawingLayout::kPreviewSeekerOffset, 0x7FFFFFFF); }),
         DrawingReadStatus::Damaged, "preview block lies outside"},
        {"directory past the end", patched([&](QByteArray& b) { b[preview + 20] = char(255); }),
         DrawingReadStatus::Damaged, "preview directory runs past"},
        {"entry past the end",
         patched([&](QByteArray& b) { putU32(b, preview + 22, 0xFFFFFF00u); }),
         DrawingReadStatus::Damaged, "preview entry 1 lies outside"},
        {"body past the end",
         patched([](QByteArray& b) { putU32(b, DrawingLayout::kBodyOffset + 4, 1u << 28); }),
         DrawingReadStatus::Damaged, "body lies outside"},
    };
    for (const Case& c : cases) {
        // Through a file, to see that reading leaves it exactly as it was.
        const QString file = WriteBytes(QStringLiteral("Site.dwg"), c.bytes);
        const DrawingReadResult result = ReadDrawing(file, DrawingReadScope::Everything);
        EXPECT_EQ(result.status, c.status) << c.what;
        EXPECT_TRUE(result.message.startsWith(QStringLiteral("\"Site.dwg\""))) << c.what;
        EXPECT_TRUE(result.message.contains(QLatin1String(c.reason)))
            << c.what << ": " << result.message.toStdString();
        EXPECT_EQ(Bytes(file), c.bytes) << c.what;
    }
}

TEST_F(DrawingFileTest, everyCutOfADrawingIsRefused)
{
    const QByteArray good = EncodeDrawing(fullDrawing());
    for (qsizetype length = 0; length < good.size(); ++length)
        ASSERT_FALSE(readBytes(good.left(length)).Ok()) << "cut at " << length;
    EXPECT_TRUE(readBytes(good).Ok());
}

TEST_F(DrawingFileTest, whatCannotBeOpenedIsRefused)
{
    const DrawingReadResult missing = ReadDrawing(Path(QStringLiteral("missing.dwg")));
    EXPECT_EQ(missing.status, DrawingReadStatus::CannotOpen);
    EXPECT_TRUE(missing.message.contains(QLatin1String("no such file")));
    EXPECT_EQ(ReadDrawing(m_dir.path()).status, DrawingReadStatus::CannotOpen);

    NamedPipe pipe(Path(QStringLiteral("pipe.dwg")));
    if (pipe.IsValid()) {
        DrawingReadStatus status = DrawingReadStatus::Ok;
        EXPECT_TRUE(pipe.ReturnsWithoutWaiting([&] { status = ReadDrawing(pipe.Path()).status; }));
        EXPECT_EQ(status, DrawingReadStatus::CannotOpen);
    }
}

TEST_F(DrawingFileTest, whatTheFileCannotHoldIsNotSaved)
{
    const auto with = [](const std::function<void(DrawingContents&)>& change) {
        DrawingContents contents = fullDrawing();
        change(contents);
        return contents;
    };
    const std::pair<DrawingContents, const char*> cases[] = {
        {with([](DrawingContents& c) { c.references[0].name.clear(); }), "has no name"},
        {with([](DrawingContents& c) { c.references[0].name = QString(1025, QLatin1Char('n')); }),
         "longer than 1024"},
        {with([](DrawingContents& c) { c.references[0].name = QString(342, QChar(0x20AC)); }),
         "longer than 1024"},
        {with([](DrawingContents& c) { c.references[2].savedPath.clear(); }), "no saved path"},
        {with([](DrawingContents& c) { c.references[1].overlay = true; }), "not a drawing"},
        {with([](DrawingContents& c) { c.references[0].kind = ReferenceKind(0); }), "unknown kind"},
        {with([](DrawingContents& c) { c.versionMagic = "KV9999"; }), "version magic"},
        {with([](DrawingContents& c) { c.versionMagic = "KV1032x"; }), "version magic"},
        {with([](DrawingContents& c) { c.preview.data.clear(); }), "preview is empty"},
    };
    for (const auto& [contents, reason] : cases) {
        const QString path = Path(QStringLiteral("Refused.dwg"));
        const QString fault = SaveDrawing(path, contents);
        EXPECT_TRUE(fault.contains(QLatin1String(reason))) << reason << ": " << fault.toStdString();
        EXPECT_TRUE(EncodeDrawing(contents).isEmpty()) << reason;
        EXPECT_FALSE(QFileInfo::exists(path)) << reason;
    }
    EXPECT_FALSE(
        SaveDrawing(Path(QStringLiteral("no/such/folder/Site.dwg")), fullDrawing()).isEmpty());
}

// A disk that fills up halfway through a save: the kernel refuses writes past a file size
// limit, exactly as it does when a quota runs out.
TEST_F(DrawingFileTest, saveInterruptedMidwayLeavesTheDrawingIntact)
{
    const QString path = Write(QStringLiteral("Site.dwg"), fullDrawing());
    const QByteArray before = Bytes(path);
    DrawingContents bigger = fullDrawing();
    bigger.references.pop_back();
    bigger.body = QByteArray(1024 * 1024, 'g');

    rlimit saved{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = saved;
    limited.rlim_cur = 64 * 1024;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const QString fault = SaveDrawing(path, bigger);
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_TRUE(fault.contains(QLatin1String("left as it was"))) << fault.toStdString();
    EXPECT_EQ(Bytes(path), before);
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("Site.dwg")})
        << "the half-written temporary file stays behind";
    // Once there is room again the same save goes through.
    EXPECT_EQ(SaveDrawing(path, bigger), QString());
    EXPECT_EQ(ReadDrawing(path, DrawingReadScope::Everything).contents.body, bigger.body);
}
