#include "items/TroveListCtrlItem.h"

#include "views/TroveListCtrl.h"

CTroveListCtrlItem::CTroveListCtrlItem(CTroveListCtrl& listCtrl) : m_listCtrl(&listCtrl) {}

CTroveListCtrlItem::~CTroveListCtrlItem()
{
    if (m_listCtrl && m_row >= 0)
        m_listCtrl->DeleteRow(*this);
}
