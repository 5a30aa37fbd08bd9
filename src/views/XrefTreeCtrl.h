#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiImageList.h"
#include "panel/MenuItems.h"
#include "panel/XrefProperties.h"
#include "views/TreeItemHandle.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeView>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class CXrefPanelCtrlItem;
class CXrefTreeModel;

/// The panel's nested view of the references: the host drawing at the root, its references
/// below, as the panel inserts them. Nodes are records in CXrefTreeModel; the view draws their
/// text, type icon with overlay badge and repository state image. Single selection.
///
/// The view decides nothing about references: every gesture becomes one of its signals, all
/// emitted synchronously, for the panel to act on.
/// - ItemsSelected: the selection changed, or a left click left it as it was (flag false). The
///   flag is true only for a change made by program, neither by the mouse nor by the keyboard.
/// - ContextMenu: a right click or the menu key. The node under the pointer is selected first
///   (empty space clears the selection); the point is in the view widget's own coordinates.
/// - ContextMenuSelection: a context-menu command reached OnCommand.
/// - PropertyEditStarting / PropertyEdited / PropertyEditAborted: a rename of a node's label
///   (F2). The label itself never takes the new text: a rename reaches the node only through
///   the panel, which may refuse it.
/// - ItemToBeDeleted: DeleteChildren is about to destroy an item.
///
/// The user cannot collapse the root node (expander, double click or keys); a program can.
/// Typing never searches for a node: letters do nothing, arrows and page keys still move.
class KVXREFTROVEUI_EXPORT CXrefTreeCtrl : public QTreeView
{
    Q_OBJECT
public:
    /// @p stateImageFlag is handed to the panel when it fills the state image list.
    explicit CXrefTreeCtrl(bool stateImageFlag, QWidget* parent = nullptr);
    ~CXrefTreeCtrl() override;

    CXrefTreeModel& Model() const { return *m_model; }

    /// Appends a node for @p item under @p parent (null: at the root) and returns it, for the
    /// panel to hand to the item.
    HTREEITEM InsertItem(CXrefPanelCtrlItem& item, HTREEITEM parent);
    /// Removes @p node and its subtree; the items are not destroyed.
    bool DeleteItem(HTREEITEM node);
    /// Deletes the subtree below @p node, deepest first: for each child, its own children, then
    /// ItemToBeDeleted, then the node, whose item is destroyed; the nodes leave the view in one
    /// removal at the end. False, with nothing done, for a node that is not in this tree or
    /// while another deletion runs (a handler of ItemToBeDeleted may not delete nodes).
    bool DeleteChildren(HTREEITEM node);
    /// Removes every node; the items are not destroyed.
    void DeleteAllItems();
    /// The items of @p node's direct children, in tree order.
    std::vector<CXrefPanelCtrlItem*> GetChildren(HTREEITEM node) const;
    HTREEITEM GetRootItem() const;
    int GetCount() const;
    /// Opens @p node. Nodes kMaxOpenLevel levels down or deeper stay closed (see there).
    void Expand(HTREEITEM node);
    /// Opens every node that may open; hides QTreeView::expandAll, which knows no depth limit.
    void expandAll();
    /// The view lays out its open nodes with one nested call per open level, so a chain of
    /// open nodes tens of thousands of levels deep would run out of stack. Nodes this many levels
    /// below the top (or deeper) do not open, neither by program nor by the user.
    static constexpr int kMaxOpenLevel = 1000;
    /// Collapses @p node, the root included: programs may do what the user may not.
    void Collapse(HTREEITEM node);
    bool IsExpanded(HTREEITEM node) const;
    /// Between these, insertions are one batch for the view (see CXrefTreeModel::BeginBatch);
    /// expansions asked for meanwhile happen at the end.
    void BeginBatch();
    void EndBatch();

    /// The selected node's item, or none.
    std::vector<CXrefPanelCtrlItem*> GetSelectedItems() const;
    /// Selects @p node (null: clears the selection). Reported by ItemsSelected as a change made
    /// by program.
    void SelectItem(HTREEITEM node);

    /// Opens the rename editor on @p node's label when its item allows the name to be edited
    /// (PropertyEditStarting fires first). False when refused or another rename is open.
    bool EditLabel(HTREEITEM node);
    /// Whether a rename editor is open.
    bool IsEditingLabel() const { return m_labelEdit.has_value(); }

    /// A context-menu command chosen in a menu this view asked for. The view passes on the
    /// commands it knows (see RoutesCommand) as ContextMenuSelection with the selected items and
    /// answers true; others are not its business and answer false.
    bool OnCommand(unsigned id);
    /// Every id from 3 to 39, 46, 47 and 1000 to 1040.
    static bool RoutesCommand(unsigned id);

