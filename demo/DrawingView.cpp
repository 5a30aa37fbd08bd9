#include "DrawingView.h"

#include "DrawingFormat.h"

#include "framework/PackedDib.h"
#include "framework/ZuUiTheme.h"

#include <QFileInfo>
#include <QPainter>

DrawingView::DrawingView(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void DrawingView::Show(const QString& path, const DrawingContents& contents)
{
    m_title = QFileInfo(path).fileName();
    m_picture = QImage();
    const DrawingPreview& preview = contents.preview;
    if (preview.code == DrawingPreview::Png)
        m_picture = QImage::fromData(preview.data, "PNG");
    else if (preview.code == DrawingPreview::Bmp)
        m_picture = PackedDib(preview.data).ToImage();
    update();
}

void DrawingView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QPalette palette = CZuUiTheme::Instance().Palette();
    // The drawing area stays dark in both themes, as drawing editors keep it.
    p.fillRect(rect(), CZuUiTheme::Instance().IsDarkTheme() ? QColor(0x21, 0x25, 0x2b)
                                                            : QColor(0x3b, 0x44, 0x4b));
    const int margin = 16;
    QFont titleFont = font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    titleFont.setBold(true);
    p.setFont(titleFont);
    p.setPen(QColor(0xe8, 0xec, 0xef));
    const QRect titleRect(margin, margin / 2, width() - 2 * margin, p.fontMetrics().height() + 8);
    p.drawText(titleRect, Qt::AlignLeft | Qt::AlignVCenter,
               m_title.isEmpty() ? QStringLiteral("No drawing open") : m_title);
    const QRect area = rect().adjusted(margin, titleRect.bottom() + margin / 2, -margin, -margin);
    if (m_picture.isNull() || area.width() <= 0 || area.height() <= 0) {
        p.setFont(font());
        p.setPen(palette.color(QPalette::PlaceholderText));
        p.drawText(area, Qt::AlignCenter, QStringLiteral("This drawing has no preview."));
        return;
    }
    QSize size = m_picture.size();
    size.scale(area.size(), Qt::KeepAspectRatio);
    const QRect target(area.topLeft() + QPoint((area.width() - size.width()) / 2,
                                               (area.height() - size.height()) / 2),
                       size);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(target, m_picture);
    p.setPen(QColor(0x6b, 0x76, 0x7e));
    p.drawRect(target.adjusted(0, 0, -1, -1));
}
