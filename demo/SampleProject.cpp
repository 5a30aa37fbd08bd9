#include "SampleProject.h"

#include "support/DrawingFileBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QRandomGenerator>

namespace {

constexpr QSize kPreviewSize(256, 180);

QImage blankPreview()
{
    QImage image(kPreviewSize, QImage::Format_RGB32);
    image.fill(QColor(33, 40, 48));
    return image;
}

// The outline of the quay and the sheds: shared by the host drawing and the survey.
void drawQuay(QPainter& p, const QRectF& area, const QColor& line)
{
    p.setPen(QPen(line, 1.5));
    const qreal w = area.width(), h = area.height();
    QPainterPath quay;
    quay.moveTo(area.left() + 0.05 * w, area.top() + 0.85 * h);
    quay.lineTo(area.left() + 0.05 * w, area.top() + 0.25 * h);
    quay.lineTo(area.left() + 0.70 * w, area.top() + 0.25 * h);
    quay.lineTo(area.left() + 0.70 * w, area.top() + 0.55 * h);
    quay.lineTo(area.left() + 0.95 * w, area.top() + 0.55 * h);
    quay.lineTo(area.left() + 0.95 * w, area.top() + 0.85 * h);
    quay.closeSubpath();
    p.drawPath(quay);
    for (int i = 0; i < 4; ++i)
        p.drawRect(
            QRectF(area.left() + (0.09 + 0.15 * i) * w, area.top() + 0.32 * h, 0.12 * w, 0.18 * h));
}

QImage sitePlan()
{
    QImage image = blankPreview();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    drawQuay(p, QRectF(QPointF(0, 0), QSizeF(kPreviewSize)), QColor(230, 230, 230));
    p.setPen(QPen(QColor(80, 170, 255), 1, Qt::DashLine));
    for (int x = 20; x < kPreviewSize.width(); x += 36)
        p.drawLine(x, 10, x, kPreviewSize.height() - 10);
    return image;
}

QImage structuralGrid()
{
    QImage image = blankPreview();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(255, 90, 90), 1, Qt::DashDotLine));
    QFont font = p.font();
    font.setPixelSize(10);
    p.setFont(font);
    for (int i = 0; i < 6; ++i) {
        const int x = 30 + 40 * i;
        p.drawLine(x, 24, x, 170);
        p.drawEllipse(QPoint(x, 14), 8, 8);
        p.drawText(QRect(x - 8, 6, 16, 16), Qt::AlignCenter, QString(QChar(u'A' + i)));
    }
    for (int j = 0; j < 4; ++j) {
        const int y = 40 + 40 * j;
        p.drawLine(24, y, 250, y);
    }
    return image;
}

QImage columns()
{
    QImage image = structuralGrid();
    QPainter p(&image);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(240, 200, 60));
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 4; ++j)
            p.drawRect(26 + 40 * i, 36 + 40 * j, 8, 8);
    return image;
}

QImage aerialPhoto(int width, int height, quint32 seed)
{
    QImage image(width, height, QImage::Format_RGB32);
    QRandomGenerator random(seed);
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const bool water = x + y / 2 > width * 0.7;
            const int noise = int(random.bounded(24u));
            line[x] = water ? qRgb(30 + noise, 80 + noise, 130 + noise)
                            : qRgb(90 + noise, 110 + noise, 70 + noise);
        }
    }
    QPainter p(&image);
    p.setBrush(QColor(170, 170, 165));
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 5; ++i)
        p.drawRect(int(width * (0.08 + 0.12 * i)), int(height * 0.3), width / 12, height / 5);
    return image;
}

