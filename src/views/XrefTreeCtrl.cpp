#include "views/XrefTreeCtrl.h"

#include "framework/ZuUiCommandEvent.h"
#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "host/KvNameDescriptionToolTipInfo.h"
#include "host/KvToolTipService.h"
#include "host/SystemVariables.h"
#include "items/ItemToolTip_p.h"
#include "items/ItemTreeLink_p.h"
#include "items/XrefPanelCtrlItem.h"
#include "services/RmxImageSettings.h"
#include "views/XrefTreeDelegate_p.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyle>

namespace {

/// Sets a value for the length of a scope and puts the old one back.
template <typename T> class ScopedValue
{
public:
    ScopedValue(T& target, T value) : m_target(target), m_old(target) { m_target = value; }
    ~ScopedValue() { m_target = m_old; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& m_target;
    T m_old;
};

/// Counts an input handler for the length of a scope.
class ScopedCount
{
public:
    explicit ScopedCount(int& count) : m_count(count) { ++m_count; }
    ~ScopedCount() { --m_count; }
    ScopedCount(const ScopedCount&) = delete;
    ScopedCount& operator=(const ScopedCount&) = delete;

private:
    int& m_count;
};

bool systemVariableIsOne(const wchar_t* name)
{
    return KvSystemVariables::ReadInt(name) == 1;
}

} // namespace

CXrefTreeCtrl::CXrefTreeCtrl(bool stateImageFlag, QWidget* parent)
    : QTreeView(parent), m_model(new CXrefTreeModel(this)), m_stateImageFlag(stateImageFlag)
{
    setModel(m_model);
    setItemDelegate(new CXrefTreeDelegate(*this));
    // Every node has the same height; without this the view measures each node after a fill.
    setUniformRowHeights(true);
    setHeaderHidden(true);
    // The host drawing at the top has no expander of its own; its references do.
    setRootIsDecorated(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    // Renames start from F2 or by program only, and only when the item allows them (see edit).
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(true);
    // The icons grow with the DPI scale; the step to the next level must grow with them.
    setIndentation(
        CZuUiHiDpi::ScaleX(style()->pixelMetric(QStyle::PM_TreeViewIndentation, nullptr, this)));
    // Rich tips follow the pointer from node to node.
    viewport()->setMouseTracking(true);

    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CXrefTreeCtrl::onSelectionChanged);
    connect(this, &QTreeView::collapsed, this, &CXrefTreeCtrl::onCollapsed);
    connect(this, &QTreeView::expanded, this, &CXrefTreeCtrl::onExpanded);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &CXrefTreeCtrl::filterMayChange);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &CXrefTreeCtrl::filterMayChange);

    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this, &CXrefTreeCtrl::applyTheme);
}

CXrefTreeCtrl::~CXrefTreeCtrl()
{
    // An open rename dies with the view; nobody is left to hear about it.
    m_labelEdit.reset();
}

HTREEITEM CXrefTreeCtrl::InsertItem(CXrefPanelCtrlItem& item, HTREEITEM parent)
{
    return m_model->InsertNode(item, parent);
}

bool CXrefTreeCtrl::DeleteItem(HTREEITEM node)
{
    if (m_deleting || !node)
        return false;
    settleBatch();
    if (m_model->Holds(node)) {
        abortLabelEditBelow(node, true);
        forgetExpansions(node, true);
    }
    return m_model->RemoveNode(node);
}

