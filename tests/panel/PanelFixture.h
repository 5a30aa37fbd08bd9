#pragma once

#include "support/MockXrefPanel.h"
#include "support/ScopedOverrides.h"

#include "framework/ControlId.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/XrefCoupledGroupCtrl.h"
#include "views/XrefGroupCtrl.h"
#include "views/XrefPreview.h"
#include "views/XrefTreeCtrl.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// A mock host panel whose protected handlers tests may call, and which counts how often the
/// selection was handed to OnItemsSelected.
class TestPanel : public testing::NiceMock<MockXrefPanel>
{
public:
    using testing::NiceMock<MockXrefPanel>::NiceMock;
    using CXrefPanelCtrl::OnMouseActivate;
    using CXrefPanelCtrl::OnPaneVisibilityChanging;

    void OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag) override
    {
        ++selectionRuns;
        CXrefPanelCtrl::OnItemsSelected(items, flag);
    }

    int selectionRuns = 0;
};

/// Panels made at a chosen size; every test starts at 96 DPI unless it sets another scale.
class PanelFixture : public testing::Test
{
protected:
    /// Constructs (with @p args for the panel's constructor) and creates a panel of
    /// @p width x @p height.
    template <typename... Args>
    std::unique_ptr<TestPanel> Make(int width, int height, Args&&... args)
    {
        auto panel = std::make_unique<TestPanel>(std::forward<Args>(args)...);
        panel->Create(L"References", QRect(0, 0, width, height), nullptr, 30000);
        return panel;
    }

    static QRect GeometryOf(const CXrefPanelCtrl& panel, int id)
    {
        const QWidget* child = ControlId::FindChild(&panel, id);
        return child ? child->geometry() : QRect();
    }

    ScopedDpiScale dpi{1.0};
};
