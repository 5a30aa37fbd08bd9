#include "panel/detail/FilterBar.h"

#include "items/FileDataStatus.h"
#include "items/RefStatus.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "views/TroveListModel_p.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolButton>

namespace {

// Status codes of files that need the user: not found, unresolved, needs reloading.
constexpr std::int32_t kProblemCodes[] = {
    Trove::FileDataStatus::Code3, Trove::FileDataStatus::Code4, Trove::FileDataStatus::Code6};

// Long enough to take a burst of keys as one change, short enough not to be noticed.
constexpr int kTypingPauseMs = 120;

bool contains(QStringView haystack, const QString& needle)
{
    return haystack.contains(needle, Qt::CaseInsensitive);
}

} // namespace

bool ReferenceFilter::IsProblem(const CXrefPanelCtrlItem& item)
{
    const std::int32_t code = item.GetReferenceStatusText();
    for (std::int32_t problem : kProblemCodes) {
        if (code == problem)
            return true;
    }
    const RefStatus::RefIcon icon = item.GetReferenceStatusIcon();
    return icon == RefStatus::Unresolved || icon == RefStatus::NeedsReloading;
}

bool ReferenceFilter::Accepts(const CXrefPanelCtrlItem& item, const CTroveListModel* rows) const
{
    if (problemsOnly && !IsProblem(item))
        return false;
    if (text.isEmpty())
        return true;
    const CTroveListRow* row = rows ? rows->Row(item.LVItemIndex()) : nullptr;
    if (row) {
        if (contains(row->name, text) || contains(row->savedPath, text) ||
            contains(rows->CellText(item.LVItemIndex(), Trove::ListViewColumn::Status), text))
            return true;
    } else if (contains(QString::fromStdWString(item.GetText()), text) ||
               contains(QString::fromStdWString(item.GetSavedPath()), text)) {
        return true;
    }
    return !item.GetFoundAt().empty() && contains(QString::fromStdWString(item.GetFoundAt()), text);
}

FilterBar::FilterBar(QWidget* parent)
    : QWidget(parent), m_field(new QLineEdit(this)), m_problems(new QToolButton(this)),
      m_pause(new QTimer(this))
{
    setObjectName(QStringLiteral("filterBar"));
    m_field->setObjectName(QStringLiteral("filterField"));
    m_field->setPlaceholderText(tr("Filter by name, path or status"));
    m_field->setClearButtonEnabled(true);
    m_field->setAccessibleName(tr("Filter references"));
    m_field->installEventFilter(this);
    m_problems->setObjectName(QStringLiteral("problemsOnly"));
    m_problems->setText(tr("Only problems"));
    m_problems->setToolTip(tr("Show only references that are not found, unresolved or need "
                              "reloading"));
    m_problems->setAccessibleName(tr("Only problems"));
    m_problems->setCheckable(true);
    m_problems->setAutoRaise(true);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 2);
    layout->setSpacing(4);
    layout->addWidget(m_field, 1);
    layout->addWidget(m_problems);

    m_pause->setSingleShot(true);
    m_pause->setInterval(kTypingPauseMs);
    connect(m_pause, &QTimer::timeout, this, &FilterBar::FilterChanged);
    connect(m_field, &QLineEdit::textEdited, m_pause, qOverload<>(&QTimer::start));
    // The clear button and programmatic clears change the text without an edit.
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty()) {
            m_pause->stop();
            emit FilterChanged();
        }
    });
    connect(m_problems, &QToolButton::toggled, this, &FilterBar::FilterChanged);
}

ReferenceFilter FilterBar::Filter() const
{
    return {m_field->text().trimmed(), m_problems->isChecked()};
}

void FilterBar::SetFilter(const ReferenceFilter& filter)
{
    const QSignalBlocker fieldBlocker(m_field);
    const QSignalBlocker buttonBlocker(m_problems);
    m_pause->stop();
    m_field->setText(filter.text);
    m_problems->setChecked(filter.problemsOnly);
}

bool FilterBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            m_pause->stop();
            emit FilterChanged();
            return true;
        }
        if (key->key() == Qt::Key_Escape && !m_field->text().isEmpty()) {
            m_field->clear();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
