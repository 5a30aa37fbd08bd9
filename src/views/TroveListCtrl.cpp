#include "views/TroveListCtrl.h"
#include "views/TroveListAccessible_p.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "host/SystemVariables.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "resources/TroveResources.h"
#include "services/RmxImageSettings.h"
#include "views/ListPanel_p.h"
#include "views/TroveListCtrl_p.h"
#include "views/TroveListDelegate_p.h"
#include "views/TroveListModel_p.h"
#include "views/TroveListSorter_p.h"
#include "views/editors/InPlaceEditCtrl.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <boost/make_shared.hpp>

namespace {

using Col = Trove::ListViewColumn;

constexpr int kColumnCount = Col::Count;
constexpr int kDefaultDipWidths[kColumnCount] = {25, 18, 95, 72, 59, 72, 108, 152};
// Header texts of columns 2 to 7; the two icon columns have none.
constexpr unsigned kHeaderTextIds[kColumnCount] = {0, 0, 1035, 1031, 1059, 1032, 1033, 1034};

bool isRoutedCommand(int command)
{
    if (command >= 1000 && command <= 1040)
        return true;
    switch (command) {
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
    case 8:
    case 9:
    case 10:
    case 11:
    case 12:
    case 13:
    case 14:
    case 15:
    case 16:
    case 17:
    case 19:
    case 20:
    case 21:
    case 22:
    case 23:
    case 24:
    case 25:
    case 26:
    case 27:
    case 29:
    case 31:
    case 32:
    case 33:
    case 34:
    case 36:
    case 37:
    case 38:
    case 39:
    case 43:
    case 44:
    case 46:
    case 47:
        return true;
    default:
        return false;
    }
}

} // namespace

// --- Private ------------------------------------------------------------------------------------

CTroveListCtrlPrivate::CTroveListCtrlPrivate(CTroveListCtrl& list, bool stateImageFlag_,
                                             int sortColumn_, bool ascending_)
    : q(list), model(new CTroveListModel(&list)), stateImageFlag(stateImageFlag_),
      sortColumn(sortColumn_ < 0 ? int(Col::ReferenceName) : sortColumn_),
      secondarySortColumn(Col::ReferenceName), ascending(ascending_), toolTip(&list)
{}

bool CTroveListCtrlPrivate::troveLoggedIn()
{
    // Hosts create the settings before any view; a view without them counts as logged out.
    return TroveUI::RmxImageSettings::IsValueCreated() &&
           TroveUI::RmxImageSettings::Value().GetTroveLoggedIn();
}

int CTroveListCtrlPrivate::rowHeight() const
{
    // Rows are laid out lazily; before that the delegate's height is the row height.
    int height = model->rowCount() > 0 ? q.visualRect(model->index(0, 0)).height() : 0;
    if (height <= 0)
        height = q.itemDelegate()->sizeHint(QStyleOptionViewItem(), QModelIndex()).height();
    return std::max(1, height);
}

int CTroveListCtrlPrivate::specialRow() const
{
    return model->FindRow(specialRecord);
}

std::pair<int, int> CTroveListCtrlPrivate::hitTest(const QPoint& point) const
{
    const QModelIndex index = q.indexAt(point);
    if (!index.isValid())
        return {-1, -1};
    return {model->RowOf(index), index.column()};
}

QRect CTroveListCtrlPrivate::cellRect(int row, int column) const
{
    return q.visualRect(model->IndexOfRow(row, column));
}

CXrefPanelCtrl* CTroveListCtrlPrivate::panel() const
{
    return ListPanel::Find(&q);
}

