#pragma once

#include "panel/XrefPanelCtrl.h"
#include "services/XrefMessageBox.h"

#include <memory>

/// A host panel that answers every host operation with nothing: for benchmarks and tests that
/// need a real panel but do not look at what it tells the host (MockXrefPanel checks calls).
class NullXrefPanel : public CXrefPanelCtrl
{
public:
    /// With a @p sortColumn the list sorts by it from the start.
    explicit NullXrefPanel(std::shared_ptr<CXrefToolBar> toolBar = nullptr, int sortColumn = -1)
        : CXrefPanelCtrl(nullptr, std::move(toolBar), std::make_shared<CXrefMessageBox>(), false,
                         FileReferenceViewType::ListView, DetailsViewType::Details, sortColumn,
                         true)
    {}
    std::wstring GetTroveStateToolTipText(CXrefPanelCtrlItem&) override { return {}; }
    void FillStateImageList(CZuUiImageList&, bool, int) override {}
    void OnSharedRowItemInserted(const CXrefPanelCtrlItem&) override {}
    void OnSharedRowOwnerChanged(CXrefPanelCtrlItem&) override {}
    void OnItemRemoved(CXrefPanelCtrlItem&) override {}
    std::vector<int> GetStoredColumnDipWidths() override { return {}; }
    void HostCallback7() override {}
    void HostCallback9(std::vector<int>&) override {}
    void GetStoredLowerGroup(double&, bool&) override {}
    void HostCallback11() override {}
    void FillContextMenu(QMenu&, const std::vector<CXrefPanelCtrlItem*>&, bool) override {}
    void OnMenuSelection(Trove::MenuItems, const std::vector<CXrefPanelCtrlItem*>&) override {}
    void OnStatusColumnDoubleClicked(CXrefPanelCtrlItem*) override {}
    void OnDisplayHelp() override {}
    bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>&, XrefProperties,
                             const std::wstring&, const std::wstring&) override
    {
        return false;
    }
    void HostCallback20() override {}
    void OnSortCriteriaChanged(int, bool) override {}
};
