#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiThemedListCtrl.h"
#include "panel/XrefProperties.h"

#include <QCursor>
#include <QPointer>

#include <map>
#include <string>
#include <vector>

class CInPlaceFileEditCtrl;
class CXrefProperty;
class CZuToolTipCtrl;
struct LabelEditInfo;

/// The details pane: one row of name and value per property of the selected reference. The
/// rows show CXrefProperty objects that the panel owns and keeps alive while they are shown.
///
/// A single left press in the value column of an editable row opens the editor the property's
/// edit style names (text, path with a browse button, or a drop-down of the reference types)
/// over the cell. The edit is reported by three signals, emitted synchronously, whose first
/// argument is the *row* of the edited property: the panel hands in the rows in property order
/// and reads the row as the property. When an edit ends with a text, the list has already
/// written it into the cell and into the property; the panel may write the old value back.
///
/// The divider between the two columns is dragged inside the list; it stays 30
/// device-independent pixels clear of either edge. Values too long for their column show the
/// whole "name:\nvalue" as a tip. Values the user may not edit are drawn in the theme's
/// read-only colour.
class KVXREFTROVEUI_EXPORT CXrefPropListCtrl : public CZuUiThemedListCtrl
{
    Q_OBJECT
public:
    using XrefProperties = Trove::XrefProperties;

    /// The property value that stands for every property in SetEditable.
    static constexpr int kAllProperties = 30;
    /// Control ids of the three editors.
    enum EditorId { FileEditorId = 40000, TextEditorId = 40001, ComboEditorId = 40002 };
    /// Options of the path editor: browse for a file to open, flat button.
    static constexpr unsigned kFileEditorFlags = 0x401;
    /// The path editor's browse button colour on the light theme.
    static constexpr unsigned kFileButtonColor = 0xEFEFEF;
    /// Editor options the list adds while the browse dialog opens: the first always, the second
    /// when the panel's browse-options flag is set.
    static constexpr unsigned kBrowseOwnerFlag = 0x2000;
    static constexpr unsigned kBrowseOptionsFlag = 0x4000;

    explicit CXrefPropListCtrl(QWidget* parent = nullptr);
    ~CXrefPropListCtrl() override;

    /// Shows one row per non-null entry, in vector order, and makes every property editable
    /// again. The properties must stay alive while they are shown (until the next call).
    void SetProperties(const std::vector<CXrefProperty*>& properties);
    /// Writes @p value into the row of @p property; nothing when no row shows it.
    void SetPropertyValue(XrefProperties property, const std::wstring& value);
    /// Allows or forbids editing @p property, or every property with kAllProperties.
    void SetEditable(XrefProperties property, bool editable);
    /// Editable: below 30, allowed by SetEditable, and with an edit style.
    bool IsEditable(const CXrefProperty& property) const;
    /// The row that shows @p property, or -1.
    int RowOf(XrefProperties property) const;
    /// The property shown in @p row, or null.
    CXrefProperty* PropertyAt(int row) const;

    /// How the path editor's browse dialog is set up: its filter ("description|patterns|...||"),
    /// the extension added to names typed without one, its caption, whether it shows a preview,
    /// and whether the list adds kBrowseOptionsFlag to the editor's options.
    void SetBrowseSettings(const QString& filter, const QString& defaultExtension,
                           const QString& caption, bool previewPresent, bool browseOptions);

    /// The columns' widths when the list is made, in device-independent pixels. The list
    /// ignores sizes narrower than their sum.
    static int DefaultNameColumnDipWidth();
    static int DefaultValueColumnDipWidth();
    /// The row height the list's font asks for: its line height with leading, times 1.35.
    static int RowHeightFor(const QFont& font);

    /// The row and column of the current edit: column 1 while a value is edited, 2 while the
    /// path editor's browse dialog is open, 0 otherwise.
    int EditRow() const { return m_editRow; }
    int EditColumn() const { return m_editColumn; }
    bool IsEditorOpen() const { return m_editorOpen; }
    /// The editor of the last edit, hidden once that edit ended; null when none is left.
    QWidget* Editor() const { return m_editor; }
    bool IsDraggingDivider() const { return m_dragging; }
    /// The cursor shown over the column divider.
    const QCursor& DividerCursor() const { return m_splitCursor; }
    CZuToolTipCtrl& ToolTipCtrl() const { return *m_toolTip; }

signals:
    void PropertyEditStarting(Trove::XrefProperties row, const std::wstring& textBefore);
    void PropertyEdited(Trove::XrefProperties row, const std::wstring& textBefore,
                        const std::wstring& newText);
    void PropertyEditAborted(Trove::XrefProperties row);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// F2 or Enter edits the current row's value, as a click on it would.
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    QColor cellTextColor(int row, int column, bool selected) const override;

private:
    bool onDivider(int x) const;
    /// The pointer went onto the divider or off it: cursor and focus follow.
    void setOverDivider(bool over);
    /// Opens the editor of @p row's property over its value cell; false when none opened.
    bool openEditor(int row);
    /// The value cell of @p row as the editor covers it, scrolling it into view sideways.
    QRect editorRect(int row);
    void destroyEditor();
    void onBeginLabelEdit(const LabelEditInfo& info);
    void onEndLabelEdit(const LabelEditInfo& info);
    void onBrowseOpening(CInPlaceFileEditCtrl* editor);
    void onBrowseClosed();
    void stretchValueColumn();
    void updateToolTip(QMouseEvent* event);
    void loadSplitCursor();
    void callHostOnce();

    std::map<XrefProperties, int> m_rows;
    std::map<XrefProperties, bool> m_editable;

    int m_editRow = -1;
    int m_editColumn = 0;
    std::wstring m_textBefore;
    // Editors delete themselves when their edit ends (the path editor is told not to); the
    // pointer goes null then, so the list never reaches a freed editor.
    QPointer<QWidget> m_editor;
    bool m_editorOpen = false;
    bool m_editorIsCombo = false;

    QString m_browseFilter;
    QString m_browseDefaultExtension;
    QString m_browseCaption;
    bool m_browsePreview = false;
    bool m_browseOptions = false;

    bool m_dragging = false;
    int m_lastX = 0;
    QCursor m_splitCursor;
    bool m_overDivider = false;

    CZuToolTipCtrl* m_toolTip;
    bool m_hostCalled = false;
};
