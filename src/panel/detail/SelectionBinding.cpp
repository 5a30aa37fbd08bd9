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
