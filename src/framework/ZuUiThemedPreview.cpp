#include "framework/ZuUiThemedPreview.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QPainter>

CZuUiThemedPreview::CZuUiThemedPreview(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            qOverload<>(&QWidget::update));
}

QSize CZuUiThemedPreview::sizeHint() const
{
    return QSize(CZuUiHiDpi::ScaleX(200), CZuUiHiDpi::ScaleY(150));
}

void CZuUiThemedPreview::paintEvent(QPaintEvent*)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.GetColor(CZuUiTheme::Background));
    DrawPreview(painter, rect());
    if (hasFocus()) {
        // Inside the pane's margin, so the frame never covers the picture.
        const int line = std::max(1, CZuUiHiDpi::Round(CZuUiHiDpi::GetMonitorDpiYScale()));
        QPen pen(theme.GetColor(CZuUiTheme::FocusFrame), line, Qt::DotLine);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(rect()).adjusted(line / 2.0 + 1, line / 2.0 + 1, -line / 2.0 - 1,
                                                 -line / 2.0 - 1));
    }
}

void CZuUiThemedPreview::DrawPreview(QPainter&, const QRect&) {}