bool CXrefTreeCtrl::DeleteChildren(HTREEITEM node)
{
    if (!node)
        return true;
    // Handlers of ItemToBeDeleted run in the middle of the walk below; nodes they removed would
    // pull the ground from under it.
    if (m_deleting || !m_model->Holds(node))
        return false;
    const ScopedValue<bool> deleting(m_deleting, true);
    settleBatch();
    // Deepest first: a node is reported after everything below it. The walk keeps its own stack
    // (a chain of nested references may be far deeper than the call stack allows), and the
    // nodes stay in the model until the end, when they leave in one removal: taking each level
    // out on its own would make an expanded view re-lay out once per level.
    struct Step
    {
        HTREEITEM node;
        std::size_t next; // the next child to visit
    };
    std::vector<Step> path{{node, 0}};
    while (!path.empty()) {
        Step& step = path.back();
        if (step.next < step.node->children.size()) {
            const HTREEITEM child = step.node->children[step.next++].get();
            path.push_back({child, 0});
            continue;
        }
        const HTREEITEM done = step.node;
        path.pop_back();
        if (path.empty())
            break; // @p node itself is not part of its subtree
        CXrefPanelCtrlItem* item = done->item;
        if (!item)
            continue;
        emit ItemToBeDeleted(item);
        if (done->item != item)
            continue; // the item went while it was being reported
        done->item = nullptr;
        ItemTreeLink::Destroy(item, done);
    }
    abortLabelEditBelow(node, false);
    forgetExpansions(node, false);
    return m_model->RemoveChildren(node);
}

