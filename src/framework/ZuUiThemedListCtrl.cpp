#include "framework/ZuUiThemedListCtrl.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>
#include <vector>

/// The list's rows: one text per column and the owner's item data. Rows are kept in a vector,
/// so that a row index is all it takes to reach one.
class CZuUiThemedListModel : public QAbstractTableModel
{
public:
    struct Column
    {
        QString heading;
        Qt::Alignment format;
    };
    struct Row
    {
        std::vector<QString> cells;
        quintptr data = 0;
    };

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : int(rows.size());
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : int(columns.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid())
            return {};
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
            return Text(index.row(), index.column());
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue(columns[std::size_t(index.column())].format);
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || section < 0 || section >= int(columns.size()))
            return {};
        if (role == Qt::DisplayRole)
            return columns[std::size_t(section)].heading;
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue(columns[std::size_t(section)].format | Qt::AlignVCenter);
        return {};
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                               : Qt::NoItemFlags;
    }

    bool HasRow(int row) const { return row >= 0 && row < int(rows.size()); }
    bool HasCell(int row, int column) const
    {
        return HasRow(row) && column >= 0 && column < int(columns.size());
    }
    QString Text(int row, int column) const
    {
        if (!HasCell(row, column))
            return {};
        const std::vector<QString>& cells = rows[std::size_t(row)].cells;
        return std::size_t(column) < cells.size() ? cells[std::size_t(column)] : QString();
    }

    int InsertColumn(int column, const QString& heading, Qt::Alignment format)
    {
        column = std::clamp(column, 0, int(columns.size()));
        beginInsertColumns(QModelIndex(), column, column);
        columns.insert(columns.begin() + column, Column{heading, format});
        for (Row& row : rows) {
            if (std::size_t(column) < row.cells.size())
                row.cells.insert(row.cells.begin() + column, QString());
        }
        endInsertColumns();
        return column;
    }
    int InsertRow(int row, const QString& text)
    {
        row = std::min(row, int(rows.size()));
        beginInsertRows(QModelIndex(), row, row);
        Row record;
        record.cells.push_back(text);
        rows.insert(rows.begin() + row, std::move(record));
        endInsertRows();
        return row;
    }
    void RemoveRow(int row)
    {
        beginRemoveRows(QModelIndex(), row, row);
        rows.erase(rows.begin() + row);
        endRemoveRows();
    }
    void RemoveAll()
    {
        if (rows.empty())
            return;
        beginResetModel();
        rows.clear();
        endResetModel();
    }
    void SetText(int row, int column, const QString& text)
    {
        std::vector<QString>& cells = rows[std::size_t(row)].cells;
        if (cells.size() <= std::size_t(column))
            cells.resize(std::size_t(column) + 1);
        if (cells[std::size_t(column)] == text)
            return;
        cells[std::size_t(column)] = text;
        const QModelIndex cell = index(row, column);
        emit dataChanged(cell, cell, {Qt::DisplayRole});
    }

    std::vector<Column> columns;
    std::vector<Row> rows;
};

/// Draws a cell: the style's row background and selection, then the text in the colour the list
/// asks for, aligned as its column says and elided when it does not fit.
class CZuUiThemedListDelegate : public QStyledItemDelegate
{
public:
    explicit CZuUiThemedListDelegate(CZuUiThemedListCtrl& list)
        : QStyledItemDelegate(&list), m_list(list)
    {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem background(option);
        background.features &=
            ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
        background.text.clear();
        const QWidget* widget = option.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, widget);

        const int row = index.row();
        const int column = index.column();
        const QString text = m_list.m_model->Text(row, column);
        const QRect textRect = option.rect.adjusted(CZuUiThemedListCtrl::TextPadding(), 0,
                                                    -CZuUiThemedListCtrl::TextPadding(), 0);
        if (text.isEmpty() || textRect.width() <= 0)
            return;
        const bool selected = option.state & QStyle::State_Selected;
        painter->save();
        painter->setFont(option.font);
        painter->setPen(m_list.cellTextColor(row, column, selected));
        const QString shown = option.fontMetrics.elidedText(text, Qt::ElideRight, textRect.width());
        painter->drawText(
            textRect, int(m_list.GetColumnFormat(column) | Qt::AlignVCenter) | Qt::TextSingleLine,
            shown);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const int text =
            option.fontMetrics.horizontalAdvance(m_list.m_model->Text(index.row(), index.column()));
        return QSize(text + 2 * CZuUiThemedListCtrl::TextPadding(), m_list.RowHeight());
    }

private:
    CZuUiThemedListCtrl& m_list;
};

CZuUiThemedListCtrl::CZuUiThemedListCtrl(QWidget* parent)
    : QTreeView(parent), m_model(new CZuUiThemedListModel(this))
{
    setModel(m_model);
    setItemDelegate(new CZuUiThemedListDelegate(*this));
    // A flat list: no expanders, no indentation, every row as high as the next.
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAllColumnsShowFocus(true);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(0);

    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            &CZuUiThemedListCtrl::applyTheme);
}

