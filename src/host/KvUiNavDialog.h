#pragma once

#include "kvhostservices_export.h"

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

/// The host's file navigation dialog: chooses one or several files to open, a file to create,
/// or a folder. Settings are made first, then DoModal shows the dialog. The default dialog is a
/// QFileDialog; a host with a dialog of its own, and every test, replaces the way it is shown
/// with SetHandler, so that no caller ever waits in a modal loop it does not control.
class KVHOSTSERVICES_EXPORT CKvUiNavDialog
{
public:
    /// What the dialog offers. Settings that a QFileDialog cannot honour are kept for a host's
    /// own dialog to read.
    enum Flag : unsigned {
        SaveFile = 0x0001,        ///< choose a file to create instead of files to open
        MultipleFiles = 0x0002,   ///< several files may be chosen (open only)
        Folders = 0x0004,         ///< choose a folder instead of files
        ConfirmReplace = 0x0008,  ///< ask before an existing file is chosen for creating
        HideReadOnly = 0x0010,    ///< no "open read-only" choice
        StrictExtension = 0x0020, ///< a typed name must carry one of the filter's extensions
        AllowUrls = 0x0040,       ///< URLs may be typed; remote files are fetched (FTP too)
        ExtraExtensions = 0x0080, ///< extensions beyond the filter's are accepted
        OkButtonMenu = 0x0100,    ///< the OK button carries a menu of open variants
        PreviewPane = 0x0200,     ///< a preview of the selected file is shown
    };

    CKvUiNavDialog();
    ~CKvUiNavDialog();
    CKvUiNavDialog(const CKvUiNavDialog&) = delete;
    CKvUiNavDialog& operator=(const CKvUiNavDialog&) = delete;

    unsigned Flags() const { return m_flags; }
    void SetFlags(unsigned flags) { m_flags = flags; }
    void SetFlag(Flag flag, bool on)
    {
        m_flags = on ? (m_flags | flag) : (m_flags & ~unsigned(flag));
    }
    bool HasFlag(Flag flag) const { return (m_flags & flag) != 0; }

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption) { m_caption = caption; }

    /// The default extension, without a dot, added to a typed name that has none.
    QString DefaultExtension() const { return m_defaultExtension; }
    void SetDefaultExtension(const QString& extension);

    /// The file type filter as pairs of "description|patterns" separated by "|" and ended by
    /// "||", patterns separated by ";" ("Drawings (*.dwg)|*.dwg|All Files (*.*)|*.*||").
    QString Filter() const { return m_filter; }
    void SetFilter(const QString& filter);
    /// The filter as a list of Qt name filters, one per pair: "Drawings (*.dwg)". A "*.*"
    /// pattern becomes "*" because here, unlike on Windows, names without a dot exist.
    QStringList FilterArray() const { return m_filterArray; }

    /// Where the dialog starts: a folder, or a file whose folder is shown and whose name is
    /// proposed.
    QString InitialPath() const { return m_initialPath; }
    void SetInitialPath(const QString& path) { m_initialPath = path; }

    /// Shows the dialog; true when the user confirmed a choice.
    bool DoModal(QWidget* parent);

    /// The chosen files or folder, as full paths; empty before DoModal or after a cancel.
    QStringList SelectedPaths() const { return m_selected; }
    void SetSelectedPaths(const QStringList& paths) { m_selected = paths; }

    /// Shows @p dialog for @p parent and returns true with the dialog's selected paths set, or
    /// false when it was cancelled.
    using Handler = std::function<bool(CKvUiNavDialog& dialog, QWidget* parent)>;
    /// Replaces how the dialog is shown; an empty handler restores the QFileDialog. Returns the
    /// previous handler.
    static Handler SetHandler(Handler handler);

private:
    bool runFileDialog(QWidget* parent);

    unsigned m_flags = HideReadOnly;
    QString m_caption;
    QString m_defaultExtension;
    QString m_filter;
    QStringList m_filterArray;
    QString m_initialPath;
    QStringList m_selected;
};
