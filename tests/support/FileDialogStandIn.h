#pragma once

#include "host/KvUiFolderBrowser.h"
#include "host/KvUiNavDialog.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

/// Stands in for the file dialog and the folder browser while it lives: records what each
/// showed and answers with the chosen paths, or cancels when none are set.
class FileDialogStandIn
{
public:
    struct Shown
    {
        bool folderBrowser = false;
        unsigned flags = 0;
        QString caption;
        QString filter;
        QStringList filterArray;
        QString defaultExtension;
        QString start; ///< initial path of the dialog, start folder of the browser
    };

    FileDialogStandIn();
    ~FileDialogStandIn();
    FileDialogStandIn(const FileDialogStandIn&) = delete;
    FileDialogStandIn& operator=(const FileDialogStandIn&) = delete;

    /// Every following dialog chooses @p paths (a folder browser the first); empty: cancel.
    void Choose(const QStringList& paths) { m_paths = paths; }
    void Cancel() { m_paths.clear(); }
    /// Runs while a dialog is "open", after it has been recorded.
    void WhileOpen(std::function<void()> action) { m_whileOpen = std::move(action); }

    const std::vector<Shown>& ShownDialogs() const { return m_shown; }
    int Count() const { return int(m_shown.size()); }

private:
    CKvUiNavDialog::Handler m_previousDialog;
    CKvUiFolderBrowser::Handler m_previousBrowser;
    QStringList m_paths;
    std::function<void()> m_whileOpen;
    std::vector<Shown> m_shown;
};