void CXrefTreeCtrl::abortLabelEditBelow(HTREEITEM top, bool withTop)
{
    if (!m_labelEdit)
        return;
    HTREEITEM edited = CXrefTreeModel::NodeOf(m_labelEdit->index);
    if (edited && !withTop)
        edited = edited->parent;
    while (edited && edited != top)
        edited = edited->parent;
    if (!edited && top)
        return;
    // A rename of a node that goes is cancelled, not committed with whatever the editor holds.
    const QPointer<QWidget> editor = m_labelEdit->editor;
    endLabelEdit(std::nullopt);
    if (editor)
        QTreeView::closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

void CXrefTreeCtrl::forgetExpansions(HTREEITEM top, bool withTop)
{
    // The view remembers every expanded node as a persistent index, and the model checks each of
    // them against a removal by walking up to its parent: for a deep chain that is quadratic
    // (100,000 levels: minutes). The nodes about to go are forgotten first. With a full
    // relayout pending, which the removal causes anyway, forgetting one is a set lookup.
    scheduleDelayedItemsLayout();
    const ScopedValue<int> program(m_userGestures, 0);
    std::vector<HTREEITEM> pending;
    if (withTop)
        pending.push_back(top);
    else
        for (const auto& child : top->children)
            pending.push_back(child.get());
    while (!pending.empty()) {
        const HTREEITEM current = pending.back();
        pending.pop_back();
        if (current->children.empty())
            continue;
        collapse(m_model->IndexOf(current));
        for (const auto& child : current->children)
            pending.push_back(child.get());
    }
}

void CXrefTreeCtrl::DeleteAllItems()
{
    if (m_deleting)
        return;
    settleBatch();
    abortLabelEditBelow(nullptr, true);
    m_model->RemoveAll();
}

std::vector<CXrefPanelCtrlItem*> CXrefTreeCtrl::GetChildren(HTREEITEM node) const
{
    std::vector<CXrefPanelCtrlItem*> items;
    if (!node)
        return items;
    items.reserve(node->children.size());
    for (const auto& child : node->children)
        items.push_back(child->item);
    return items;
}

HTREEITEM CXrefTreeCtrl::GetRootItem() const
{
    return m_model->RootNode();
}

int CXrefTreeCtrl::GetCount() const
{
    return m_model->NodeCount();
}

bool CXrefTreeCtrl::mayOpen(HTREEITEM node)
{
    return node && node->level < kMaxOpenLevel;
}

void CXrefTreeCtrl::onExpanded(const QModelIndex& index)
{
    // Whatever opened a node too deep down (a key, a click, a call on the base class), it
    // closes again before the view lays out below it.
    if (!mayOpen(CXrefTreeModel::NodeOf(index)) && index.model() == m_model)
        collapse(index);
}

void CXrefTreeCtrl::expandAll()
{
    settleBatch();
    for (const auto& top : m_model->TopLevelNodes())
        expandBelow(top.get());
}

void CXrefTreeCtrl::expandBelow(HTREEITEM top)
{
    // With a relayout pending, opening a node only records it; the layout follows once.
    scheduleDelayedItemsLayout();
    std::vector<HTREEITEM> pending{top};
    while (!pending.empty()) {
        const HTREEITEM current = pending.back();
        pending.pop_back();
        if (current->children.empty() || !mayOpen(current))
            continue;
        expand(m_model->IndexOf(current));
        for (const auto& child : current->children)
            pending.push_back(child.get());
    }
}

void CXrefTreeCtrl::Expand(HTREEITEM node)
{
    if (!mayOpen(node))
        return;
    // The view cannot expand a node it has not been told about yet.
    if (m_model->InBatch())
        m_pendingExpansions.push_back(node);
    else
        expand(m_model->IndexOf(node));
}

void CXrefTreeCtrl::Collapse(HTREEITEM node)
{
    if (!node)
        return;
    settleBatch();
    // A program's collapse stands, even when it runs inside a handler of a user's gesture.
    const ScopedValue<int> program(m_userGestures, 0);
    collapse(m_model->IndexOf(node));
}

void CXrefTreeCtrl::BeginBatch()
{
    m_model->BeginBatch();
}

void CXrefTreeCtrl::EndBatch()
{
    m_model->EndBatch();
    if (!m_model->InBatch())
        settleBatch();
}

void CXrefTreeCtrl::settleBatch()
{
    m_model->AnnounceNodes();
    const std::vector<HTREEITEM> expansions = std::move(m_pendingExpansions);
    m_pendingExpansions.clear();
    for (HTREEITEM node : expansions)
        expand(m_model->IndexOf(node));
}

bool CXrefTreeCtrl::IsExpanded(HTREEITEM node) const
{
    return node && isExpanded(m_model->IndexOf(node));
}

std::vector<CXrefPanelCtrlItem*> CXrefTreeCtrl::GetSelectedItems() const
{
    std::vector<CXrefPanelCtrlItem*> items;
    if (!selectionModel())
        return items;
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (!selected.isEmpty()) {
        if (CXrefPanelCtrlItem* item = ItemFromIndex(selected.front()))
            items.push_back(item);
    }
    return items;
}

void CXrefTreeCtrl::SelectItem(HTREEITEM node)
{
    if (!node || !m_model->Holds(node)) {
        selectionModel()->clear();
        return;
    }
    settleBatch();
    selectionModel()->setCurrentIndex(m_model->IndexOf(node), QItemSelectionModel::ClearAndSelect);
}

void CXrefTreeCtrl::onSelectionChanged()
{
    const bool byProgram = m_originFlag && m_changeSource == ChangeSource::Program;
    m_originFlag = true;
    emit ItemsSelected(GetSelectedItems(), byProgram);
}

bool CXrefTreeCtrl::isRoot(const QModelIndex& index) const
{
    return index.isValid() && CXrefTreeModel::NodeOf(index) == m_model->RootNode();
}

void CXrefTreeCtrl::onCollapsed(const QModelIndex& index)
{
    // The gestures are refused before they act (see keyPressEvent, mouseDoubleClickEvent);
    // this catches whatever other way a user finds to fold the root away.
    if (m_userGestures > 0 && isRoot(index))
        expand(index);
}

bool CXrefTreeCtrl::collapsesRoot(const QKeyEvent& event) const
{
    const QModelIndex current = currentIndex();
    if (!isRoot(current) || !isExpanded(current))
        return false;
    const int backward = layoutDirection() == Qt::RightToLeft ? Qt::Key_Right : Qt::Key_Left;
    return event.key() == backward || event.key() == Qt::Key_Minus;
}

void CXrefTreeCtrl::paintEvent(QPaintEvent* event)
{
    m_paintLoggedIn = TroveUI::RmxImageSettings::IsValueCreated() &&
                      TroveUI::RmxImageSettings::Value().GetTroveLoggedIn();
    m_paintItemStyles = m_paintLoggedIn && systemVariableIsOne(L"DWGTITLED");
    QTreeView::paintEvent(event);
}

void CXrefTreeCtrl::mousePressEvent(QMouseEvent* event)
{
    hideToolTip();
    const ScopedCount gesture(m_userGestures);
    if (event->button() == Qt::RightButton) {
        // The context menu that follows moves the selection itself; the press only takes the
        // focus, as it does in the other views.
        m_originFlag = false;
        setFocus(Qt::MouseFocusReason);
        event->accept();
        return;
    }
    if (event->button() != Qt::LeftButton) {
        QTreeView::mousePressEvent(event);
        return;
    }
    const std::vector<CXrefPanelCtrlItem*> before = GetSelectedItems();
    m_originFlag = false;
    if (!indexAt(event->position().toPoint()).isValid()) {
        // Below the last node there is nothing to select, and the selection stays.
        setFocus(Qt::MouseFocusReason);
        event->accept();
    } else {
        const ScopedValue<ChangeSource> source(m_changeSource, ChangeSource::Mouse);
        // One node is selected at a time: Control does not take the selection away.
        QMouseEvent plain(event->type(), event->position(), event->scenePosition(),
                          event->globalPosition(), event->button(), event->buttons(),
                          event->modifiers() & ~Qt::ControlModifier);
        QTreeView::mousePressEvent(&plain);
        event->setAccepted(plain.isAccepted());
    }
    m_originFlag = true;
    // A click that leaves the selection as it was still tells the panel which node it is on.
    if (GetSelectedItems() == before)
        emit ItemsSelected(before, false);
}

void CXrefTreeCtrl::mouseMoveEvent(QMouseEvent* event)
{
    // Dragging with a button held neither selects other nodes nor drags nodes away.
    if (event->buttons() != Qt::NoButton) {
        event->accept();
        return;
    }
    QTreeView::mouseMoveEvent(event);
}

void CXrefTreeCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    const ScopedValue<ChangeSource> source(m_changeSource, ChangeSource::Mouse);
    QTreeView::mouseReleaseEvent(event);
}

