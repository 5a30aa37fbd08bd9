#include "DemoCommands.h"

#include "DemoItems.h"
#include "HostPanel.h"
#include "XrefDocument.h"

#include <QFileInfo>
#include <QHash>
#include <QUndoCommand>
#include <QUndoStack>

// Changing many saved paths at once, and taking the change back: each accepted plan is one step
// on the undo stack, applied to the document in one go and saved once.

namespace {

class SavedPathsCommand : public QUndoCommand
{
public:
    SavedPathsCommand(DemoCommands& commands, std::vector<DemoCommands::PathChange> changes)
        : m_commands(commands), m_changes(std::move(changes))
    {
        setText(m_changes.size() == 1
                    ? QStringLiteral("Change the saved path of \"%1\"").arg(m_changes.front().name)
                    : QStringLiteral("Change %1 saved paths").arg(m_changes.size()));
    }

    void redo() override
    {
        // A first application that fails leaves nothing to undo.
        if (!m_commands.ApplySavedPaths(m_changes, true).isEmpty() && !m_done)
            setObsolete(true);
        m_done = true;
    }
    void undo() override { m_commands.ApplySavedPaths(m_changes, false); }

private:
    DemoCommands& m_commands;
    std::vector<DemoCommands::PathChange> m_changes;
    bool m_done = false;
};

} // namespace

void DemoCommands::BulkRepath(const std::vector<DemoItem*>& items, CXrefBulkRepathDialog::Mode mode)
{
    std::vector<DemoItem*> candidates = items;
    if (candidates.empty())
        for (std::size_t i = 0; i < m_document.Occurrences().size(); ++i)
            if (DemoItem* item = m_panel.ItemOf(int(i)))
                candidates.push_back(item);
    // Where each offered reference sits in the drawing, taken now: the dialog's plan names
    // items, and the panel may be refilled before the plan is applied.
    std::vector<CXrefPanelCtrlItem*> offered;
    QHash<const CXrefPanelCtrlItem*, std::pair<int, QString>> records;
    for (DemoItem* item : candidates) {
        if (!item->IsOwnReference() || records.contains(item))
            continue;
        offered.push_back(item);
        records.insert(item, {item->Record(), QString::fromStdWString(item->GetText())});
    }
    if (offered.empty())
        return message(QStringLiteral("None of these references belongs to the open drawing."));

    CXrefBulkRepathDialog dialog(offered, QFileInfo(m_document.Path()).absolutePath(),
                                 dialogParent());
    dialog.SetMode(mode);
    if (!AskBulkRepath || !AskBulkRepath(dialog))
        return;
    std::vector<PathChange> changes;
    for (const CXrefRepathPlan::Entry& entry : dialog.Plan()) {
        const auto found = records.constFind(entry.item);
        if (found != records.constEnd())
            changes.push_back({found->first, found->second, entry.oldPath, entry.newPath});
    }
    if (changes.empty())
        return message(QStringLiteral("No saved path needed changing."));
    m_undo->push(new SavedPathsCommand(*this, std::move(changes)));
}

QString DemoCommands::ApplySavedPaths(const std::vector<PathChange>& changes, bool forward)
{
    std::vector<std::pair<int, QString>> paths;
    paths.reserve(changes.size());
    for (const PathChange& change : changes) {
        const int occurrence = ownOccurrence(change.record);
        // Rows move when references are detached: the name tells whether this is still the one.
        if (occurrence < 0 ||
            m_document.Occurrences()[std::size_t(occurrence)].reference.name != change.name) {
            const QString fault =
                QStringLiteral("\"%1\" is no longer where it was; its path stays as it is.")
                    .arg(change.name);
            message(fault);
            return fault;
        }
        paths.emplace_back(occurrence, forward ? change.after : change.before);
    }
    if (const QString fault = m_document.SetSavedPaths(paths); !fault.isEmpty()) {
        message(fault);
        return fault;
    }
    finish(forward ? QStringLiteral("Changed %1 saved paths.").arg(changes.size())
                   : QStringLiteral("Restored %1 saved paths.").arg(changes.size()));
    return {};
}

QUndoStack& DemoCommands::UndoStack() const
{
    return *m_undo;
}
