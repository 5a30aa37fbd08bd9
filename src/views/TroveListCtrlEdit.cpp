// The list view's double click, in-place edits and tool tips.

#include "views/TroveListCtrl.h"

#include "host/KvNameDescriptionToolTipInfo.h"
#include "host/KvToolTipService.h"
#include "host/SystemVariables.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "resources/TemporaryResourceOverride.h"
#include "resources/TroveResources.h"
#include "views/ListItemAccess_p.h"
#include "views/ListPanel_p.h"
#include "views/TroveListCtrl_p.h"
#include "views/TroveListModel_p.h"
#include "views/editors/InPlaceEditCtrl.h"
#include "views/editors/LabelEditInfo_p.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

namespace {

using Col = Trove::ListViewColumn;

constexpr int kEditorId = 40001;
// The two texts the type cell toggles between.
constexpr unsigned kTypeAttachText = 1072;
constexpr unsigned kTypeOverlayText = 1074;
// Status tips.
constexpr unsigned kTipStatusCode3 = 1210;
constexpr unsigned kTipStatusIcon5 = 1211;
constexpr unsigned kTipStatusIcon6 = 1212;
constexpr unsigned kSimpleToolId = 1;

} // namespace

// --- Double click -------------------------------------------------------------------------------

void CTroveListCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    KvToolTipService::Instance()->Hide();
    d->ignoreSelectionNotifications = false;
    d->originFlag = false;
    // The second click of a double click is no click of its own.
    d->leftPressed = false;
    if (event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    const auto [row, column] = d->hitTest(event->position().toPoint());
    if (row < 0) {
        event->accept();
        return;
    }
    if (!d->model->IsSelected(row))
        d->model->SetSelected(row, true);
    if (column == Col::Status)
        emit StatusColumnDoubleClicked(ItemOfRow(row));
    else
        EditSubItem(row, column);
    event->accept();
}

// --- In-place edit ------------------------------------------------------------------------------

Trove::XrefProperties CTroveListCtrlPrivate::editedProperty() const
{
    return editColumn == Col::Type ? Trove::XrefProperties::Type : Trove::XrefProperties::Name;
}

QRect CTroveListCtrlPrivate::editRect(int row, int column, bool scrollIntoView)
{
    QHeaderView* header = q.header();
    int left = 0;
    for (int c = 0; c < column; ++c)
        left += header->sectionSize(c);
    int x = left - q.horizontalOffset();
    const QRect client = q.viewport()->rect();
    if (scrollIntoView && (x < client.left() || x > client.right())) {
        q.horizontalScrollBar()->setValue(left);
        x = left - q.horizontalOffset();
    }
    const QRect rowRect = cellRect(row, column);
    QRect rect(x + 1, rowRect.top(), header->sectionSize(column) - 1, rowRect.height());
    rect &= client;
    return rect.adjusted(0, 1, 0, -1);
}

bool CTroveListCtrl::EditSubItem(int row, int column)
{
    if (column != Col::ReferenceName && column != Col::Type)
        return false;
    const CTroveListRow* r = d->model->Row(row);
    if (!r || !r->data || d->editor)
        return false;
    CXrefPanelCtrlItem* item = ItemOfRow(row);
    const Trove::XrefProperties property =
        column == Col::Type ? Trove::XrefProperties::Type : Trove::XrefProperties::Name;
    if (!item || !item->IsPropertyEditable(property, column))
        return false;
    row = r->data->Row();
    if (row < 0)
        return false;

    d->editRow = row;
    d->editColumn = column;
    d->editBefore = d->model->CellText(row, column);
    auto* editor = new CInPlaceEditCtrl(row, column, d->editBefore);
    editor->setAccessibleName(d->model->headerData(column, Qt::Horizontal).toString());
    d->editor = editor;
    d->editBegan = false;
    connect(editor, &CInPlaceEditCtrl::beginLabelEdit, this,
            [this](const LabelEditInfo&) { d->editBegins(); });
    connect(editor, &CInPlaceEditCtrl::endLabelEdit, this,
            [this](const LabelEditInfo& info) { d->editEnded(info); });
    editor->Create(d->editRect(row, column, true), viewport(), kEditorId);
    if (column != Col::Type)
        return true;

    // The type is not typed in: the edit toggles it and ends at once, even where the editor
    // never got the focus that begins an edit.
    d->editBegins();
    const QString attach = TroveUI::ResString(kTypeAttachText);
    editor->setText(d->editBefore == attach ? TroveUI::ResString(kTypeOverlayText) : attach);
    setFocus(Qt::OtherFocusReason);
    if (d->editor) {
        // Without an active window no focus moves; Enter ends the edit all the same.
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(d->editor.data(), &enter);
    }
    return true;
}

