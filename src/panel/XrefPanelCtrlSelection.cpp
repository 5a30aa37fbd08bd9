// The panel's items and selection: what follows a selection, edits and their round trip to the
// host, and removals that leave nothing pointing at a departed item.

#include "panel/XrefPanelCtrl.h"

#include "framework/ZuUiMenu.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl_p.h"
#include "panel/detail/PathOperations.h"
#include "panel/detail/StripMessages.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPreview.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeNode_p.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

bool isCompareType(const CXrefPanelCtrlItem& item)
{
    const int type = item.FileType();
    return type == 5 || type == 6;
}

} // namespace

/// Notes whether an item is destroyed while the panel calls out to the host, which may delete
/// the item it is told about.
struct CXrefPanelCtrlPrivate::ItemWatch
{
    ItemWatch(CXrefPanelCtrlPrivate& d_, const CXrefPanelCtrlItem* item_) : d(d_), item(item_)
    {
        d.watches.push_back(this);
    }
    ~ItemWatch() { d.watches.erase(std::find(d.watches.begin(), d.watches.end(), this)); }
    ItemWatch(const ItemWatch&) = delete;
    ItemWatch& operator=(const ItemWatch&) = delete;

    CXrefPanelCtrlPrivate& d;
    const CXrefPanelCtrlItem* item;
    bool gone = false;
};

// --- Selection ----------------------------------------------------------------------------------

void CXrefPanelCtrl::OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool /*flag*/)
{
    // A copy: bringing the other view in step may report a selection again and replace the
    // record, and the caller's vector may be the record itself.
    const std::vector<CXrefPanelCtrlItem*> selection = items;
    ++d->selectionRuns;
    d->selection.Record(selection);
    if (!d->selection.IsEnabled())
        return;

    CTroveListCtrl* list = GetListCtrl();
    CXrefTreeCtrl* tree = GetTreeCtrl();
    CXrefToolBar* toolBar = d->toolBar.get();
    const bool treeInFront = d->layout.ReferenceView() == FileReferenceViewType::TreeView;

    if (selection.size() == 1 && selection.front()) {
        CXrefPanelCtrlItem& item = *selection.front();
        if (toolBar && isCompareType(item)) {
            toolBar->EnableCompareButton(false);
            toolBar->repaint();
        }
        // The view behind follows quietly: what it would report is what is being applied.
        if (treeInFront && list) {
            list->SetIgnoreSelectionNotifications(true);
            list->ClearSelection();
            list->SetSelectedItems(selection);
        } else if (!treeInFront && tree && item.m_treeItem) {
            const QSignalBlocker quiet(tree);
            tree->SelectItem(item.m_treeItem);
        }
        d->details.ShowItem(item);
        if (item.HasNoPreview() && GetPreviewCtrl())
            GetPreviewCtrl()->SetPreviewBitmap(nullptr, nullptr, 0);
    } else {
        if (toolBar) {
            toolBar->EnableCompareButton(true);
            toolBar->repaint();
        }
        if (!selection.empty() && treeInFront && tree) {
            const QSignalBlocker quiet(tree);
            tree->SelectItem(nullptr);
        }
        d->details.ShowSelection(selection);
        if (!selection.empty() && GetPreviewCtrl())
            GetPreviewCtrl()->SetPreviewBitmap(nullptr, nullptr, 0);
    }
    if (!selection.empty()) {
        UpdatePathOperations();
        UpdateXrefMessageBox(selection);
    }
    if (GetDetailsCtrl())
        GetDetailsCtrl()->viewport()->repaint();
    if (GetPreviewCtrl())
        GetPreviewCtrl()->repaint();
}

void CXrefPanelCtrl::UpdateCurrentSelection()
{
    const std::vector<CXrefPanelCtrlItem*> selection = d->selection.Items();
    OnItemsSelected(selection, true);
}

void CXrefPanelCtrl::SelectItem(CXrefPanelCtrlItem* item)
{
    CTroveListCtrl* list = GetListCtrl();
    CXrefTreeCtrl* tree = GetTreeCtrl();
    if (!item) {
        if (tree)
            tree->SelectItem(nullptr);
        if (list) {
            list->SetIgnoreSelectionNotifications(true);
            list->ClearSelection();
        }
        d->selection.Forget();
        return;
    }
    d->selection.Record({item});
    // The view in front reports the new selection, and that report drives the rest. A view
    // that is not on screen yet reports nothing; the panes must follow all the same.
    const int runs = d->selectionRuns;
    if (d->layout.ReferenceView() == FileReferenceViewType::TreeView) {
        if (tree && item->m_treeItem)
            tree->SelectItem(item->m_treeItem);
    } else if (list) {
        list->SelectItem(*item);
    }
    if (d->selectionRuns == runs)
        OnItemsSelected({item}, true);
}

