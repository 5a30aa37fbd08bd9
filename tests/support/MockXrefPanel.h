#pragma once

#include "framework/ZuUiImageList.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl.h"
#include "services/XrefMessageBox.h"

#include <gmock/gmock.h>

#include <QMenu>

#include <memory>

/// A host panel whose host operations are mocks. Use it as NiceMock<MockXrefPanel> unless a test
/// is about the calls. Created() gives a panel that is constructed and created, ready for items.
class MockXrefPanel : public CXrefPanelCtrl
{
public:
    explicit MockXrefPanel(bool troveMode = false, std::shared_ptr<CXrefToolBar> toolBar = nullptr,
                           int listOption = -1, bool listFlag = true)
        : CXrefPanelCtrl(nullptr, std::move(toolBar), std::make_shared<CXrefMessageBox>(),
                         troveMode, FileReferenceViewType::ListView, DetailsViewType::Details,
                         listOption, listFlag)
    {}
    /// A panel that Create opens on the pages @p referenceView and @p detailsView.
    MockXrefPanel(FileReferenceViewType referenceView, DetailsViewType detailsView,
                  std::shared_ptr<CXrefToolBar> toolBar = nullptr, bool troveMode = false)
        : CXrefPanelCtrl(nullptr, std::move(toolBar), std::make_shared<CXrefMessageBox>(),
                         troveMode, referenceView, detailsView, -1, true)
    {}

    /// Constructs and creates a panel of mock type @p Panel (MockXrefPanel, NiceMock<...>).
    template <typename Panel = testing::NiceMock<MockXrefPanel>>
    static std::unique_ptr<Panel> Created(bool troveMode = false)
    {
        auto panel = std::make_unique<Panel>(troveMode);
        panel->Create(L"References", QRect(0, 0, 400, 600), nullptr, 30000);
        return panel;
    }

    MOCK_METHOD(std::wstring, GetTroveStateToolTipText, (CXrefPanelCtrlItem & item), (override));
    MOCK_METHOD(void, FillStateImageList, (CZuUiImageList & list, bool flag, int view), (override));
    MOCK_METHOD(void, OnSharedRowItemInserted, (const CXrefPanelCtrlItem& existing), (override));
    MOCK_METHOD(void, OnSharedRowOwnerChanged, (CXrefPanelCtrlItem & remaining), (override));
    MOCK_METHOD(void, OnItemRemoved, (CXrefPanelCtrlItem & item), (override));
    MOCK_METHOD(std::vector<int>, GetStoredColumnDipWidths, (), (override));
    MOCK_METHOD(void, HostCallback7, (), (override));
    MOCK_METHOD(void, HostCallback9, (std::vector<int> & widths), (override));
    MOCK_METHOD(void, GetStoredLowerGroup, (double& ratio, bool& shown), (override));
    MOCK_METHOD(void, HostCallback11, (), (override));
    MOCK_METHOD(void, FillContextMenu,
                (QMenu & menu, const std::vector<CXrefPanelCtrlItem*>& items, bool flag),
                (override));
    MOCK_METHOD(void, OnMenuSelection,
                (Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>& items), (override));
    MOCK_METHOD(void, OnStatusColumnDoubleClicked, (CXrefPanelCtrlItem * item), (override));
    MOCK_METHOD(void, OnDisplayHelp, (), (override));
    MOCK_METHOD(bool, OnApplyPropertyEdit,
                (const std::vector<CXrefPanelCtrlItem*>& items, XrefProperties property,
                 const std::wstring& previousValue, const std::wstring& newValue),
                (override));
    MOCK_METHOD(void, HostCallback20, (), (override));
    MOCK_METHOD(void, OnSortCriteriaChanged, (int sortColumn, bool ascending), (override));
};
