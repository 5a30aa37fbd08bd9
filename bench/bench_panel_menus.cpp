// Opening a view's context menu and the panel's tool-tip menu on a panel that holds 100 or
// 100,000 references, against building and showing the same entries as a plain QMenu; and what
// the panel's watch over mouse buttons adds to the events of widgets outside it.
//
// Menus are shown and hidden at once (popup, hide) instead of running a menu loop, so that each
// iteration measures building, sizing and showing the menu.

#include "framework/ZuUiMenu.h"
#include "support/BenchPanelFill.h"
#include "support/NullXrefPanel.h"
#include "support/TestXrefItem.h"
#include "views/TroveListCtrl.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>

#include <memory>
#include <vector>

namespace {

// What a host typically puts into a reference's context menu.
const Trove::MenuItems kHostEntries[] = {
    Trove::HostCommand3,  Trove::HostCommand6,  Trove::HostCommand7,   Trove::Separator,
    Trove::HostCommand9,  Trove::HostCommand10, Trove::ReloadAllXRefs, Trove::Separator,
    Trove::HostCommand16, Trove::HostCommand18, Trove::HostCommand24,  Trove::HostCommand25,
};

class MenuPanel : public NullXrefPanel
{
public:
    void FillContextMenu(QMenu& menu, const std::vector<CXrefPanelCtrlItem*>&, bool) override
    {
        for (Trove::MenuItems item : kHostEntries)
            InsertMenuW(menu, item, 0, nullptr);
    }
};

// Shows each menu for a moment instead of waiting for a choice.
class ShowAndDismiss
{
public:
    ShowAndDismiss()
    {
        m_previous = CZuUiMenu::SetTrackHandler([](QMenu& menu, unsigned, QPoint at, QWidget*) {
            menu.popup(at);
            menu.hide();
            return 0u;
        });
    }
    ~ShowAndDismiss() { CZuUiMenu::SetTrackHandler(std::move(m_previous)); }

private:
    CZuUiMenu::TrackHandler m_previous;
};

struct FilledPanel
{
    explicit FilledPanel(int count)
    {
        panel.Create(L"References", QRect(0, 0, 400, 600), nullptr, 1);
        const std::vector<TestXrefItem*> items = FillBenchPanel(panel, count, {}, false);
        selection.assign(items.begin(), items.begin() + std::min<std::size_t>(3, items.size()));
    }
    ~FilledPanel() { panel.DeleteAllItems(); }

    MenuPanel panel;
    std::vector<CXrefPanelCtrlItem*> selection;
};

void BM_ViewContextMenu(benchmark::State& state)
{
    FilledPanel filled(int(state.range(0)));
    ShowAndDismiss shown;
    CXrefPanelCtrl& panel = filled.panel;
    QWidget& view = *panel.GetListCtrl();
    for (auto _ : state) {
        panel.OnContextMenu_(view, QPoint(20, 40), filled.selection, true);
    }
}
BENCHMARK(BM_ViewContextMenu)->Arg(100)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void BM_PlainQMenu(benchmark::State& state)
{
    QWidget owner;
    owner.resize(400, 600);
    owner.show();
    CXrefPanelCtrl::LoadMenuItemStrings();
    for (auto _ : state) {
        QMenu menu;
        for (Trove::MenuItems item : kHostEntries) {
            if (item == Trove::Separator)
                menu.addSeparator();
            else
                menu.addAction(QString::fromStdWString(CXrefPanelCtrl::m_MenuItemstrings[item]))
                    ->setData(unsigned(item));
        }
        menu.popup(owner.mapToGlobal(QPoint(20, 40)));
        menu.hide();
    }
}
BENCHMARK(BM_PlainQMenu)->Unit(benchmark::kMicrosecond);

void BM_ToolTipMenu(benchmark::State& state)
{
    FilledPanel filled(int(state.range(0)));
    ShowAndDismiss shown;
    for (auto _ : state)
        filled.panel.ShowContextMenu(QPoint(20, 40));
}
BENCHMARK(BM_ToolTipMenu)->Arg(100)->Arg(100'000)->Unit(benchmark::kMicrosecond);

// Presses and releases sent to a widget outside any panel, with or without a panel alive.
void BM_ButtonEventsElsewhere(benchmark::State& state)
{
    std::unique_ptr<FilledPanel> filled;
    if (state.range(0))
        filled = std::make_unique<FilledPanel>(100);
    QWidget other;
    other.resize(100, 100);
    other.show();
    const QPointF at(10, 10);
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) {
            QMouseEvent press(QEvent::MouseButtonPress, at, other.mapToGlobal(at), Qt::RightButton,
                              Qt::RightButton, Qt::NoModifier);
            QApplication::sendEvent(&other, &press);
            QMouseEvent release(QEvent::MouseButtonRelease, at, other.mapToGlobal(at),
                                Qt::RightButton, Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(&other, &release);
        }
    }
    state.SetLabel(state.range(0) ? "with a panel" : "no panel");
}
BENCHMARK(BM_ButtonEventsElsewhere)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