void CXrefPanelCtrl::SelectMissingXref()
{
    CTroveListCtrl* list = GetListCtrl();
    if (!list)
        return;
    const int rows = list->GetItemCount();
    for (int row = 0; row < rows; ++row) {
        CXrefPanelCtrlItem* item = list->ItemOfRow(row);
        if (!item || item->GetReferenceStatusIcon() != RefStatus::Unresolved)
            continue;
        const int runs = d->selectionRuns;
        list->SelectItem(*item);
        list->scrollTo(list->IndexFromItem(*item));
        // A list behind the tree reports nothing; the panes must follow all the same.
        if (d->selectionRuns == runs)
            OnItemsSelected({item}, true);
        if (CXrefPropListCtrl* details = GetDetailsCtrl()) {
            const int detailsRow = details->RowOf(XrefProperties::SavedPath);
            if (detailsRow >= 0) {
                const QModelIndex index = details->model()->index(detailsRow, 0);
                details->setCurrentIndex(index);
                details->scrollTo(index);
            }
        }
        return;
    }
}

bool CXrefPanelCtrl::SortDisplayItems() const
{
    if (GetListCtrl() && d->layout.ReferenceView() == FileReferenceViewType::ListView)
        GetListCtrl()->SortItems();
    return true;
}

void CXrefPanelCtrl::EndUpdate()
{
    if (CTroveListCtrl* list = GetListCtrl()) {
        list->Model().EndBatch();
        if (d->layout.ReferenceView() == FileReferenceViewType::ListView)
            list->SortItems();
        list->setUpdatesEnabled(true);
        list->viewport()->update();
    }
    if (CXrefTreeCtrl* tree = GetTreeCtrl()) {
        tree->EndBatch();
        tree->setUpdatesEnabled(true);
        tree->viewport()->update();
    }
    UpdateCurrentSelection();
    if (d->toolBar) {
        // Reloading all needs something to reload and is off while drawings are compared.
        const bool reloadAll =
            GetListCtrl() && GetListCtrl()->GetItemCount() > 1 && !PathOperations::CompareModeOn();
        d->toolBar->EnableMenuItem(Trove::ReloadAllXRefs,
                                   reloadAll ? 0u : unsigned(CZuUiMenu::Grayed));
    }
}

// --- Details, strip and path operations ---------------------------------------------------------

void CXrefPanelCtrl::SetDetailsProperty(const CXrefPanelCtrlItem& item, XrefProperties property)
{
    if (d->details.Concerns(item, property))
        d->details.SetValue(property, item.GetProperty(property).value_or(std::wstring()));
}

void CXrefPanelCtrl::SetDetailsProperties(const CXrefPanelCtrlItem& item)
{
    if (!NeedToSetDetailFor(item))
        return;
    SetDetailsProperty(item, XrefProperties::Name);
    SetDetailsProperty(item, XrefProperties::Status);
    // A size or date the item does not know leaves the row as it was.
    if (item.GetProperty(XrefProperties::Size))
        SetDetailsProperty(item, XrefProperties::Size);
    SetDetailsProperty(item, XrefProperties::Type);
    if (item.GetProperty(XrefProperties::Date))
        SetDetailsProperty(item, XrefProperties::Date);
    SetDetailsProperty(item, XrefProperties::FoundAt);
    SetDetailsProperty(item, XrefProperties::SavedPath);
    SetDetailsProperty(item, XrefProperties::FileVersion);
}

bool CXrefPanelCtrl::NeedToSetDetailFor(const CXrefPanelCtrlItem& item) const
{
    return d->selection.Contains(item);
}

void CXrefPanelCtrl::UpdateXrefMessageBox(const std::vector<CXrefPanelCtrlItem*>& items)
{
    const std::optional<QString> text = StripMessages::For(items);
    if (text && d->messageBox)
        d->messageBox->SetMessage(*text);
}

void CXrefPanelCtrl::UpdatePathOperations()
{
    const std::vector<CXrefPanelCtrlItem*>& items = d->selection.Items();
    PathOperations::ItemPathTypes single;
    if (items.size() == 1 && items.front())
        items.front()->getPathTypeEnabledStatus(single.first, single.second, single.third);
    PathOperations::Update(d->toolBar.get(), items, single);
}

