#include "panel/detail/PathOperations.h"

#include "framework/ZuUiMenu.h"
#include "host/SystemVariables.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/MenuItems.h"
#include "toolbar/XrefToolBar.h"

namespace {

constexpr int kCompareModeOn = 3;

unsigned stateFor(bool enabled)
{
    return enabled ? 0u : unsigned(CZuUiMenu::Grayed);
}

} // namespace

namespace PathOperations {

bool CompareModeOn()
{
    return KvSystemVariables::ReadInt(L"DWGCOMPAREMODE") == kCompareModeOn;
}

void Update(CXrefToolBar* toolBar, const std::vector<CXrefPanelCtrlItem*>& items,
            const ItemPathTypes& single)
{
    if (!toolBar)
        return;
    if (CompareModeOn()) {
        toolBar->EnablePathOperations(false);
        return;
    }
    bool any = false;
    for (const CXrefPanelCtrlItem* item : items)
        any = any || (item && !item->IsExcluded() && !item->IsHostDwgItem());
    toolBar->EnablePathOperations(any);

    if (items.size() == 1) {
        toolBar->EnableMenuItem(Trove::MakePathAbsolute, stateFor(single.first));
        toolBar->EnableMenuItem(Trove::MakePathRelative, stateFor(single.second));
        toolBar->EnableMenuItem(Trove::RemovePath, stateFor(single.third));
        toolBar->EnableMenuItem(Trove::SelectNewPath, stateFor(true));
        toolBar->EnableMenuItem(Trove::FindAndReplace, stateFor(true));
    } else if (items.size() > 1) {
        for (Trove::MenuItems command : {Trove::RemovePath, Trove::MakePathRelative,
                                         Trove::MakePathAbsolute, Trove::FindAndReplace})
            toolBar->EnableMenuItem(command, stateFor(true));
        toolBar->EnableMenuItem(Trove::SelectNewPath, stateFor(false));
    }
}

} // namespace PathOperations
