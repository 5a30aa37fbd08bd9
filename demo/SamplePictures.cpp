#include "SamplePictures.h"

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

} // namespace

namespace SamplePictures {

QImage SitePlan()
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

QImage StructuralGrid()
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

QImage Columns()
{
    QImage image = StructuralGrid();
    QPainter p(&image);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(240, 200, 60));
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 4; ++j)
            p.drawRect(26 + 40 * i, 36 + 40 * j, 8, 8);
    return image;
}

QImage Building()
{
    QImage image = blankPreview();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(230, 230, 230), 1.5));
    p.drawRect(48, 30, 160, 136);
    p.drawLine(30, 166, 226, 166);
    p.setPen(QPen(QColor(120, 200, 140), 1));
    for (int storey = 0; storey < 4; ++storey) {
        const int y = 36 + 34 * storey;
        for (int bay = 0; bay < 5; ++bay)
            p.drawRect(58 + 30 * bay, y, 20, 20);
    }
    return image;
}

QImage FloorPlan()
{
    QImage image = blankPreview();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(230, 230, 230), 3));
    p.drawRect(20, 20, 216, 140);
    p.setPen(QPen(QColor(230, 230, 230), 2));
    p.drawLine(110, 20, 110, 100);
    p.drawLine(20, 100, 236, 100);
    p.drawLine(170, 100, 170, 160);
    // Doors: a leaf and its swing.
    p.setPen(QPen(QColor(255, 170, 80), 1));
    for (const QPoint hinge : {QPoint(80, 100), QPoint(140, 100), QPoint(200, 100)}) {
        p.drawLine(hinge, hinge + QPoint(0, -22));
        p.drawArc(QRect(hinge.x() - 22, hinge.y() - 22, 44, 44), 90 * 16, -90 * 16);
    }
    return image;
}

QImage Furniture()
{
    QImage image = blankPreview();
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(190, 140, 255), 1.2));
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect table(34 + 72 * column, 40 + 70 * row, 44, 24);
            p.drawRect(table);
            for (int side : {-1, 1})
                p.drawEllipse(QPoint(table.center().x(), table.center().y() + side * 22), 7, 7);
        }
    }
    return image;
}

QImage AerialPhoto(int width, int height, quint32 seed)
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

QImage QuayPhoto()
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

bool WriteSurveyPdf(const QString& path)
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

} // namespace SamplePictures