void CXrefTreeCtrl::mouseDoubleClickEvent(QMouseEvent* event)
{
    hideToolTip();
    const ScopedCount gesture(m_userGestures);
    const ScopedValue<ChangeSource> source(m_changeSource, ChangeSource::Mouse);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && isRoot(index) && isExpanded(index)) {
        // Everything a double click does but fold the root away.
        QAbstractItemView::mouseDoubleClickEvent(event);
        return;
    }
    QTreeView::mouseDoubleClickEvent(event);
}

void CXrefTreeCtrl::keyPressEvent(QKeyEvent* event)
{
    const ScopedCount gesture(m_userGestures);
    const ScopedValue<ChangeSource> source(m_changeSource, ChangeSource::Keyboard);
    switch (event->key()) {
    case Qt::Key_F2: {
        const QModelIndexList selected = selectionModel()->selectedIndexes();
        if (selected.size() == 1)
            EditLabel(CXrefTreeModel::NodeOf(selected.front()));
        event->accept();
        return;
    }
    default:
        break;
    }
    if (collapsesRoot(*event)) {
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Asterisk) {
        // Opens everything below the current node, as far down as nodes may open.
        if (const HTREEITEM node = CXrefTreeModel::NodeOf(currentIndex()))
            expandBelow(node);
        event->accept();
        return;
    }
    QTreeView::keyPressEvent(event);
}

void CXrefTreeCtrl::keyboardSearch(const QString&)
{
    // Typed letters never jump to a node: names here are long paths that share their start, and
    // the keys belong to the host's shortcuts.
}

