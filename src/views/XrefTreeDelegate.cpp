#include "views/XrefTreeDelegate_p.h"

#include "views/ItemPainting_p.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"

CXrefTreeDelegate::CXrefTreeDelegate(CXrefTreeCtrl& tree) : QStyledItemDelegate(&tree), m_tree(tree)
{}

void CXrefTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const HTREEITEM node = CXrefTreeModel::NodeOf(index);
    if (!node)
        return;
    ItemPainting::DrawBackground(painter, option);

    const QRect cell = option.rect;
    const int gap = ItemPainting::Gap();
    int left = cell.left() + CZuUiHiDpi::ScaleX(1);
    // With repository state images in use every node keeps their slot, so that the type icons
    // line up whether a node has a state or not.
    if (m_tree.StateImageList().GetImageCount() > 0) {
        m_tree.StateImageList().DrawState(*painter, node->StateImage(),
                                          ItemPainting::IconRect(cell, left));
        left += ItemPainting::IconSize().width() + gap;
    }
    const bool selected = option.state & QStyle::State_Selected;
    const int image = selected ? node->selectedImage : node->image;
    if (image >= 0) {
        if (const CZuUiImageList* itemImages = m_tree.ItemImageList())
            itemImages->Draw(*painter, image, ItemPainting::IconRect(cell, left), node->Overlay());
        left += ItemPainting::IconSize().width() + gap;
    }
    QStyleOptionViewItem textOption(option);
    if (node->state.IsBold()) {
        textOption.font.setBold(true);
        textOption.fontMetrics = QFontMetrics(textOption.font);
    }
    ItemPainting::DrawText(painter, textOption,
                           QRect(left, cell.top(), cell.right() - left, cell.height()), node->text);
}

QSize CXrefTreeDelegate::sizeHint(const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    const HTREEITEM node = CXrefTreeModel::NodeOf(index);
    const int icons = 2 * (ItemPainting::IconSize().width() + ItemPainting::Gap());
    const int text = node ? option.fontMetrics.horizontalAdvance(node->text) : 0;
    return QSize(icons + text + CZuUiHiDpi::ScaleX(4), ItemPainting::RowHeight(option));
}
