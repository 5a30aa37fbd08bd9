#pragma once

#include "kvxreftroveui_export.h"

#include <boost/container/flat_set.hpp>
#include <boost/container/small_vector.hpp>

#include <functional>

class CTroveListCtrl;
class CXrefPanelCtrlItem;

/// The link between a list row and the items shown in it. Every item that stands for the same
/// file holds a share of one record (boost::shared_ptr); the row's item data is the record's
/// address. The record knows its current row, which the list's model keeps right on insertion,
/// removal and sorting, so finding an item's row never searches.
class KVXREFTROVEUI_EXPORT CTroveListCtrlItem
{
public:
    explicit CTroveListCtrlItem(CTroveListCtrl& listCtrl);
    /// A record that dies while its row is still in the list takes the row with it, so that no
    /// row is left pointing at a freed record.
    ~CTroveListCtrlItem();
    CTroveListCtrlItem(const CTroveListCtrlItem&) = delete;
    CTroveListCtrlItem& operator=(const CTroveListCtrlItem&) = delete;

    /// The list that holds the row; null once that list is gone.
    CTroveListCtrl* GetListCtrl() const { return m_listCtrl; }
    /// The row's current index, or -1 when it is in no list.
    int Row() const { return m_row; }

    /// The items that share a row, ordered by address. Nearly every row has exactly one, so the
    /// set keeps one in place and only allocates for shared rows.
    using ItemSet =
        boost::container::flat_set<CXrefPanelCtrlItem*, std::less<CXrefPanelCtrlItem*>,
                                   boost::container::small_vector<CXrefPanelCtrlItem*, 1>>;

    /// The items that share the row, ordered by address.
    ItemSet& Items() { return m_items; }
    const ItemSet& Items() const { return m_items; }

private:
    friend class CTroveListModel;

    CTroveListCtrl* m_listCtrl;
    int m_row = -1;
    ItemSet m_items;
};
