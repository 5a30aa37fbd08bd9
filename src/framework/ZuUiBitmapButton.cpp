#include "framework/ZuUiBitmapButton.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "util/ResourceModule.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

CZuUiBitmapButton::CZuUiBitmapButton(QWidget* parent) : QToolButton(parent)
{
    // A tab stop that a click does not take focus to, like a flat tool bar button.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            &CZuUiBitmapButton::reloadForTheme);
}

CZuUiBitmapButton::~CZuUiBitmapButton() = default;

void CZuUiBitmapButton::SetWindowText(const QString& text)
{
    m_windowText = text;
}

bool CZuUiBitmapButton::AutoLoad()
{
    const int bar = m_windowText.indexOf(QLatin1Char('|'));
    const QString key = bar < 0 ? m_windowText : m_windowText.left(bar);
    setText(bar < 0 ? QString() : m_windowText.mid(bar + 1));
    if (LoadBitmap(key))
        return true;
    m_bitmapId = CZuUiRmId();
    m_bitmap = QIcon();
    update();
    return false;
}

bool CZuUiBitmapButton::LoadBitmap(const QString& key)
{
    if (key.isEmpty())
        return false;
    CZuUiRmId id(Util::CurrentResourceModule(), key);
    QIcon bitmap = CZuUiRm::ThemedBitmap(id);
    if (bitmap.isNull())
        return false;
    m_bitmapId = std::move(id);
    m_bitmap = std::move(bitmap);
    update();
    return true;
}

void CZuUiBitmapButton::SetImageBorder(int dip)
{
    m_imageBorder = std::max(0, dip);
    update();
}

QSize CZuUiBitmapButton::sizeHint() const
{
    const int side = CZuUiHiDpi::ScaleX(24);
    return QSize(side, side);
}

QRect CZuUiBitmapButton::ImageRect() const
{
    return rect();
}

void CZuUiBitmapButton::PaintFace(QPainter& painter, const QRect& area, bool pressed,
                                  bool hover) const
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    if (!pressed && !hover)
        return;
    painter.fillRect(area,
                     theme.GetColor(pressed ? CZuUiTheme::ButtonPressed : CZuUiTheme::ButtonHover));
    painter.setPen(theme.GetColor(pressed ? CZuUiTheme::Accent : CZuUiTheme::Border));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(0, 0, -1, -1));
}

void CZuUiBitmapButton::paintEvent(QPaintEvent*)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.GetColor(CZuUiTheme::Background));
    PaintParts(painter);
    if (ShowsFocusCue()) {
        // Filled strips rather than a pen: crisp at every scale, one scaled pixel in from the edge.
        const int width = std::max(1, CZuUiHiDpi::ScaleX(1));
        const QRect frame = rect().adjusted(width, width, -width, -width);
        const QColor colour = theme.GetColor(CZuUiTheme::FocusFrame);
        painter.fillRect(QRect(frame.left(), frame.top(), frame.width(), width), colour);
        painter.fillRect(QRect(frame.left(), frame.bottom() - width + 1, frame.width(), width),
                         colour);
        painter.fillRect(QRect(frame.left(), frame.top(), width, frame.height()), colour);
        painter.fillRect(QRect(frame.right() - width + 1, frame.top(), width, frame.height()),
                         colour);
    }
}

void CZuUiBitmapButton::PaintParts(QPainter& painter)
{
    const bool enabled = isEnabled();
    const QRect image = ImageRect();
    PaintFace(painter, image, enabled && ImagePartPressed(), IsHot());

    const int border = CZuUiHiDpi::ScaleX(m_imageBorder);
    const QRect inner = image.adjusted(border, border, -border, -border);
    if (!m_bitmap.isNull() && inner.isValid()) {
        const int side = std::min(inner.width(), inner.height());
        QRect picture(0, 0, side, side);
        picture.moveCenter(inner.center());
        m_bitmap.paint(&painter, picture, Qt::AlignCenter,
                       enabled ? QIcon::Normal : QIcon::Disabled);
    } else if (!text().isEmpty()) {
        // Without its picture the button still says what it does.
        const CZuUiTheme& theme = CZuUiTheme::Instance();
        painter.setPen(theme.GetColor(enabled ? CZuUiTheme::Text : CZuUiTheme::DisabledText));
        painter.drawText(image, Qt::AlignCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideRight, image.width()));
    }
}

void CZuUiBitmapButton::keyPressEvent(QKeyEvent* event)
{
    // Once the keyboard is in use the focus frame shows, as it does for any keyboard user.
    if (!m_keyboardFocus) {
        m_keyboardFocus = true;
        update();
    }
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (isEnabled())
            click();
        event->accept();
        return;
    }
    QToolButton::keyPressEvent(event);
}

void CZuUiBitmapButton::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    m_keyboardFocus = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                      reason == Qt::ShortcutFocusReason;
    QToolButton::focusInEvent(event);
    update();
}

void CZuUiBitmapButton::focusOutEvent(QFocusEvent* event)
{
    QToolButton::focusOutEvent(event);
    update();
}

bool CZuUiBitmapButton::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::EnabledChange:
        update();
        break;
    default:
        break;
    }
    return QToolButton::event(event);
}

void CZuUiBitmapButton::reloadForTheme()
{
    if (m_bitmapId.IsNull())
        return;
    QIcon bitmap = CZuUiRm::ThemedBitmap(m_bitmapId);
    if (!bitmap.isNull())
        m_bitmap = std::move(bitmap);
    update();
}
