#include "DemoCommands.h"

#include "DemoItems.h"
#include "DocumentRepository.h"
#include "HostPanel.h"
#include "XrefDocument.h"

#include "framework/ZuUiMessageBox.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "panel/MenuItems.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUndoStack>
#include <QUrl>

namespace {

QString nameOf(const DemoItem& item)
{
    return QString::fromStdWString(item.GetText());
}

bool askBulkRepath(CXrefBulkRepathDialog& dialog)
{
    return dialog.exec() == QDialog::Accepted;
}

} // namespace

DemoCommands::DemoCommands(HostPanel& panel, XrefDocument& document, DocumentRepository* repository)
    : AskBulkRepath(askBulkRepath), m_panel(panel), m_document(document), m_repository(repository),
      m_undo(std::make_unique<QUndoStack>())
{}

DemoCommands::~DemoCommands() = default;

void DemoCommands::message(const QString& text)
{
    m_panel.ShowMessage(text);
}

QString DemoCommands::Save()
{
    const QString fault = m_document.Save();
    m_panel.EnableHostModStatus(true, m_document.IsModified());
    if (!fault.isEmpty())
        message(fault);
    emit SaveAttempted();
    return fault;
}

void DemoCommands::finish(const QString& done)
{
    if (Save().isEmpty())
        message(done);
}

// The own reference at table row @p record as the document lists it now: an edit may have
// re-listed the occurrences since the panel was filled.
int DemoCommands::ownOccurrence(int record) const
{
    const std::vector<Occurrence>& occurrences = m_document.Occurrences();
    for (std::size_t i = 0; i < occurrences.size(); ++i)
        if (occurrences[i].parent == 0 && occurrences[i].record == record)
            return int(i);
    return -1;
}

void DemoCommands::Run(int command, const std::vector<DemoItem*>& items)
{
    switch (command) {
    case Trove::Attach:
        return AttachWithDialog(ReferenceKind::Drawing, true);
    case Trove::AttachDWG:
        return AttachWithDialog(ReferenceKind::Drawing, false);
    case Trove::AttachImage:
        return AttachWithDialog(ReferenceKind::RasterImage, false);
    case Trove::AttachDWF:
        return AttachWithDialog(ReferenceKind::DwfUnderlay, false);
    case Trove::AttachDGN:
        return AttachWithDialog(ReferenceKind::DgnUnderlay, false);
    case Trove::AttachPDF:
        return AttachWithDialog(ReferenceKind::PdfUnderlay, false);
    case Trove::AttachPointCloud:
        return AttachWithDialog(ReferenceKind::PointCloud, false);
    case Trove::AttachOrbiskModel:
        return AttachWithDialog(ReferenceKind::CoordinationModel, false);
    case Trove::AttachFromTrove:
        return AttachWithDialog(ReferenceKind::Drawing, true, true);
    case Trove::Refresh:
        m_document.Refresh();
        return message(QStringLiteral("Looked for every file again: %1 references.")
                           .arg(m_document.Occurrences().size() - 1));
    case Trove::ReloadAllXRefs:
        m_document.Refresh();
        return message(QStringLiteral("Reloaded all references."));
    case Trove::HostCommand3:
        if (items.size() == 1)
            open(*items.front());
        return;
    case Trove::HostCommand6:
        return setUnloaded(items, true);
    case Trove::HostCommand7:
        return reload(items);
    case Trove::HostCommand9:
        return detach(items);
    case Trove::HostCommand16:
        if (items.size() == 1 && !items.front()->FoundAt().isEmpty()) {
            QGuiApplication::clipboard()->setText(
                QDir::toNativeSeparators(items.front()->FoundAt()));
            message(QStringLiteral("Copied the path of \"%1\".").arg(nameOf(*items.front())));
        }
        return;
    case Trove::HostCommand25:
        if (items.size() == 1 && !items.front()->FoundAt().isEmpty())
            QDesktopServices::openUrl(
                QUrl::fromLocalFile(QFileInfo(items.front()->FoundAt()).absolutePath()));
        return;
    case Trove::RemovePath:
    case Trove::MakePathRelative:
    case Trove::MakePathAbsolute:
        return changePaths(command, items);
    case Trove::SelectNewPath:
        if (items.size() == 1)
            selectNewPath(*items.front());
        return;
    case Trove::FindAndReplace:
        return BulkRepath(items, CXrefBulkRepathDialog::Mode::FindAndReplace);
    case HostPanel::CheckOut:
    case HostPanel::CheckIn:
    case HostPanel::UndoCheckOut:
    case HostPanel::GetLatest:
        return repositoryCommand(command, items);
    default:
        // The tool-tip menu's close entry and the commands of other hosts need nothing here.
        return;
    }
}

