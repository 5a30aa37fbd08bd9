#pragma once

// The panel's state, one internal class per concern. Not installed.

#include "panel/detail/ContextMenus.h"
#include "panel/detail/DetailsBinding.h"
#include "panel/detail/FilterBar.h"
#include "panel/detail/PanelInput.h"
#include "panel/detail/PanelLayout.h"
#include "panel/detail/SelectionBinding.h"
#include "panel/detail/ToolTipSettings.h"

#include <memory>
#include <vector>

class CXREFPalette;
class CXrefMessageBox;
class CXrefToolBar;

class CXrefPanelCtrlPrivate
{
public:
    CXrefPanelCtrlPrivate(CXREFPalette* palette_, std::shared_ptr<CXrefToolBar> toolBar_,
                          std::shared_ptr<CXrefMessageBox> messageBox_, bool troveMode_,
                          Trove::FileReferenceViewType referenceView,
                          Trove::DetailsViewType detailsView, int listOption, bool listFlag)
        : palette(palette_), toolBar(std::move(toolBar_)), messageBox(std::move(messageBox_)),
          troveMode(troveMode_), layout(referenceView, detailsView, listOption, listFlag)
    {}

    CXREFPalette* palette;
    // Shared with the host, which may keep them longer than the panel.
    std::shared_ptr<CXrefToolBar> toolBar;
    std::shared_ptr<CXrefMessageBox> messageBox;
    bool troveMode;
    bool created = false;
    bool hostModStatusEnabled = false;
    bool hostModified = false;

    /// How often the selection was applied: tells whether a view reported what it was told.
    int selectionRuns = 0;
    struct ItemWatch;
    /// The items the panel is calling the host about just now (see ItemWatch).
    std::vector<ItemWatch*> watches;

    PanelLayout layout;
    SelectionBinding selection;
    DetailsBinding details{selection};
    ContextMenus menus;
    ToolTipSettings toolTips;
    ReferenceFilter filter;
    FilterBar* filterBar = nullptr;
    // Made by Create, and gone first when the panel goes.
    std::unique_ptr<PanelInput> input;
};
