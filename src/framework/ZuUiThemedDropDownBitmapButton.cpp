#include "framework/ZuUiThemedDropDownBitmapButton.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>

#include <algorithm>

CZuUiThemedDropDownBitmapButton::CZuUiThemedDropDownBitmapButton(QWidget* parent)
    : CZuUiBitmapButton(parent)
{}

CZuUiThemedDropDownBitmapButton::~CZuUiThemedDropDownBitmapButton() = default;

void CZuUiThemedDropDownBitmapButton::SetArrowWidth(int width)
{
    m_arrowWidth = std::max(0, width);
    updateGeometry();
    update();
}

QRect CZuUiThemedDropDownBitmapButton::ArrowRect() const
{
    const int width = std::min(m_arrowWidth, this->width());
    if (width <= 0)
        return {};
    return QRect(this->width() - width, 0, width, height());
}

QRect CZuUiThemedDropDownBitmapButton::ImageRect() const
{
    return QRect(0, 0, std::max(0, width() - ArrowRect().width()), height());
}

QSize CZuUiThemedDropDownBitmapButton::sizeHint() const
{
    return CZuUiBitmapButton::sizeHint() + QSize(m_arrowWidth, 0);
}

void CZuUiThemedDropDownBitmapButton::ShowDropDown()
{
    emit dropDownRequested();
}

void CZuUiThemedDropDownBitmapButton::SetDropDownShowing(bool showing)
{
    if (m_dropDownShowing == showing)
        return;
    m_dropDownShowing = showing;
    // Painted at once: a menu loop may run before the next paint event would.
    repaint();
}

void CZuUiThemedDropDownBitmapButton::DropDownNow()
{
    QPointer<CZuUiThemedDropDownBitmapButton> alive(this);
    SetDropDownShowing(true);
    ShowDropDown();
    if (!alive)
        return;
    SetDropDownShowing(false);
    // The press that opened the drop-down is spent; its release must not click.
    setDown(false);
}

void CZuUiThemedDropDownBitmapButton::mousePressEvent(QMouseEvent* event)
{
    const bool left = event->button() == Qt::LeftButton;
    if (left)
        m_menuButtonSelected = ArrowRect().contains(event->position().toPoint());
    QPointer<CZuUiThemedDropDownBitmapButton> alive(this);
    CZuUiBitmapButton::mousePressEvent(event);
    if (alive && left && m_menuButtonSelected && isEnabled())
        DropDownNow();
}

void CZuUiThemedDropDownBitmapButton::keyPressEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool opens = (key == Qt::Key_Down && modifiers == Qt::AltModifier) ||
                       (key == Qt::Key_F4 && modifiers == Qt::NoModifier) ||
                       (key == Qt::Key_Menu && modifiers == Qt::NoModifier);
    if (!opens || !isEnabled()) {
        CZuUiBitmapButton::keyPressEvent(event);
        return;
    }
    event->accept();
    DropDownNow();
}

bool CZuUiThemedDropDownBitmapButton::ImagePartPressed() const
{
    return isDown() && !m_menuButtonSelected;
}

void CZuUiThemedDropDownBitmapButton::PaintParts(QPainter& painter)
{
    CZuUiBitmapButton::PaintParts(painter);
    const QRect arrow = ArrowRect();
    if (arrow.isEmpty())
        return;
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    const bool enabled = isEnabled();
    const bool pressed = enabled && (m_dropDownShowing || (isDown() && m_menuButtonSelected));
    const bool hot = IsHot();
    PaintFace(painter, arrow, pressed, hot);

    // The divider only shows while the button is lit, as on flat tool bars.
    if (hot || pressed) {
        const int inset = CZuUiHiDpi::ScaleY(3);
        painter.setPen(theme.GetColor(CZuUiTheme::Border));
        painter.drawLine(arrow.left(), arrow.top() + inset, arrow.left(), arrow.bottom() - inset);
    }

    // A small solid triangle pointing down, centred in the arrow part.
    const qreal half = std::min(CZuUiHiDpi::ScaleX(7), arrow.width() - 2) / 2.0;
    if (half <= 0)
        return;
    const QPointF centre = QRectF(arrow).center() + QPointF(0.5, 0);
    QPainterPath triangle;
    triangle.moveTo(centre.x() - half, centre.y() - half / 2);
    triangle.lineTo(centre.x() + half, centre.y() - half / 2);
    triangle.lineTo(centre.x(), centre.y() + half / 2);
    triangle.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.GetColor(enabled ? CZuUiTheme::Text : CZuUiTheme::DisabledText));
    painter.drawPath(triangle);
    painter.restore();
}
