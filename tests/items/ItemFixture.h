#pragma once

#include "support/MockXrefPanel.h"
#include "support/TestXrefItem.h"

#include "items/TroveListCtrlItem.h"
#include "resources/TroveResources.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// A created mock panel with a host drawing at the root, and helpers to add references.
class ItemFixture : public testing::Test
{
protected:
    using Column = CXrefPanelCtrl::ListViewColumn;
    using Props = CXrefPanelCtrl::XrefProperties;

    void SetUp() override
    {
        panel = MockXrefPanel::Created();
        root = new TestXrefItem(*panel, true);
        panel->InsertRootItem(*root);
        root->SetText(L"Site");
    }

    void TearDown() override
    {
        // Expectations are about the test's own steps, not about emptying the panel.
        testing::Mock::VerifyAndClearExpectations(panel.get());
        panel->DeleteAllItems();
        panel.reset();
    }

    /// A reference under @p parent (the root when null), sharing @p sharedWith's row if given.
    /// The tree owns it: DeleteAllItems destroys it.
    TestXrefItem* Add(const std::wstring& name, TestXrefItem* parent = nullptr,
                      TestXrefItem* sharedWith = nullptr)
    {
        auto* item = new TestXrefItem(*panel);
        panel->InsertItem(*item, parent ? *parent : *root, sharedWith);
        item->SetText(name);
        return item;
    }

    CTroveListModel& List() const { return panel->GetListCtrl()->Model(); }
    QString Cell(const CXrefPanelCtrlItem& item, int column) const
    {
        return List().CellText(item.LVItemIndex(), column);
    }

    std::unique_ptr<testing::NiceMock<MockXrefPanel>> panel;
    TestXrefItem* root = nullptr;
};
