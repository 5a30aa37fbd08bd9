#include "views/editors/InPlaceComboBoxCtrl.h"

#include "views/editors/InPlaceEditSession_p.h"
#include "views/editors/LabelEditInfo_p.h"

#include "framework/ZuUiTheme.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QPointer>
#include <QStyle>

CInPlaceComboBoxCtrl::CInPlaceComboBoxCtrl(int item, int subItem, const QStringList& choices,
                                           const QString& initialValue)
    : m_item(item), m_subItem(subItem), m_choices(choices), m_initialValue(initialValue),
      m_session(std::make_unique<InPlaceEditSession>(false))
{
    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            &CInPlaceComboBoxCtrl::applyTheme);
    // The system also closes the drop-down without asking the combo box (the window loses the
    // activation, another popup opens); that close-up must end the edit too.
    view()->parentWidget()->installEventFilter(this);
}

CInPlaceComboBoxCtrl::~CInPlaceComboBoxCtrl() = default;

bool CInPlaceComboBoxCtrl::Create(const QRect& rect, QWidget* parent, int controlId)
{
    return InPlaceEditSession::Place(this, rect, parent, controlId, [this] {
        addItems(m_choices);
        // A combo box selects its first entry by itself; here the initial value decides.
        setCurrentIndex(-1);
        ensureSelection();
    });
}

void CInPlaceComboBoxCtrl::showPopup()
{
    m_popupOpen = true;
    // A cell can be narrower than its choices; the list then widens to show them whole.
    const int scrollBar = view()->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn
                              ? style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view())
                              : 0;
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + scrollBar + 2 * view()->frameWidth());
    QComboBox::showPopup();
}

void CInPlaceComboBoxCtrl::hidePopup()
{
    // The combo box also calls this when no list is showing; only a real close-up ends the edit.
    const bool closingUp = m_popupOpen;
    m_popupOpen = false;
    QComboBox::hidePopup();
    if (closingUp)
        closeUpLater();
}

bool CInPlaceComboBoxCtrl::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && m_popupOpen && watched == view()->parentWidget()) {
        m_popupOpen = false;
        closeUpLater();
    }
    return QComboBox::eventFilter(watched, event);
}

void CInPlaceComboBoxCtrl::closeUpLater()
{
    // The combo box closes its list before it takes the entry chosen there (by Enter or a
    // click); the edit ends once the choice is in.
    QMetaObject::invokeMethod(this, &CInPlaceComboBoxCtrl::closeUp, Qt::QueuedConnection);
}

void CInPlaceComboBoxCtrl::closeUp()
{
    if (m_session->HasEnded())
        return;
    if (QWidget* owner = parentWidget())
        owner->setFocus(Qt::OtherFocusReason);
    endEdit();
}

bool CInPlaceComboBoxCtrl::event(QEvent* event)
{
    if (m_session->ClaimShortcut(event))
        return true;
    return QComboBox::event(event);
}

void CInPlaceComboBoxCtrl::keyPressEvent(QKeyEvent* event)
{
    if (m_session->EndingKey(this, event)) {
        endEdit(); // also when the owner could not take the focus
        return;
    }
    QComboBox::keyPressEvent(event);
    event->accept();
}

void CInPlaceComboBoxCtrl::focusInEvent(QFocusEvent* event)
{
    QComboBox::focusInEvent(event);
    if (!ensureSelection() || !m_session->Begin())
        return;
    emit beginLabelEdit(makeRecord(true));
}

void CInPlaceComboBoxCtrl::focusOutEvent(QFocusEvent* event)
{
    QComboBox::focusOutEvent(event);
    // Opening the drop-down moves the focus to the list for a while; the edit goes on.
    if (event->reason() == Qt::PopupFocusReason || m_popupOpen)
        return;
    endEdit();
}

bool CInPlaceComboBoxCtrl::ensureSelection()
{
    if (currentIndex() >= 0)
        return true;
    if (m_initialValue.isEmpty())
        return false;
    // As typing in a drop-down list does: the entry equal to the value, else the first one that
    // starts with it, letter case aside.
    int index = findText(m_initialValue, Qt::MatchFixedString);
    if (index < 0)
        index = findText(m_initialValue, Qt::MatchStartsWith);
    if (index < 0)
        return false;
    setCurrentIndex(index);
    return true;
}

void CInPlaceComboBoxCtrl::endEdit()
{
    if (!m_session->End())
        return;
    QPointer<CInPlaceComboBoxCtrl> self(this);
    // Without a choice there is nothing to report.
    if (currentIndex() >= 0)
        emit endLabelEdit(makeRecord(!m_session->IsCancelled()));
    if (self)
        deleteLater();
}

void CInPlaceComboBoxCtrl::applyTheme()
{
    const QPalette palette = CZuUiTheme::Instance().Palette();
    setPalette(palette);
    // The drop-down is a window of its own, which takes no palette from the combo box.
    view()->parentWidget()->setPalette(palette);
    view()->setPalette(palette);
}

LabelEditInfo CInPlaceComboBoxCtrl::makeRecord(bool withText) const
{
    LabelEditInfo info;
    info.item = m_item;
    info.subItem = m_subItem;
    info.mask = LabelEditInfo::MaskText | LabelEditInfo::MaskParam;
    if (withText)
        info.text = currentText();
    info.param = currentData();
    return info;
}

bool CInPlaceComboBoxCtrl::IsCancelled() const
{
    return m_session->IsCancelled();
}

bool CInPlaceComboBoxCtrl::HasEnded() const
{
    return m_session->HasEnded();
}
