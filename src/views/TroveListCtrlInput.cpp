// The list view's selection: what the program selects, and what the user's mouse and keys do.

#include "views/TroveListCtrl.h"

#include "framework/ZuUiCommandEvent.h"
#include "host/KvToolTipService.h"
#include "items/TroveListCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "views/TroveListCtrl_p.h"
#include "views/TroveListModel_p.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

namespace {

using Col = Trove::ListViewColumn;

constexpr Qt::KeyboardModifiers kShiftOrCtrl = Qt::ShiftModifier | Qt::ControlModifier;

// What a key release leaves held: the released key's own modifier no longer counts, whatever
// the platform put in the event.
Qt::KeyboardModifiers heldAfterRelease(const QKeyEvent& event)
{
    Qt::KeyboardModifiers held = event.modifiers();
    if (event.key() == Qt::Key_Shift)
        held &= ~Qt::ShiftModifier;
    if (event.key() == Qt::Key_Control)
        held &= ~Qt::ControlModifier;
    return held;
}

} // namespace

// --- Raising ItemsSelected ----------------------------------------------------------------------

void CTroveListCtrlPrivate::notifySelection(Qt::KeyboardModifiers modifiers)
{
    // A selection made with Shift or Ctrl grows click by click; it is reported once the keys
    // are let go.
    if (modifiers & kShiftOrCtrl) {
        pending = true;
        return;
    }
    pending = false;
    raiseItemsSelected();
}

void CTroveListCtrlPrivate::raiseItemsSelected()
{
    if (ignoreSelectionNotifications)
        return;
    emit q.ItemsSelected(q.GetSelectedItems(), originFlag);
}

void CTroveListCtrlPrivate::dropSpecialRowFromMultiSelection()
{
    const int special = specialRow();
    if (special >= 0 && !troveLoggedIn() && model->SelectedCount() > 1)
        model->SetSelected(special, false);
}

// --- Selection by program -----------------------------------------------------------------------

CTroveListCtrl::ItemList CTroveListCtrl::GetSelectedItems() const
{
    ItemList items;
    items.reserve(std::size_t(d->model->SelectedCount()));
    d->model->ForEachSelected([&items](int, const CTroveListCtrlItem* record) {
        if (record && !record->Items().empty())
            items.push_back(*record->Items().begin());
    });
    return items;
}

int CTroveListCtrl::GetSelectedCount() const
{
    return d->model->SelectedCount();
}

bool CTroveListCtrl::IsRowSelected(int row) const
{
    return d->model->IsSelected(row);
}

void CTroveListCtrl::SelectItem(const CXrefPanelCtrlItem& item)
{
    const QModelIndex index = IndexFromItem(item);
    const int row = d->model->RowOf(index);
    d->model->SelectOnly(row);
    if (row >= 0) {
        d->anchorRow = row;
        d->setFocusRow(row);
    }
    if (isVisible())
        d->notifySelection(QGuiApplication::keyboardModifiers());
}

void CTroveListCtrl::SetSelectedItems(const ItemList& items)
{
    // Marks per row, so that applying a selection of many items costs one pass over the rows.
    std::vector<bool> marked(std::size_t(std::max(0, GetItemCount())), false);
    int first = -1;
    for (const CXrefPanelCtrlItem* item : items) {
        const QModelIndex index = item ? IndexFromItem(*item) : QModelIndex();
        if (!index.isValid())
            continue;
        const int row = d->model->RowOf(index);
        marked[std::size_t(row)] = true;
        if (first < 0)
            first = row;
    }
    d->model->AssignSelection(
        [&marked](int row) { return row >= 0 && std::size_t(row) < marked.size() && marked[row]; });
    if (first >= 0) {
        d->anchorRow = first;
        d->setFocusRow(first);
    }
}

bool CTroveListCtrl::SetItemSelected(int row, bool selected, bool originFlag)
{
    if (d->model->Row(row) == nullptr || d->model->IsSelected(row) == selected)
        return false;
    d->originFlag = originFlag;
    const bool changed = d->model->SetSelected(row, selected);
    d->originFlag = true;
    return changed;
}

void CTroveListCtrl::SelectAll()
{
    d->selectAll(QGuiApplication::keyboardModifiers());
}

void CTroveListCtrlPrivate::selectAll(Qt::KeyboardModifiers modifiers)
{
    originFlag = false;
    selectAllRows();
    notifySelection(modifiers);
}

void CTroveListCtrl::ClearSelection()
{
    d->model->SelectOnly(-1);
}

bool CTroveListCtrl::GetSelectionOrigin() const
{
    return d->originFlag;
}

