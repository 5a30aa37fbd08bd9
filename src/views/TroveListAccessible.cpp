#include "views/TroveListAccessible_p.h"

#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"

#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>

namespace {

constexpr int kColumns = CTroveListModel::kColumnCount;

/// The first two columns (repository state and type) carry pictures only; they are named after
/// what they show so that a screen reader has something to say.
QString columnName(const CTroveListModel& model, int column)
{
    const QString header = model.headerData(column, Qt::Horizontal).toString();
    if (!header.isEmpty())
        return header;
    return column == CTroveListModel::kTypeIconColumn ? QObject::tr("Type icon")
                                                      : QObject::tr("Repository state");
}

/// One cell of the list, or with row -1 one column header. Children are numbered as Qt numbers
/// them for its own tables (the header row first), so that the focus events the view sends name
/// the right child.
class CellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    CellAccessible(CTroveListCtrl* list, int viewRow, int column)
        : m_list(list), m_viewRow(viewRow), m_column(column)
    {}

    bool isValid() const override
    {
        return m_list && m_column >= 0 && m_column < kColumns &&
               (m_viewRow == -1 || m_viewRow < m_list->Model().rowCount());
    }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_list ? m_list->window()->windowHandle() : nullptr; }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface && m_viewRow >= 0
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }
    QAccessibleInterface* parent() const override
    {
        return m_list ? QAccessible::queryAccessibleInterface(m_list.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override { return nullptr; }

    QString text(QAccessible::Text t) const override
    {
        if (!isValid())
            return {};
        const CTroveListModel& model = m_list->Model();
        if (m_viewRow < 0)
            return t == QAccessible::Name ? columnName(model, m_column) : QString();
        if (t != QAccessible::Name && t != QAccessible::Value)
            return {};
        QString text = model.CellText(model.StorageRow(m_viewRow), m_column);
        if (text.isEmpty() && t == QAccessible::Name &&
            m_column == CTroveListModel::kTypeIconColumn)
            text = model.CellText(model.StorageRow(m_viewRow), Trove::ListViewColumn::Type);
        return text;
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        QRect local;
        QPoint origin;
        if (m_viewRow < 0) {
            const QHeaderView* header = m_list->header();
            local = QRect(header->sectionViewportPosition(m_column), 0,
                          header->sectionSize(m_column), header->height());
            origin = header->viewport()->mapToGlobal(QPoint(0, 0));
        } else {
            local = m_list->visualRect(m_list->Model().index(m_viewRow, m_column));
            origin = m_list->viewport()->mapToGlobal(QPoint(0, 0));
        }
        return local.translated(origin);
    }
    QAccessible::Role role() const override
    {
        return m_viewRow < 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override
    {
        QAccessible::State st;
        if (!isValid()) {
            st.invalid = true;
            return st;
        }
        if (m_viewRow < 0)
            return st;
        const QRect visible = m_list->viewport()->rect();
        const QRect cell = m_list->visualRect(m_list->Model().index(m_viewRow, m_column));
        st.invisible = !visible.intersects(cell);
        st.offscreen = st.invisible;
        st.selectable = true;
        st.multiSelectable = true;
        st.selected = isSelected();
        st.focusable = true;
        const QModelIndex current = m_list->currentIndex();
        st.focused = m_list->hasFocus() && current.isValid() && current.row() == m_viewRow;
        st.editable = m_column == Trove::ListViewColumn::ReferenceName;
        return st;
    }

    // QAccessibleTableCellInterface
    bool isSelected() const override
    {
        if (!isValid() || m_viewRow < 0)
            return false;
        const CTroveListModel& model = m_list->Model();
        return model.IsSelected(model.StorageRow(m_viewRow));
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override
    {
        QAccessibleInterface* table = parent();
        return table ? QList<QAccessibleInterface*>{table->child(m_column)}
                     : QList<QAccessibleInterface*>();
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_viewRow; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QPointer<CTroveListCtrl> m_list;
    int m_viewRow;
    int m_column;
};

QAccessibleInterface* listFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("CTroveListCtrl") && object && object->isWidgetType())
        return new CTroveListAccessible(static_cast<CTroveListCtrl*>(object));
    return nullptr;
}

} // namespace

CTroveListAccessible::CTroveListAccessible(CTroveListCtrl* list)
    : QAccessibleWidget(list, QAccessible::Table)
{}

CTroveListAccessible::~CTroveListAccessible()
{
    ClearCells();
}

void CTroveListAccessible::InstallFactory()
{
    static const bool installed = [] {
        QAccessible::installFactory(listFactory);
        return true;
    }();
    (void)installed;
}

CTroveListCtrl* CTroveListAccessible::List() const
{
    return static_cast<CTroveListCtrl*>(widget());
}

const CTroveListModel& CTroveListAccessible::Model() const
{
    return List()->Model();
}

void CTroveListAccessible::ClearCells() const
{
    for (QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
    m_cells.clear();
}

void* CTroveListAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::Role CTroveListAccessible::role() const
{
    return QAccessible::Table;
}

int CTroveListAccessible::childCount() const
{
    return (rowCount() + 1) * kColumns;
}

QAccessibleInterface* CTroveListAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto found = m_cells.constFind(index);
    if (found != m_cells.constEnd())
        return QAccessible::accessibleInterface(found.value());
    auto* cell = new CellAccessible(List(), index / kColumns - 1, index % kColumns);
    m_cells.insert(index, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

int CTroveListAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    if (!child || child->parent() != this)
        return -1;
    const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child));
    for (auto it = m_cells.constBegin(); it != m_cells.constEnd(); ++it) {
        if (it.value() == id)
            return it.key();
    }
    return -1;
}

