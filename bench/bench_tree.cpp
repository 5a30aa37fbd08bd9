// The tree view against QTreeWidget doing the same work in the same run: filling 100 drawings of
// 1,000 references each and painting once, expanding everything, and taking deep chains of
// nested references out. And the details list: showing the rows of a newly selected reference.
//
// Counters: us_per_node is the time per node; fill_ms and paint_ms split a fill into building the
// tree and the first paint, which lays out every open row.

#include "items/XrefPanelCtrlItem.h"
#include "items/XrefProperty.h"
#include "support/NullXrefPanel.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

constexpr int kGroups = 100;
constexpr int kPerGroup = 1000;

class BenchItem : public CXrefPanelCtrlItem
{
public:
    explicit BenchItem(CXrefPanelCtrl& panel) : CXrefPanelCtrlItem(panel) {}
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
};

// The names come from the host ready made; making them is not part of the work measured.
const std::vector<QString>& groupNames()
{
    static const std::vector<QString> names = [] {
        std::vector<QString> made;
        for (int group = 0; group < kGroups; ++group)
            made.push_back(QStringLiteral("Drawing-%1").arg(group));
        return made;
    }();
    return names;
}

const std::vector<QString>& refNames()
{
    static const std::vector<QString> names = [] {
        std::vector<QString> made;
        for (int group = 0; group < kGroups; ++group)
            for (int i = 0; i < kPerGroup; ++i)
                made.push_back(QStringLiteral("Ref-%1-%2").arg(group).arg(i));
        return made;
    }();
    return names;
}

const QString& groupName(int group)
{
    return groupNames()[std::size_t(group)];
}

const QString& refName(int group, int i)
{
    return refNames()[std::size_t(group * kPerGroup + i)];
}

void paintOnce(QWidget& view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
    benchmark::DoNotOptimize(image.bits());
}

void reportTimePerNode(benchmark::State& state, int count)
{
    state.counters["us_per_node"] = benchmark::Counter(
        double(count) * double(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert, benchmark::Counter::kIs1000);
}

/// A shown tree of its own, and the items for it (made once: the host owns them).
struct TreeBench
{
    TreeBench()
    {
        panel.Create(L"References", QRect(0, 0, 400, 600), nullptr, 1);
        tree.setGeometry(0, 0, 400, 600);
        tree.show();
        for (int i = 0; i < kGroups * (kPerGroup + 1) + 1; ++i)
            items.push_back(std::make_unique<BenchItem>(panel));
        refNames();
    }

    /// Root, 100 groups and their references, every group open, as the panel fills it.
    void Fill()
    {
        tree.BeginBatch();
        std::size_t next = 0;
        const HTREEITEM root = tree.InsertItem(*items[next++], nullptr);
        tree.Model().SetText(root, QStringLiteral("Site"));
        tree.Expand(root);
        for (int group = 0; group < kGroups; ++group) {
            const HTREEITEM parent = tree.InsertItem(*items[next++], root);
            tree.Model().SetText(parent, groupName(group));
            for (int i = 0; i < kPerGroup; ++i) {
                const HTREEITEM node = tree.InsertItem(*items[next++], parent);
                tree.Model().SetText(node, refName(group, i));
            }
            tree.Expand(parent);
        }
        tree.EndBatch();
    }

    NullXrefPanel panel;
    CXrefTreeCtrl tree{false};
    std::vector<std::unique_ptr<BenchItem>> items;
};

void fillTreeWidget(QTreeWidget& widget)
{
    auto* root = new QTreeWidgetItem(QStringList(QStringLiteral("Site")));
    QList<QTreeWidgetItem*> groups;
    for (int group = 0; group < kGroups; ++group) {
        auto* parent = new QTreeWidgetItem(QStringList(groupName(group)));
        QList<QTreeWidgetItem*> children;
        children.reserve(kPerGroup);
        for (int i = 0; i < kPerGroup; ++i)
            children << new QTreeWidgetItem(QStringList(refName(group, i)));
        parent->addChildren(children);
        groups << parent;
    }
    root->addChildren(groups);
    widget.addTopLevelItem(root);
    root->setExpanded(true);
    for (QTreeWidgetItem* group : groups)
        group->setExpanded(true);
}

std::unique_ptr<QTreeWidget> shownTreeWidget()
{
    auto widget = std::make_unique<QTreeWidget>();
    widget->setHeaderHidden(true);
    widget->setUniformRowHeights(true);
    widget->setGeometry(0, 0, 400, 600);
    widget->show();
    return widget;
}

/// Reports how the time of a fill splits between building the tree and the first paint, which
/// lays out every visible row (the same work for both views).
class FillPhases
{
public:
    void Start() { m_timer.start(); }
    void Filled() { m_fill += m_timer.nsecsElapsed(); }
    void Painted() { m_total += m_timer.nsecsElapsed(); }
    void Report(benchmark::State& state) const
    {
        const double runs = double(state.iterations());
        state.counters["fill_ms"] = double(m_fill) / 1e6 / runs;
        state.counters["paint_ms"] = double(m_total - m_fill) / 1e6 / runs;
    }

private:
    QElapsedTimer m_timer;
    qint64 m_fill = 0;
    qint64 m_total = 0;
};

void BM_TreeFill(benchmark::State& state)
{
    TreeBench bench;
    FillPhases phases;
    for (auto _ : state) {
        phases.Start();
        bench.Fill();
        phases.Filled();
        paintOnce(bench.tree);
        phases.Painted();
        state.PauseTiming();
        bench.tree.DeleteAllItems();
        state.ResumeTiming();
    }
    reportTimePerNode(state, kGroups * (kPerGroup + 1));
    phases.Report(state);
}

void BM_TreeWidgetFill(benchmark::State& state)
{
    refNames();
    FillPhases phases;
    for (auto _ : state) {
        state.PauseTiming();
        auto widget = shownTreeWidget();
        state.ResumeTiming();
        phases.Start();
        fillTreeWidget(*widget);
        phases.Filled();
        paintOnce(*widget);
        phases.Painted();
        state.PauseTiming();
        widget.reset();
        state.ResumeTiming();
    }
    reportTimePerNode(state, kGroups * (kPerGroup + 1));
    phases.Report(state);
}

void BM_TreeExpandAll(benchmark::State& state)
{
    TreeBench bench;
    bench.Fill();
    for (auto _ : state) {
        state.PauseTiming();
        bench.tree.collapseAll();
        paintOnce(bench.tree);
        state.ResumeTiming();
        bench.tree.expandAll();
        paintOnce(bench.tree);
    }
    reportTimePerNode(state, kGroups * (kPerGroup + 1));
}

void BM_TreeWidgetExpandAll(benchmark::State& state)
{
    auto widget = shownTreeWidget();
    fillTreeWidget(*widget);
    for (auto _ : state) {
        state.PauseTiming();
        widget->collapseAll();
        paintOnce(*widget);
        state.ResumeTiming();
        widget->expandAll();
        paintOnce(*widget);
    }
    reportTimePerNode(state, kGroups * (kPerGroup + 1));
}

/// A chain of @p depth references, each inside the one before, filled through the panel as a
/// host does (every parent opens), then the whole chain removed with its top.
void BM_PanelChainRemoval(benchmark::State& state)
{
    const int depth = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        NullXrefPanel panel;
        panel.Create(L"References", QRect(0, 0, 400, 600), nullptr, 1);
        panel.GetTreeCtrl()->setGeometry(0, 0, 400, 600);
        panel.GetTreeCtrl()->show();
        panel.BeginUpdate();
        auto* root = new BenchItem(panel);
        panel.InsertRootItem(*root);
        auto top = std::make_unique<BenchItem>(panel);
        panel.InsertItem(*top, *root, nullptr);
        CXrefPanelCtrlItem* parent = top.get();
        for (int level = 1; level < depth; ++level) {
            auto* item = new BenchItem(panel);
            panel.InsertItem(*item, *parent, nullptr);
            item->SetText(L"Level " + std::to_wstring(level));
            parent = item;
        }
        panel.EndUpdate();
        paintOnce(*panel.GetTreeCtrl());
        state.ResumeTiming();

        panel.DeleteTreeItem(*top);
        paintOnce(*panel.GetTreeCtrl());

        state.PauseTiming();
        top.reset();
        panel.DeleteAllItems();
        state.ResumeTiming();
    }
    reportTimePerNode(state, depth);
}

