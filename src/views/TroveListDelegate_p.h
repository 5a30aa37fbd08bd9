#pragma once

#include <QStyledItemDelegate>

class CTroveListCtrl;

/// Draws a list row from its record: state image in column 0, type icon with its overlay badge in
/// column 1, status icon before the status text, plain texts elsewhere.
class CTroveListDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit CTroveListDelegate(CTroveListCtrl& list);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    CTroveListCtrl& m_list;
};
