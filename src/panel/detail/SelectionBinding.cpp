#include "panel/detail/SelectionBinding.h"

#include "views/TroveListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QItemSelectionModel>

#include <algorithm>

bool SelectionBinding::Contains(const CXrefPanelCtrlItem& item) const
{
    return std::find(m_items.begin(), m_items.end(), &item) != m_items.end();
}

void SelectionBinding::Clear(CTroveListCtrl* list, CXrefTreeCtrl* tree)
{
    if (tree && tree->selectionModel())
        tree->selectionModel()->clear();
    if (list)
        list->ClearSelection();
    m_items.clear();
}

bool SelectionBinding::Drop(const CXrefPanelCtrlItem& item)
{
    if (m_target.single == &item)
        m_target.single = nullptr;
    const auto end = std::remove(m_items.begin(), m_items.end(), &item);
    const bool selected = end != m_items.end();
    m_items.erase(end, m_items.end());
    return selected;
}
