#pragma once

#include "kvxreftroveui_export.h"
#include "views/editors/InPlaceEditCtrl.h"

#include <QColor>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class CKvUiFolderBrowser;
class CKvUiNavDialog;
class CZuToolTipCtrl;
class QMimeData;

/// An in-place editor for file or folder paths, with a browse button inside its frame.
///
/// It edits, begins, ends and deletes itself like CInPlaceEditCtrl. Its text holds one or more
/// names separated by ";" (see CInPlaceFilePaths); GetPathNames reads them back as full paths.
/// Pressing and releasing the mouse on the button opens a file dialog (CKvUiNavDialog) or a
/// folder browser (CKvUiFolderBrowser), as the flags say. Files dropped on the editor replace
/// its text.
///
/// Signals to the owner, all sent synchronously:
/// - browseDialogOpening: the dialog is about to show; the owner may adjust it through
///   NavDialog() (null when browsing for a folder) and the editor's flags.
/// - browseDialogClosed: the dialog has closed. Between the two the editor keeps its edit open
///   although it has lost the focus.
/// - textProposed: a browse or a drop proposes a new text (no text: the dialog was cancelled).
///   A handler that sets *refuse to true keeps the text as it is.
class KVXREFTROVEUI_EXPORT CInPlaceFileEditCtrl : public CInPlaceEditCtrl
{
    Q_OBJECT
public:
    /// Behaviour flags. Valid sets: with BrowseFolder, none of BrowseOpen, BrowseSave and
    /// OwnerOption; without it, exactly one of BrowseOpen and BrowseSave. Bits not named here
    /// are kept for the owner.
    enum Flag : unsigned {
        BrowseOpen = 0x0001,    ///< browse for a file to open
        MultipleFiles = 0x0002, ///< several files may be chosen and dropped
        BrowseFolder = 0x0004,  ///< browse for a folder
        ButtonLeft = 0x0010,    ///< the button sits at the left end instead of the right
        ButtonTip = 0x0020,     ///< the button's tool tip reads "Browse"
        TextTip = 0x0040,       ///< the text area's tool tip shows the current text
        KeepShortcuts = 0x0100, ///< shortcut files are taken as they are, not followed
        FlatButton = 0x0400,    ///< a flat button with a single separating line
        BrowseSave = 0x1000,    ///< browse for a file to create
        OwnerOption = 0x2000,   ///< kept for the owner; the editor itself does not read it
    };
    Q_ENUM(Flag)

    /// Where a proposed text comes from.
    enum class Proposal { Browse, Drop };
    Q_ENUM(Proposal)

    /// @p flags must be a valid set; an invalid one leaves BrowseOpen.
    CInPlaceFileEditCtrl(int item, int subItem, const QString& initialText,
                         unsigned flags = BrowseOpen);
    ~CInPlaceFileEditCtrl() override;

    static bool IsValidFlags(unsigned flags);
    unsigned GetFlags() const { return m_flags; }
    /// Returns false and changes nothing when @p flags is not a valid set.
    bool SetFlags(unsigned flags);

    /// The file dialog's caption (default "Browse for File").
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption) { m_caption = caption; }
    /// The file dialog's filter, "description|patterns|...||" (default all files).
    QString Filter() const { return m_filter; }
    void SetFilter(const QString& filter) { m_filter = filter; }
    /// The extension the file dialog adds to a typed name without one (default none).
    QString DefaultExtension() const { return m_defaultExtension; }
    void SetDefaultExtension(const QString& extension) { m_defaultExtension = extension; }

    /// The folder that relative names are taken from (default: the current folder).
    QString Folder() const { return m_folder; }
    void SetFolder(const QString& folder);

    /// The button's face colour on the light theme; an invalid colour (the default) uses the
    /// theme's. The dark theme always uses its own.
    QColor ButtonColor() const { return m_buttonColor; }
    void SetButtonColor(const QColor& color);

    /// Whether the editor deletes itself after its edit ends (default true). An owner that
    /// keeps the editor for later clears it and deletes the editor itself.
    void SetDeletesItself(bool deletes) { setDeletesItself(deletes); }
    bool DeletesItself() const { return deletesItself(); }

    /// The names in the text, wild cards expanded; worked out again only after the text, the
    /// folder or the flags changed.
    const QStringList& GetFiles();
    /// The names in the text as full paths. When browsing for files, a shortcut is replaced by
    /// its target unless KeepShortcuts is set; one that cannot be followed stays as it is.
    QStringList GetPathNames();
    /// One name as GetPathNames gives it.
    QString PathName(const QString& name) const;

    /// The button's rectangle in the editor.
    QRect ButtonRect() const { return m_buttonRect; }
    /// The file dialog, made by the first file browse; null before and in folder mode.
    CKvUiNavDialog* NavDialog() const { return m_navDialog.get(); }
    bool IsBrowsing() const { return m_browsing; }
    /// The tool tips of the button (tool 1) and the text (tool 2); null while neither flag asks
    /// for one.
    CZuToolTipCtrl* ToolTipCtrl() const { return m_toolTip; }

    /// Browses as the flags say; true when the text was replaced.
    bool Browse();

signals:
    void browseDialogOpening();
    void browseDialogClosed();
    void textProposed(CInPlaceFileEditCtrl::Proposal source, const std::optional<QString>& text,
                      bool* refuse);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool endsOnFocusLoss() const override { return !m_browsing; }

private:
    bool isFileMode() const { return !(m_flags & BrowseFolder); }
    void layoutButton();
    void paintButton(QPainter& painter) const;
    void updateToolTips();
    /// The local files of a drag: the first only unless several files may be chosen.
    QStringList droppedFiles(const QMimeData* data) const;
    bool browseForFile();
    bool browseForFolder();
    /// Runs @p show between the opening and closed announcements and sets @p chosen to its
    /// result; false when the editor is gone afterwards.
    bool bracketDialog(const std::function<bool()>& show, bool& chosen);
    bool propose(Proposal source, const std::optional<QString>& text);

    unsigned m_flags = BrowseOpen;
    QString m_caption;
    QString m_filter;
    QString m_defaultExtension;
    QString m_folder;
    QColor m_buttonColor;
    QStringList m_files;
    bool m_filesStale = true;
    // Shared so that a dialog still showing outlives an editor destroyed meanwhile.
    std::shared_ptr<CKvUiNavDialog> m_navDialog;
    std::shared_ptr<CKvUiFolderBrowser> m_folderBrowser;
    QRect m_buttonRect;
    CZuToolTipCtrl* m_toolTip = nullptr;
    bool m_buttonDown = false;    // pressed on the button, mouse not yet released
    bool m_buttonPressed = false; // ... and the mouse is over the button
    bool m_buttonHover = false;
    bool m_browsing = false;
};
