#include "panel/XrefPanelCtrl.h"

#include "framework/ControlId.h"
#include "framework/ZuUiCommandEvent.h"
#include "framework/ZuUiImageList.h"
#include "framework/ZuUiMenu.h"
#include "framework/ZuUiTheme.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl_p.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefCoupledGroupCtrl.h"
#include "views/XrefGroupCtrl.h"
#include "views/XrefPreview.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

std::map<Trove::MenuItems, std::wstring> CXrefPanelCtrl::m_MenuItemstrings;

CXrefPanelCtrl::CXrefPanelCtrl(CXREFPalette* palette, std::shared_ptr<CXrefToolBar> toolBar,
                               std::shared_ptr<CXrefMessageBox> messageBox, bool troveMode,
                               FileReferenceViewType referenceView, DetailsViewType detailsView,
                               int listOption, bool listFlag)
    : QWidget(nullptr),
      d(std::make_unique<CXrefPanelCtrlPrivate>(palette, std::move(toolBar), std::move(messageBox),
                                                troveMode, referenceView, detailsView, listOption,
                                                listFlag))
{
    if (d->toolBar)
        d->toolBar->SetParentPanel(this);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            qOverload<>(&QWidget::update));
}

CXrefPanelCtrl::~CXrefPanelCtrl()
{
    // The derived part is gone already: nothing a child raises from here on may reach a handler.
    d->input.reset();
    unhookChildren();
    // The tool bar and the message strip are shared with the host, which may keep them longer
    // than the panel: they must neither be deleted with the panel's children nor keep pointing
    // at it.
    if (d->toolBar) {
        if (d->toolBar->ParentPanel() == this)
            d->toolBar->SetParentPanel(nullptr);
        if (d->toolBar->parent() == this)
            d->toolBar->setParent(nullptr);
    }
    if (d->messageBox && d->messageBox->parent() == this)
        d->messageBox->setParent(nullptr);
}

bool CXrefPanelCtrl::Create(const wchar_t* windowName, const QRect& rect, QWidget* parent, int id)
{
    if (d->created)
        return false;
    setParent(parent);
    if (windowName)
        setWindowTitle(QString::fromWCharArray(windowName));
    setGeometry(rect);
    ControlId::Set(this, id);

    if (d->toolBar) {
        // A host may hand over a tool bar whose window it has not made; the panel makes it then.
        if (!d->toolBar->IsCreated())
            d->toolBar->Create(this);
        d->toolBar->show();
        connect(d->toolBar.get(), &CXrefToolBar::MenuSelection, this,
                &CXrefPanelCtrl::OnMenuSelection);
        connect(d->toolBar.get(), &CXrefToolBar::DisplayHelp, this, &CXrefPanelCtrl::OnDisplayHelp);
    }

    // Every child event is hooked as its child is made, in the order hosts have always seen
    // them handled: list, tree, details, then the views' edit events.
    PanelLayout::Hooks hooks;
    hooks.listCreated = [this](CTroveListCtrl& list) {
        connect(&list, &CTroveListCtrl::ContextMenu, this, &CXrefPanelCtrl::onContextMenu);
        connect(&list, &CTroveListCtrl::ContextMenuSelection, this,
                &CXrefPanelCtrl::OnMenuSelection);
        connect(&list, &CTroveListCtrl::StatusColumnDoubleClicked, this,
                &CXrefPanelCtrl::OnStatusColumnDoubleClicked);
        connect(&list, &CTroveListCtrl::ItemsSelected, this, &CXrefPanelCtrl::OnItemsSelected);
        connect(&list, &CTroveListCtrl::SortCriteriaChanged, this,
                &CXrefPanelCtrl::OnSortCriteriaChanged);
    };
    hooks.treeCreated = [this](CXrefTreeCtrl& tree) {
        connect(&tree, &CXrefTreeCtrl::ContextMenu, this, &CXrefPanelCtrl::onContextMenu);
        connect(&tree, &CXrefTreeCtrl::ContextMenuSelection, this,
                &CXrefPanelCtrl::OnMenuSelection);
        connect(&tree, &CXrefTreeCtrl::ItemsSelected, this, &CXrefPanelCtrl::OnItemsSelected);
        // Removing a subtree reports each descendant before it goes; the panel must release the
        // descendant's list row share at that moment.
        connect(&tree, &CXrefTreeCtrl::ItemToBeDeleted, this,
                &CXrefPanelCtrl::onTreeItemToBeDeleted);
    };
    hooks.detailsCreated = [this](CXrefPropListCtrl& details) {
        d->details.SetList(&details);
        hookEdits(&details);
    };
    hooks.viewsCreated = [this] {
        hookEdits(GetListCtrl());
        hookEdits(GetTreeCtrl());
    };
    hooks.storedLowerGroup = [this](double& ratio, bool& shown) {
        GetStoredLowerGroup(ratio, shown);
    };
    d->layout.CreateChildren(*this, d->troveMode, hooks);
    d->created = true;

    if (d->messageBox) {
        if (d->messageBox->parentWidget() != this)
            d->messageBox->setParent(this);
        d->messageBox->show();
    }

    // The filter bar waits hidden until the host asks for it.
    d->filterBar = new FilterBar(this);
    d->filterBar->hide();
    d->layout.SetFilterBar(d->filterBar);
    connect(d->filterBar, &FilterBar::FilterChanged, this, [this] {
        const ReferenceFilter filter = d->filterBar->Filter();
        SetFilter(filter.text, filter.problemsOnly);
    });

    GetListCtrl()->SetColumnDipWidths(GetStoredColumnDipWidths());
    UpdateStateImageList();
    InitContextMenu();

    // Hooked only now that the pages are in: adding the first page of a group brings it to
    // front, and that must not overwrite the view types the host asked for.
    for (CXrefGroupCtrl* group : {GetUpperGroupCtrl(), GetLowerGroupCtrl()})
        connect(group, &CZuUiGroupCtrl::paneVisibilityChanging, this,
                &CXrefPanelCtrl::OnPaneVisibilityChanging);
    applyViewTypes();

    d->input = std::make_unique<PanelInput>(
        *this, [this](QWidget& widget) { d->layout.ActivateGroupOf(&widget); },
        [this](QWidget& widget, QMouseEvent& event) { PreTranslateMessage(&widget, &event); });
    OnSize(0, width(), height());
    return true;
}