bool CTroveListCtrl::IsEditing() const
{
    return d->editor && !d->editor->HasEnded();
}

void CTroveListCtrlPrivate::editBegins()
{
    if (editBegan)
        return;
    editBegan = true;
    emit q.PropertyEditStarting(editedProperty(), editBefore.toStdWString());
}

void CTroveListCtrlPrivate::editEnded(const LabelEditInfo& info)
{
    const Trove::XrefProperties property = editedProperty();
    const std::wstring before = editBefore.toStdWString();
    // The editor deletes itself; the list only forgets it.
    if (editor) {
        editor->disconnect(&q);
        editor = nullptr;
    }
    editRow = -1;
    if (info.text && !info.text->isEmpty())
        emit q.PropertyEdited(property, before, info.text->toStdWString());
    else
        emit q.PropertyEditAborted(property);
}

// --- Tool tips ----------------------------------------------------------------------------------

void CTroveListCtrlPrivate::hideRichTip()
{
    KvToolTipService::Instance()->Hide();
}

void CTroveListCtrlPrivate::replaceTool(const QRect& rect, const QString& text)
{
    // One tip at a time: the simple tool takes over from a rich tip.
    hideRichTip();
    toolTip.Pop();
    toolTip.DelTool(q.viewport(), kSimpleToolId);
    toolTip.AddTool(q.viewport(), text, rect, kSimpleToolId);
    lastToolRect = rect;
    lastToolText = text;
}

void CTroveListCtrlPrivate::trackToolTip(const QPoint& point)
{
    if (KvSystemVariables::ReadInt(L"TOOLTIPS") != 1)
        return;
    KvToolTipService* service = KvToolTipService::Instance();
    const auto [row, column] = hitTest(point);
    CXrefPanelCtrlItem* item = q.ItemOfRow(row);
    if (!item) {
        if (service->IsShowing() && !lastToolRect.contains(point))
            hideRichTip();
        return;
    }
    const QRect cell = cellRect(row, column);
    QString text;
    CXrefPanelCtrl* owner = panel();
    if (column == Col::TroveState && q.IsTroveStateColumnInUse()) {
        if (owner)
            text = QString::fromStdWString(ListPanel::TroveStateToolTipText(*owner, *item));
        if (!text.isEmpty() && cell != lastToolRect)
            replaceTool(cell, text);
    } else if (column == Col::Status) {
        CTemporaryResourceOverride resources(TroveUI::ResourceInstance());
        // The status code and the status icon are two different fields of the item.
        if (int(item->GetReferenceStatusText()) == 3)
            text = TroveUI::ResString(kTipStatusCode3);
        else if (item->GetReferenceStatusIcon() == 5)
            text = TroveUI::ResString(kTipStatusIcon5);
        else if (item->GetReferenceStatusIcon() == 6)
            text = TroveUI::ResString(kTipStatusIcon6);
        if (!text.isEmpty() &&
            (cell != lastToolRect || text.compare(lastToolText, Qt::CaseInsensitive) != 0))
            replaceTool(cell, text);
    }
    if (!text.isEmpty())
        return;
    if (lastToolRect.contains(point) && service->IsShowing())
        return;
    const ToolTipMenuSettings settings =
        owner ? ListPanel::ToolTipSettings(*owner) : ToolTipMenuSettings();
    std::unique_ptr<KvNameDescriptionToolTipInfo> info =
        ListItemAccess::CreateToolTipInfo(*item, settings);
    if (!info)
        return;
    service->Hide();
    service->SetToolTipInfo(info.get());
    service->Show(QRect(q.viewport()->mapToGlobal(cell.topLeft()), cell.size()));
    info.reset();
    toolTip.DelTool(q.viewport(), kSimpleToolId);
    lastToolRect = cell;
    lastToolText.clear();
}

bool CTroveListCtrl::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        // Tips come from the list's own tool and the host's service, never from Qt's default.
        event->accept();
        return true;
    case QEvent::Leave:
        d->hideRichTip();
        d->lastToolRect = QRect();
        break;
    default:
        break;
    }
    return QTreeView::viewportEvent(event);
}
