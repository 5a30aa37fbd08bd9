#include "views/TroveListDelegate_p.h"

#include "framework/Win32Types.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "views/ItemPainting_p.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListCtrl_p.h"
#include "views/TroveListModel_p.h"

namespace {

using Col = Trove::ListViewColumn;

} // namespace

CTroveListDelegate::CTroveListDelegate(CTroveListCtrl& list)
    : QStyledItemDelegate(&list), m_list(list)
{}

QStyleOptionViewItem CTroveListDelegate::cellOption(const QStyleOptionViewItem& option,
                                                    const QModelIndex& index,
                                                    const CTroveListRow& row) const
{
    const CTroveListCtrlPrivate& d = *m_list.d;
    QStyleOptionViewItem opt(option);
    // Only the name cell shows that a row is selected. The host drawing's row, while the user
    // is logged out, does not even there once it is part of a growing or multiple selection.
    bool highlight = row.IsSelected() && index.column() == Col::ReferenceName;
    if (highlight && !d.paintState.loggedIn && d.model->RowOf(index) == d.specialRow() &&
        (d.paintState.shiftOrCtrl || d.model->SelectedCount() > 1))
        highlight = false;
    opt.state.setFlag(QStyle::State_Selected, highlight);

    // Drawings with their own titles give their rows the item's colour and font.
    if (d.paintState.titled) {
        if (const CXrefPanelCtrlItem* item = m_list.ItemOfRow(m_list.Model().RowOf(index))) {
            if (!item->UseDefaultColor())
                opt.palette.setColor(QPalette::Text, ToQColor(item->GetItemTextColor()));
            if (!item->UseDefaultFont()) {
                opt.font = ToQFont(item->GetListCtrlItemTextFont(), opt.font);
                opt.fontMetrics = QFontMetrics(opt.font);
            }
        }
    }
    return opt;
}

void CTroveListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const int listRow = m_list.Model().RowOf(index);
    const CTroveListRow* row = m_list.Model().Row(listRow);
    if (!row)
        return;
    // The record is read directly rather than through initStyleOption, which would format the
    // size and date texts of every painted cell twice.
    const QStyleOptionViewItem opt = cellOption(option, index, *row);
    ItemPainting::DrawBackground(painter, opt);

    const int column = index.column();
    const QRect cell = opt.rect;
    const int margin = CZuUiHiDpi::ScaleX(2);
    const QSize iconSize = ItemPainting::IconSize();
    const int centredLeft = cell.left() + (cell.width() - iconSize.width()) / 2;
    const CZuUiImageList* itemImages = m_list.ItemImageList();
    switch (column) {
    case Col::TroveState:
        m_list.StateImageList().DrawState(*painter, row->StateImage(),
                                          ItemPainting::IconRect(cell, centredLeft));
        break;
    case Col::TypeIcon:
        // The badge belongs to the type icon: a row without one shows neither, as in the tree.
        if (row->typeImage >= 0 && itemImages)
            itemImages->Draw(*painter, row->typeImage, ItemPainting::IconRect(cell, centredLeft),
                             row->Overlay());
        break;
    case Col::Status: {
        int left = cell.left() + margin;
        if (row->statusImage >= 0) {
            if (itemImages)
                itemImages->Draw(*painter, row->statusImage, ItemPainting::IconRect(cell, left));
            left += iconSize.width() + ItemPainting::Gap();
        }
        ItemPainting::DrawText(painter, opt,
                               QRect(left, cell.top(), cell.right() - left, cell.height()),
                               m_list.Model().CellText(listRow, column));
        break;
    }
    default:
        ItemPainting::DrawText(painter, opt, cell.adjusted(margin, 0, -margin, 0),
                               m_list.Model().CellText(listRow, column));
        break;
    }
    // The focused row shows its focus on the name cell, where its selection shows.
    if ((opt.state & QStyle::State_HasFocus) && column == Col::ReferenceName) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(opt);
        focus.backgroundColor = opt.palette.color(
            (opt.state & QStyle::State_Selected) ? QPalette::Highlight : QPalette::Base);
        const QWidget* widget = opt.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
}

QSize CTroveListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return QSize(ItemPainting::IconSize().width(), ItemPainting::RowHeight(option));
}
