#include "SampleWriter.h"

#include "DrawingFormat.h"
#include "SamplePictures.h"

#include <QDir>
#include <QRandomGenerator>
#include <QSaveFile>

#include <functional>

namespace {

// The drawings' own data, which the demo does not interpret: filler of a believable size.
QByteArray filler(qint64 bytes, quint32 seed)
{
    QByteArray data(qsizetype(bytes / 4 * 4), Qt::Uninitialized);
    QRandomGenerator random(seed);
    random.fillRange(reinterpret_cast<quint32*>(data.data()), data.size() / 4);
    return data;
}

QString writeBytes(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("\"%1\" cannot be written: %2.").arg(path, file.errorString());
    return {};
}

ReferenceRecord reference(ReferenceKind kind, const char* name, const char* savedPath,
                          bool overlay = false, bool unloaded = false)
{
    return {kind, QString::fromUtf8(name), QString::fromUtf8(savedPath), overlay, unloaded};
}

DrawingContents drawing(QByteArray magic, DrawingPreview preview, qint64 bodyBytes, quint32 seed,
                        std::vector<ReferenceRecord> references = {})
{
    DrawingContents contents;
    contents.versionMagic = std::move(magic);
    contents.preview = std::move(preview);
    contents.body = filler(bodyBytes, seed);
    contents.references = std::move(references);
    return contents;
}

/// One file of the project: where it goes and how it is made.
struct SampleFile
{
    const char* path;
    std::function<QString(const QString&)> write;
};

std::function<QString(const QString&)> saveDrawing(DrawingContents contents)
{
    return [contents = std::move(contents)](const QString& path) {
        return SaveDrawing(path, contents);
    };
}

std::function<QString(const QString&)> saveImage(QImage image, const char* format, int quality)
{
    return [image = std::move(image), format, quality](const QString& path) {
        return image.save(path, format, quality)
                   ? QString()
                   : QStringLiteral("\"%1\" cannot be written.").arg(path);
    };
}

std::function<QString(const QString&)> saveBytes(QByteArray bytes)
{
    return [bytes = std::move(bytes)](const QString& path) { return writeBytes(path, bytes); };
}

std::vector<ReferenceRecord> hostReferences()
{
    using K = ReferenceKind;
    return {
        reference(K::Drawing, "Grid", "./xrefs/Grid.dwg"),
        reference(K::Drawing, "Columns", "./xrefs/Columns.dwg", true),
        reference(K::Drawing, "Building A", "./xrefs/Building A.dwg"),
        reference(K::RasterImage, "Aerial photo", "./images/aerial-2023.png"),
        reference(K::RasterImage, "Quay photo", "./images/quay.jpg", false, true),
        reference(K::PdfUnderlay, "Survey", "./survey/Survey.pdf"),
        reference(K::DwfUnderlay, "Landscape", "./underlays/Landscape.dwf"),
        reference(K::DgnUnderlay, "Bridge", "./underlays/Bridge.dgn"),
        reference(K::PointCloud, "Quay scan", "./scans/quay.e57"),
        reference(K::CoordinationModel, "Coordination", "./bim/coordination.ifc"),
        reference(K::DataLink, "Door schedule", "./data/doors.csv"),
        // Kept in a standards folder beside the project, which this copy does not have.
        reference(K::Drawing, "Title block A1", "../standards/A1 title block.dwg"),
    };
}

} // namespace

QString WriteSampleProject(const QString& folder, QString* error)
{
    auto fail = [error](const QString& reason) {
        if (error)
            *error = reason;
        return QString();
    };
    const QDir root(folder);
    for (const char* sub :
         {"xrefs/levels", "images", "survey", "underlays", "scans", "bim", "data"})
        if (!root.mkpath(QString::fromLatin1(sub)))
            return fail(QStringLiteral("The folder \"%1\" cannot be made.")
                            .arg(root.absoluteFilePath(QString::fromLatin1(sub))));

    using K = ReferenceKind;
    using namespace SamplePictures;
    const SampleFile files[] = {
        {"Harbour site.dwg",
         saveDrawing(drawing("KV1032", DrawingFormat::PngPreview(SitePlan()), 405'000, 10,
                             hostReferences()))},
        // An older drawing, whose preview is a bitmap as its generation wrote them.
        {"xrefs/Grid.dwg",
         saveDrawing(drawing("KV1027", DrawingFormat::BmpPreview(StructuralGrid()), 44'000, 11))},
        {"xrefs/Columns.dwg",
         saveDrawing(drawing("KV1032", DrawingFormat::PngPreview(Columns()), 96'000, 12,
                             {reference(K::Drawing, "Grid", "Grid.dwg")}))},
        // Saved on another system: the separators are backslashes.
        {"xrefs/Building A.dwg",
         saveDrawing(drawing("KV1032", DrawingFormat::PngPreview(Building()), 230'000, 13,
                             {reference(K::Drawing, "Level 1", ".\\levels\\Level 1.dwg")}))},
        {"xrefs/levels/Level 1.dwg",
         saveDrawing(drawing("KV1032", DrawingFormat::PngPreview(FloorPlan()), 158'000, 14,
                             {reference(K::Drawing, "Furniture", "../Furniture.dwg")}))},
        {"xrefs/Furniture.dwg",
         saveDrawing(drawing("KV1024", DrawingFormat::BmpPreview(SamplePictures::Furniture()),
                             61'000, 15))},
        {"images/aerial-2023.png", saveImage(AerialPhoto(1200, 800, 7), "PNG", -1)},
        {"images/quay.jpg", saveImage(QuayPhoto(), "JPG", 85)},
        {"survey/Survey.pdf",
         [](const QString& path) {
             return WriteSurveyPdf(path) ? QString()
                                         : QStringLiteral("\"%1\" cannot be written.").arg(path);
         }},
        {"underlays/Landscape.dwf", saveBytes(filler(655'360, 1))},
        {"underlays/Bridge.dgn", saveBytes(filler(1'048'576, 2))},
        {"scans/quay.e57", saveBytes(filler(3'145'728, 3))},
        {"bim/coordination.ifc",
         saveBytes(QByteArrayLiteral("ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\nENDSEC;\n"
                                     "END-ISO-10303-21;\n")
                       .repeated(400))},
        {"data/doors.csv", saveBytes(QByteArrayLiteral("Mark;Width;Height;Fire rating\n"
                                                       "D01;900;2100;EI30\nD02;1000;2100;EI60\n"))},
    };
    for (const SampleFile& file : files) {
        const QString fault = file.write(root.absoluteFilePath(QString::fromUtf8(file.path)));
        if (!fault.isEmpty())
            return fail(fault);
    }
    return root.absoluteFilePath(QStringLiteral("Harbour site.dwg"));
}
