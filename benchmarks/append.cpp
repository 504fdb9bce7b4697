#include "benchcanvas.h"
#include "dataarraytemplate.h"
#include <benchmark/benchmark.h>

namespace {

/// Time per point of appending to a data set that grows from empty.
void append(benchmark::State& state)
{
    auto const points = state.range(0);
    NoisyWalk walk;
    QVector<double> values;
    for (qint64 i = 0; i < points; ++i)
        values.append(walk.next());
    for (auto _ : state) {
        XYDataSet dataSet(new DataArrayTemplate<double>(), new DataArrayTemplate<double>(),
                          QString(), Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
        for (qint64 i = 0; i < points; ++i)
            dataSet.append(double(i), values.at(i));
        benchmark::DoNotOptimize(dataSet.yData->getMean());
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * points);
    state.counters["s/point"] = benchmark::Counter(double(points),
                                                   benchmark::Counter::kIsIterationInvariantRate
                                                       | benchmark::Counter::kInvert);
}
/// The same in runs of 1000.
void appendRuns(benchmark::State& state)
{
    constexpr int runLength = 1000;
    auto const points = state.range(0);
    NoisyWalk walk;
    QVector<double> xs;
    QVector<double> ys;
    for (qint64 i = 0; i < points; ++i) {
        xs.append(double(i));
        ys.append(walk.next());
    }
    for (auto _ : state) {
        XYDataSet dataSet(new DataArrayTemplate<double>(), new DataArrayTemplate<double>(),
                          QString(), Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
        for (qint64 i = 0; i < points; i += runLength)
            dataSet.append(xs.constData() + i, ys.constData() + i, runLength);
        benchmark::DoNotOptimize(dataSet.yData->getMean());
    }
    state.counters["s/point"] = benchmark::Counter(double(points),
                                                   benchmark::Counter::kIsIterationInvariantRate
                                                       | benchmark::Counter::kInvert);
}
BENCHMARK(appendRuns)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

BENCHMARK(append)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
