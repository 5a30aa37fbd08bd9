#include "views/TroveListCtrl.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "resources/TroveResources.h"
#include "views/TroveListDelegate_p.h"
#include "views/TroveListModel_p.h"

#include <QHeaderView>

#include <boost/make_shared.hpp>

namespace {

constexpr int kDefaultDipWidths[CTroveListModel::kColumnCount] = {25, 18, 95, 72, 59, 72, 108, 152};
// Header texts of columns 2 to 7; the two icon columns have none.
constexpr unsigned kHeaderTextIds[CTroveListModel::kColumnCount] = {0,    0,    1035, 1031,
                                                                    1059, 1032, 1033, 1034};

} // namespace

CTroveListCtrl::CTroveListCtrl(bool stateImageFlag, int sortColumn, bool ascending, QWidget* parent)
    : QTreeView(parent), m_model(new CTroveListModel(this)), m_stateImageFlag(stateImageFlag),
      m_sortColumn(sortColumn < 0 ? int(Trove::ListViewColumn::ReferenceName) : sortColumn),
      m_secondarySortColumn(Trove::ListViewColumn::ReferenceName), m_ascending(ascending)
{
    setModel(m_model);
    setItemDelegate(new CTroveListDelegate(*this));
    // Every row has the same height; without this the view measures each row after a fill.
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideRight);

    QStringList headers;
    for (unsigned id : kHeaderTextIds)
        headers << (id ? TroveUI::ResString(id) : QString());
    m_model->SetHeaderTexts(headers);
    header()->setStretchLastSection(true);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(1);
    SetColumnDipWidths({});

    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this, &CTroveListCtrl::applyTheme);
}

CTroveListCtrl::~CTroveListCtrl() = default;

int CTroveListCtrl::DefaultColumnDipWidth(int column)
{
    return column >= 0 && column < CTroveListModel::kColumnCount ? kDefaultDipWidths[column] : 0;
}

void CTroveListCtrl::SetColumnDipWidths(const std::vector<int>& widths)
{
    // The last column is left to the header's stretching.
    for (int column = 0; column < CTroveListModel::kColumnCount - 1; ++column) {
        int dip = column < int(widths.size()) ? widths[column] : -1;
        if (dip < 0)
            dip = kDefaultDipWidths[column];
        header()->resizeSection(column, CZuUiHiDpi::ScaleX(dip));
    }
}

boost::shared_ptr<CTroveListCtrlItem> CTroveListCtrl::InsertItem(CXrefPanelCtrlItem& item,
                                                                 bool hostDrawing)
{
    auto record = boost::make_shared<CTroveListCtrlItem>(*this);
    record->Items().insert(&item);
    m_model->AppendRow(*record);
    if (hostDrawing)
        m_specialRecord = record.get();
    return record;
}

bool CTroveListCtrl::DeleteRow(const CTroveListCtrlItem& record)
{
    if (m_specialRecord == &record)
        m_specialRecord = nullptr;
    return m_model->RemoveRow(m_model->FindRow(&record));
}

void CTroveListCtrl::DeleteAllItems()
{
    m_specialRecord = nullptr;
    m_model->RemoveAllRows();
}

int CTroveListCtrl::GetItemCount() const
{
    return m_model->RowCount();
}

std::vector<CXrefPanelCtrlItem*> CTroveListCtrl::GetSelectedItems() const
{
    std::vector<CXrefPanelCtrlItem*> items;
    if (!selectionModel())
        return items;
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(),
              [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    for (const QModelIndex& index : rows) {
        if (CXrefPanelCtrlItem* item = ItemFromIndex(index))
            items.push_back(item);
    }
    return items;
}

CXrefPanelCtrlItem* CTroveListCtrl::ItemFromIndex(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != m_model)
        return nullptr;
    const CTroveListRow* row = m_model->Row(index.row());
    if (!row || !row->data || row->data->Items().empty())
        return nullptr;
    return *row->data->Items().begin();
}

QModelIndex CTroveListCtrl::IndexFromItem(const CXrefPanelCtrlItem& item, int column) const
{
    const boost::shared_ptr<CTroveListCtrlItem>& link = item.GetListRowLink();
    if (!link || link->GetListCtrl() != this || link->Row() < 0)
        return {};
    return m_model->index(link->Row(), column);
}

CXrefPanelCtrlItem* CTroveListCtrl::ItemAt(const QPoint& point) const
{
    return ItemFromIndex(indexAt(point));
}

void CTroveListCtrl::SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark)
{
    m_itemImages[0] = light;
    m_itemImages[1] = dark;
    viewport()->update();
}

const CZuUiImageList* CTroveListCtrl::ItemImageList() const
{
    return m_itemImages[CZuUiTheme::Instance().IsDarkTheme() ? 1 : 0];
}

int CTroveListCtrl::SpecialRow() const
{
    return m_model->FindRow(m_specialRecord);
}

void CTroveListCtrl::applyTheme()
{
    setPalette(CZuUiTheme::Instance().Palette());
    viewport()->update();
}
