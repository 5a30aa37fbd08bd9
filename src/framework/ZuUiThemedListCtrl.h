#pragma once

#include "kvuiframework_export.h"

#include <QTreeView>

#include <memory>

class CZuUiThemedListModel;

/// A report-style list of rows and text columns that paints with the host theme's colours and
/// follows theme changes. Rows are addressed by index, as in a classic list control: each row
/// has one text per column and one integer of item data for its owner.
///
/// Every row has the same height (RowHeight, 16 pixels until set). Texts that do not fit their
/// column are elided at the end; IsTextClipped tells the owner when that happens, for tips.
/// Selection is one whole row at a time; the owner may change both.
class KVUIFRAMEWORK_EXPORT CZuUiThemedListCtrl : public QTreeView
{
    Q_OBJECT
public:
    explicit CZuUiThemedListCtrl(QWidget* parent = nullptr);
    ~CZuUiThemedListCtrl() override;

    // --- Columns --------------------------------------------------------------------------------

    /// Inserts a column before @p column (at the end when past it) with @p heading, the text
    /// alignment of its cells and its width in pixels. Returns the column's index, or -1.
    int InsertColumn(int column, const QString& heading, Qt::Alignment format = Qt::AlignLeft,
                     int width = 100);
    int GetColumnCount() const;
    /// The width in pixels; 0 for a column that does not exist.
    int GetColumnWidth(int column) const;
    /// False for a column that does not exist or a negative width.
    bool SetColumnWidth(int column, int width);
    /// The horizontal alignment of the column's cells (left for a column that does not exist).
    Qt::Alignment GetColumnFormat(int column) const;

    // --- Rows -----------------------------------------------------------------------------------

    /// Inserts a row before @p row with @p text in column 0; a row past the end is appended.
    /// Returns the new row's index, or -1 for a negative @p row.
    int InsertItem(int row, const QString& text);
    bool DeleteItem(int row);
    void DeleteAllItems();
    int GetItemCount() const;
    /// False for a cell that does not exist.
    bool SetItemText(int row, int column, const QString& text);
    /// Empty for a cell that does not exist.
    QString GetItemText(int row, int column) const;
    bool SetItemData(int row, quintptr data);
    /// 0 for a row that does not exist.
    quintptr GetItemData(int row) const;

    // --- Geometry -------------------------------------------------------------------------------

    int RowHeight() const { return m_rowHeight; }
    /// Every row takes @p height pixels (at least 1).
    void SetRowHeight(int height);
    /// The cell's rectangle in viewport coordinates; empty when the cell does not exist.
    QRect GetSubItemRect(int row, int column) const;
    /// Scrolls @p row into view; with @p partialOk a row that is partly visible already counts
    /// as visible. False when the row does not exist or cannot be shown.
    bool EnsureVisible(int row, bool partialOk);
    /// The cell under @p point (viewport coordinates): row and column, each -1 when none.
    QPair<int, int> SubItemHitTest(const QPoint& point) const;
    /// Whether the cell's text is wider than the room its column gives it (so it is elided).
    bool IsTextClipped(int row, int column) const;
    /// Pixels kept clear on either side of a cell's text.
    static int TextPadding();

    // --- Selection and drawing ------------------------------------------------------------------

    /// The selected row, or -1.
    int GetSelectedRow() const;
    /// Selects @p row alone (-1: none).
    void SelectRow(int row);
    /// Stops (false) and resumes (true) repainting, for many changes in a row.
    void SetRedraw(bool redraw);

protected:
    /// The colour of a cell's text; by default the theme's text colour, or its selection text
    /// colour for a selected row.
    virtual QColor cellTextColor(int row, int column, bool selected) const;

private:
    friend class CZuUiThemedListDelegate;

    void applyTheme();

    CZuUiThemedListModel* m_model;
    int m_rowHeight = 16;
};
