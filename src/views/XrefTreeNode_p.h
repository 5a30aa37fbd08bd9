#pragma once

#include "views/ItemStateWord_p.h"
#include "views/TreeItemHandle.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

class CXrefPanelCtrlItem;

/// One node of the tree view: what the tree shows for one item.
struct CXrefTreeNode
{
    QString text;
    CXrefPanelCtrlItem* item = nullptr;
    CXrefTreeNode* parent = nullptr;
    std::vector<std::unique_ptr<CXrefTreeNode>> children;
    int row = 0; ///< position among the parent's children (or among the top-level nodes)
    std::int32_t image = -2; ///< -2: no image
    std::int32_t selectedImage = -2;
    ItemStateWord state;

    int Overlay() const { return state.Overlay(); }
    int StateImage() const { return state.StateImage(); }
};
