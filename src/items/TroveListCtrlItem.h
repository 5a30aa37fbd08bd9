#pragma once

#include "kvxreftroveui_export.h"

#include <set>

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

    /// The items that share the row, ordered by address.
    std::set<CXrefPanelCtrlItem*>& Items() { return m_items; }
    const std::set<CXrefPanelCtrlItem*>& Items() const { return m_items; }

private:
    friend class CTroveListModel;

    CTroveListCtrl* m_listCtrl;
    int m_row = -1;
    std::set<CXrefPanelCtrlItem*> m_items;
};