// --- Edits --------------------------------------------------------------------------------------

void CXrefPanelCtrl::OnPropertyEditStarting(XrefProperties property, const std::wstring&)
{
    d->selection.SetEnabled(false);
    if (property == XrefProperties::Name && d->messageBox)
        d->messageBox->SetMessage(StripMessages::EditingName());
    SelectionBinding::EditTarget target;
    const std::vector<CXrefPanelCtrlItem*>& items = d->selection.Items();
    if (items.size() == 1)
        target.single = items.front();
    else
        target.several = d->details.TypeEditable();
    d->selection.SetTarget(target);
}

void CXrefPanelCtrl::OnPropertyEdited(XrefProperties property, const std::wstring& value,
                                      const std::wstring& previousValue)
{
    const SelectionBinding::EditTarget target = d->selection.Target();
    d->selection.ClearTarget();
    // Whatever became of the edit, selecting must work again afterwards.
    d->selection.SetEnabled(true);
    if (!target.IsSet())
        return;

    bool accepted = true;
    if (!previousValue.empty() && GetListCtrl() && GetTreeCtrl()) {
        const std::vector<CXrefPanelCtrlItem*> items =
            target.several ? d->selection.Items() : std::vector<CXrefPanelCtrlItem*>{target.single};
        accepted = OnApplyPropertyEdit(items, property, value, previousValue);
    }
    d->details.SetValue(property, accepted ? value : previousValue);
    if (!accepted && GetDetailsCtrl())
        GetDetailsCtrl()->viewport()->repaint();
    if (property == XrefProperties::Name && d->messageBox)
        d->messageBox->SetMessage(QString());
    UpdateCurrentSelection();
}

void CXrefPanelCtrl::OnPropertyEditAborted(XrefProperties)
{
    d->selection.ClearTarget();
    d->selection.SetEnabled(true);
    if (d->messageBox)
        d->messageBox->SetMessage(QString());
}

// --- Removals -----------------------------------------------------------------------------------

void CXrefPanelCtrl::forgetItem(CXrefPanelCtrlItem& item)
{
    for (CXrefPanelCtrlPrivate::ItemWatch* watch : d->watches) {
        if (watch->item == &item)
            watch->gone = true;
    }
    // The pane keeps copies of the values only; with nothing selected any more it empties.
    if (d->selection.Drop(item) && d->selection.Items().empty())
        d->details.ShowSelection({});
}

void CXrefPanelCtrl::DeleteTreeItem(CXrefPanelCtrlItem& item)
{
    SelectItem(nullptr);
    // A subtree's rows leave the list together once every item has been reported.
    if (GetListCtrl())
        GetListCtrl()->Model().BeginRemovals();
    CXrefPanelCtrlPrivate::ItemWatch watch(*d, &item);
    OnTreeItemToBeDeleted(item);
    // The host may have deleted the item when told it was removed; its node went with it.
    if (!watch.gone && GetTreeCtrl() && item.m_treeItem) {
        GetTreeCtrl()->DeleteChildren(item.m_treeItem);
        if (!watch.gone && item.m_treeItem) {
            GetTreeCtrl()->DeleteItem(item.m_treeItem);
            item.m_treeItem = nullptr;
        }
    }
    if (GetListCtrl())
        GetListCtrl()->Model().EndRemovals();
}

void CXrefPanelCtrl::DeleteAllItems()
{
    SelectItem(nullptr);
    // The rows go first, all at once: every one of them is going, and removing them one by one
    // as their items are reported would renumber the rows behind each of them. The host is told
    // about each item all the same.
    if (GetListCtrl())
        GetListCtrl()->DeleteAllItems();
    if (CXrefTreeCtrl* tree = GetTreeCtrl()) {
        const HTREEITEM root = tree->GetRootItem();
        if (root) {
            tree->DeleteChildren(root);
            CXrefPanelCtrlItem* rootItem = root->item;
            if (rootItem) {
                CXrefPanelCtrlPrivate::ItemWatch watch(*d, rootItem);
                OnTreeItemToBeDeleted(*rootItem);
                if (!watch.gone) {
                    root->item = nullptr;
                    rootItem->m_treeItem = nullptr;
                    tree->DeleteItem(root);
                    delete rootItem;
                }
            } else {
                tree->DeleteItem(root);
            }
        }
        tree->DeleteAllItems();
    }
    d->selection.Forget();
}
