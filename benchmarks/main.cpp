#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    // Measured is the drawing into memory, on every machine alike.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication const application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
