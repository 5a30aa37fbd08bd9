#pragma once

#include "kvxreftroveui_export.h"

#include "panel/XrefRepathPlan.h"

#include <QDialog>

#include <memory>
#include <vector>

class CXrefBulkRepathDialogPrivate;
class CXrefPanelCtrlItem;
class QTableView;

/// Changes the saved paths of many references in one go, showing every change before it is
/// made: find and replace in the paths (plain text, optionally matching case), or a new folder
/// for all of them (each keeps its file name). The preview table lists each reference's old
/// path, its new path and whether a file is there; the files are looked for on a worker thread,
/// in batches, so a long list or a slow share never freezes the window.
///
/// The dialog changes nothing: after exec() returns Accepted, Plan() holds the changes, and the
/// host applies them (all at once, so that one undo takes them back).
class KVXREFTROVEUI_EXPORT CXrefBulkRepathDialog : public QDialog
{
    Q_OBJECT
public:
    enum class Mode { FindAndReplace, NewFolder };

    /// Offers @p items (an item listed twice counts once); @p baseFolder is where relative paths
    /// start from when the files are looked for (the host drawing's folder).
    CXrefBulkRepathDialog(const std::vector<CXrefPanelCtrlItem*>& items, const QString& baseFolder,
                          QWidget* parent = nullptr);
    ~CXrefBulkRepathDialog() override;

    // What the user can set, also for a host that fills the dialog in advance.
    void SetMode(Mode mode);
    Mode GetMode() const;
    void SetFindText(const QString& text);
    void SetReplaceText(const QString& text);
    /// Default false: "images" also finds "Images".
    void SetMatchCase(bool matchCase);
    void SetFolder(const QString& folder);

    /// The changes as they stand: only references whose path changes.
    const std::vector<CXrefRepathPlan::Entry>& Plan() const;
    /// True while files are still being looked for.
    bool IsChecking() const;
    /// The preview table, for hosts that style it and for tests.
    QTableView* PreviewTable() const;

signals:
    /// The plan changed (a new text, case choice or folder): the preview is new, the files are
    /// being looked for again.
    void PlanChanged();
    /// Every file of the current plan has been looked for.
    void CheckFinished();

private:
    friend class CXrefBulkRepathDialogPrivate;
    std::unique_ptr<CXrefBulkRepathDialogPrivate> const d;
};