template <class Source> void CXrefPanelCtrl::hookEdits(Source* source)
{
    if (!source)
        return;
    connect(source, &Source::PropertyEditStarting, this, &CXrefPanelCtrl::OnPropertyEditStarting);
    // The views give the text before the edit first; the handler takes the new text first.
    connect(source, &Source::PropertyEdited, this,
            [this](XrefProperties property, const std::wstring& before, const std::wstring& after) {
                OnPropertyEdited(property, after, before);
            });
    connect(source, &Source::PropertyEditAborted, this, &CXrefPanelCtrl::OnPropertyEditAborted);
}

void CXrefPanelCtrl::onContextMenu(QWidget* source, const QPoint& point,
                                   const std::vector<CXrefPanelCtrlItem*>& items, bool flag)
{
    if (source)
        OnContextMenu_(*source, point, items, flag);
}

void CXrefPanelCtrl::applyViewTypes()
{
    const bool reference = d->layout.ShowReferencePage(d->layout.ReferenceView());
    const bool details = d->layout.ShowDetailsPage(d->layout.DetailsView());
    if (!reference || !details)
        d->layout.SettleViewTypes();
}

void CXrefPanelCtrl::unhookChildren()
{
    if (d->toolBar)
        d->toolBar->__RemoveAllEventHandlers(this);
    for (QObject* child :
         {static_cast<QObject*>(GetUpperGroupCtrl()), static_cast<QObject*>(GetLowerGroupCtrl()),
          static_cast<QObject*>(GetListCtrl()), static_cast<QObject*>(GetTreeCtrl()),
          static_cast<QObject*>(GetDetailsCtrl()), static_cast<QObject*>(GetPreviewCtrl())}) {
        if (child)
            QObject::disconnect(child, nullptr, this, nullptr);
    }
}

void CXrefPanelCtrl::SetDetailColumnDipWidths(std::vector<int>& widths)
{
    d->layout.SetColumnDipWidths(widths);
}

bool CXrefPanelCtrl::IsCreated() const
{
    return d->created;
}

bool CXrefPanelCtrl::LoadTooltipSettings(QDomNode node)
{
    bool showDetail = d->layout.ShowsLowerPane();
    if (!d->toolTips.Load(node, showDetail))
        return false;
    d->layout.SetShowLowerPane(showDetail);
    UpdateContextMenu();
    SetPreDetailsRect();
    return true;
}

