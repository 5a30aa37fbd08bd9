// Filling a created panel with references and painting it once, against the same rows built as
// a QStandardItemModel (texts formatted, eight cells per row) shown in a QTreeView.
//
// Counters: us_per_item is the time per reference; bytes_per_ref the heap the panel's storage
// takes per reference (tree node, list row, link record and texts); item_bytes_per_ref what the
// item objects themselves take on top. The baseline reports its model's heap per row.

#include "framework/ZuUiRmId.h"
#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TroveResources.h"
#include "services/TroveUIFunctions.h"
#include "services/XrefMessageBox.h"
#include "support/NullXrefPanel.h"
#include "views/TroveListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QHeaderView>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <vector>

namespace {

using BenchPanel = NullXrefPanel;

class BenchItem : public CXrefPanelCtrlItem
{
public:
    BenchItem(CXrefPanelCtrl& panel, bool host = false) : CXrefPanelCtrlItem(panel), m_host(host) {}
    bool IsHostDwgItem() const override { return m_host; }
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
    using CXrefPanelCtrlItem::SetTypeIcon;

private:
    bool m_host;
};

class BenchTypes : public CXrefPanelCtrlItemTypes
{
public:
    static void Register()
    {
        static const bool done = [] {
            const Util::ResourceModule* module = TroveUI::ResourceInstance();
            return RegisterClass(typeid(BenchItem), Factory(), CZuUiRmId(module, "IDI_TYPE_DWG"),
                                 {{QStringLiteral("pdf"), CZuUiRmId(module, "IDI_TYPE_PDF")}});
        }();
        (void)done;
    }
};

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

std::wstring nameOf(int i)
{
    return L"Ref-" + std::to_wstring(i);
}

std::wstring pathOf(int i)
{
    return L"..\\xrefs\\site\\ref-" + std::to_wstring(i) + L".dwg";
}

const Util::DateTime kDate(2023, 11, 14, 9, 26, 53);
const std::wstring kTypeAttach = L"Attach";
const std::wstring kTypeOverlay = L"Overlay";

void paintOnce(QWidget& view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
    benchmark::DoNotOptimize(image.bits());
}

void reportTimePerItem(benchmark::State& state, int count)
{
    state.counters["us_per_item"] = benchmark::Counter(
        double(count) * double(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert, benchmark::Counter::kIs1000);
}

void fillPanel(BenchPanel& panel, std::vector<BenchItem*>& items, int count)
{
    panel.BeginUpdate();
    auto* root = new BenchItem(panel, true);
    panel.InsertRootItem(*root);
    root->SetText(L"Site");
    BenchItem* previous = nullptr;
    for (int i = 0; i < count; ++i) {
        auto* item = new BenchItem(panel);
        items.push_back(item);
        // Every tenth reference is a second occurrence of the file before it.
        panel.InsertItem(*item, *root, (i % 10 == 9) ? previous : nullptr);
        item->SetText(nameOf(i));
        item->SetSize(1000 + 37 * std::int64_t(i));
        item->SetType(i % 3 ? kTypeAttach : kTypeOverlay);
        item->SetDate(kDate);
        item->SetSavedPath(pathOf(i));
        item->SetReferenceStatus(RefStatus::RefIcon(1 + i % 6),
                                 Trove::FileDataStatus::Value(i % 8));
        item->SetTypeIcon(i % 4 ? QString() : QStringLiteral("pdf"));
        previous = item;
    }
    panel.EndUpdate();
}

void BM_PanelFill(benchmark::State& state)
{
    BenchTypes::Register();
    const int count = int(state.range(0));
    double bytesPerRef = 0;
    double itemBytesPerRef = 0;
    double filledBytesPerRef = 0;
    for (auto _ : state) {
        state.PauseTiming();
        BenchPanel panel;
        panel.Create(L"References", QRect(0, 0, 800, 600), nullptr, 1);
        panel.GetListCtrl()->setGeometry(0, 0, 800, 600);
        panel.GetTreeCtrl()->setGeometry(0, 0, 800, 600);
        panel.GetListCtrl()->show();
        panel.GetTreeCtrl()->show();
        std::vector<BenchItem*> items;
        items.reserve(count);
        // What the item objects alone take, measured on items that are never inserted.
        {
            const std::size_t before = heapInUse();
            std::vector<std::unique_ptr<BenchItem>> loose;
            loose.reserve(1000);
            const std::size_t reserved = heapInUse();
            for (int i = 0; i < 1000; ++i)
                loose.push_back(std::make_unique<BenchItem>(panel));
            itemBytesPerRef = double(heapInUse() - reserved) / 1000.0;
            (void)before;
        }
        const std::size_t before = heapInUse();
        state.ResumeTiming();

        fillPanel(panel, items, count);
        state.PauseTiming();
        filledBytesPerRef = double(heapInUse() - before) / count - itemBytesPerRef;
        state.ResumeTiming();
        paintOnce(*panel.GetListCtrl());
        paintOnce(*panel.GetTreeCtrl());

        state.PauseTiming();
        const double total =
            double(heapInUse() - before) - double(items.capacity()) * sizeof(void*);
        bytesPerRef = total / count - itemBytesPerRef;
        panel.DeleteAllItems();
        state.ResumeTiming();
    }
    reportTimePerItem(state, count);
    state.counters["bytes_per_ref"] = bytesPerRef;
    state.counters["item_bytes_per_ref"] = itemBytesPerRef;
    // The same before painting: the rest is what the views keep once they have laid rows out.
    state.counters["unpainted_bytes_per_ref"] = filledBytesPerRef;
}

void BM_StandardItemModelFill(benchmark::State& state)
{
    const int count = int(state.range(0));
    double bytesPerRef = 0;
    const QString status = CXrefPanelCtrlItemStatus::ToString(Trove::FileDataStatus::Code0);
    for (auto _ : state) {
        state.PauseTiming();
        auto view = std::make_unique<QTreeView>();
        view->setUniformRowHeights(true);
        view->setRootIsDecorated(false);
        view->setGeometry(0, 0, 800, 600);
        view->show();
        auto model = std::make_unique<QStandardItemModel>(0, 8);
        view->setModel(model.get());
        const std::size_t before = heapInUse();
        state.ResumeTiming();

        for (int i = 0; i < count; ++i) {
            QList<QStandardItem*> row;
            row.reserve(8);
            row << new QStandardItem() << new QStandardItem()
                << new QStandardItem(QString::fromStdWString(nameOf(i)))
                << new QStandardItem(CXrefPanelCtrlItemStatus::ToString(i % 8))
                << new QStandardItem(QString::fromStdWString(
                       TroveUI::FormatByteSize(1000 + 37 * std::int64_t(i))))
                << new QStandardItem(QString::fromStdWString(i % 3 ? kTypeAttach : kTypeOverlay))
                << new QStandardItem(QString::fromStdWString(kDate.ToString(L"G")))
                << new QStandardItem(QString::fromStdWString(pathOf(i)));
            model->appendRow(row);
        }
        paintOnce(*view);

        state.PauseTiming();
        bytesPerRef = double(heapInUse() - before) / count;
        view.reset();
        model.reset();
        state.ResumeTiming();
    }
    reportTimePerItem(state, count);
    state.counters["bytes_per_ref"] = bytesPerRef;
}

BENCHMARK(BM_PanelFill)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StandardItemModelFill)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

} // namespace
