#pragma once

#include "kvxreftroveui_export.h"

#include <memory>

#include <QLineEdit>

class InPlaceEditSession;
struct LabelEditInfo;

/// A one-line text editor that a view puts over one cell to edit its text in place.
///
/// The owner makes the editor, connects to beginLabelEdit and endLabelEdit, then calls Create
/// with the cell's rectangle. The editor takes the owner's font, shows the text all selected,
/// and takes the focus, which begins the edit. Enter keeps the text, Escape cancels; both give
/// the focus back to the owner, and losing the focus in any way ends the edit. After the end
/// record the editor deletes itself: the owner never deletes it, and should hold it in a
/// QPointer.
///
/// While the user types, the editor widens to show its whole text, up to the right edge of
/// the owner's area. Enter, Escape, Delete and Control combinations stay with the editor even
/// when the host has shortcuts on them.
class KVXREFTROVEUI_EXPORT CInPlaceEditCtrl : public QLineEdit
{
    Q_OBJECT
    Q_MOC_INCLUDE("views/editors/LabelEditInfo_p.h")
public:
    /// @p item and @p subItem name the cell; with a negative @p item the editor edits but sends
    /// no records.
    CInPlaceEditCtrl(int item, int subItem, const QString& initialText);
    ~CInPlaceEditCtrl() override;

    /// Places the editor over @p rect of @p parent, with control id @p controlId, and starts
    /// the edit. Returns false, and deletes the editor later, when there is no parent.
    bool Create(const QRect& rect, QWidget* parent, int controlId);

    int Item() const { return m_item; }
    int SubItem() const { return m_subItem; }
    QString InitialText() const { return m_initialText; }
    /// True after Escape until another character is typed.
    bool IsCancelled() const;
    /// True once the end record has been sent (or would have been, without an owner).
    bool HasEnded() const;

signals:
    /// The edit begins: text mask, the text shown.
    void beginLabelEdit(const LabelEditInfo& info);
    /// The edit ends: text mask, the text, or no text when it was cancelled.
    void endLabelEdit(const LabelEditInfo& info);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    /// The width of the border drawn around the editor, in pixels at the current DPI scale.
    static int borderWidth();
    /// Keeps the text clear of the border and of @p left and @p right extra pixels inside it.
    void setInnerMargins(int left, int right);

    /// False while the edit has to outlive a loss of focus (the file editor's browse dialog).
    virtual bool endsOnFocusLoss() const { return true; }
    /// The part of the editor's width that its text cannot use: frame, inner margins and the
    /// text margins (where the file editor puts its button).
    int chromeWidth() const;
    /// Sends the end record and deletes the editor later, once; later calls do nothing.
    void endEdit();
    /// Whether the editor deletes itself after the end of the edit (default true).
    void setDeletesItself(bool deletes) { m_deletesItself = deletes; }
    bool deletesItself() const { return m_deletesItself; }

private:
    void growToFitText();
    void applyTheme();
    LabelEditInfo makeRecord(bool withText) const;

    int m_item;
    int m_subItem;
    QString m_initialText;
    // The course of the edit, shared by every editor.
    const std::unique_ptr<InPlaceEditSession> m_session;
    bool m_deletesItself = true;
    int m_innerLeft = 0;
    int m_innerRight = 0;
};
