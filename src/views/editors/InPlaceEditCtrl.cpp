#include "views/editors/InPlaceEditCtrl.h"

#include "views/editors/InPlaceEditSession_p.h"
#include "views/editors/LabelEditInfo_p.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QFocusEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

// Room left beyond the text when the editor widens, so that the caret after the last
// character still shows.
constexpr int kGrowSlack = 5;
// QLineEdit keeps this many pixels between its contents rectangle and the text on either
// side; it does not expose the value.
constexpr int kLineEditInnerMargin = 2;

} // namespace

CInPlaceEditCtrl::CInPlaceEditCtrl(int item, int subItem, const QString& initialText)
    : m_item(item), m_subItem(subItem), m_initialText(initialText),
      m_session(std::make_unique<InPlaceEditSession>(true))
{
    // A plain themed border instead of the style's frame: the style's frame all but vanishes
    // on a dark theme, and an editor over a cell must stand out in both.
    setFrame(false);
    setInnerMargins(0, 0);
    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            &CInPlaceEditCtrl::applyTheme);
    connect(this, &QLineEdit::textEdited, this, &CInPlaceEditCtrl::growToFitText);
}

CInPlaceEditCtrl::~CInPlaceEditCtrl() = default;

bool CInPlaceEditCtrl::Create(const QRect& rect, QWidget* parent, int controlId)
{
    return InPlaceEditSession::Place(this, rect, parent, controlId, [this] {
        setText(m_initialText);
        selectAll();
    });
}

bool CInPlaceEditCtrl::event(QEvent* event)
{
    // Claiming the key before the shortcut map sees it keeps host shortcuts from taking it.
    if (m_session->ClaimShortcut(event))
        return true;
    return QLineEdit::event(event);
}

void CInPlaceEditCtrl::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    const QColor color = theme.GetColor(hasFocus() ? CZuUiTheme::FocusFrame : CZuUiTheme::Border);
    const int border = borderWidth();
    QPainter painter(this);
    const QRect r = rect();
    painter.fillRect(QRect(r.left(), r.top(), r.width(), border), color);
    painter.fillRect(QRect(r.left(), r.bottom() + 1 - border, r.width(), border), color);
    painter.fillRect(QRect(r.left(), r.top(), border, r.height()), color);
    painter.fillRect(QRect(r.right() + 1 - border, r.top(), border, r.height()), color);
}

void CInPlaceEditCtrl::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    // The DPI scale may have changed since the margins were set.
    if (textMargins().top() != borderWidth())
        setInnerMargins(m_innerLeft, m_innerRight);
}

int CInPlaceEditCtrl::borderWidth()
{
    return std::max(1, CZuUiHiDpi::ScaleX(1));
}

void CInPlaceEditCtrl::setInnerMargins(int left, int right)
{
    m_innerLeft = left;
    m_innerRight = right;
    const int border = borderWidth();
    setTextMargins(border + left, border, border + right, border);
}

void CInPlaceEditCtrl::keyPressEvent(QKeyEvent* event)
{
    if (m_session->EndingKey(this, event)) {
        endEdit(); // also when the owner could not take the focus
        return;
    }
    QLineEdit::keyPressEvent(event);
    // Keys the line edit ignores (arrows up and down, page keys) must not move the selection
    // of the view underneath while the edit is open.
    event->accept();
}

void CInPlaceEditCtrl::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    // Focus comes back after the editor's own context menu and after a browse dialog; the edit
    // began only once.
    if (m_item < 0 || !m_session->Begin())
        return;
    emit beginLabelEdit(makeRecord(true));
}

void CInPlaceEditCtrl::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // The line edit's own context menu takes the focus for a moment; that is no end.
    if (event->reason() == Qt::PopupFocusReason || !endsOnFocusLoss())
        return;
    endEdit();
}

int CInPlaceEditCtrl::chromeWidth() const
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const QMargins margins = textMargins();
    return width() - contents.width() + margins.left() + margins.right() + 2 * kLineEditInnerMargin;
}

void CInPlaceEditCtrl::endEdit()
{
    if (!m_session->End())
        return;
    QPointer<CInPlaceEditCtrl> self(this);
    if (m_item >= 0 && parentWidget())
        emit endLabelEdit(makeRecord(!m_session->IsCancelled()));
    if (self && m_deletesItself)
        deleteLater();
}

void CInPlaceEditCtrl::growToFitText()
{
    const QWidget* owner = parentWidget();
    if (!owner)
        return;
    const int needed =
        QFontMetrics(owner->font()).horizontalAdvance(text()) + kGrowSlack + chromeWidth();
    if (needed <= width())
        return;
    // The owner's area is the limit: an editor that reached it scrolls its text instead.
    const int room = owner->rect().right() + 1 - x();
    const int grown = std::min(needed, room);
    if (grown > width())
        resize(grown, height());
}

void CInPlaceEditCtrl::applyTheme()
{
    setPalette(CZuUiTheme::Instance().Palette());
}

LabelEditInfo CInPlaceEditCtrl::makeRecord(bool withText) const
{
    LabelEditInfo info;
    info.item = m_item;
    info.subItem = m_subItem;
    info.mask = LabelEditInfo::MaskText;
    if (withText)
        info.text = text();
    return info;
}

bool CInPlaceEditCtrl::IsCancelled() const
{
    return m_session->IsCancelled();
}

bool CInPlaceEditCtrl::HasEnded() const
{
    return m_session->HasEnded();
}