void CTroveListCtrlPrivate::setFocusRow(int row)
{
    const QModelIndex index = model->IndexOfRow(row, Col::ReferenceName);
    if (!index.isValid())
        return;
    q.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void CTroveListCtrlPrivate::selectAllRows()
{
    const int special = troveLoggedIn() ? -1 : specialRow();
    model->AssignSelection([special](int row) { return row != special; });
}

void CTroveListCtrlPrivate::postRestretch()
{
    if (restretchPosted)
        return;
    restretchPosted = true;
    QMetaObject::invokeMethod(
        &q,
        [this] {
            restretchPosted = false;
            restretchLastColumn();
        },
        Qt::QueuedConnection);
}

void CTroveListCtrlPrivate::restretchLastColumn()
{
    QHeaderView* header = q.header();
    const int last = kColumnCount - 1;
    int others = 0;
    for (int column = 0; column < last; ++column)
        others += header->sectionSize(column);
    // The rest of the width, but never less than the header text needs.
    const int width = std::max(q.viewport()->width() - others, header->sectionSizeHint(last));
    if (header->sectionSize(last) != width)
        header->resizeSection(last, width);
    q.viewport()->update();
}

void CTroveListCtrlPrivate::applyStateColumnRule()
{
    QHeaderView* header = q.header();
    const bool inUse = q.IsTroveStateColumnInUse();
    // An unused column cannot be dragged open; Qt refuses to resize fixed sections.
    const QHeaderView::ResizeMode mode = inUse ? QHeaderView::Interactive : QHeaderView::Fixed;
    if (header->sectionResizeMode(Col::TroveState) != mode)
        header->setSectionResizeMode(Col::TroveState, mode);
    const int wanted = inUse ? stateColumnSavedWidth : 0;
    if ((!inUse || !stateColumnResizing) && header->sectionSize(Col::TroveState) != wanted) {
        header->resizeSection(Col::TroveState, wanted);
        postRestretch();
    }
}

bool CTroveListCtrlPrivate::onHeaderEvent(QEvent* event)
{
    QHeaderView* header = q.header();
    const auto dividerAt = [header](int x) {
        // The section whose right edge is within the grip margin of x, as the header decides
        // which section a drag resizes.
        const int grip = header->style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, header);
        const int visual = header->visualIndexAt(x);
        if (visual < 0)
            return -1;
        const int logical = header->logicalIndex(visual);
        const int left = header->sectionViewportPosition(logical);
        if (x < left + grip) {
            for (int v = visual - 1; v >= 0; --v) {
                if (!header->isSectionHidden(header->logicalIndex(v)))
                    return header->logicalIndex(v);
            }
            return -1;
        }
        return x > left + header->sectionSize(logical) - grip ? logical : -1;
    };
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return false;
        const int divider = dividerAt(mouse->position().toPoint().x());
        if (divider < 0)
            return false;
        if (divider == Col::TroveState) {
            if (!q.IsTroveStateColumnInUse())
                return true;
            stateColumnResizing = true;
        }
        dividerDragging = true;
        return false;
    }
    case QEvent::MouseButtonDblClick: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && dividerAt(mouse->position().toPoint().x()) >= 0)
            restretchAfterHeaderRelease = true;
        return false;
    }
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return false;
        if (dividerDragging) {
            dividerDragging = false;
            restretchAfterHeaderRelease = true;
            if (stateColumnResizing && q.IsTroveStateColumnInUse())
                stateColumnSavedWidth = header->sectionSize(Col::TroveState);
            stateColumnResizing = false;
        }
        if (restretchAfterHeaderRelease) {
            restretchAfterHeaderRelease = false;
            postRestretch();
        }
        return false;
    }
    default:
        return false;
    }
}

// --- Construction -------------------------------------------------------------------------------

