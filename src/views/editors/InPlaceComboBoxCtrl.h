#pragma once

#include "kvxreftroveui_export.h"

#include <memory>

#include <QComboBox>
#include <QStringList>

class InPlaceEditSession;
struct LabelEditInfo;

/// A drop-down list that a view puts over one cell to choose its value from fixed choices.
///
/// Made like CInPlaceEditCtrl: construct, connect to beginLabelEdit and endLabelEdit, then
/// Create over the cell. The choices appear in the given order. When the edit begins the
/// choice matching the initial value is selected; the records carry the chosen text and, as
/// param, the chosen entry's item data. Closing the drop-down, Enter, Escape (cancel) and any
/// loss of focus end the edit; the editor then deletes itself.
class KVXREFTROVEUI_EXPORT CInPlaceComboBoxCtrl : public QComboBox
{
    Q_OBJECT
    Q_MOC_INCLUDE("views/editors/LabelEditInfo_p.h")
public:
    CInPlaceComboBoxCtrl(int item, int subItem, const QStringList& choices,
                         const QString& initialValue);
    ~CInPlaceComboBoxCtrl() override;

    /// Places the combo box over @p rect of @p parent with control id @p controlId, fills in the
    /// choices and takes the focus. Returns false, and deletes the editor later, without parent.
    bool Create(const QRect& rect, QWidget* parent, int controlId);

    int Item() const { return m_item; }
    int SubItem() const { return m_subItem; }
    QStringList Choices() const { return m_choices; }
    QString InitialValue() const { return m_initialValue; }
    bool IsCancelled() const;
    bool HasEnded() const;

    void showPopup() override;
    /// Closing the drop-down ends the edit.
    void hidePopup() override;

signals:
    /// The edit begins: text and param mask, the chosen text and its item data.
    void beginLabelEdit(const LabelEditInfo& info);
    /// The edit ends: as at the start, with no text when the edit was cancelled.
    void endLabelEdit(const LabelEditInfo& info);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// Makes sure a choice is selected; false when none can be (no record is sent then).
    bool ensureSelection();
    /// The drop-down has closed: the focus goes back to the owner and the edit ends.
    void closeUp();
    void closeUpLater();
    void endEdit();
    void applyTheme();
    LabelEditInfo makeRecord(bool withText) const;

    int m_item;
    int m_subItem;
    QStringList m_choices;
    QString m_initialValue;
    // The course of the edit, shared by every editor.
    const std::unique_ptr<InPlaceEditSession> m_session;
    bool m_popupOpen = false;
};
