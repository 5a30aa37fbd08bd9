#include "DemoCommands.h"

#include "DemoItems.h"
#include "DocumentRepository.h"
#include "HostPanel.h"
#include "XrefDocument.h"

#include "host/KvUiNavDialog.h"
#include "panel/MenuItems.h"

#include <QDir>
#include <QFileInfo>

// The commands that re-path references and the repository's commands: each works on the own
// references among the selected items and saves the drawing once at the end.

namespace {

QString nameOf(const DemoItem& item)
{
    return QString::fromStdWString(item.GetText());
}

} // namespace

void DemoCommands::changePaths(int command, const std::vector<DemoItem*>& items)
{
    const QDir hostFolder(QFileInfo(m_document.Path()).absolutePath());
    int changed = 0;
    for (DemoItem* item : items) {
        bool removePath = false, makeRelative = false, makeAbsolute = false;
        item->GetPathOperations(removePath, makeRelative, makeAbsolute);
        QString path;
        if (command == Trove::RemovePath && removePath) {
            path = QFileInfo(FileLocator::Normalised(item->SavedPath())).fileName();
        } else if (command == Trove::MakePathRelative && makeRelative) {
            path = hostFolder.relativeFilePath(item->FoundAt());
            if (!path.startsWith(QLatin1String("..")))
                path.prepend(QStringLiteral("./"));
        } else if (command == Trove::MakePathAbsolute && makeAbsolute) {
            path = item->FoundAt();
        } else {
            continue;
        }
        if (const QString fault = setSavedPath(*item, path); !fault.isEmpty())
            return message(fault);
        ++changed;
    }
    if (changed == 0)
        return message(QStringLiteral("No saved path needed changing."));
    finish(QStringLiteral("Changed %1 saved paths.").arg(changed));
}

void DemoCommands::selectNewPath(DemoItem& item)
{
    if (!item.IsOwnReference())
        return message(QStringLiteral("\"%1\" belongs to another drawing.").arg(nameOf(item)));
    CKvUiNavDialog dialog;
    dialog.SetCaption(QStringLiteral("Select New Path for \"%1\"").arg(nameOf(item)));
    dialog.SetFilter(FileFilter(item.Kind(), false));
    dialog.SetInitialPath(item.FoundAt().isEmpty() ? QFileInfo(m_document.Path()).absolutePath()
                                                   : item.FoundAt());
    if (!dialog.DoModal(dialogParent()) || dialog.SelectedPaths().isEmpty())
        return;
    const QString name = nameOf(item);
    if (const QString fault = setSavedPath(item, dialog.SelectedPaths().constFirst());
        !fault.isEmpty())
        return message(fault);
    finish(QStringLiteral("\"%1\" now points at %2.")
               .arg(name, QDir::toNativeSeparators(dialog.SelectedPaths().constFirst())));
}

void DemoCommands::repositoryCommand(int command, const std::vector<DemoItem*>& items)
{
    if (!m_repository || items.size() != 1 || items.front()->FoundAt().isEmpty())
        return;
    const QString path = items.front()->FoundAt();
    QString fault;
    QString done;
    switch (command) {
    case HostPanel::CheckOut:
        fault = m_repository->CheckOut(path);
        done = QStringLiteral("Checked out \"%1\".");
        break;
    case HostPanel::CheckIn:
        fault = m_repository->CheckIn(path);
        done = QStringLiteral("Checked in \"%1\".");
        break;
    case HostPanel::UndoCheckOut:
        fault = m_repository->UndoCheckOut(path);
        done = QStringLiteral("Gave \"%1\" back unchanged.");
        break;
    default:
        fault = m_repository->GetLatest(path);
        done = QStringLiteral("Got the latest version of \"%1\".");
        break;
    }
    m_panel.UpdateRepositoryStates();
    message(fault.isEmpty() ? done.arg(QFileInfo(path).fileName()) : fault);
}