CTroveListCtrl::CTroveListCtrl(bool stateImageFlag, int sortColumn, bool ascending, QWidget* parent)
    : QTreeView(parent),
      d(std::make_unique<CTroveListCtrlPrivate>(*this, stateImageFlag, sortColumn, ascending))
{
    setModel(d->model);
    setItemDelegate(new CTroveListDelegate(*this));
    // Every row has the same height; without this the view measures each row after a fill.
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(false);
    // The rows keep their own selection; Qt's selection model stays empty.
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);

    QStringList headers;
    for (unsigned id : kHeaderTextIds)
        headers << (id ? TroveUI::ResString(id) : QString());
    d->model->SetHeaderTexts(headers);
    QHeaderView* head = header();
    // The last column is stretched by the list itself, at the moments a user expects it: a
    // header that stretched it all the time would fight every divider drag.
    head->setStretchLastSection(false);
    head->setSectionsMovable(false);
    head->setMinimumSectionSize(0);
    head->setSectionsClickable(true);
    head->setSortIndicatorShown(true);
    head->viewport()->installEventFilter(this);
    connect(head, &QHeaderView::sectionClicked, this, [this](int column) {
        // A new column always starts ascending; the same column turns around.
        d->ascending = column != d->sortColumn ? true : !d->ascending;
        d->sortColumn = column;
        SetSortArrow(column);
        emit SortCriteriaChanged(column, d->ascending);
        SortItems();
    });
    connect(d->model, &CTroveListModel::rowSelectionChanged, viewport(),
            qOverload<>(&QWidget::update));
    // Assistive technology reads the list through its own table interface; its cells name rows
    // by their places, which every change of rows invalidates.
    CTroveListAccessible::InstallFactory();
    const auto rowsMoved = [this] {
        if (!QAccessible::isActive())
            return;
        if (auto* table =
                dynamic_cast<CTroveListAccessible*>(QAccessible::queryAccessibleInterface(this)))
            table->ClearCells();
    };
    connect(d->model, &QAbstractItemModel::layoutChanged, this, rowsMoved);
    connect(d->model, &QAbstractItemModel::modelReset, this, rowsMoved);
    connect(d->model, &QAbstractItemModel::rowsInserted, this, rowsMoved);
    connect(d->model, &QAbstractItemModel::rowsRemoved, this, rowsMoved);
    connect(d->model, &CTroveListModel::rowSelectionChanged, this, [this] {
        if (!QAccessible::isActive())
            return;
        QAccessibleEvent event(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&event);
    });
    connect(d->model, &CTroveListModel::rowsRefiltered, this, [this](bool selectionChanged) {
        if (selectionChanged && isVisible())
            d->raiseItemsSelected();
    });

    d->toolTip.Create(viewport());
    SetColumnDipWidths({});
    SetSortArrow(d->sortColumn);

    const auto applyTheme = [this] {
        setPalette(CZuUiTheme::Instance().Palette());
        viewport()->update();
    };
    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this, applyTheme);
}

CTroveListCtrl::~CTroveListCtrl()
{
    // An open editor ends into the list's signals; it must not outlive what it reports to.
    if (d->editor) {
        d->editor->disconnect(this);
        delete d->editor.data();
    }
}

CTroveListModel& CTroveListCtrl::Model() const
{
    return *d->model;
}

// --- Rows ---------------------------------------------------------------------------------------

boost::shared_ptr<CTroveListCtrlItem> CTroveListCtrl::InsertItem(CXrefPanelCtrlItem& item,
                                                                 bool hostDrawing)
{
    auto record = boost::make_shared<CTroveListCtrlItem>(*this);
    record->Items().insert(&item);
    d->model->AppendRow(*record);
    if (hostDrawing)
        d->specialRecord = record.get();
    return record;
}

bool CTroveListCtrl::DeleteRow(const CTroveListCtrlItem& record)
{
    if (d->specialRecord == &record)
        d->specialRecord = nullptr;
    return d->model->RemoveRow(d->model->FindRow(&record));
}

void CTroveListCtrl::DeleteAllItems()
{
    d->specialRecord = nullptr;
    d->model->RemoveAllRows();
}

int CTroveListCtrl::GetItemCount() const
{
    return d->model->RowCount();
}

int CTroveListCtrl::SpecialRow() const
{
    return d->specialRow();
}