bool CXrefPanelCtrl::SaveTooltipSettings(QDomNode node)
{
    return d->toolTips.Save(node, d->layout.ShowsLowerPane());
}

void CXrefPanelCtrl::SetIconSize(bool large)
{
    buildStateImageLists(large, large);
}

void CXrefPanelCtrl::UpdateStateImageList()
{
    buildStateImageLists(GetListCtrl() && GetListCtrl()->GetStateImageFlag(),
                         GetTreeCtrl() && GetTreeCtrl()->GetStateImageFlag());
}

void CXrefPanelCtrl::buildStateImageLists(bool listFlag, bool treeFlag)
{
    const auto rebuild = [this](CZuUiImageList& list, bool flag, int view) {
        list.Create(QSize(16, 16), CZuUiImageList::ColorDepth32 | CZuUiImageList::Mask, 10, 2);
        FillStateImageList(list, flag, view);
    };
    if (GetListCtrl()) {
        GetListCtrl()->SetStateImageFlag(listFlag);
        rebuild(GetListCtrl()->StateImageList(), listFlag, 0);
        GetListCtrl()->viewport()->update();
    }
    if (GetTreeCtrl()) {
        GetTreeCtrl()->SetStateImageFlag(treeFlag);
        rebuild(GetTreeCtrl()->StateImageList(), treeFlag, 1);
        GetTreeCtrl()->viewport()->update();
    }
}

void CXrefPanelCtrl::SetToolTipStyle() {}

void CXrefPanelCtrl::EnableHostModStatus(bool enabled, bool modified)
{
    d->hostModStatusEnabled = enabled;
    d->hostModified = modified;
}

bool CXrefPanelCtrl::IsHostModStatusEnabled() const
{
    return d->hostModStatusEnabled;
}

bool CXrefPanelCtrl::IsHostModified() const
{
    return d->hostModified;
}

CXrefPanelCtrl::FileReferenceViewType CXrefPanelCtrl::GetReferenceViewType() const
{
    return d->layout.ReferenceView();
}

CXrefPanelCtrl::DetailsViewType CXrefPanelCtrl::GetDetailsViewType() const
{
    return d->layout.DetailsView();
}

CXrefPanelCtrl::DetailsViewType CXrefPanelCtrl::GetActiveDetailViewType() const
{
    return d->layout.DetailsView();
}

bool CXrefPanelCtrl::GetEnableSelect() const
{
    return d->selection.IsEnabled();
}

const std::vector<CXrefPanelCtrlItem*>& CXrefPanelCtrl::GetSelectedItems() const
{
    return d->selection.Items();
}

bool CXrefPanelCtrl::IsTroveMode() const
{
    return d->troveMode;
}

ToolTipMenuSettings CXrefPanelCtrl::GetToolTipMenuSettings() const
{
    return d->toolTips.Current();
}

bool CXrefPanelCtrl::IsLowerPaneShown() const
{
    return d->layout.ShowsLowerPane();
}

CTroveListCtrl* CXrefPanelCtrl::GetListCtrl() const
{
    return d->layout.List();
}

CXrefTreeCtrl* CXrefPanelCtrl::GetTreeCtrl() const
{
    return d->layout.Tree();
}

CXrefPreview* CXrefPanelCtrl::GetPreviewCtrl() const
{
    return d->layout.Preview();
}

CXrefPropListCtrl* CXrefPanelCtrl::GetDetailsCtrl() const
{
    return d->layout.Details();
}

CXrefGroupCtrl* CXrefPanelCtrl::GetUpperGroupCtrl() const
{
    return d->layout.UpperGroup();
}

CXrefGroupCtrl* CXrefPanelCtrl::GetLowerGroupCtrl() const
{
    return d->layout.LowerGroup();
}

CXrefCoupledGroupCtrl* CXrefPanelCtrl::GetCoupledGroupCtrl() const
{
    return d->layout.Splitter();
}

const std::shared_ptr<CXrefToolBar>& CXrefPanelCtrl::GetToolBar() const
{
    return d->toolBar;
}

const std::shared_ptr<CXrefMessageBox>& CXrefPanelCtrl::GetMessageBox() const
{
    return d->messageBox;
}

CXREFPalette* CXrefPanelCtrl::GetPalette() const
{
    return d->palette;
}

bool CXrefPanelCtrl::IsValidRefStatusIcon(RefStatus::RefIcon icon)
{
    return RefStatus::IsValidIcon(icon);
}

