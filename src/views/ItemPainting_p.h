#pragma once

// Drawing steps shared by the list and tree delegates. Not installed.

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiImageList.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace ItemPainting {

/// The side of an item icon in pixels: 16 device-independent pixels at the monitor's scale.
inline QSize IconSize()
{
    return QSize(CZuUiHiDpi::ScaleX(16), CZuUiHiDpi::ScaleY(16));
}

/// Gap between an icon and what follows it.
inline int Gap()
{
    return CZuUiHiDpi::ScaleX(3);
}

/// The height of every row: the taller of an icon and a line of text, plus a little air.
inline int RowHeight(const QStyleOptionViewItem& option)
{
    return std::max(IconSize().height(), option.fontMetrics.height()) + CZuUiHiDpi::ScaleY(3);
}

/// The cell's background, selection and focus as the style draws them, without content.
inline void DrawBackground(QPainter* painter, const QStyleOptionViewItem& option)
{
    QStyleOptionViewItem background(option);
    background.text.clear();
    background.icon = QIcon();
    background.features &=
        ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
    const QWidget* widget = option.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, widget);
}

/// The icon rectangle at @p left, centred vertically in @p cell.
inline QRect IconRect(const QRect& cell, int left)
{
    const QSize size = IconSize();
    return QRect(QPoint(left, cell.top() + (cell.height() - size.height()) / 2), size);
}

/// Draws @p text left-aligned in @p rect, elided at the right, in the colour that suits the
/// cell's selection state.
inline void DrawText(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect,
                     const QString& text)
{
    if (text.isEmpty() || rect.width() <= 0)
        return;
    const bool selected = option.state & QStyle::State_Selected;
    const QPalette::ColorGroup group = !(option.state & QStyle::State_Enabled) ? QPalette::Disabled
                                       : (option.state & QStyle::State_Active) ? QPalette::Active
                                                                               : QPalette::Inactive;
    painter->save();
    painter->setFont(option.font);
    painter->setPen(
        option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    const QString elided = option.fontMetrics.elidedText(text, Qt::ElideRight, rect.width());
    painter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, elided);
    painter->restore();
}

} // namespace ItemPainting