    /// The item of the node at @p index, or null.
    CXrefPanelCtrlItem* ItemFromIndex(const QModelIndex& index) const;
    /// The index of @p item's node; invalid when the item has no node here.
    QModelIndex IndexFromItem(const CXrefPanelCtrlItem& item) const;
    /// The item of the node under @p point, in viewport coordinates, or null.
    CXrefPanelCtrlItem* ItemAt(const QPoint& point) const;

    /// The image lists the type icons are drawn from, for the light and the dark theme; the
    /// view does not own them. Without them no type icon is drawn.
    void SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark);
    /// The item image list for the theme in use, or null.
    const CZuUiImageList* ItemImageList() const;

    CZuUiImageList& StateImageList() { return m_stateImageList; }
    const CZuUiImageList& StateImageList() const { return m_stateImageList; }
    bool GetStateImageFlag() const { return m_stateImageFlag; }
    void SetStateImageFlag(bool flag) { m_stateImageFlag = flag; }

    // --- Filter ---------------------------------------------------------------------------------

    /// Whether a node's item is to be shown.
    using ItemFilter = std::function<bool(const CXrefPanelCtrlItem& item)>;
    /// Shows only the nodes whose item @p shows accepts, with the nodes above them so that each
    /// stays in its place; an empty function shows every node. A selected node that goes out of
    /// sight leaves the selection (reported by ItemsSelected as the program's change). The
    /// filter is applied while the tree is visible, and again when nodes are inserted or
    /// changed, once control returns to the event loop.
    void SetItemFilter(ItemFilter shows);
    bool IsItemFilterOn() const { return bool(m_filter); }
    /// Whether @p node is drawn as far as the filter goes (its branch may still be collapsed).
    bool IsNodeShown(HTREEITEM node) const;

signals:
    void ContextMenu(QWidget* source, const QPoint& point,
                     const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    void ContextMenuSelection(Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>& items);
    void ItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    /// @p item's node is about to be deleted, and the item with it.
    void ItemToBeDeleted(CXrefPanelCtrlItem* item);
    /// A rename begins; @p text is the node's label.
    void PropertyEditStarting(Trove::XrefProperties property, const std::wstring& text);
    /// A rename ended with a text (Enter, or the editor lost the focus), even an unchanged one.
    void PropertyEdited(Trove::XrefProperties property, const std::wstring& textBefore,
                        const std::wstring& newText);
    /// A rename was cancelled (Escape, or its node went away).
    void PropertyEditAborted(Trove::XrefProperties property);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyboardSearch(const QString& search) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class CXrefTreeDelegate;

    /// Where a selection change comes from while an input event is handled.
    enum class ChangeSource { Program, Mouse, Keyboard };
    struct LabelEdit
    {
        QPersistentModelIndex index;
        std::wstring textBefore;
        QPointer<QWidget> editor;
        std::optional<QString> committed;
    };

    void applyTheme();
    /// Announces the batch's nodes so far and makes the expansions waiting for them.
    void settleBatch();
    /// Drops the view's record of the expanded nodes below @p top (and of @p top itself with
    /// @p withTop) before they leave the model.
    void forgetExpansions(HTREEITEM top, bool withTop);
    /// Cancels an open rename of @p top (with @p withTop) or of a node below it; null @p top
    /// stands for every node.
    void abortLabelEditBelow(HTREEITEM top, bool withTop);
    void onSelectionChanged();
    void onCollapsed(const QModelIndex& index);
    void onExpanded(const QModelIndex& index);
    static bool mayOpen(HTREEITEM node);
    /// Opens @p top and every node below it that may open, laying out once.
    void expandBelow(HTREEITEM top);
    /// Whether @p event would collapse the expanded root; such keys are swallowed.
    bool collapsesRoot(const QKeyEvent& event) const;
    bool isRoot(const QModelIndex& index) const;
    void endLabelEdit(std::optional<QString> text);
    void updateToolTip(const QPoint& viewportPos);
    /// Runs the filter over every node and hides the branches it leaves out.
    void applyFilter();
    /// Notes that nodes changed under an active filter.
    void filterMayChange();
    void hideToolTip();

    CXrefTreeModel* m_model;
    CZuUiImageList m_stateImageList;
    bool m_stateImageFlag;
    std::vector<HTREEITEM> m_pendingExpansions;
    const CZuUiImageList* m_itemImages[2] = {nullptr, nullptr};

    // False from a button press or a context-menu request until the next selection change:
    // a change that follows one of those is the user's, even when the view makes it itself.
    bool m_originFlag = true;
    ChangeSource m_changeSource = ChangeSource::Program;
    // Input handlers running now; a root collapse while one runs is the user's and is undone.
    int m_userGestures = 0;
    bool m_deleting = false;
    std::optional<LabelEdit> m_labelEdit;
    QRect m_lastTipRect;
    // What the delegate needs for the whole paint, read once per paint instead of per node.
    bool m_paintLoggedIn = false;
    bool m_paintItemStyles = false;
    ItemFilter m_filter;
    bool m_filterDirty = false;
    bool m_filterPosted = false;
};