void CXrefPanelCtrl::BeginUpdate()
{
    if (GetListCtrl()) {
        GetListCtrl()->setUpdatesEnabled(false);
        GetListCtrl()->Model().BeginBatch();
    }
    if (GetTreeCtrl()) {
        GetTreeCtrl()->setUpdatesEnabled(false);
        GetTreeCtrl()->BeginBatch();
    }
}

void CXrefPanelCtrl::InsertRootItem(CXrefPanelCtrlItem& item)
{
    if (!GetTreeCtrl() || !GetListCtrl())
        return;
    item.m_treeItem = GetTreeCtrl()->InsertItem(item, nullptr);
    item.m_listRowLink = GetListCtrl()->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::InsertItem(CXrefPanelCtrlItem& item, const CXrefPanelCtrlItem& parent,
                                const CXrefPanelCtrlItem* sharedWith)
{
    if (!GetTreeCtrl() || !GetListCtrl())
        return;
    const HTREEITEM parentNode = parent.m_treeItem;
    item.m_treeItem = GetTreeCtrl()->InsertItem(item, parentNode);
    // The root opens once, with its first child, and stays as the user leaves it; deeper parents
    // open with every insertion.
    if (GetTreeCtrl()->GetCount() == 2 || parentNode != GetTreeCtrl()->GetRootItem())
        GetTreeCtrl()->Expand(parentNode);

    if (sharedWith && sharedWith->m_listRowLink) {
        if (item.m_listRowLink != sharedWith->m_listRowLink) {
            if (item.m_listRowLink)
                item.m_listRowLink->Items().erase(&item);
            item.m_listRowLink = sharedWith->m_listRowLink;
        }
        item.m_listRowLink->Items().insert(&item);
        OnSharedRowItemInserted(*sharedWith);
        return;
    }
    item.m_listRowLink = GetListCtrl()->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::OnTreeItemToBeDeleted(CXrefPanelCtrlItem& item)
{
    boost::shared_ptr<CTroveListCtrlItem>& link = item.m_listRowLink;
    if (!link)
        return;
    link->Items().erase(&item);
    if (GetListCtrl() && link.use_count() == 1) {
        GetListCtrl()->DeleteRow(*link);
        link.reset();
        OnItemRemoved(item);
        return;
    }
    if (!link->Items().empty())
        OnSharedRowOwnerChanged(**link->Items().begin());
}

void CXrefPanelCtrl::onTreeItemToBeDeleted(CXrefPanelCtrlItem* item)
{
    if (item)
        OnTreeItemToBeDeleted(*item);
}

CXrefPanelCtrlItem* CXrefPanelCtrl::GetRootItem() const
{
    const HTREEITEM root = GetTreeCtrl() ? GetTreeCtrl()->GetRootItem() : nullptr;
    return root ? root->item : nullptr;
}

CXrefPanelCtrlItem* CXrefPanelCtrl::GetParentItem(const CXrefPanelCtrlItem& item) const
{
    const HTREEITEM node = item.m_treeItem;
    return node && node->parent ? node->parent->item : nullptr;
}

Trove::ICXrefPanelCtrlItem&
CXrefPanelCtrl::GetParentItem(const Trove::ICXrefPanelCtrlItem& item) const
{
    const auto* panelItem = dynamic_cast<const CXrefPanelCtrlItem*>(&item);
    CXrefPanelCtrlItem* parent = panelItem ? GetParentItem(*panelItem) : nullptr;
    if (parent)
        return *parent;
    return const_cast<Trove::ICXrefPanelCtrlItem&>(item);
}

std::vector<CXrefPanelCtrlItem*> CXrefPanelCtrl::GetChildren(const CXrefPanelCtrlItem& item) const
{
    return GetTreeCtrl() ? GetTreeCtrl()->GetChildren(item.m_treeItem)
                         : std::vector<CXrefPanelCtrlItem*>();
}

int CXrefPanelCtrl::GetUniqueXrefCount() const
{
    const int rows = GetListCtrl() ? GetListCtrl()->GetItemCount() : 0;
    return rows < 2 ? 0 : rows - 1;
}

void CXrefPanelCtrl::LoadMenuItemStrings()
{
    ContextMenus::LoadTexts(m_MenuItemstrings);
}

void CXrefPanelCtrl::LoadMenuItemString(Trove::MenuItems item, unsigned id)
{
    ContextMenus::LoadText(m_MenuItemstrings, item, id);
}

// --- Layout and view modes ----------------------------------------------------------------------

void CXrefPanelCtrl::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    OnSize(0, width(), height());
}

void CXrefPanelCtrl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), CZuUiTheme::Instance().GetColor(CZuUiTheme::Background));
}