bool DemoCommands::ApplyEdit(const std::vector<DemoItem*>& items, Trove::XrefProperties property,
                             const QString&, const QString& newValue)
{
    if (items.empty())
        return false;
    for (const DemoItem* item : items)
        if (!item->IsOwnReference()) {
            message(QStringLiteral("\"%1\" belongs to another drawing: open that drawing to "
                                   "change it.")
                        .arg(nameOf(*item)));
            return false;
        }
    QString fault;
    switch (property) {
    case Trove::XrefProperties::Name: {
        if (items.size() != 1)
            return false;
        DemoItem& item = *items.front();
        fault = m_document.Rename(ownOccurrence(item.Record()), newValue);
        if (fault.isEmpty())
            item.SetText(newValue.toStdWString());
        break;
    }
    case Trove::XrefProperties::Type: {
        const bool overlay = newValue == OverlayTypeText();
        if (!overlay && newValue != AttachTypeText()) {
            fault = QStringLiteral("A reference is either \"%1\" or \"%2\".")
                        .arg(AttachTypeText(), OverlayTypeText());
            break;
        }
        for (const DemoItem* item : items)
            if (item->Kind() != ReferenceKind::Drawing)
                fault = QStringLiteral("Only drawings can be overlays.");
        for (std::size_t i = 0; fault.isEmpty() && i < items.size(); ++i) {
            fault = m_document.SetOverlay(ownOccurrence(items[i]->Record()), overlay);
            if (fault.isEmpty())
                items[i]->SetType(newValue.toStdWString());
        }
        break;
    }
    case Trove::XrefProperties::SavedPath:
        for (std::size_t i = 0; fault.isEmpty() && i < items.size(); ++i)
            fault = setSavedPath(*items[i], newValue);
        break;
    default:
        fault = QStringLiteral("This value cannot be changed here.");
        break;
    }
    if (!fault.isEmpty()) {
        message(fault);
        return false;
    }
    finish(
        QStringLiteral("Saved the change to \"%1\".").arg(QFileInfo(m_document.Path()).fileName()));
    return true;
}

QString DemoCommands::setSavedPath(DemoItem& item, const QString& savedPath)
{
    return m_document.SetSavedPath(ownOccurrence(item.Record()), savedPath);
}

void DemoCommands::StatusDoubleClicked(DemoItem& item)
{
    const std::vector<Occurrence>& occurrences = m_document.Occurrences();
    const int index = item.OccurrenceIndex();
    if (index < 0 || std::size_t(index) >= occurrences.size())
        return;
    const Occurrence& occurrence = occurrences[std::size_t(index)];
    switch (occurrence.state) {
    case ReferenceState::NeedsReloading:
        return reload({&item});
    case ReferenceState::Unloaded:
        if (item.IsOwnReference())
            return setUnloaded({&item}, false);
        break;
    case ReferenceState::NotFound:
        if (item.IsOwnReference())
            return selectNewPath(item);
        break;
    default:
        break;
    }
    QString text = QStringLiteral("%1: %2").arg(
        nameOf(item), CXrefPanelCtrlItemStatus::ToString(item.GetReferenceStatusText()));
    if (!occurrence.message.isEmpty())
        text += QStringLiteral(" - ") + occurrence.message;
    else if (!item.FoundAt().isEmpty())
        text += QStringLiteral(" - ") + QDir::toNativeSeparators(item.FoundAt());
    message(text);
}

void DemoCommands::Help()
{
    CZuUiMessageBox::Show(
        QStringLiteral(
            "External References\n\n"
            "The list shows every file the drawing references, the tree shows where each is "
            "referenced from. Attach files with the Attach button, look for changed files with "
            "Refresh, and right-click a reference to open, reload, unload, detach or re-path "
            "it. Rename a reference with F2, and change its type or saved path in the Details "
            "pane. Double-click a status to deal with it: reload a changed file, look for a "
            "missing one.\n\n"
            "Every change is saved to the drawing at once."),
        0x40, 0);
}

void DemoCommands::SortChanged(int column, bool ascending)
{
    Q_UNUSED(column)
    Q_UNUSED(ascending)
    // The list keeps its own sort; the window stores it with the settings when it closes.
}

void DemoCommands::reload(const std::vector<DemoItem*>& items)
{
    std::vector<DemoItem*> unloaded;
    for (DemoItem* item : items)
        if (item->IsOwnReference() && item->GetReferenceStatusIcon() == RefStatus::Unloaded)
            unloaded.push_back(item);
    if (!unloaded.empty())
        return setUnloaded(unloaded, false);
    m_document.Refresh();
    message(items.size() == 1 ? QStringLiteral("Reloaded \"%1\".").arg(nameOf(*items.front()))
                              : QStringLiteral("Reloaded %1 references.").arg(items.size()));
}

void DemoCommands::setUnloaded(const std::vector<DemoItem*>& items, bool unloaded)
{
    std::vector<int> records;
    for (const DemoItem* item : items)
        if (item->IsOwnReference())
            records.push_back(item->Record());
    if (records.empty())
        return message(QStringLiteral("Only the drawing's own references can be unloaded."));
    for (const int record : records)
        if (const QString fault = m_document.SetUnloaded(ownOccurrence(record), unloaded);
            !fault.isEmpty())
            return message(fault);
    finish(unloaded ? QStringLiteral("Unloaded %1 references.").arg(records.size())
                    : QStringLiteral("Reloaded %1 references.").arg(records.size()));
}

void DemoCommands::detach(const std::vector<DemoItem*>& items)
{
    std::vector<int> records;
    QStringList names;
    for (const DemoItem* item : items)
        if (item->IsOwnReference()) {
            records.push_back(item->Record());
            names << nameOf(*item);
        }
    if (records.empty())
        return message(QStringLiteral("Only the drawing's own references can be detached."));
    // Later rows first: detaching a row moves the ones after it.
    std::sort(records.rbegin(), records.rend());
    for (const int record : records)
        if (const QString fault = m_document.Detach(ownOccurrence(record)); !fault.isEmpty())
            return message(fault);
    finish(QStringLiteral("Detached %1.").arg(names.join(QStringLiteral(", "))));
}

void DemoCommands::open(const DemoItem& item)
{
    if (item.FoundAt().isEmpty())
        return message(QStringLiteral("\"%1\" was not found.").arg(nameOf(item)));
    if (item.Kind() == ReferenceKind::Drawing)
        emit OpenDrawingRequested(item.FoundAt());
    else
        QDesktopServices::openUrl(QUrl::fromLocalFile(item.FoundAt()));
}
