// The list view at 100,000 references: a header click (sort and paint) per column, select all
// with its ItemsSelected and one repaint, a selection of 50,000 scattered rows, a repaint with
// it, reading 100,000 selected items back, and the heap per reference once every column has
// been sorted. Each against the same work on a QStandardItemModel behind a
// QSortFilterProxyModel in a QTreeView, with Qt's selection model, in the same run.
//
// The list is filled in shuffled order, so that no column is sorted to begin with. The baseline
// keeps a sort value per cell where the list has one: the size as a number and the date read
// from its text once per row, as a careful host would.

#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "panel/ListViewColumn.h"
#include "services/TroveUIFunctions.h"
#include "support/NullXrefPanel.h"
#include "util/DateTime.h"
#include "views/TroveListCtrl.h"

#include <QHeaderView>
#include <QImage>
#include <QItemSelectionModel>
#include <QRandomGenerator>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <vector>

namespace {

using Col = Trove::ListViewColumn;
constexpr int kRows = 100000;
constexpr int kSortValueRole = Qt::UserRole + 1;

class BenchItem : public CXrefPanelCtrlItem
{
public:
    using CXrefPanelCtrlItem::CXrefPanelCtrlItem;
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
};

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

// One reference's values, the same for the list and the baseline.
struct Ref
{
    std::wstring name;
    std::wstring path;
    std::int64_t size;
    Util::DateTime date;
    int status;
    bool overlay;
};

const std::vector<Ref>& refs()
{
    static const std::vector<Ref> made = [] {
        std::vector<int> order(kRows);
        std::iota(order.begin(), order.end(), 0);
        QRandomGenerator random(2024);
        std::shuffle(order.begin(), order.end(), random);
        std::vector<Ref> result;
        result.reserve(kRows);
        for (int i : order) {
            const int folder = int(random.bounded(200));
            result.push_back(
                {L"Ref-" + std::to_wstring(i),
                 L"..\\xrefs\\site-" + std::to_wstring(folder) + L"\\ref-" + std::to_wstring(i) +
                     L".dwg",
                 std::int64_t(random.bounded(50'000'000)) + 1,
                 Util::DateTime(2000 + int(random.bounded(24)), 1 + int(random.bounded(12)),
                                1 + int(random.bounded(28)), int(random.bounded(24)),
                                int(random.bounded(60)), int(random.bounded(60))),
                 int(random.bounded(8)), random.bounded(3) == 0});
        }
        return result;
    }();
    return made;
}

void paint(QWidget& view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
    benchmark::DoNotOptimize(image.bits());
}

// A created panel with the list in front and every reference in it.
struct ListBench
{
    NullXrefPanel panel;
    std::vector<BenchItem*> items; ///< the panel destroys them with the tree
    int selectedEvents = 0;
    std::size_t lastSelection = 0;

    ListBench()
    {
        panel.Create(L"References", QRect(0, 0, 800, 600), nullptr, 1);
        list().setGeometry(0, 0, 800, 600);
        list().show();
        panel.BeginUpdate();
        auto* root = new BenchItem(panel);
        panel.InsertRootItem(*root);
        root->SetText(L"Site");
        items.reserve(kRows);
        for (const Ref& ref : refs()) {
            items.push_back(new BenchItem(panel));
            BenchItem& item = *items.back();
            panel.InsertItem(item, *root, nullptr);
            item.SetText(ref.name);
            item.SetSize(ref.size);
            item.SetType(ref.overlay ? L"Overlay" : L"Attach");
            item.SetDate(ref.date);
            item.SetSavedPath(ref.path);
            item.SetReferenceStatus(RefStatus::RefIcon(1 + ref.status % 6),
                                    Trove::FileDataStatus::Value(ref.status));
        }
        panel.EndUpdate();
        QObject::connect(&list(), &CTroveListCtrl::ItemsSelected, &panel,
                         [this](const CTroveListCtrl::ItemList& selected, bool) {
                             ++selectedEvents;
                             lastSelection = selected.size();
                         });
        paint(list());
    }
    ~ListBench() { panel.DeleteAllItems(); }
    CTroveListCtrl& list() { return *panel.GetListCtrl(); }
    void clickHeader(int column) { emit list().header()->sectionClicked(column); }
};

// The same rows as a standard model behind a sorting proxy.
struct BaselineBench
{
    QStandardItemModel model{0, Col::Count};
    QSortFilterProxyModel proxy;
    QTreeView view;