void BM_TreeWidgetChainRemoval(benchmark::State& state)
{
    const int depth = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto widget = shownTreeWidget();
        auto* root = new QTreeWidgetItem(QStringList(QStringLiteral("Site")));
        widget->addTopLevelItem(root);
        auto* top = new QTreeWidgetItem(root, QStringList(QStringLiteral("Level 0")));
        QTreeWidgetItem* parent = top;
        for (int level = 1; level < depth; ++level) {
            auto* item =
                new QTreeWidgetItem(parent, QStringList(QStringLiteral("Level %1").arg(level)));
            parent->setExpanded(true);
            parent = item;
        }
        root->setExpanded(true);
        paintOnce(*widget);
        state.ResumeTiming();

        delete top;
        paintOnce(*widget);

        state.PauseTiming();
        widget.reset();
        state.ResumeTiming();
    }
    reportTimePerNode(state, depth);
}

/// The eight rows of a selected reference replace those of the one selected before.
void BM_DetailsRows(benchmark::State& state)
{
    CXrefPropListCtrl list;
    list.setGeometry(0, 0, 320, 240);
    list.show();
    std::vector<std::unique_ptr<CXrefProperty>> owned;
    std::vector<CXrefProperty*> rows;
    for (int id = 0; id < 8; ++id) {
        owned.push_back(std::make_unique<CXrefProperty>(
            Trove::XrefProperties(id), L"value " + std::to_wstring(id), CXrefProperty::TextEdit));
        rows.push_back(owned.back().get());
    }
    for (auto _ : state) {
        list.SetProperties(rows);
        benchmark::DoNotOptimize(list.GetItemCount());
    }
}

void BM_TreeWidgetDetailsRows(benchmark::State& state)
{
    QTreeWidget widget;
    widget.setColumnCount(2);
    widget.setHeaderHidden(true);
    widget.setGeometry(0, 0, 320, 240);
    widget.show();
    std::vector<CXrefProperty> properties;
    for (int id = 0; id < 8; ++id)
        properties.emplace_back(Trove::XrefProperties(id), L"value " + std::to_wstring(id),
                                CXrefProperty::TextEdit);
    for (auto _ : state) {
        widget.clear();
        for (const CXrefProperty& property : properties) {
            widget.addTopLevelItem(
                new QTreeWidgetItem(QStringList{QString::fromStdWString(property.GetName()),
                                                QString::fromStdWString(property.GetValue())}));
        }
        benchmark::DoNotOptimize(widget.topLevelItemCount());
    }
}

BENCHMARK(BM_TreeFill)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_TreeWidgetFill)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_TreeExpandAll)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_TreeWidgetExpandAll)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_PanelChainRemoval)
    ->Arg(2000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_TreeWidgetChainRemoval)->Arg(2000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_DetailsRows)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TreeWidgetDetailsRows)->Unit(benchmark::kMicrosecond);

} // namespace
