#pragma once

#include "kvuiframework_export.h"

#include <QCursor>
#include <QPointer>
#include <QWidget>

class CZuUiGroupCtrl;

/// Two panes stacked vertically with a splitter bar between them. Each pane is a group control
/// or a plain window. The split ratio is the share of the height (less the bar) given to the
/// upper pane; the user changes it by dragging the bar. Derived classes decide the layout.
class KVUIFRAMEWORK_EXPORT CZuUiCoupledGroupCtrl : public QWidget
{
    Q_OBJECT
public:
    /// Height of a plain window's header, in device-independent pixels.
    static constexpr int kDefaultHeaderHeight = 22;
    /// Height of the splitter bar, in device-independent pixels.
    static constexpr int kSplitterHeight = 8;

    explicit CZuUiCoupledGroupCtrl(QWidget* parent = nullptr);
    ~CZuUiCoupledGroupCtrl() override;

    /// Sets a pane, replacing whatever was there (null removes it) and making this control its
    /// parent. A group's collapse re-lays out both panes.
    void SetUpperGroup(CZuUiGroupCtrl* group);
    void SetLowerGroup(CZuUiGroupCtrl* group);
    void SetUpperWindow(QWidget* window);
    void SetLowerWindow(QWidget* window);
    QWidget* GetUpperPane() const { return m_upper; }
    QWidget* GetLowerPane() const { return m_lower; }
    /// The pane as a group; null when it is a plain window or absent.
    CZuUiGroupCtrl* GetUpperGroup() const;
    CZuUiGroupCtrl* GetLowerGroup() const;

    double GetSplitRatio() const { return m_ratio; }
    /// Sets the ratio (kept within 0 to 1; not a number is ignored) and lays out again.
    void SetSplitRatio(double ratio);
    /// While not ready, two open groups are not laid out: their owner is still building them.
    bool IsReady() const { return m_ready; }
    void SetReady(bool ready);

    /// The bar between the panes, as the last layout placed it.
    QRect GetSplitterRect() const { return m_splitterRect; }
    int GetSplitterHeight() const;
    /// The height of a pane's header: its group's header height, or the default for a window.
    int PaneHeaderHeight(const QWidget* pane) const;
    /// A group counts as collapsed when collapsed, a plain window when minimised.
    static bool IsPaneCollapsed(const QWidget* pane);

    /// Lays out the panes for the current size.
    void RecalcLayout();
    void SetSplitterCursor(const QCursor& cursor);

signals:
    /// The user dragged the splitter bar to a new ratio.
    void splitRatioChanged(double ratio);

protected:
    /// Whether there is something to lay out: both panes, and both children of this control.
    virtual bool CheckChildControls() const;
    /// Places the panes in a client area of @p cx x @p cy and records the splitter rectangle.
    virtual void LayoutPanes(int cx, int cy) = 0;
    void SetSplitterRect(const QRect& rect);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setPane(QPointer<QWidget>& slot, QWidget* pane);
    bool canDrag() const;

    QPointer<QWidget> m_upper;
    QPointer<QWidget> m_lower;
    double m_ratio = 0.5;
    bool m_ready = false;
    QRect m_splitterRect;
    QCursor m_splitterCursor = QCursor(Qt::SplitVCursor);
    int m_dragOffset = -1; // where in the bar the drag started; -1 when not dragging
    bool m_hovered = false;
};
