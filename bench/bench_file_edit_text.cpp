// Reading the file editor's text into names: a pasted list of many names and wild cards over a
// folder of a few thousand drawings, against a search per wild card through QDir's name
// filters in the same run.

#include "views/editors/InPlaceFilePaths.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

struct Sample
{
    QTemporaryDir dir;
    QString text;
    Sample()
    {
        for (int i = 0; i < 3000; ++i) {
            QFile file(dir.filePath(QStringLiteral("ref_%1.%2").arg(i).arg(i % 5 ? "dwg" : "pdf")));
            file.open(QIODevice::WriteOnly);
        }
        QStringList pieces;
        for (int i = 0; i < 1000; ++i) {
            switch (i % 4) {
            case 0:
                pieces << QStringLiteral("\"ref_%1.dwg\"").arg(i);
                break;
            case 1:
                pieces << QStringLiteral(" ref_%1?.dwg ").arg(i % 300);
                break;
            case 2:
                pieces << QStringLiteral("ref_%1*.PDF").arg(i % 30);
                break;
            default:
                pieces << QStringLiteral("xrefs/none_%1*.dwg").arg(i);
                break;
            }
        }
        text = pieces.join(QStringLiteral(";"));
    }
};

Sample& sample()
{
    static Sample* instance = new Sample;
    return *instance;
}

void BM_ParseText(benchmark::State& state)
{
    Sample& s = sample();
    for (auto _ : state)
        benchmark::DoNotOptimize(CInPlaceFilePaths::ParseText(s.text, s.dir.path()));
}
BENCHMARK(BM_ParseText)->Unit(benchmark::kMillisecond);

// Baseline: each wild card searched on its own with QDir's name filters.
void BM_Baseline_QDirSearchPerName(benchmark::State& state)
{
    Sample& s = sample();
    for (auto _ : state) {
        QStringList entries;
        for (const QString& name : CInPlaceFilePaths::SplitText(s.text)) {
            if (!CInPlaceFilePaths::HasWildCards(name)) {
                entries << name;
                continue;
            }
            const int cut = int(name.lastIndexOf(QLatin1Char('/')));
            const QString folderPart = name.left(cut + 1);
            QDir folder(QDir(s.dir.path()).filePath(folderPart));
            for (const QString& match : folder.entryList({name.mid(cut + 1)},
                                                         QDir::AllEntries | QDir::Hidden |
                                                             QDir::System | QDir::NoDotAndDotDot,
                                                         QDir::Name | QDir::IgnoreCase))
                entries << folderPart + match;
        }
        benchmark::DoNotOptimize(entries);
    }
}
BENCHMARK(BM_Baseline_QDirSearchPerName)->Unit(benchmark::kMillisecond);

} // namespace
