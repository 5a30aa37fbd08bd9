#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

class CXrefPanelCtrlItem;

/// One node of the tree view: what the tree shows for one item. The state word keeps the classic
/// layout so that items can address it with the usual masks: bits 8-11 the overlay number,
/// bits 12-15 the state image index (0 none, n image n - 1), 0x10 bold.
struct CXrefTreeNode
{
    static constexpr std::uint16_t kBold = 0x0010;
    static constexpr std::uint16_t kOverlayMask = 0x0F00;
    static constexpr std::uint16_t kStateImageMask = 0xF000;

    QString text;
    CXrefPanelCtrlItem* item = nullptr;
    CXrefTreeNode* parent = nullptr;
    std::vector<std::unique_ptr<CXrefTreeNode>> children;
    int row = 0; ///< position among the parent's children (or among the top-level nodes)
    std::int32_t image = -2; ///< -2: no image
    std::int32_t selectedImage = -2;
    std::uint16_t state = 0;

    int Overlay() const { return (state & kOverlayMask) >> 8; }
    int StateImage() const { return (state & kStateImageMask) >> 12; }
};

/// A tree node handle; null is "no node".
using HTREEITEM = CXrefTreeNode*;
