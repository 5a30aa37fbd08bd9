#pragma once

#include "panel/XrefBulkRepathDialog.h"
#include "panel/XrefProperties.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class DemoItem;
class DocumentRepository;
class HostPanel;
class QUndoStack;
class QWidget;
class XrefDocument;
enum class ReferenceKind : std::uint8_t;

/// Everything the panel asks the host to do, done on the open document: attaching, reloading,
/// detaching, re-pathing and renaming references, each change written back to the drawing at
/// once. Dialogs go through the library's replaceable file dialog and message box, and through
/// AskFindAndReplace, so that tests drive every command without a modal loop.
class DemoCommands : public QObject
{
    Q_OBJECT
public:
    DemoCommands(HostPanel& panel, XrefDocument& document, DocumentRepository* repository);
    ~DemoCommands() override;

    /// Runs a command of the tool bar or a context menu (a Trove::MenuItems value or one of
    /// HostPanel's repository commands) for @p items.
    void Run(int command, const std::vector<DemoItem*>& items);
    /// A committed edit of @p property for @p items; false refuses it (the panel rolls back).
    bool ApplyEdit(const std::vector<DemoItem*>& items, Trove::XrefProperties property,
                   const QString& previousValue, const QString& newValue);
    void StatusDoubleClicked(DemoItem& item);
    void Help();
    void SortChanged(int column, bool ascending);

    /// Attaches a file of @p kind chosen in a file dialog (any kind the demo knows when
    /// @p anyKind); in repository mode @p fromRepository starts the dialog there.
    void AttachWithDialog(ReferenceKind kind, bool anyKind, bool fromRepository = false);
    /// Attaches @p path as a reference of @p kind; the reason when it cannot, else empty.
    QString AttachFile(const QString& path, ReferenceKind kind);
    /// Writes the document; the reason when it cannot (shown in the strip too), else empty.
    QString Save();

    /// Writes the report of the panel's reference tree to @p path, as HTML or CSV by its suffix;
    /// the reason when it cannot (shown in the strip too), else empty.
    QString ExportReport(const QString& path);
    /// Asks where to write the report (HTML unless the name chosen ends in .csv), then writes it.
    void ExportReportWithDialog();

    /// One reference's saved path before and after a bulk change, found again by its table
    /// row and name.
    struct PathChange
    {
        int record = -1;
        QString name;
        QString before;
        QString after;
    };
    /// Offers @p items (every own reference of the drawing when empty) in the bulk re-path
    /// dialog, opened in @p mode, and applies what the user accepts as one undoable step.
    void BulkRepath(const std::vector<DemoItem*>& items, CXrefBulkRepathDialog::Mode mode);
    /// Gives every reference of @p changes its path after the change (@p forward) or before it,
    /// in one step, and saves the drawing once; the reason when it cannot, else empty.
    QString ApplySavedPaths(const std::vector<PathChange>& changes, bool forward);
    /// The steps Edit > Undo and Redo take back and do again.
    QUndoStack& UndoStack() const;
    /// Shows the bulk re-path dialog; true when the user accepted its plan. Tests fill the
    /// dialog and answer here instead of a modal loop.
    std::function<bool(CXrefBulkRepathDialog& dialog)> AskBulkRepath;

    /// The kind of reference a file with @p path's suffix makes, by its suffix; Drawing for
    /// names the demo does not know.
    static ReferenceKind KindOfFile(const QString& path);
    /// The file dialog filter for @p kind (every kind when @p anyKind).
    static QString FileFilter(ReferenceKind kind, bool anyKind);

signals:
    /// The user asked to open the drawing at @p path in the main window.
    void OpenDrawingRequested(const QString& path);
    /// The document was written, or writing it failed and it keeps unsaved changes.
    void SaveAttempted();

private:
    /// The occurrence of the own reference at table row @p record, as listed now; -1 for none.
    int ownOccurrence(int record) const;
    QString setSavedPath(DemoItem& item, const QString& savedPath);
    void reload(const std::vector<DemoItem*>& items);
    void setUnloaded(const std::vector<DemoItem*>& items, bool unloaded);
    void detach(const std::vector<DemoItem*>& items);
    void changePaths(int command, const std::vector<DemoItem*>& items);
    void selectNewPath(DemoItem& item);
    void repositoryCommand(int command, const std::vector<DemoItem*>& items);
    void open(const DemoItem& item);
    /// Saves after a change and reports @p done, or the save's fault.
    void finish(const QString& done);
    void message(const QString& text);
    QWidget* dialogParent() const;

    HostPanel& m_panel;
    XrefDocument& m_document;
    DocumentRepository* m_repository;
    std::unique_ptr<QUndoStack> m_undo;
};
