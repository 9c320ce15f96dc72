#include <QApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

/// Runs the benchmarks of one program in an application without a screen.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("default=false"));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
