#pragma once

#include "panel/XrefPanelCtrl.h"

#include <memory>

class QAbstractItemView;
class XrefDocument;

/// The demo's host side of the panel: it answers the panel's questions and acts on its commands
/// the way a CAD application would (for the few that make sense without one).
class DemoPanel : public CXrefPanelCtrl
{
public:
    DemoPanel();
    ~DemoPanel() override;

    /// Creates the panel inside @p parent and fills it with the references of @p document.
    bool Open(const XrefDocument& document, QWidget* parent);
    /// Shows the tree view instead of the list view.
    void ShowTree(bool tree);
    /// Selects the first reference named @p name in the view in front.
    void SelectByName(const QString& name);
    /// Shows the rich tool tip of the selected row, as hovering over it would; the tip's window,
    /// or null when there is nothing to show.
    QWidget* ShowSelectedToolTip();

    std::wstring GetTroveStateToolTipText(CXrefPanelCtrlItem& item) override;
    void FillStateImageList(CZuUiImageList& list, bool flag, int view) override;
    void OnSharedRowItemInserted(const CXrefPanelCtrlItem&) override {}
    void OnSharedRowOwnerChanged(CXrefPanelCtrlItem&) override {}
    void OnItemRemoved(CXrefPanelCtrlItem&) override {}
    std::vector<int> GetStoredColumnDipWidths() override;
    void HostCallback7() override {}
    void HostCallback9(std::vector<int>&) override {}
    void GetStoredLowerGroup(double& ratio, bool& shown) override;
    void HostCallback11() override {}
    void FillContextMenu(QMenu&, const std::vector<CXrefPanelCtrlItem*>&, bool) override {}
    void OnMenuSelection(Trove::MenuItems item,
                         const std::vector<CXrefPanelCtrlItem*>& items) override;
    void OnStatusColumnDoubleClicked(CXrefPanelCtrlItem* item) override;
    void OnDisplayHelp() override;
    bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>&, XrefProperties,
                             const std::wstring&, const std::wstring&) override
    {
        return false;
    }
    void HostCallback20() override {}
    void OnSortCriteriaChanged(int, bool) override {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill(const XrefDocument& document);
    void selectionChanged(QAbstractItemView* view);
    CXrefPanelCtrlItem* itemAt(QAbstractItemView* view, const QPoint& viewportPos) const;
    void showMessage(const QString& text);
    QAbstractItemView* frontView() const;
};
