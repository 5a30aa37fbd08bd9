#pragma once

// What assistive technology sees of the list view. Not installed.

#include <QAccessibleWidget>
#include <QHash>

class CTroveListCtrl;
class CTroveListModel;

/// The list as an accessible table of its shown rows and its eight columns. Qt's own table
/// interface reads the selection from the view's selection model, which the list does not use
/// (each row keeps its own selected state), so it would report every row as unselected; this
/// one reads the rows. Cells are made on demand and dropped whenever the rows change.
class CTroveListAccessible : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit CTroveListAccessible(CTroveListCtrl* list);
    ~CTroveListAccessible() override;

    /// Installs the factory that gives every list view this interface; once per process.
    static void InstallFactory();

    // QAccessibleInterface
    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::Role role() const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    // QAccessibleTableInterface
    QAccessibleInterface* caption() const override;
    QAccessibleInterface* summary() const override;
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int columnCount() const override;
    int rowCount() const override;
    int selectedColumnCount() const override;
    int selectedRowCount() const override;
    QList<int> selectedColumns() const override;
    QList<int> selectedRows() const override;
    bool isColumnSelected(int column) const override;
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    CTroveListCtrl* List() const;
    const CTroveListModel& Model() const;
    /// Forgets every cell made so far (their ids die with them).
    void ClearCells() const;

private:
    mutable QHash<int, QAccessible::Id> m_cells; ///< by view row * columns + column
};