QAccessibleInterface* CTroveListAccessible::childAt(int x, int y) const
{
    const QPoint local = List()->viewport()->mapFromGlobal(QPoint(x, y));
    const QModelIndex index = List()->indexAt(local);
    return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* CTroveListAccessible::focusChild() const
{
    const QModelIndex current = List()->currentIndex();
    return current.isValid() ? cellAt(current.row(), current.column()) : nullptr;
}

QAccessibleInterface* CTroveListAccessible::caption() const
{
    return nullptr;
}

QAccessibleInterface* CTroveListAccessible::summary() const
{
    return nullptr;
}

QAccessibleInterface* CTroveListAccessible::cellAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= kColumns)
        return nullptr;
    return child((row + 1) * kColumns + column);
}

int CTroveListAccessible::selectedCellCount() const
{
    return selectedRowCount() * kColumns;
}

QList<QAccessibleInterface*> CTroveListAccessible::selectedCells() const
{
    QList<QAccessibleInterface*> cells;
    for (int row : selectedRows()) {
        for (int column = 0; column < kColumns; ++column)
            cells.push_back(cellAt(row, column));
    }
    return cells;
}

QString CTroveListAccessible::columnDescription(int column) const
{
    return column >= 0 && column < kColumns ? columnName(Model(), column) : QString();
}

QString CTroveListAccessible::rowDescription(int) const
{
    return {};
}

int CTroveListAccessible::columnCount() const
{
    return kColumns;
}

int CTroveListAccessible::rowCount() const
{
    return Model().rowCount();
}

int CTroveListAccessible::selectedColumnCount() const
{
    return 0;
}

int CTroveListAccessible::selectedRowCount() const
{
    return int(selectedRows().size());
}

QList<int> CTroveListAccessible::selectedColumns() const
{
    return {};
}

QList<int> CTroveListAccessible::selectedRows() const
{
    // In the numbering of the rows shown; hidden rows are never selected.
    QList<int> rows;
    const CTroveListModel& model = Model();
    model.ForEachSelected([&](int row, const CTroveListCtrlItem*) {
        const int view = model.ViewRow(row);
        if (view >= 0)
            rows.push_back(view);
    });
    return rows;
}

bool CTroveListAccessible::isColumnSelected(int) const
{
    return false;
}

bool CTroveListAccessible::isRowSelected(int row) const
{
    return Model().IsSelected(Model().StorageRow(row));
}

bool CTroveListAccessible::selectRow(int row)
{
    // As a click would: the row becomes the selection, and the panel hears of it.
    CXrefPanelCtrlItem* item = List()->ItemOfRow(Model().StorageRow(row));
    if (!item)
        return false;
    List()->SelectItem(*item);
    return true;
}

bool CTroveListAccessible::selectColumn(int)
{
    return false;
}

bool CTroveListAccessible::unselectRow(int row)
{
    const int listRow = Model().StorageRow(row);
    if (listRow < 0 || !Model().IsSelected(listRow))
        return false;
    return List()->SetItemSelected(listRow, false, true);
}

bool CTroveListAccessible::unselectColumn(int)
{
    return false;
}

void CTroveListAccessible::modelChange(QAccessibleTableModelChangeEvent*)
{
    ClearCells();
}
