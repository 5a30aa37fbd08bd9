#include "views/TroveListDelegate_p.h"

#include "views/ItemPainting_p.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"

CTroveListDelegate::CTroveListDelegate(CTroveListCtrl& list)
    : QStyledItemDelegate(&list), m_list(list)
{}

void CTroveListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const CTroveListRow* row = m_list.Model().Row(index.row());
    if (!row)
        return;
    // The record is read directly rather than through initStyleOption, which would format the
    // size and date texts of every painted cell twice.
    const QStyleOptionViewItem& opt = option;
    ItemPainting::DrawBackground(painter, opt);

    const int column = index.column();
    const QRect cell = opt.rect;
    const int margin = CZuUiHiDpi::ScaleX(2);
    const QSize iconSize = ItemPainting::IconSize();
    const int centredLeft = cell.left() + (cell.width() - iconSize.width()) / 2;
    const CZuUiImageList* itemImages = m_list.ItemImageList();
    switch (column) {
    case 0:
        m_list.StateImageList().DrawState(*painter, row->StateImage(),
                                          ItemPainting::IconRect(cell, centredLeft));
        break;
    case CTroveListModel::kTypeIconColumn:
        // The badge belongs to the type icon: a row without one shows neither, as in the tree.
        if (row->typeImage >= 0 && itemImages)
            itemImages->Draw(*painter, row->typeImage, ItemPainting::IconRect(cell, centredLeft),
                             row->Overlay());
        break;
    case CTroveListModel::kStatusColumn: {
        int left = cell.left() + margin;
        if (row->statusImage >= 0) {
            if (itemImages)
                itemImages->Draw(*painter, row->statusImage, ItemPainting::IconRect(cell, left));
            left += iconSize.width() + ItemPainting::Gap();
        }
        ItemPainting::DrawText(painter, opt,
                               QRect(left, cell.top(), cell.right() - left, cell.height()),
                               m_list.Model().CellText(index.row(), column));
        break;
    }
    default:
        ItemPainting::DrawText(painter, opt, cell.adjusted(margin, 0, -margin, 0),
                               m_list.Model().CellText(index.row(), column));
        break;
    }
}

QSize CTroveListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return QSize(ItemPainting::IconSize().width(), ItemPainting::RowHeight(option));
}
