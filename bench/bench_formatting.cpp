// Size texts and name ordering, each against the nearest thing Qt offers in the same run.

#include "services/TroveUIFunctions.h"
#include "util/Order.h"

#include <QCollator>
#include <QLocale>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<long long> sampleSizes()
{
    QRandomGenerator random(42);
    std::vector<long long> sizes(4096);
    for (auto& size : sizes)
        size = (long long)(random.generate64() >> (random.bounded(10, 63)));
    return sizes;
}

QStringList sampleNames(int count)
{
    QRandomGenerator random(7);
    static const char* const stems[] = {"Ref", "Site plan", "Level", "Grid", "Detail", "Survey"};
    QStringList names;
    names.reserve(count);
    for (int i = 0; i < count; ++i)
        names << QStringLiteral("%1 %2-%3")
                     .arg(QLatin1String(stems[random.bounded(6)]))
                     .arg(random.bounded(1, 500))
                     .arg(random.bounded(1, 40));
    return names;
}

void FormatByteSize(benchmark::State& state)
{
    const auto sizes = sampleSizes();
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(TroveUI::FormatByteSize(sizes[i++ & 4095]));
    }
}
BENCHMARK(FormatByteSize);

void Baseline_QLocaleFormattedDataSize(benchmark::State& state)
{
    const auto sizes = sampleSizes();
    const QLocale locale;
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            locale.formattedDataSize(sizes[i++ & 4095], 2, QLocale::DataSizeTraditionalFormat)
                .toStdWString());
    }
}
BENCHMARK(Baseline_QLocaleFormattedDataSize);

void OrderCompare(benchmark::State& state)
{
    const QStringList names = sampleNames(4096);
    size_t i = 0;
    for (auto _ : state) {
        const QString& a = names[int(i & 4095)];
        const QString& b = names[int((i * 7 + 3) & 4095)];
        benchmark::DoNotOptimize(Util::Order(a, b, 1, 1));
        ++i;
    }
}
BENCHMARK(OrderCompare);

void Baseline_LocaleAwareCompare(benchmark::State& state)
{
    const QStringList names = sampleNames(4096);
    size_t i = 0;
    for (auto _ : state) {
        const QString& a = names[int(i & 4095)];
        const QString& b = names[int((i * 7 + 3) & 4095)];
        benchmark::DoNotOptimize(QString::localeAwareCompare(a, b));
        ++i;
    }
}
BENCHMARK(Baseline_LocaleAwareCompare);

// Sorting 10,000 names: comparing texts each time against computing one sort key per name.
void SortNamesByOrder(benchmark::State& state)
{
    const QStringList names = sampleNames(10000);
    for (auto _ : state) {
        QStringList copy = names;
        std::stable_sort(copy.begin(), copy.end(), [](const QString& a, const QString& b) {
            return Util::Order(a, b, 1, 1) < 0;
        });
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(SortNamesByOrder)->Unit(benchmark::kMillisecond);

void SortNamesBySortKeys(benchmark::State& state)
{
    const QStringList names = sampleNames(10000);
    const QCollator& collator = Util::NaturalCollator(1);
    for (auto _ : state) {
        std::vector<std::pair<QCollatorSortKey, int>> keys;
        keys.reserve(size_t(names.size()));
        for (int i = 0; i < names.size(); ++i)
            keys.emplace_back(collator.sortKey(names[i]), i);
        std::stable_sort(keys.begin(), keys.end(),
                         [](const auto& a, const auto& b) { return a.first.compare(b.first) < 0; });
        benchmark::DoNotOptimize(keys.data());
    }
}
BENCHMARK(SortNamesBySortKeys)->Unit(benchmark::kMillisecond);

} // namespace
