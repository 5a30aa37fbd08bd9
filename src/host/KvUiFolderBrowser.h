#pragma once

#include "kvhostservices_export.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

/// The desktop's folder browser: chooses one folder, starting at a given one. The default
/// browser is a QFileDialog in folder mode; hosts and tests replace the way it is shown with
/// SetHandler.
class KVHOSTSERVICES_EXPORT CKvUiFolderBrowser
{
public:
    /// @p owner is the window the browser is modal to; it may go away while the browser waits.
    explicit CKvUiFolderBrowser(QWidget* owner);

    QWidget* Owner() const { return m_owner; }
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption) { m_caption = caption; }
    /// The folder shown first; when it does not exist the browser starts where it likes.
    QString StartFolder() const { return m_startFolder; }
    void SetStartFolder(const QString& folder) { m_startFolder = folder; }

    /// Shows the browser; true when a folder was chosen.
    bool DoModal();
    /// The chosen folder as a full path; empty before DoModal or after a cancel.
    QString SelectedFolder() const { return m_selected; }
    void SetSelectedFolder(const QString& folder) { m_selected = folder; }

    /// Shows @p browser and returns true with the selected folder set, or false on cancel.
    using Handler = std::function<bool(CKvUiFolderBrowser& browser)>;
    /// Replaces how the browser is shown; an empty handler restores the default. Returns the
    /// previous handler.
    static Handler SetHandler(Handler handler);

private:
    QPointer<QWidget> m_owner;
    QString m_caption;
    QString m_startFolder;
    QString m_selected;
};
