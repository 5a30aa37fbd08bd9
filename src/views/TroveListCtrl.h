#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiImageList.h"

#include <QTreeView>

#include <boost/shared_ptr.hpp>

#include <vector>

class CTroveListCtrlItem;
class CTroveListModel;
class CXrefPanelCtrlItem;

/// The panel's flat view of the references: one row per referenced file, eight columns (see
/// Trove::ListViewColumn). Rows are records in CTroveListModel; the view draws what the
/// records hold: texts, the type icon with its status badge, the status icon and the repository
/// state image.
class KVXREFTROVEUI_EXPORT CTroveListCtrl : public QTreeView
{
    Q_OBJECT
public:
    /// @p stateImageFlag is handed to the panel when it fills the state image list; @p sortColumn
    /// (-1: none) and @p ascending are the persisted sort settings.
    CTroveListCtrl(bool stateImageFlag, int sortColumn, bool ascending, QWidget* parent = nullptr);
    ~CTroveListCtrl() override;

    CTroveListModel& Model() const { return *m_model; }

    /// Appends a row for @p item and returns its new link record, for the panel to hand to the
    /// item. @p hostDrawing marks the host drawing's own row.
    boost::shared_ptr<CTroveListCtrlItem> InsertItem(CXrefPanelCtrlItem& item, bool hostDrawing);
    /// Removes the row whose item data is @p record.
    bool DeleteRow(const CTroveListCtrlItem& record);
    void DeleteAllItems();
    int GetItemCount() const;
    /// The items of the selected rows, in ascending row order.
    std::vector<CXrefPanelCtrlItem*> GetSelectedItems() const;
    /// The row of the host drawing's item, or -1.
    int SpecialRow() const;

    /// The item that stands for the row of @p index (the lowest-address sharer), or null.
    CXrefPanelCtrlItem* ItemFromIndex(const QModelIndex& index) const;
    /// The index of @p item's row in column @p column; invalid when the item has no row here.
    QModelIndex IndexFromItem(const CXrefPanelCtrlItem& item, int column = 0) const;
    /// The item of the row under @p point, in viewport coordinates, or null.
    CXrefPanelCtrlItem* ItemAt(const QPoint& point) const;

    /// The image lists the type and status icons are drawn from, for the light and the dark
    /// theme; the view does not own them. Without them the icon cells stay empty.
    void SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark);
    /// The item image list for the theme in use, or null.
    const CZuUiImageList* ItemImageList() const;

    /// Applies column widths given in device-independent pixels; missing or negative entries take
    /// the defaults. The last column always fills the rest.
    void SetColumnDipWidths(const std::vector<int>& widths);

    CZuUiImageList& StateImageList() { return m_stateImageList; }
    const CZuUiImageList& StateImageList() const { return m_stateImageList; }
    bool GetStateImageFlag() const { return m_stateImageFlag; }
    void SetStateImageFlag(bool flag) { m_stateImageFlag = flag; }
    int GetSortColumn() const { return m_sortColumn; }
    int GetSecondarySortColumn() const { return m_secondarySortColumn; }
    bool IsSortAscending() const { return m_ascending; }

    /// The default width of each column, in device-independent pixels.
    static int DefaultColumnDipWidth(int column);

private:
    void applyTheme();

    CTroveListModel* m_model;
    CZuUiImageList m_stateImageList;
    bool m_stateImageFlag;
    int m_sortColumn;
    int m_secondarySortColumn;
    bool m_ascending;
    const CTroveListCtrlItem* m_specialRecord = nullptr;
    const CZuUiImageList* m_itemImages[2] = {nullptr, nullptr};
};
