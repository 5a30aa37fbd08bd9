#pragma once

#include <QStyledItemDelegate>

class CTroveListCtrl;
struct CTroveListRow;

/// Draws a list row from its record: state image in column 0, type icon with its overlay badge in
/// column 1, status icon before the status text, plain texts elsewhere. The selection shows in
/// the name cell alone.
class CTroveListDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit CTroveListDelegate(CTroveListCtrl& list);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    /// @p option as this cell is drawn: its own selection state, the item's colour and font.
    QStyleOptionViewItem cellOption(const QStyleOptionViewItem& option, const QModelIndex& index,
                                    const CTroveListRow& row) const;

    CTroveListCtrl& m_list;
};