void CXrefTreeCtrl::contextMenuEvent(QContextMenuEvent* event)
{
    hideToolTip();
    m_originFlag = false;
    // A menu asked for from the keyboard opens where the pointer is, as the mouse would have.
    const QPoint viewportPos = event->reason() == QContextMenuEvent::Keyboard
                                   ? viewport()->mapFromGlobal(QCursor::pos())
                                   : event->pos();
    const QModelIndex index = indexAt(viewportPos);
    if (index.isValid())
        SelectItem(CXrefTreeModel::NodeOf(index));
    else
        selectionModel()->clear();
    event->accept();
    emit ContextMenu(this, viewport()->mapTo(this, viewportPos), GetSelectedItems(), false);
}

bool CXrefTreeCtrl::event(QEvent* event)
{
    // A command chosen in the context menu the panel showed for the tree.
    if (event->type() == CZuUiCommandEvent::EventType()) {
        OnCommand(static_cast<CZuUiCommandEvent*>(event)->CommandId());
        return true;
    }
    return QTreeView::event(event);
}

bool CXrefTreeCtrl::OnCommand(unsigned id)
{
    if (!RoutesCommand(id))
        return false;
    emit ContextMenuSelection(Trove::MenuItems(int(id)), GetSelectedItems());
    return true;
}

bool CXrefTreeCtrl::RoutesCommand(unsigned id)
{
    return (id >= 3 && id <= 39) || id == 46 || id == 47 || (id >= 1000 && id <= 1040);
}

bool CXrefTreeCtrl::EditLabel(HTREEITEM node)
{
    if (!node || !m_model->Holds(node))
        return false;
    settleBatch();
    return edit(m_model->IndexOf(node), QAbstractItemView::AllEditTriggers, nullptr);
}

bool CXrefTreeCtrl::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    // Only F2 and EditLabel ask with every trigger; the view's own triggers are all off.
    if (trigger != QAbstractItemView::AllEditTriggers)
        return QTreeView::edit(index, trigger, event);
    const HTREEITEM node = CXrefTreeModel::NodeOf(index);
    if (!node || index.model() != m_model || !node->item)
        return false;
    if (m_labelEdit) {
        if (m_labelEdit->editor)
            return false;
        m_labelEdit.reset(); // its editor went without a word
    }
    if (!node->item->IsPropertyEditable(Trove::XrefProperties::Name, 0))
        return false;

    const QPersistentModelIndex target(index);
    m_labelEdit = LabelEdit{target, node->text.toStdWString(), nullptr, std::nullopt};
    QPointer<CXrefTreeCtrl> self(this);
    emit PropertyEditStarting(Trove::XrefProperties::Name, m_labelEdit->textBefore);
    if (!self)
        return false;
    if (!m_labelEdit || !target.isValid()) {
        // The panel removed the node, or ended the rename, while it was being told.
        if (m_labelEdit)
            endLabelEdit(std::nullopt);
        return false;
    }
    if (!QTreeView::edit(target, trigger, event)) {
        endLabelEdit(std::nullopt);
        return false;
    }
    QWidget* editor = indexWidget(target);
    m_labelEdit->editor = editor;
    if (editor) {
        editor->installEventFilter(this);
        // A node removed under the editor takes the editor along without closing it.
        connect(editor, &QObject::destroyed, this, [this, editor] {
            if (m_labelEdit && (!m_labelEdit->editor || m_labelEdit->editor == editor))
                endLabelEdit(std::nullopt);
        });
    }
    return true;
}

void CXrefTreeCtrl::commitData(QWidget* editor)
{
    // The label keeps its text: the new one is only reported, and the panel decides.
    if (m_labelEdit && m_labelEdit->editor == editor) {
        if (const auto* line = qobject_cast<const QLineEdit*>(editor))
            m_labelEdit->committed = line->text();
    }
}

void CXrefTreeCtrl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (m_labelEdit && m_labelEdit->editor == editor) {
        std::optional<QString> text = m_labelEdit->committed;
        if (hint == QAbstractItemDelegate::RevertModelCache)
            text.reset();
        QPointer<CXrefTreeCtrl> self(this);
        QPointer<QWidget> keep(editor);
        endLabelEdit(text);
        if (!self)
            return;
        if (!keep)
            return;
    }
    QTreeView::closeEditor(editor, hint);
}

