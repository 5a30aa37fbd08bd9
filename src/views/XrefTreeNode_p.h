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
    CXrefTreeNode() = default;
    CXrefTreeNode(const CXrefTreeNode&) = delete;
    CXrefTreeNode& operator=(const CXrefTreeNode&) = delete;
    /// A chain of nested references can be tens of thousands of levels deep; letting each node
    /// destroy its children in turn would take one stack frame per level. The descendants are
    /// taken apart here one at a time instead.
    ~CXrefTreeNode()
    {
        std::vector<std::unique_ptr<CXrefTreeNode>> pending = std::move(children);
        while (!pending.empty()) {
            std::unique_ptr<CXrefTreeNode> node = std::move(pending.back());
            pending.pop_back();
            for (auto& child : node->children)
                pending.push_back(std::move(child));
            node->children.clear();
        }
    }

    QString text;
    CXrefPanelCtrlItem* item = nullptr;
    CXrefTreeNode* parent = nullptr;
    std::vector<std::unique_ptr<CXrefTreeNode>> children;
    int row = 0; ///< position among the parent's children (or among the top-level nodes)
    std::int32_t image = -2; ///< -2: no image
    std::int32_t selectedImage = -2;
    ItemStateWord state;
    /// How deep the node sits: 0 for a top-level node, saturating at the type's maximum.
    std::uint16_t level = 0;
    /// The tree's filter accepts neither the node nor any node below it.
    bool filteredOut = false;

    int Overlay() const { return state.Overlay(); }
    int StateImage() const { return state.StateImage(); }
};
