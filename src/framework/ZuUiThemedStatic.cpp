#include "framework/ZuUiThemedStatic.h"

#include "framework/ZuUiTheme.h"

#include <QPainter>

CZuUiThemedStatic::CZuUiThemedStatic(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            qOverload<>(&QWidget::update));
}

void CZuUiThemedStatic::SetWindowText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    updateToolTip();
    update();
}

QSize CZuUiThemedStatic::sizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(m_text) + 8, fontMetrics().height() + 6);
}

QSize CZuUiThemedStatic::minimumSizeHint() const
{
    return QSize(0, fontMetrics().height());
}

void CZuUiThemedStatic::paintEvent(QPaintEvent*)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.GetColor(CZuUiTheme::Background));
    painter.setPen(isEnabled() ? theme.GetColor(CZuUiTheme::Text)
                               : theme.GetColor(CZuUiTheme::DisabledText));
    const QRect area = rect().adjusted(2, 0, -2, 0);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, area.width()));
}

void CZuUiThemedStatic::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateToolTip();
}

void CZuUiThemedStatic::updateToolTip()
{
    // Only a cut text needs its tool tip.
    const bool elided = fontMetrics().horizontalAdvance(m_text) > width() - 4;
    setToolTip(elided ? m_text : QString());
}