CZuUiThemedListCtrl::~CZuUiThemedListCtrl() = default;

int CZuUiThemedListCtrl::InsertColumn(int column, const QString& heading, Qt::Alignment format,
                                      int width)
{
    if (column < 0)
        return -1;
    const int inserted = m_model->InsertColumn(column, heading, format & Qt::AlignHorizontal_Mask);
    SetColumnWidth(inserted, std::max(0, width));
    return inserted;
}

int CZuUiThemedListCtrl::GetColumnCount() const
{
    return m_model->columnCount();
}

int CZuUiThemedListCtrl::GetColumnWidth(int column) const
{
    if (column < 0 || column >= GetColumnCount())
        return 0;
    return header()->sectionSize(column);
}

bool CZuUiThemedListCtrl::SetColumnWidth(int column, int width)
{
    if (column < 0 || column >= GetColumnCount() || width < 0)
        return false;
    header()->resizeSection(column, width);
    return true;
}

Qt::Alignment CZuUiThemedListCtrl::GetColumnFormat(int column) const
{
    if (column < 0 || column >= GetColumnCount())
        return Qt::AlignLeft;
    return m_model->columns[std::size_t(column)].format;
}

int CZuUiThemedListCtrl::InsertItem(int row, const QString& text)
{
    if (row < 0)
        return -1;
    return m_model->InsertRow(row, text);
}

bool CZuUiThemedListCtrl::DeleteItem(int row)
{
    if (!m_model->HasRow(row))
        return false;
    m_model->RemoveRow(row);
    return true;
}

void CZuUiThemedListCtrl::DeleteAllItems()
{
    m_model->RemoveAll();
}

int CZuUiThemedListCtrl::GetItemCount() const
{
    return m_model->rowCount();
}

bool CZuUiThemedListCtrl::SetItemText(int row, int column, const QString& text)
{
    if (!m_model->HasCell(row, column))
        return false;
    m_model->SetText(row, column, text);
    return true;
}

QString CZuUiThemedListCtrl::GetItemText(int row, int column) const
{
    return m_model->Text(row, column);
}

bool CZuUiThemedListCtrl::SetItemData(int row, quintptr data)
{
    if (!m_model->HasRow(row))
        return false;
    m_model->rows[std::size_t(row)].data = data;
    return true;
}

quintptr CZuUiThemedListCtrl::GetItemData(int row) const
{
    return m_model->HasRow(row) ? m_model->rows[std::size_t(row)].data : 0;
}

void CZuUiThemedListCtrl::SetRowHeight(int height)
{
    height = std::max(1, height);
    if (height == m_rowHeight)
        return;
    m_rowHeight = height;
    // Uniform rows are measured once; a new height needs a new measurement.
    scheduleDelayedItemsLayout();
    viewport()->update();
}

QRect CZuUiThemedListCtrl::GetSubItemRect(int row, int column) const
{
    if (!m_model->HasCell(row, column))
        return {};
    return visualRect(m_model->index(row, column));
}

bool CZuUiThemedListCtrl::EnsureVisible(int row, bool partialOk)
{
    if (!m_model->HasRow(row))
        return false;
    const QModelIndex index = m_model->index(row, 0);
    if (partialOk) {
        const QRect cell = visualRect(index);
        if (cell.isValid() && cell.bottom() >= 0 && cell.top() < viewport()->height())
            return true;
    }
    scrollTo(index, QAbstractItemView::EnsureVisible);
    const QRect cell = visualRect(index);
    return cell.isValid() && cell.bottom() >= 0 && cell.top() < viewport()->height();
}

QPair<int, int> CZuUiThemedListCtrl::SubItemHitTest(const QPoint& point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return {-1, -1};
    return {index.row(), index.column()};
}

bool CZuUiThemedListCtrl::IsTextClipped(int row, int column) const
{
    if (!m_model->HasCell(row, column))
        return false;
    const int room = GetColumnWidth(column) - 2 * TextPadding();
    return fontMetrics().horizontalAdvance(m_model->Text(row, column)) > room;
}

int CZuUiThemedListCtrl::TextPadding()
{
    return CZuUiHiDpi::ScaleX(4);
}

int CZuUiThemedListCtrl::GetSelectedRow() const
{
    if (!selectionModel())
        return -1;
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

void CZuUiThemedListCtrl::SelectRow(int row)
{
    if (!m_model->HasRow(row)) {
        clearSelection();
        return;
    }
    const QModelIndex index = m_model->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                 QItemSelectionModel::Rows);
}

void CZuUiThemedListCtrl::SetRedraw(bool redraw)
{
    setUpdatesEnabled(redraw);
    if (redraw)
        viewport()->update();
}

QColor CZuUiThemedListCtrl::cellTextColor(int, int, bool selected) const
{
    return CZuUiTheme::Instance().GetColor(selected ? CZuUiTheme::SelectionText : CZuUiTheme::Text);
}

void CZuUiThemedListCtrl::applyTheme()
{
    setPalette(CZuUiTheme::Instance().Palette());
    viewport()->update();
}