QImage quayPhoto()
{
    QImage image(480, 320, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient sky(0, 0, 0, 200);
    sky.setColorAt(0, QColor(120, 170, 225));
    sky.setColorAt(1, QColor(220, 230, 240));
    p.fillRect(0, 0, 480, 200, sky);
    p.fillRect(0, 200, 480, 120, QColor(40, 80, 110));
    p.fillRect(40, 150, 300, 55, QColor(110, 100, 95));
    p.fillRect(360, 110, 20, 95, QColor(200, 70, 40));
    return image;
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Stand-in contents for formats the demo only lists: the right size order, no real structure.
QByteArray filler(int bytes, quint32 seed)
{
    QByteArray data(bytes, Qt::Uninitialized);
    QRandomGenerator random(seed);
    random.fillRange(reinterpret_cast<quint32*>(data.data()), bytes / 4);
    return data;
}

bool writeSurvey(const QString& path)
{
    QPdfWriter pdf(path);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageOrientation(QPageLayout::Landscape);
    pdf.setTitle(QStringLiteral("Quay survey"));
    QPainter p;
    if (!p.begin(&pdf))
        return false;
    const QRectF page(QPointF(0, 0), QSizeF(pdf.width(), pdf.height()));
    p.fillRect(page, Qt::white);
    drawQuay(p,
             page.adjusted(page.width() * 0.05, page.height() * 0.1, -page.width() * 0.05,
                           -page.height() * 0.05),
             QColor(20, 20, 20));
    QFont font = p.font();
    font.setPointSize(18);
    p.setFont(font);
    p.drawText(page.adjusted(page.width() * 0.05, page.height() * 0.02, 0, 0),
               QStringLiteral("Quay survey - levels and outline"));
    return p.end();
}

SampleReference ref(QString name, QString savedPath, QString typeIcon, QString type, int parent,
                    RefStatus::RefIcon status = RefStatus::Blank,
                    Trove::FileDataStatus::Value code = Trove::FileDataStatus::Code1)
{
    SampleReference r;
    r.name = std::move(name);
    r.savedPath = std::move(savedPath);
    r.typeIcon = std::move(typeIcon);
    r.type = std::move(type);
    r.parent = parent;
    r.status = status;
    r.code = code;
    return r;
}

} // namespace

bool SampleProject::Write(const QString& folder)
{
    const QDir root(folder);
    for (const char* sub : {"xrefs", "images", "survey", "underlays", "scans", "bim", "data"})
        if (!root.mkpath(QString::fromLatin1(sub)))
            return false;
    auto at = [&](const QString& relative) { return root.absoluteFilePath(relative); };

    m_hostDrawing = at(QStringLiteral("Harbour site.dwg"));
    // The drawings carry their previews the way the authoring application writes them: the
    // host and the columns as PNG, the grid as an older-style bitmap.
    bool ok = DrawingFileBuilder()
                  .AddHeaderEntry()
                  .AddPng(DrawingFileBuilder::PngBytes(sitePlan()))
                  .PadTo(412'000)
                  .Write(m_hostDrawing) &&
              DrawingFileBuilder()
                  .Magic("KV1027")
                  .AddHeaderEntry()
                  .AddBmp(DrawingFileBuilder::BmpBytes(structuralGrid()))
                  .PadTo(182'272)
                  .Write(at(QStringLiteral("xrefs/Grid.dwg"))) &&
              DrawingFileBuilder()
                  .AddPng(DrawingFileBuilder::PngBytes(columns()))
                  .PadTo(96'512)
                  .Write(at(QStringLiteral("xrefs/Columns.dwg"))) &&
              aerialPhoto(1200, 800, 7).save(at(QStringLiteral("images/aerial-2023.png"))) &&
              quayPhoto().save(at(QStringLiteral("images/quay.jpg")), "JPG", 85) &&
              writeSurvey(at(QStringLiteral("survey/Survey.pdf"))) &&
              writeBytes(at(QStringLiteral("underlays/Landscape.dwf")), filler(655'360, 1)) &&
              writeBytes(at(QStringLiteral("underlays/Bridge.dgn")), filler(1'048'576, 2)) &&
              writeBytes(at(QStringLiteral("scans/quay.e57")), filler(3'145'728, 3)) &&
              writeBytes(at(QStringLiteral("bim/coordination.ifc")),
                         QByteArrayLiteral("ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\nENDSEC;\n"
                                           "END-ISO-10303-21;\n")
                             .repeated(400)) &&
              writeBytes(at(QStringLiteral("data/doors.csv")),
                         QByteArrayLiteral("Mark;Width;Height;Fire rating\nD01;900;2100;EI30\n"
                                           "D02;1000;2100;EI60\n"));
    if (!ok)
        return false;

    using RS = RefStatus::RefIcon;
    namespace FD = Trove::FileDataStatus;
    m_references = {
        ref(QStringLiteral("Grid"), QStringLiteral("./xrefs/Grid.dwg"), {},
            QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Columns"), QStringLiteral("./xrefs/Columns.dwg"), {},
            QStringLiteral("Overlay"), 0, RS::NeedsReloading, FD::Code6),
        ref(QStringLiteral("Grid"), QStringLiteral("./xrefs/Grid.dwg"), {},
            QStringLiteral("Attach"), 1),
        ref(QStringLiteral("Aerial photo"), QStringLiteral("./images/aerial-2023.png"),
            QStringLiteral("IMAGE"), QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Quay photo"), QStringLiteral("./images/quay.jpg"),
            QStringLiteral("IMAGE"), QStringLiteral("Attach"), -1, RS::Unloaded, FD::Code2),
        ref(QStringLiteral("Survey"), QStringLiteral("./survey/Survey.pdf"), QStringLiteral("PDF"),
            QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Landscape"), QStringLiteral("./underlays/Landscape.dwf"),
            QStringLiteral("DWF"), QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Bridge"), QStringLiteral("./underlays/Bridge.dgn"),
            QStringLiteral("DGN"), QStringLiteral("Overlay"), -1, RS::Comparable, FD::Code20),
        ref(QStringLiteral("Quay scan"), QStringLiteral("./scans/quay.e57"),
            QStringLiteral("POINTCLOUD"), QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Coordination"), QStringLiteral("./bim/coordination.ifc"),
            QStringLiteral("MODEL"), QStringLiteral("Attach"), -1, RS::InCompare, FD::Code21),
        ref(QStringLiteral("Door schedule"), QStringLiteral("./data/doors.csv"),
            QStringLiteral("DATALINK"), QStringLiteral("Attach"), -1),
        ref(QStringLiteral("Furniture"), QStringLiteral("./xrefs/Furniture.dwg"), {},
            QStringLiteral("Overlay"), -1, RS::Unresolved, FD::Code3),
        ref(QStringLiteral("Title block A1"), QStringLiteral("../standards/A1 title block.dwg"), {},
            QStringLiteral("Attach"), -1, RS::Unresolved, FD::Code4),
    };
    m_references[2].sameFileAs = 0;
    const unsigned troveStates[] = {2, 3, 2, 1, 1, 4, 0, 2, 1, 1, 0, 0, 0};
    for (std::size_t i = 0; i < m_references.size(); ++i) {
        SampleReference& r = m_references[i];
        r.troveState = troveStates[i];
        const QFileInfo file(root.absoluteFilePath(r.savedPath));
        if (file.exists())
            r.foundAt = file.absoluteFilePath();
    }
    return true;
}
