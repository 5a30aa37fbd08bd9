#pragma once

#include "kvuiframework_export.h"

#include <QIcon>
#include <QPointer>
#include <QWidget>

#include <vector>

/// A collapsible group: a header with a collapse button, the title of the page in front and one
/// button per page, above a content area that shows one of several pages at a time. Each page
/// has a title and a key (the key also names its button's icon).
///
/// Keyboard: with the focus on the group, Space or Enter collapses and expands it, Left and
/// Right bring the previous or next page to front.
class KVUIFRAMEWORK_EXPORT CZuUiGroupCtrl : public QWidget
{
    Q_OBJECT
public:
    /// What paneVisibilityChanging reports about a page.
    enum PaneVisibility : unsigned {
        PaneShown = 0x1,    ///< brought to front
        PaneHidden = 0x2,   ///< sent behind another page, or its group collapsed
        PaneRevealed = 0x4, ///< the page in front became visible because its group expanded
    };
    /// Header height in device-independent pixels unless set otherwise.
    static constexpr int kDefaultHeaderHeight = 22;

    explicit CZuUiGroupCtrl(QWidget* parent = nullptr);
    ~CZuUiGroupCtrl() override;

    /// Adds @p page as the last page and makes the group its parent; the first page added comes
    /// to front. Returns the page's index.
    int AddPage(QWidget* page, const QString& title, const QString& key);
    int GetPageCount() const { return int(m_pages.size()); }
    /// The page at @p index, or null.
    QWidget* GetPage(int index) const;
    QString GetPageTitle(int index) const;
    void SetPageTitle(int index, const QString& title);
    QString GetPageKey(int index) const;
    /// The index of the page with @p key, or -1.
    int FindPage(const QString& key) const;
    int IndexOf(const QWidget* page) const;

    /// The page in front, -1 when there is none.
    int GetSelIndex() const { return m_selected; }
    /// Brings page @p index to front: the old page is reported hidden, then the new one shown.
    /// False when there is no such page.
    bool SetSelIndex(int index);

    bool IsCollapsed() const { return m_collapsed; }
    /// Shows only the header (true) or the header and the page in front (false).
    virtual void SetCollapsed(bool collapsed);

    /// The header height in pixels: set with SetHeaderHeight, otherwise the default height at
    /// the current vertical DPI scale.
    int GetHeaderHeight() const;
    /// A negative height goes back to the default.
    void SetHeaderHeight(int pixels);

    /// An active group draws its header in the highlight colour.
    bool IsActive() const { return m_active; }
    void SetActive(bool active);

    QRect HeaderRect() const;
    QRect ContentRect() const;
    QRect CollapseButtonRect() const;
    QRect PageButtonRect(int index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// A page is about to be hidden (PaneHidden) or has come to front or into view (PaneShown,
    /// PaneRevealed).
    void paneVisibilityChanging(QWidget* pane, unsigned flags);
    void collapsedChanged(bool collapsed);

protected:
    /// The icon of a page's button; none by default, so the button shows the title's initial.
    virtual QIcon PageIcon(const QString& key) const;
    /// Reloads every page's icon, for instance after a theme change.
    void ReloadPageIcons();
    /// Draws the header into @p area.
    virtual void DrawHeader(QPainter& painter, const QRect& area);
    /// Draws the frame around the whole group.
    virtual void DrawFrame(QPainter& painter);
    int FrameWidth() const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Page
    {
        QPointer<QWidget> widget;
        const QObject* identity; // compared when the page is being destroyed
        QString title;
        QString key;
        QIcon icon;
    };

    void layoutPages();
    void onPageDestroyed(QObject* page);
    int pageButtonAt(const QPoint& point) const;

    std::vector<Page> m_pages;
    int m_selected = -1;
    bool m_collapsed = false;
    bool m_active = false;
    int m_headerHeight = -1;
    int m_hoveredButton = -2; // -1: collapse button, page index otherwise
};