void CTroveListCtrl::SetIgnoreSelectionNotifications(bool ignore)
{
    d->ignoreSelectionNotifications = ignore;
}

bool CTroveListCtrl::GetIgnoreSelectionNotifications() const
{
    return d->ignoreSelectionNotifications;
}

// --- Mouse --------------------------------------------------------------------------------------

void CTroveListCtrlPrivate::defaultLeftClick(int row, int column, Qt::KeyboardModifiers modifiers)
{
    const bool ctrl = modifiers & Qt::ControlModifier;
    const bool shift = modifiers & Qt::ShiftModifier;
    if (row < 0) {
        if (!ctrl && !shift)
            q.ClearSelection();
        return;
    }
    if (shift && !ctrl) {
        // A Shift range runs from the selection as it was before the click, not from an
        // anchor; the click notification that follows must not range again.
        shiftRange(row, column);
        shiftRangeDone = true;
    } else if (shift) {
        // Ctrl+Shift adds the range from the last plain or Ctrl click.
        const int anchor = anchorRow >= 0 && anchorRow < model->RowCount() ? anchorRow : row;
        model->SetRangeSelected(std::min(anchor, row), std::max(anchor, row), true);
    } else if (ctrl) {
        model->SetSelected(row, !model->IsSelected(row));
        anchorRow = row;
    } else {
        model->SelectOnly(row);
        anchorRow = row;
    }
    setFocusRow(row);
}

void CTroveListCtrlPrivate::clickNotification(const QPoint& point, Qt::KeyboardModifiers modifiers)
{
    endDrag();
    const auto [row, column] = hitTest(point);
    const bool ctrl = modifiers & Qt::ControlModifier;
    const bool shift = modifiers & Qt::ShiftModifier;
    if (!shift || ctrl)
        dropSpecialRowFromMultiSelection();
    else if (!shiftRangeDone)
        shiftRange(row, column);
    shiftRangeDone = false;
    notifySelection(modifiers);
}

void CTroveListCtrlPrivate::shiftRange(int hitRow, int hitColumn)
{
    if (hitRow < 0)
        return;
    const int first = model->FirstSelectedRow();
    const int last = model->LastSelectedRow();
    int from = hitRow;
    int to = hitRow;
    if (first >= 0) {
        if (hitRow < first) {
            from = hitRow;
            to = first;
        } else if (hitRow > last) {
            from = last;
            to = hitRow;
        } else if (hitRow == first || hitColumn == last) {
            // The clicked column is compared with the last selected row: that is how this
            // range has always behaved, and users rely on it.
            from = first;
            to = last;
        } else {
            from = first;
            to = hitRow;
        }
    }
    if (from == 0 && to == model->RowCount() - 1) {
        selectAllRows();
        return;
    }
    model->AssignSelection([=](int r) { return r >= from && r <= to; });
    const int special = specialRow();
    if (special >= from && special <= to && !troveLoggedIn() && model->SelectedCount() > 1)
        model->SetSelected(special, false);
}

void CTroveListCtrlPrivate::rightButtonPress(const QPoint& point)
{
    const auto [row, column] = hitTest(point);
    // The type icon, name, status and type cells keep the selection (taking the row when it
    // was not selected); the others, and empty space, clear it before the menu comes.
    const bool keeps = column == Col::TypeIcon || column == Col::ReferenceName ||
                       column == Col::Status || column == Col::Type;
    if (row < 0 || !keeps) {
        q.ClearSelection();
        return;
    }
    if (!model->IsSelected(row)) {
        model->SelectOnly(row);
        anchorRow = row;
    }
    setFocusRow(row);
}

void CTroveListCtrl::mousePressEvent(QMouseEvent* event)
{
    KvToolTipService::Instance()->Hide();
    d->ignoreSelectionNotifications = false;
    d->originFlag = false;
    d->shiftRangeDone = false;
    const QPoint point = event->position().toPoint();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (event->button() == Qt::LeftButton) {
        d->leftPressed = true;
        setFocus(Qt::MouseFocusReason);
        const auto [row, column] = d->hitTest(point);
        if (row < 0) {
            d->defaultLeftClick(-1, -1, modifiers);
        } else {
            const ItemList before = GetSelectedItems();
            d->startDrag(point, modifiers);
            d->defaultLeftClick(row, column, modifiers);
            // A press that changes nothing is still reported, as the user's own.
            if (GetSelectedItems() == before && !d->ignoreSelectionNotifications)
                emit ItemsSelected(before, false);
        }
    } else if (event->button() == Qt::RightButton) {
        setFocus(Qt::MouseFocusReason);
        d->rightButtonPress(point);
        // The right click is reported as the program's, whatever the origin flag says.
        if (event->modifiers() & kShiftOrCtrl) {
            d->pending = true;
        } else {
            d->pending = false;
            if (!d->ignoreSelectionNotifications)
                emit ItemsSelected(GetSelectedItems(), true);
        }
    }
    event->accept();
}

void CTroveListCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    if (d->dragging && (event->buttons() & Qt::LeftButton))
        d->dragTo(point);
    d->trackToolTip(point);
    event->accept();
}

void CTroveListCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && d->leftPressed) {
        d->leftPressed = false;
        d->clickNotification(event->position().toPoint(), event->modifiers());
    }
    event->accept();
}

void CTroveListCtrl::contextMenuEvent(QContextMenuEvent* event)
{
    KvToolTipService::Instance()->Hide();
    d->ignoreSelectionNotifications = false;
    d->originFlag = false;
    // From the keyboard there is no point of its own: the menu goes where the pointer is.
    const QPoint global =
        event->reason() == QContextMenuEvent::Keyboard ? QCursor::pos() : event->globalPos();
    emit ContextMenu(this, mapFromGlobal(global), GetSelectedItems(), true);
    event->accept();
}

void CTroveListCtrl::focusOutEvent(QFocusEvent* event)
{
    d->endDrag();
    QTreeView::focusOutEvent(event);
}

// --- Keys ---------------------------------------------------------------------------------------

bool CTroveListCtrl::event(QEvent* event)
{
    // A command chosen in the context menu the panel showed for the list.
    if (event->type() == CZuUiCommandEvent::EventType()) {
        OnContextMenuCommand(int(static_cast<CZuUiCommandEvent*>(event)->CommandId()));
        return true;
    }
    // The list's own keys stay with it even when the host has shortcuts on them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        switch (key->key()) {
        case Qt::Key_F2:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            event->accept();
            return true;
        default:
            if (key->matches(QKeySequence::SelectAll)) {
                event->accept();
                return true;
            }
            break;
        }
    }
    return QTreeView::event(event);
}

bool CTroveListCtrlPrivate::navigate(QKeyEvent* event)
{
    // Moves are counted in the rows the user sees; selections are then made on the list's rows,
    // where a range between two shown rows takes in no row the filter hides.
    const int count = model->ShownCount();
    const int current = q.currentIndex().isValid() ? q.currentIndex().row() : -1;
    int target = -1;
    switch (event->key()) {
    case Qt::Key_Up:
        target = current < 0 ? 0 : std::max(current - 1, 0);
        break;
    case Qt::Key_Down:
        target = current < 0 ? 0 : std::min(current + 1, count - 1);
        break;
    case Qt::Key_Home:
        target = 0;
        break;
    case Qt::Key_End:
        target = count - 1;
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const int page = std::max(1, q.viewport()->height() / rowHeight() - 1);
        const int from = std::max(current, 0);
        target = event->key() == Qt::Key_PageUp ? std::max(from - page, 0)
                                                : std::min(from + page, count - 1);
        break;
    }
    case Qt::Key_Space:
        target = current < 0 ? 0 : current;
        break;
    default:
        return false;
    }
    if (count == 0 || target < 0)
        return true;
    const int viewTarget = target;
    target = model->StorageRow(viewTarget);
    const int currentRow = model->StorageRow(current);
    const bool ctrl = event->modifiers() & Qt::ControlModifier;
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (shift) {
        const int anchor = anchorRow >= 0 && anchorRow < model->RowCount()
                               ? anchorRow
                               : std::max(currentRow, model->StorageRow(0));
        const int first = std::min(anchor, target);
        const int last = std::max(anchor, target);
        if (ctrl)
            model->SetRangeSelected(first, last, true);
        else
            model->AssignSelection([=](int r) { return r >= first && r <= last; });
        anchorRow = anchor;
    } else if (ctrl) {
        // Ctrl moves the focus alone; Ctrl+Space turns the focused row on or off.
        if (event->key() == Qt::Key_Space) {
            model->SetSelected(target, !model->IsSelected(target));
            anchorRow = target;
        }
    } else {
        model->SelectOnly(target);
        anchorRow = target;
    }
    setFocusRow(target);
    // Scroll vertically only: the columns stay where the user put them.
    const int visibleColumn = q.header()->logicalIndexAt(0);
    q.scrollTo(model->index(viewTarget, visibleColumn < 0 ? 0 : visibleColumn));
    return true;
}