CXrefPanelCtrlItem* CTroveListCtrl::ItemOfRow(int row) const
{
    const CTroveListRow* r = d->model->Row(row);
    if (!r || !r->data || r->data->Items().empty())
        return nullptr;
    return *r->data->Items().begin();
}

CXrefPanelCtrlItem* CTroveListCtrl::ItemFromIndex(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != d->model)
        return nullptr;
    return ItemOfRow(d->model->RowOf(index));
}

QModelIndex CTroveListCtrl::IndexFromItem(const CXrefPanelCtrlItem& item, int column) const
{
    const boost::shared_ptr<CTroveListCtrlItem>& link = item.GetListRowLink();
    if (!link || link->GetListCtrl() != this || link->Row() < 0)
        return {};
    return d->model->IndexOfRow(link->Row(), column);
}

CXrefPanelCtrlItem* CTroveListCtrl::ItemAt(const QPoint& point) const
{
    return ItemFromIndex(indexAt(point));
}

// --- Sorting ------------------------------------------------------------------------------------

void CTroveListCtrl::SortItems()
{
    const std::vector<int> order =
        CTroveListSorter(*d->model).Order(d->sortColumn, d->ascending, d->secondarySortColumn);
    d->model->ApplyOrder(order);
    viewport()->update();
}

void CTroveListCtrl::SetSortArrow(int column)
{
    if (column < 0 || column >= kColumnCount) {
        header()->setSortIndicator(-1, Qt::AscendingOrder);
        return;
    }
    // Qt draws its descending indicator as an arrow pointing up; an ascending list shows the
    // arrow pointing up, so the indicator is set the other way round.
    header()->setSortIndicator(column, d->ascending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

int CTroveListCtrl::GetSortColumn() const
{
    return d->sortColumn;
}

int CTroveListCtrl::GetSecondarySortColumn() const
{
    return d->secondarySortColumn;
}

bool CTroveListCtrl::IsSortAscending() const
{
    return d->ascending;
}

// --- Columns ------------------------------------------------------------------------------------

int CTroveListCtrl::DefaultColumnDipWidth(int column)
{
    return column >= 0 && column < kColumnCount ? kDefaultDipWidths[column] : 0;
}

void CTroveListCtrl::SetColumnDipWidths(const std::vector<int>& widths)
{
    for (int column = 0; column < kColumnCount - 1; ++column) {
        int dip = column < int(widths.size()) ? widths[column] : -1;
        if (dip < 0)
            dip = kDefaultDipWidths[column];
        const int pixels = CZuUiHiDpi::ScaleX(dip);
        if (column == Col::TroveState)
            d->stateColumnSavedWidth = pixels;
        // An unused repository-state column stays closed; it opens at its saved width.
        if (column != Col::TroveState || IsTroveStateColumnInUse())
            header()->resizeSection(column, pixels);
    }
    d->postRestretch();
}

std::vector<int> CTroveListCtrl::GetColumnDipWidths() const
{
    std::vector<int> widths(kColumnCount);
    for (int column = 0; column < kColumnCount; ++column) {
        int pixels = header()->sectionSize(column);
        if (column == Col::TroveState && pixels == 0)
            pixels = d->stateColumnSavedWidth;
        widths[std::size_t(column)] = CZuUiHiDpi::UnscaleX(pixels);
    }
    return widths;
}

bool CTroveListCtrl::IsTroveStateColumnInUse() const
{
    const CTroveListRow* first = d->model->Row(0);
    return d->model->RowCount() == 0 || !first || first->StateImage() != 0;
}

// --- Commands and tips --------------------------------------------------------------------------

bool CTroveListCtrl::OnContextMenuCommand(int command)
{
    if (command == Trove::HostCommand18) {
        SelectAll();
        return true;
    }
    if (!isRoutedCommand(command))
        return false;
    emit ContextMenuSelection(Trove::MenuItems(command), GetSelectedItems());
    return true;
}

QString CTroveListCtrl::GetInfoTip(int row, int column, int capacity) const
{
    CXrefPanelCtrlItem* item = ItemOfRow(row);
    CXrefPanelCtrl* panel = d->panel();
    if (column != Col::TroveState || !item || !panel || !IsTroveStateColumnInUse() || capacity <= 0)
        return {};
    QString text = QString::fromStdWString(ListPanel::TroveStateToolTipText(*panel, *item));
    text.truncate(capacity - 1);
    return text;
}

// --- Image lists --------------------------------------------------------------------------------

void CTroveListCtrl::SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark)
{
    d->itemImages[0] = light;
    d->itemImages[1] = dark;
    viewport()->update();
}

const CZuUiImageList* CTroveListCtrl::ItemImageList() const
{
    return d->itemImages[CZuUiTheme::Instance().IsDarkTheme() ? 1 : 0];
}

CZuUiImageList& CTroveListCtrl::StateImageList()
{
    return d->stateImageList;
}

const CZuUiImageList& CTroveListCtrl::StateImageList() const
{
    return d->stateImageList;
}

bool CTroveListCtrl::GetStateImageFlag() const
{
    return d->stateImageFlag;
}

void CTroveListCtrl::SetStateImageFlag(bool flag)
{
    d->stateImageFlag = flag;
}

// --- Events -------------------------------------------------------------------------------------

bool CTroveListCtrl::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == header()->viewport() && d->onHeaderEvent(event))
        return true;
    return QTreeView::eventFilter(watched, event);
}

