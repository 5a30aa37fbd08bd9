#pragma once

#include <QStyledItemDelegate>

class CXrefTreeCtrl;

/// Draws a tree node from its record: state image, type icon with its overlay badge, text.
class CXrefTreeDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit CXrefTreeDelegate(CXrefTreeCtrl& tree);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    CXrefTreeCtrl& m_tree;
};