void CXrefPanelCtrl::OnSize(unsigned /*type*/, int cx, int cy)
{
    if (d->created)
        d->layout.Resize(cx, cy, d->toolBar.get(), d->messageBox.get());
}

void CXrefPanelCtrl::SetPreDetailsRect()
{
    d->layout.SetPreDetailsRect();
}

int CXrefPanelCtrl::OnPaneVisibilityChanging(QWidget* pane, unsigned flags)
{
    if (d->layout.PaneVisibilityChanging(pane, flags)) {
        const std::vector<CXrefPanelCtrlItem*> selection = d->selection.Items();
        OnItemsSelected(selection, true);
    }
    return 0;
}

void CXrefPanelCtrl::SetReferenceViewType(FileReferenceViewType type)
{
    d->layout.ShowReferencePage(type);
}

void CXrefPanelCtrl::SetDetailsViewType(DetailsViewType type)
{
    d->layout.ShowDetailsPage(type);
}

bool CXrefPanelCtrl::EnableWindow(bool enable)
{
    const bool wasDisabled = testAttribute(Qt::WA_ForceDisabled);
    setEnabled(enable);
    d->layout.EnableChildren(enable, d->toolBar.get());
    return wasDisabled;
}

int CXrefPanelCtrl::OnMouseActivate(QWidget* /*top*/, unsigned hitTest, unsigned /*message*/)
{
    constexpr unsigned kClientArea = 1;
    constexpr unsigned kFirstFrameworkArea = 221;
    if (hitTest == kClientArea || hitTest >= kFirstFrameworkArea)
        d->layout.ActivateGroupOf(QApplication::widgetAt(QCursor::pos()));
    return 1;
}

std::vector<int> CXrefPanelCtrl::GetColumnDipWidths() const
{
    return d->layout.ColumnDipWidths();
}

double CXrefPanelCtrl::GetTopToWholeRatio() const
{
    return d->layout.TopToWholeRatio();
}

void CXrefPanelCtrl::GetLowerGroup(double& ratio, bool& shown) const
{
    ratio = d->layout.TopToWholeRatio();
    shown = d->layout.ShowsLowerPane();
}

void CXrefPanelCtrl::InitPaletteTheme(CZuUiTheme& theme, const QFont& font)
{
    setFont(font);
    QPalette palette = theme.Palette();
    palette.setColor(QPalette::Window, theme.GetColor(CZuUiTheme::Background));
    palette.setColor(QPalette::WindowText, theme.GetColor(CZuUiTheme::Text));
    setPalette(palette);
    if (GetCoupledGroupCtrl())
        GetCoupledGroupCtrl()->update();
    update();
}

// --- Tool-tip menu commands ---------------------------------------------------------------------

void CXrefPanelCtrl::setToolTipChoice(int style, int size)
{
    d->toolTips.SetStyleAndSize(style, size);
    UpdateContextMenu();
}

void CXrefPanelCtrl::OnClassic()
{
    setToolTipChoice(0, d->toolTips.Current().previewSize);
}

void CXrefPanelCtrl::OnPreviewSmall()
{
    setToolTipChoice(1, 0);
}

void CXrefPanelCtrl::OnPreviewMedium()
{
    setToolTipChoice(1, 1);
}

void CXrefPanelCtrl::OnPreviewLarge()
{
    setToolTipChoice(1, 2);
}

void CXrefPanelCtrl::OnDetails()
{
    setToolTipChoice(2, d->toolTips.Current().previewSize);
}

void CXrefPanelCtrl::OnPreviewDetailsSmall()
{
    setToolTipChoice(3, 0);
}

void CXrefPanelCtrl::OnPreviewDetailsMedium()
{
    setToolTipChoice(3, 1);
}

void CXrefPanelCtrl::OnPreviewDetailsLarge()
{
    setToolTipChoice(3, 2);
}

void CXrefPanelCtrl::OnPreviewDetailsPane()
{
    d->layout.SetShowLowerPane(!d->layout.ShowsLowerPane());
    SetPreDetailsRect();
    UpdateContextMenu();
}