void CTroveListCtrl::keyPressEvent(QKeyEvent* event)
{
    d->ignoreSelectionNotifications = false;
    d->originFlag = false;
    // The host row's highlight depends on Shift and Ctrl being held.
    if (event->key() == Qt::Key_Shift || event->key() == Qt::Key_Control)
        viewport()->update();
    switch (event->key()) {
    case Qt::Key_F2:
        if (d->model->SelectedCount() == 1)
            EditSubItem(d->model->FirstSelectedRow(), Col::ReferenceName);
        event->accept();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        // Taking the focus ends an open edit; the key goes no further.
        setFocus(Qt::OtherFocusReason);
        event->accept();
        return;
    case Qt::Key_Left:
    case Qt::Key_Right: {
        QScrollBar* bar = horizontalScrollBar();
        bar->setValue(bar->value() +
                      (event->key() == Qt::Key_Left ? -bar->singleStep() : bar->singleStep()));
        event->accept();
        return;
    }
    default:
        break;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        d->selectAll(event->modifiers());
        event->accept();
        return;
    }
    if (d->navigate(event)) {
        event->accept();
        return;
    }
    event->ignore();
}

void CTroveListCtrl::keyReleaseEvent(QKeyEvent* event)
{
    if (event->isAutoRepeat()) {
        event->accept();
        return;
    }
    const int key = event->key();
    // Up and Down report when let go, not on every step of a held key; Shift and Ctrl report
    // what they held back.
    if (((key == Qt::Key_Shift || key == Qt::Key_Control) && d->pending) || key == Qt::Key_Up ||
        key == Qt::Key_Down)
        d->notifySelection(heldAfterRelease(*event));
    if (key == Qt::Key_Shift || key == Qt::Key_Control)
        viewport()->update();
    d->originFlag = true;
    event->accept();
}

// --- Rubber band --------------------------------------------------------------------------------

void CTroveListCtrlPrivate::startDrag(const QPoint& point, Qt::KeyboardModifiers modifiers)
{
    dragging = true;
    dragAnchor = point + QPoint(q.horizontalOffset(), q.verticalOffset());
    dragPoint = dragAnchor;
    dragToggled.clear();
    if (modifiers & Qt::ControlModifier) {
        dragToggled.assign(std::size_t(model->RowCount()), false);
        for (int row : model->SelectedRows())
            if (row < int(dragToggled.size()))
                dragToggled[std::size_t(row)] = true;
    }
}

void CTroveListCtrlPrivate::dragTo(const QPoint& point)
{
    QWidget* viewport = q.viewport();
    // Outside the list the view scrolls towards the pointer: all the way sideways, one row up
    // or down per move.
    QScrollBar* horizontal = q.horizontalScrollBar();
    if (point.x() < 0)
        horizontal->setValue(horizontal->minimum());
    else if (point.x() >= viewport->width())
        horizontal->setValue(horizontal->maximum());
    QScrollBar* vertical = q.verticalScrollBar();
    const int rowStep =
        q.verticalScrollMode() == QAbstractItemView::ScrollPerItem ? 1 : rowHeight();
    if (point.y() < 0)
        vertical->setValue(vertical->value() - rowStep);
    else if (point.y() >= viewport->height())
        vertical->setValue(vertical->value() + rowStep);

    const int height = rowHeight();
    const int rows = model->rowCount();
    const int contentWidth = std::max(1, q.header()->length());
    const int contentHeight = std::max(1, rows * height);
    QPoint content = point + QPoint(q.horizontalOffset(), q.verticalOffset());
    content.setX(std::clamp(content.x(), 0, contentWidth - 1));
    content.setY(std::clamp(content.y(), 0, contentHeight - 1));
    dragPoint = content;

    // Rows span the whole width, so a row meets the band exactly when their heights overlap.
    const QRect band = QRect(dragAnchor, dragPoint).normalized();
    const int first = band.top() / height;
    const int last = band.bottom() / height;
    const std::vector<bool>& toggled = dragToggled;
    model->AssignSelection([&](int row) {
        const int view = model->ViewRow(row);
        const bool inside = view >= first && view <= last;
        const bool wasSelected = row < int(toggled.size()) && toggled[std::size_t(row)];
        return wasSelected ? !inside : inside;
    });
    viewport->update();
}

void CTroveListCtrlPrivate::endDrag()
{
    if (!dragging)
        return;
    dragging = false;
    dragToggled.clear();
    q.viewport()->update();
}

void CTroveListCtrlPrivate::drawDragFrame(QPainter& painter) const
{
    const QPoint offset(q.horizontalOffset(), q.verticalOffset());
    const QRect band = QRect(dragAnchor - offset, dragPoint - offset).normalized();
    QPen pen(q.palette().color(QPalette::Text), 1, Qt::DotLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(band.adjusted(0, 0, -1, -1));
}