    BaselineBench()
    {
        const QString statuses[8] = {
            CXrefPanelCtrlItemStatus::ToString(0), CXrefPanelCtrlItemStatus::ToString(1),
            CXrefPanelCtrlItemStatus::ToString(2), CXrefPanelCtrlItemStatus::ToString(3),
            CXrefPanelCtrlItemStatus::ToString(4), CXrefPanelCtrlItemStatus::ToString(5),
            CXrefPanelCtrlItemStatus::ToString(6), CXrefPanelCtrlItemStatus::ToString(7)};
        for (const Ref& ref : refs()) {
            QList<QStandardItem*> row;
            row << new QStandardItem() << new QStandardItem()
                << new QStandardItem(QString::fromStdWString(ref.name))
                << new QStandardItem(statuses[ref.status]);
            auto* size =
                new QStandardItem(QString::fromStdWString(TroveUI::FormatByteSize(ref.size)));
            size->setData(qlonglong(ref.size), kSortValueRole);
            auto* date = new QStandardItem(ref.date.ToString(QStringLiteral("G")));
            // Read back from the text once per row, as the list's rule wants.
            const auto parsed = Util::DateTime::Parse(date->text());
            date->setData(parsed ? parsed->ToQDateTime() : QDateTime(), kSortValueRole);
            row << size
                << new QStandardItem(ref.overlay ? QStringLiteral("Overlay")
                                                 : QStringLiteral("Attach"))
                << date << new QStandardItem(QString::fromStdWString(ref.path));
            for (int column : {0, 1, 2, 3, 5, 7})
                row[column]->setData(row[column]->text(), kSortValueRole);
            model.appendRow(row);
        }
        proxy.setSourceModel(&model);
        proxy.setSortRole(kSortValueRole);
        proxy.setSortLocaleAware(true);
        proxy.setSortCaseSensitivity(Qt::CaseInsensitive);
        view.setModel(&proxy);
        view.setUniformRowHeights(true);
        view.setRootIsDecorated(false);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        view.setGeometry(0, 0, 800, 600);
        view.show();
        paint(view);
    }
};

ListBench& listBench()
{
    static ListBench bench;
    return bench;
}

BaselineBench& baselineBench()
{
    static BaselineBench bench;
    return bench;
}

// --- Header click: sort and paint ---------------------------------------------------------------

// Steady state: every click after the first on a column, the direction turning each time.
void BM_ListHeaderClick(benchmark::State& state)
{
    ListBench& bench = listBench();
    const int column = int(state.range(0));
    // The first click ranks the column's texts; the next ones find the heap warmed up.
    for (int click = 0; click < 3; ++click)
        bench.clickHeader(column);
    for (auto _ : state) {
        bench.clickHeader(column);
        paint(bench.list());
    }
}

void BM_BaselineHeaderClick(benchmark::State& state)
{
    BaselineBench& bench = baselineBench();
    const int column = int(state.range(0));
    bool ascending = true;
    for (auto _ : state) {
        bench.proxy.sort(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        paint(bench.view);
        ascending = !ascending;
    }
}

// The first click on a column after a fill, which ranks its texts.
void BM_ListFirstHeaderClick(benchmark::State& state)
{
    const int column = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto bench = std::make_unique<ListBench>();
        state.ResumeTiming();
        bench->clickHeader(column);
        paint(bench->list());
        state.PauseTiming();
        bench.reset();
        state.ResumeTiming();
    }
}

// --- Selection ----------------------------------------------------------------------------------

void BM_ListSelectAll(benchmark::State& state)
{
    ListBench& bench = listBench();
    for (auto _ : state) {
        state.PauseTiming();
        bench.list().ClearSelection();
        paint(bench.list());
        const int events = bench.selectedEvents;
        state.ResumeTiming();
        bench.list().OnContextMenuCommand(Trove::HostCommand18);
        paint(bench.list());
        state.PauseTiming();
        if (bench.selectedEvents != events + 1 || bench.lastSelection != std::size_t(kRows + 1))
            state.SkipWithError("select all did not report every row once");
        state.ResumeTiming();
    }
}

void BM_BaselineSelectAll(benchmark::State& state)
{
    BaselineBench& bench = baselineBench();
    for (auto _ : state) {
        state.PauseTiming();
        bench.view.clearSelection();
        paint(bench.view);
        state.ResumeTiming();
        bench.view.selectAll();
        benchmark::DoNotOptimize(bench.view.selectionModel()->selectedRows().size());
        paint(bench.view);
    }
}

// Every other row, as the panel hands a selection over row by row.
void BM_ListApplyScattered(benchmark::State& state)
{
    ListBench& bench = listBench();
    for (auto _ : state) {
        state.PauseTiming();
        bench.list().ClearSelection();
        state.ResumeTiming();
        for (int row = 0; row < kRows; row += 2)
            bench.list().SetItemSelected(row, true, true);
        benchmark::DoNotOptimize(bench.list().GetSelectedCount());
    }
}

QItemSelection scatteredRows(const QAbstractItemModel& model)
{
    QItemSelection selection;
    for (int row = 0; row < kRows; row += 2)
        selection.select(model.index(row, 0), model.index(row, Col::Count - 1));
    return selection;
}

void BM_BaselineApplyScattered(benchmark::State& state)
{
    BaselineBench& bench = baselineBench();
    for (auto _ : state) {
        state.PauseTiming();
        bench.view.clearSelection();
        const QItemSelection selection = scatteredRows(bench.proxy);
        state.ResumeTiming();
        // One call for the whole selection: the baseline's best case.
        bench.view.selectionModel()->select(selection, QItemSelectionModel::Select);
    }
}

void BM_ListPaintScattered(benchmark::State& state)
{
    ListBench& bench = listBench();
    bench.list().ClearSelection();
    for (int row = 0; row < kRows; row += 2)
        bench.list().SetItemSelected(row, true, true);
    for (auto _ : state)
        paint(bench.list());
}

void BM_BaselinePaintScattered(benchmark::State& state)
{
    BaselineBench& bench = baselineBench();
    bench.view.clearSelection();
    bench.view.selectionModel()->select(scatteredRows(bench.proxy), QItemSelectionModel::Select);
    for (auto _ : state)
        paint(bench.view);
}

void BM_ListPaintNoSelection(benchmark::State& state)
{
    ListBench& bench = listBench();
    bench.list().ClearSelection();
    for (auto _ : state)
        paint(bench.list());
}

void BM_ListGetSelectedItems(benchmark::State& state)
{
    ListBench& bench = listBench();
    bench.list().SelectAll();
    for (auto _ : state) {
        const CTroveListCtrl::ItemList items = bench.list().GetSelectedItems();
        benchmark::DoNotOptimize(items.data());
    }
}

void BM_BaselineGetSelectedItems(benchmark::State& state)
{
    BaselineBench& bench = baselineBench();
    bench.view.selectAll();
    for (auto _ : state) {
        QModelIndexList rows = bench.view.selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end(),
                  [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
        std::vector<QStandardItem*> items;
        items.reserve(std::size_t(rows.size()));
        for (const QModelIndex& index : rows)
            items.push_back(bench.model.itemFromIndex(bench.proxy.mapToSource(index)));
        benchmark::DoNotOptimize(items.data());
    }
}

// --- Memory -------------------------------------------------------------------------------------

// Heap per reference once every column has been sorted (the kept keys included), without the
// item objects themselves, which are the host's.
void BM_ListMemoryAfterSorts(benchmark::State& state)
{
    double perRef = 0;
    for (auto _ : state) {
        std::vector<std::unique_ptr<BenchItem>> loose;
        loose.reserve(1000);
        {
            NullXrefPanel probe;
            probe.Create(L"References", QRect(0, 0, 800, 600), nullptr, 1);
            const std::size_t start = heapInUse();
            for (int i = 0; i < 1000; ++i)
                loose.push_back(std::make_unique<BenchItem>(probe));
            const double itemBytes = double(heapInUse() - start) / 1000.0;
            loose.clear();
            const std::size_t before = heapInUse();
            auto bench = std::make_unique<ListBench>();
            for (int column = 0; column < Col::Count; ++column)
                bench->clickHeader(column);
            paint(bench->list());
            const double total =
                double(heapInUse() - before) - double(bench->items.capacity()) * sizeof(void*);
            perRef = total / kRows - itemBytes;
        }
    }
    state.counters["bytes_per_ref"] = perRef;
}

void BM_BaselineMemory(benchmark::State& state)
{
    double perRef = 0;
    for (auto _ : state) {
        const std::size_t before = heapInUse();
        auto bench = std::make_unique<BaselineBench>();
        for (int column = 0; column < Col::Count; ++column)
            bench->proxy.sort(column);
        paint(bench->view);
        perRef = double(heapInUse() - before) / kRows;
    }
    state.counters["bytes_per_ref"] = perRef;
}

void columns(benchmark::internal::Benchmark* b)
{
    for (int column : {int(Col::ReferenceName), int(Col::Status), int(Col::Size), int(Col::Type),
                       int(Col::Date), int(Col::SavedPath), int(Col::TypeIcon)})
        b->Arg(column);
    b->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_ListHeaderClick)->Apply(columns)->Iterations(6);
BENCHMARK(BM_BaselineHeaderClick)->Apply(columns)->Iterations(2);
BENCHMARK(BM_ListFirstHeaderClick)
    ->Arg(Col::ReferenceName)
    ->Arg(Col::Date)
    ->Arg(Col::SavedPath)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);
BENCHMARK(BM_ListSelectAll)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_BaselineSelectAll)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_ListApplyScattered)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_BaselineApplyScattered)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_ListPaintScattered)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_ListPaintNoSelection)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_BaselinePaintScattered)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_ListGetSelectedItems)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_BaselineGetSelectedItems)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ListMemoryAfterSorts)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_BaselineMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