void CTroveListCtrl::paintEvent(QPaintEvent* event)
{
    d->applyStateColumnRule();
    d->paintState.loggedIn = CTroveListCtrlPrivate::troveLoggedIn();
    d->paintState.titled = d->paintState.loggedIn && KvSystemVariables::ReadInt(L"DWGTITLED") == 1;
    d->paintState.shiftOrCtrl =
        QGuiApplication::keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    QTreeView::paintEvent(event);
    if (d->dragging) {
        QPainter painter(viewport());
        d->drawDragFrame(painter);
    }
}

void CTroveListCtrl::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    if (!d->dividerDragging)
        d->postRestretch();
    if (d->editor)
        d->editor->setGeometry(d->editRect(d->editRow, d->editColumn, false));
}

void CTroveListCtrl::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    d->postRestretch();
}

void CTroveListCtrl::keyboardSearch(const QString&) {}

// --- Filter -------------------------------------------------------------------------------------

void CTroveListCtrl::SetItemFilter(ItemFilter shows)
{
    CTroveListModel::RowFilter rows;
    if (shows) {
        // A row stands for its lowest-address sharer, as everywhere else in the list.
        rows = [shows = std::move(shows)](const CTroveListRow& row) {
            if (!row.data || row.data->Items().empty())
                return true;
            return shows(**row.data->Items().begin());
        };
    }
    // A panel shows one of its views at a time: a list out of sight is filtered when it comes
    // into view, so that typing pays only for the view the user sees.
    if (!isVisible()) {
        d->pendingFilter = std::move(rows);
        return;
    }
    d->pendingFilter.reset();
    if (d->model->SetRowFilter(std::move(rows)))
        d->raiseItemsSelected();
}

bool CTroveListCtrl::IsItemFilterOn() const
{
    return d->pendingFilter ? bool(*d->pendingFilter) : d->model->IsFiltered();
}

void CTroveListCtrl::showEvent(QShowEvent* event)
{
    QTreeView::showEvent(event);
    if (!d->pendingFilter)
        return;
    CTroveListModel::RowFilter rows = std::move(*d->pendingFilter);
    d->pendingFilter.reset();
    if (d->model->SetRowFilter(std::move(rows)))
        d->raiseItemsSelected();
}

bool CTroveListCtrl::IsRowShown(int row) const
{
    return d->model->IsShown(row);
}

int CTroveListCtrl::GetShownCount() const
{
    return d->model->ShownCount();
}
