#include "views/XrefTreeDelegate_p.h"

#include "framework/Win32Types.h"
#include "items/XrefPanelCtrlItem.h"
#include "views/ItemPainting_p.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"

#include <QKeyEvent>

namespace {

// The weight an item's font must have for its node to be drawn bold; heavier or lighter
// weights are drawn as they are, without the bold state.
constexpr std::int32_t kBoldWeight = 700;

} // namespace

CXrefTreeDelegate::CXrefTreeDelegate(CXrefTreeCtrl& tree) : QStyledItemDelegate(&tree), m_tree(tree)
{}

void CXrefTreeDelegate::applyItemStyle(CXrefTreeNode& node, QStyleOptionViewItem& option) const
{
    if (!m_tree.m_paintLoggedIn) {
        node.state.Write(0, ItemStateWord::kBold);
        return;
    }
    const CXrefPanelCtrlItem* item = node.item;
    if (!m_tree.m_paintItemStyles || !item)
        return;
    const bool selected = option.state & QStyle::State_Selected;
    if (!item->UseDefaultColor() && !selected) {
        const QColor color = ToQColor(item->GetItemTextColor());
        option.palette.setColor(QPalette::Text, color);
        option.palette.setColor(QPalette::HighlightedText, color);
    }
    if (item->UseDefaultFont()) {
        node.state.Write(0, ItemStateWord::kBold);
        return;
    }
    const LOGFONTW& font = item->GetTreeCtrlItemTextFont();
    if (font.lfWeight == kBoldWeight)
        node.state.Write(ItemStateWord::kBold, ItemStateWord::kBold);
    option.font = ToQFont(font, option.font);
    option.fontMetrics = QFontMetrics(option.font);
}

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
    applyItemStyle(*node, textOption);
    // A node in the bold state keeps a bold face, whatever font it is drawn in.
    if (node->state.IsBold() && !textOption.font.bold()) {
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

void CXrefTreeDelegate::setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const
{
    // The tree reports a rename and leaves the label alone (see CXrefTreeCtrl::commitData).
}

bool CXrefTreeDelegate::eventFilter(QObject* editor, QEvent* event)
{
    // Enter and Escape end the rename; a host shortcut on either must not take them first.
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            event->accept();
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

QWidget* CXrefTreeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const
{
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (editor)
        editor->setAccessibleName(tr("Reference name"));
    return editor;
}
