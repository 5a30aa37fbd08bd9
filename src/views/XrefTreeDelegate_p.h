#pragma once

#include <QStyledItemDelegate>

class CXrefTreeCtrl;
struct CXrefTreeNode;

/// Draws a tree node from its record: state image, type icon with its overlay badge, text.
///
/// While the repository user is logged in and the host asks for item styles ("DWGTITLED" 1),
/// a node's text takes its item's colour (not while selected) and its item's tree font; a bold
/// font gives the node the bold state, the default font takes it away. Logged out, no node
/// stays bold. The rename editor is a plain line edit that never writes into the model.
class CXrefTreeDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit CXrefTreeDelegate(CXrefTreeCtrl& tree);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    /// The rename editor, named for assistive technology.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

private:
    /// Applies the item's colour and font to @p option and the bold state to @p node.
    void applyItemStyle(CXrefTreeNode& node, QStyleOptionViewItem& option) const;

    CXrefTreeCtrl& m_tree;
};
