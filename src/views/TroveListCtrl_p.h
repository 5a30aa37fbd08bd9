#pragma once

// The list view's state and the steps its event handlers share. Not installed.

#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiImageList.h"
#include "views/TroveListCtrl.h"

#include <QPointer>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class CInPlaceEditCtrl;
class CTroveListModel;
struct CTroveListRow;
class CXrefPanelCtrl;
struct LabelEditInfo;

class CTroveListCtrlPrivate
{
public:
    CTroveListCtrlPrivate(CTroveListCtrl& list, bool stateImageFlag, int sortColumn,
                          bool ascending);

    CTroveListCtrl& q;
    CTroveListModel* model;

    CZuUiImageList stateImageList;
    bool stateImageFlag;
    const CZuUiImageList* itemImages[2] = {nullptr, nullptr};
    const CTroveListCtrlItem* specialRecord = nullptr;

    // Sorting.
    int sortColumn;
    int secondarySortColumn;
    bool ascending;

    // Selection. The origin flag says whether a selection change came from the program (true)
    // or from the user's mouse and keys (false); pending marks an ItemsSelected held back until
    // Shift and Ctrl are released.
    bool originFlag = true;
    bool pending = false;
    bool ignoreSelectionNotifications = false;
    int anchorRow = -1; ///< where Shift ranges of the default gestures start
    bool leftPressed = false;
    bool shiftRangeDone = false; ///< the press of the current click made its Shift range

    // Rubber band, in content coordinates (viewport plus scroll offsets).
    bool dragging = false;
    QPoint dragAnchor;
    QPoint dragPoint;
    std::vector<bool> dragToggled; ///< by row: selected when a Ctrl drag started

    // Columns.
    int stateColumnSavedWidth = 0;
    bool stateColumnResizing = false;
    bool restretchAfterHeaderRelease = false;
    bool restretchPosted = false;
    bool dividerDragging = false;

    // A filter set while the list was out of sight, applied when it comes into view.
    std::optional<std::function<bool(const CTroveListRow&)>> pendingFilter;

    // In-place edit. The editor deletes itself after its end record.
    QPointer<CInPlaceEditCtrl> editor;
    int editRow = -1;
    int editColumn = 0;
    QString editBefore;
    bool editBegan = false;

    // Tool tips: the simple tool (id 1) and the rectangle and text it was made for. The control
    // is a child of the list, so that it can be found; it goes before the list's children do.
    CZuToolTipCtrl toolTip;
    QString lastToolText;
    QRect lastToolRect;

    // Read once per paint, for every cell the delegate draws.
    struct PaintState
    {
        bool loggedIn = false;
        bool titled = false;
        bool shiftOrCtrl = false;
    } paintState;

    // --- Shared steps ---------------------------------------------------------------------------

    static bool troveLoggedIn();
    int rowHeight() const;
    int specialRow() const;
    /// Row and column under @p point (viewport); -1 for either when there is none.
    std::pair<int, int> hitTest(const QPoint& point) const;
    QRect cellRect(int row, int column) const;
    CXrefPanelCtrl* panel() const;

    /// Raises ItemsSelected now, or holds it back while @p modifiers hold Shift or Ctrl.
    void notifySelection(Qt::KeyboardModifiers modifiers);
    /// Raises ItemsSelected at once, whatever keys are held.
    void raiseItemsSelected();
    /// The special row leaves a selection of several rows while the user is logged out.
    void dropSpecialRowFromMultiSelection();
    void selectAllRows();
    void selectAll(Qt::KeyboardModifiers modifiers);
    void setFocusRow(int row);

    // Mouse and keys.
    void defaultLeftClick(int row, int column, Qt::KeyboardModifiers modifiers);
    void clickNotification(const QPoint& point, Qt::KeyboardModifiers modifiers);
    void shiftRange(int hitRow, int hitColumn);
    void rightButtonPress(const QPoint& point);
    bool navigate(QKeyEvent* event);

    // Rubber band.
    void startDrag(const QPoint& point, Qt::KeyboardModifiers modifiers);
    void dragTo(const QPoint& point);
    void endDrag();
    void drawDragFrame(QPainter& painter) const;

    // Columns.
    void applyStateColumnRule();
    void postRestretch();
    void restretchLastColumn();
    bool onHeaderEvent(QEvent* event);

    // Editing.
    QRect editRect(int row, int column, bool scrollIntoView);
    void editBegins();
    void editEnded(const LabelEditInfo& info);
    Trove::XrefProperties editedProperty() const;

    // Tool tips.
    void trackToolTip(const QPoint& point);
    void replaceTool(const QRect& rect, const QString& text);
    void hideRichTip();
};
