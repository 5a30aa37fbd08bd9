// Typing into the panel's filter with 100,000 references: each step sets the next text of a
// typist's sequence (growing, then shrinking again) and lets the view lay out and paint. In the
// list and in the tree; against a QSortFilterProxyModel over a QStandardItemModel with the same
// three texts per row, filtering every column of a QTreeView.
//
// The target: under 50 ms per keystroke at 100,000 references.

#include "items/FileDataStatus.h"
#include "items/RefStatus.h"
#include "panel/ListViewColumn.h"
#include "support/BenchPanelFill.h"
#include "support/NullXrefPanel.h"
#include "support/TestXrefItem.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QApplication>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

// What a user types looking for reference 4711, letter by letter, then takes back.
const QStringList kKeystrokes = {"r",       "re",       "ref",     "ref-",   "ref-4", "ref-47",
                                 "ref-471", "ref-4711", "ref-471", "ref-47", "ref-4", "ref-",
                                 "ref",     "re",       "r",       ""};

struct FilterPanel
{
    FilterPanel(int count, bool tree)
        : toolBar(std::make_shared<CXrefToolBar>()),
          panel(toolBar, Trove::ListViewColumn::ReferenceName)
    {
        panel.Create(L"References", QRect(0, 0, 420, 800), nullptr, 1);
        if (tree)
            panel.SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
        FillBenchPanel(panel, count, [](TestXrefItem& item, int i) {
            item.SetSavedPath(L"C:\\project\\refs\\Ref-" + std::to_wstring(i) + L".dwg");
            item.SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code1);
        });
    }
    ~FilterPanel() { panel.DeleteAllItems(); }

    QWidget& view() const
    {
        return panel.GetReferenceViewType() == CXrefPanelCtrl::FileReferenceViewType::TreeView
                   ? static_cast<QWidget&>(*panel.GetTreeCtrl())
                   : static_cast<QWidget&>(*panel.GetListCtrl());
    }

    std::shared_ptr<CXrefToolBar> toolBar;
    NullXrefPanel panel;
};

void settle(QAbstractItemView& view)
{
    // The views lay out on their next turn of the event loop; a user sees the result only once
    // it is painted.
    view.doItemsLayout();
    view.viewport()->repaint();
}

void BM_PanelFilterKeystroke(benchmark::State& state, bool tree)
{
    FilterPanel filled(int(state.range(0)), tree);
    auto& view = static_cast<QAbstractItemView&>(filled.view());
    int key = 0;
    for (auto _ : state) {
        filled.panel.SetFilter(kKeystrokes[key], false);
        settle(view);
        key = (key + 1) % int(kKeystrokes.size());
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_PanelFilterKeystrokeList(benchmark::State& state)
{
    BM_PanelFilterKeystroke(state, false);
}

void BM_PanelFilterKeystrokeTree(benchmark::State& state)
{
    BM_PanelFilterKeystroke(state, true);
}

void BM_ProxyFilterKeystroke(benchmark::State& state)
{
    const int count = int(state.range(0));
    QStandardItemModel source(count, 3);
    for (int i = 0; i < count; ++i) {
        source.setItem(i, 0, new QStandardItem(QStringLiteral("Ref-%1").arg(i)));
        source.setItem(i, 1, new QStandardItem(QStringLiteral("Loaded")));
        source.setItem(i, 2,
                       new QStandardItem(QStringLiteral("C:\\project\\refs\\Ref-%1.dwg").arg(i)));
    }
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&source);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setFilterKeyColumn(-1);
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setRootIsDecorated(false);
    view.setModel(&proxy);
    view.resize(420, 800);
    view.show();
    QApplication::processEvents();
    int key = 0;
    for (auto _ : state) {
        proxy.setFilterFixedString(kKeystrokes[key]);
        settle(view);
        key = (key + 1) % int(kKeystrokes.size());
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(BM_PanelFilterKeystrokeList)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PanelFilterKeystrokeTree)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProxyFilterKeystroke)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