bool CXrefTreeCtrl::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (!m_labelEdit || watched != m_labelEdit->editor ||
        (type != QEvent::KeyPress && type != QEvent::ShortcutOverride))
        return QTreeView::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Escape)
        return QTreeView::eventFilter(watched, event);
    // Enter and Escape belong to the rename, not to the host's shortcuts. The rename ends here,
    // with the key, rather than through the delegate's posted commit: a posted end could arrive
    // after the next rename began and close that one instead.
    event->accept();
    if (type == QEvent::ShortcutOverride)
        return true;
    QWidget* editor = m_labelEdit->editor;
    if (key == Qt::Key_Escape) {
        closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
    } else {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::SubmitModelCache);
    }
    return true;
}

void CXrefTreeCtrl::endLabelEdit(std::optional<QString> text)
{
    if (!m_labelEdit)
        return;
    const std::wstring before = m_labelEdit->textBefore;
    m_labelEdit.reset();
    if (text)
        emit PropertyEdited(Trove::XrefProperties::Name, before, text->toStdWString());
    else
        emit PropertyEditAborted(Trove::XrefProperties::Name);
}

bool CXrefTreeCtrl::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        updateToolTip(static_cast<QMouseEvent*>(event)->position().toPoint());
        break;
    case QEvent::Leave:
        hideToolTip();
        break;
    default:
        break;
    }
    return QTreeView::viewportEvent(event);
}

void CXrefTreeCtrl::updateToolTip(const QPoint& viewportPos)
{
    if (!systemVariableIsOne(L"TOOLTIPS"))
        return;
    KvToolTipService* service = KvToolTipService::Instance();
    if (!service)
        return;
    const QModelIndex index = indexAt(viewportPos);
    const QRect rect = index.isValid() ? visualRect(index) : QRect();
    if (rect == m_lastTipRect && service->IsShowing())
        return;
    CXrefPanelCtrlItem* item = ItemFromIndex(index);
    const std::unique_ptr<KvNameDescriptionToolTipInfo> info =
        item ? ItemToolTip::Create(*item) : nullptr;
    // Even without a tip the old one goes and the service is asked to show: it then shows
    // nothing, and the next node starts afresh.
    service->Hide();
    service->SetToolTipInfo(info.get());
    service->Show(QRect(viewport()->mapToGlobal(rect.topLeft()), rect.size()));
    m_lastTipRect = rect;
}

void CXrefTreeCtrl::hideToolTip()
{
    if (KvToolTipService* service = KvToolTipService::Instance())
        service->Hide();
}

CXrefPanelCtrlItem* CXrefTreeCtrl::ItemFromIndex(const QModelIndex& index) const
{
    if (index.model() != m_model)
        return nullptr;
    const HTREEITEM node = CXrefTreeModel::NodeOf(index);
    return node ? node->item : nullptr;
}

QModelIndex CXrefTreeCtrl::IndexFromItem(const CXrefPanelCtrlItem& item) const
{
    const HTREEITEM node = item.GetTreeItem();
    if (!node || node->item != &item || !m_model->Holds(node))
        return {};
    return m_model->IndexOf(node);
}

CXrefPanelCtrlItem* CXrefTreeCtrl::ItemAt(const QPoint& point) const
{
    return ItemFromIndex(indexAt(point));
}

void CXrefTreeCtrl::SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark)
{
    m_itemImages[0] = light;
    m_itemImages[1] = dark;
    viewport()->update();
}

const CZuUiImageList* CXrefTreeCtrl::ItemImageList() const
{
    return m_itemImages[CZuUiTheme::Instance().IsDarkTheme() ? 1 : 0];
}

void CXrefTreeCtrl::applyTheme()
{
    setPalette(CZuUiTheme::Instance().Palette());
    viewport()->update();
}
