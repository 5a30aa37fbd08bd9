// The main of the benchmark programs that need nothing before their first measurement: an
// application object (offscreen unless the caller chose a platform), then the benchmarks.
// A program with set-up of its own defines its own main, which then takes precedence.

#include <QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