void CXrefPanelCtrl::OnTooltipClose()
{
    UpdateContextMenu();
    const std::vector<CXrefPanelCtrlItem*> selection = d->selection.Items();
    OnMenuSelection(Trove::TooltipClose, selection);
}

void CXrefPanelCtrl::runToolTipCommand(unsigned command)
{
    switch (command) {
    case Trove::TooltipClassic:
        return OnClassic();
    case Trove::PreviewSmall:
        return OnPreviewSmall();
    case Trove::PreviewMedium:
        return OnPreviewMedium();
    case Trove::PreviewLarge:
        return OnPreviewLarge();
    case Trove::TooltipDetails:
        return OnDetails();
    case Trove::PreviewDetailsSmall:
        return OnPreviewDetailsSmall();
    case Trove::PreviewDetailsMedium:
        return OnPreviewDetailsMedium();
    case Trove::PreviewDetailsLarge:
        return OnPreviewDetailsLarge();
    case Trove::PreviewDetailsPane:
        return OnPreviewDetailsPane();
    case Trove::TooltipClose:
        return OnTooltipClose();
    default:
        return; // dismissed, or not one of the menu's commands
    }
}

// --- Menus --------------------------------------------------------------------------------------

bool CXrefPanelCtrl::InsertMenuW(QMenu& menu, Trove::MenuItems item, unsigned flags, QMenu* subMenu)
{
    LoadMenuItemStrings();
    return ContextMenus::Insert(menu, item, flags, subMenu, m_MenuItemstrings);
}

bool CXrefPanelCtrl::ModifyMenuString(QMenu& menu, unsigned position, unsigned flags,
                                      Trove::MenuItems item)
{
    LoadMenuItemStrings();
    return ContextMenus::ModifyString(menu, position, flags, item, m_MenuItemstrings);
}

void CXrefPanelCtrl::EnableMenuItem(Trove::MenuItems item, unsigned flags)
{
    if (d->toolBar)
        d->toolBar->EnableMenuItem(item, flags);
}

void CXrefPanelCtrl::InitContextMenu()
{
    d->menus.Build();
    UpdateContextMenu();
}

void CXrefPanelCtrl::UpdateContextMenu()
{
    d->menus.Update(d->toolTips.Current(), d->layout.ShowsLowerPane());
}

void CXrefPanelCtrl::ShowContextMenu(QPoint screenPoint)
{
    QMenu* root = d->menus.Root();
    if (!root)
        return;
    d->menus.EnableStyleEntry(ContextMenus::ToolTipsOn());
    runToolTipCommand(
        CZuUiMenu::TrackPopupMenu(root, CZuUiMenu::TrackRightButton, screenPoint, this));
}

void CXrefPanelCtrl::AppendToolTipContextMenu(QMenu& menu)
{
    ContextMenus::AppendToolTipEntries(menu, d->toolTips.Current(), d->layout.ShowsLowerPane());
}

QMenu* CXrefPanelCtrl::GetToolTipMenu() const
{
    return d->menus.Root();
}

void CXrefPanelCtrl::OnContextMenu_(QWidget& source, QPoint point,
                                    const std::vector<CXrefPanelCtrlItem*>& items, bool flag)
{
    std::unique_ptr<QMenu> menu = CZuUiMenu::CreatePopupMenu();
    FillContextMenu(*menu, items, flag);
    // An empty menu is never shown: the host had nothing to offer for these items.
    if (CZuUiMenu::GetMenuItemCount(menu.get()) <= 0)
        return;
    const unsigned command =
        CZuUiMenu::TrackPopupMenu(menu.get(), 0, source.mapToGlobal(point), &source);
    CZuUiCommandEvent::Post(&source, command);
}

bool CXrefPanelCtrl::PreTranslateMessage(QObject* receiver, QEvent* event)
{
    if (!receiver || !event || event->type() != QEvent::MouseButtonRelease ||
        !receiver->isWidgetType())
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::RightButton)
        return false;
    // The views open their own context menus; their events arrive at their viewports, headers
    // and editors, so the test is whether the widget lies inside one of them.
    const auto* widget = static_cast<const QWidget*>(receiver);
    for (const QWidget* view :
         {static_cast<const QWidget*>(GetListCtrl()), static_cast<const QWidget*>(GetTreeCtrl())}) {
        if (view && (view == widget || view->isAncestorOf(widget)))
            return false;
    }
    ShowContextMenu(mouse->globalPosition().toPoint());
    return false;
}
