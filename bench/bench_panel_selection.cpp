// The selection round trip of a created panel, a left click on a list row until the tree, the
// details pane, the preview, the tool bar and the message strip have followed it, with 100 and
// with 100,000 references; against a QTreeView over a QStandardItemModel whose click fills an
// eight-row details model from the clicked row. And EndUpdate of a fill, the list's sort
// included, after a thousand names changed.
//
// The target is the panel's own growth: its round trip at 100,000 references within 1.5 times
// that at 100.

#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "support/BenchPanelFill.h"
#include "support/NullXrefPanel.h"
#include "support/TestXrefItem.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <vector>

namespace {

struct SelectionPanel
{
    explicit SelectionPanel(int count)
        : toolBar(std::make_shared<CXrefToolBar>()),
          panel(toolBar, Trove::ListViewColumn::ReferenceName)
    {
        panel.Create(L"References", QRect(0, 0, 420, 800), nullptr, 1);
        items = FillBenchPanel(panel, count, [](TestXrefItem& item, int i) {
            item.SetType(i % 3 ? L"Attach" : L"Overlay");
            item.SetSavedPath(L"C:\\project\\refs\\Ref-" + std::to_wstring(i) + L".dwg");
            item.SetSize(1000 + i);
            item.fileType = 1;
        });
    }
    ~SelectionPanel() { panel.DeleteAllItems(); }

    void click(int row)
    {
        CTroveListCtrl& list = *panel.GetListCtrl();
        const QPoint at =
            list.visualRect(list.Model().index(row, Trove::ListViewColumn::ReferenceName)).center();
        QMouseEvent press(QEvent::MouseButtonPress, at, list.viewport()->mapToGlobal(at),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, at, list.viewport()->mapToGlobal(at),
                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &press);
        QApplication::sendEvent(list.viewport(), &release);
    }

    std::shared_ptr<CXrefToolBar> toolBar;
    NullXrefPanel panel;
    std::vector<TestXrefItem*> items;
};

void BM_PanelSelectionRoundTrip(benchmark::State& state)
{
    SelectionPanel filled(int(state.range(0)));
    int row = 1;
    for (auto _ : state) {
        filled.click(row);
        row = row == 1 ? 3 : 1;
        benchmark::DoNotOptimize(filled.panel.GetSelectedItems().data());
    }
    if (filled.panel.GetSelectedItems().size() != 1)
        state.SkipWithError("the click selected nothing");
}
BENCHMARK(BM_PanelSelectionRoundTrip)->Arg(100)->Arg(100000)->Unit(benchmark::kMicrosecond);

void BM_StandardItemViewSelectionRoundTrip(benchmark::State& state)
{
    const int count = int(state.range(0));
    QStandardItemModel model(count, 8);
    for (int i = 0; i < count; ++i) {
        model.setItem(i, 2, new QStandardItem(QStringLiteral("Ref-%1").arg(i)));
        model.setItem(
            i, 5, new QStandardItem(i % 3 ? QStringLiteral("Attach") : QStringLiteral("Overlay")));
        model.setItem(i, 7,
                      new QStandardItem(QStringLiteral("C:\\project\\refs\\Ref-%1.dwg").arg(i)));
    }
    QTreeView view;
    view.setModel(&model);
    view.setUniformRowHeights(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.resize(420, 400);
    QStandardItemModel details(8, 2);
    QTreeView detailsView;
    detailsView.setModel(&details);
    QObject::connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, [&] {
        const QModelIndexList rows = view.selectionModel()->selectedRows();
        for (int column = 0; column < 8; ++column)
            details.setData(details.index(column, 1),
                            rows.size() == 1 ? model.index(rows.front().row(), column).data()
                                             : QVariant());
    });
    view.show();
    detailsView.show();
    QApplication::processEvents();
    int row = 1;
    for (auto _ : state) {
        const QPoint at = view.visualRect(model.index(row, 2)).center();
        QMouseEvent press(QEvent::MouseButtonPress, at, view.viewport()->mapToGlobal(at),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, at, view.viewport()->mapToGlobal(at),
                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(view.viewport(), &press);
        QApplication::sendEvent(view.viewport(), &release);
        row = row == 1 ? 3 : 1;
    }
}
BENCHMARK(BM_StandardItemViewSelectionRoundTrip)
    ->Arg(100)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

// EndUpdate after a thousand references were renamed: the list sorts by name again, both views
// take their changes and the selection is applied again.
void BM_PanelEndUpdateSorted(benchmark::State& state)
{
    SelectionPanel filled(int(state.range(0)));
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, filled.items.size() - 1);
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        filled.panel.BeginUpdate();
        for (int i = 0; i < 1000; ++i)
            filled.items[pick(random)]->SetText(L"Renamed-" + std::to_wstring(round) + L"-" +
                                                std::to_wstring(i));
        ++round;
        state.ResumeTiming();
        filled.panel.EndUpdate();
    }
}
BENCHMARK(BM_PanelEndUpdateSorted)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
