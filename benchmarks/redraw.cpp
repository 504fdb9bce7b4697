#include "benchcanvas.h"
#include <benchmark/benchmark.h>

namespace {

void atAllSizes(benchmark::internal::Benchmark* benchmark)
{
    for (int const points : {10000, 100000, 1000000, 10000000})
        benchmark->Arg(points);
    benchmark->Unit(benchmark::kMillisecond);
}

/// The whole picture anew, as after a change of the view.
void redrawAll(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    for (auto _ : state) {
        bench.getCanvas().fullRepaint();
        bench.paint();
    }
}
BENCHMARK(redrawAll)->Apply(atAllSizes);

/// The same with the points kept for finding the one under the mouse.
void redrawAllTracked(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    bench.getCanvas().setDefaultMouseOverDataTrackingEnabled(true);
    for (auto _ : state) {
        bench.getCanvas().fullRepaint();
        bench.paint();
    }
}
BENCHMARK(redrawAllTracked)->Apply(atAllSizes);

/// The same with a hundredth of the points in view.
void redrawOnePercent(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    Bounds view = bench.getCanvas().getViewBounds();
    view.minX = BenchCanvas::dataExtent * 0.500;
    view.maxX = BenchCanvas::dataExtent * 0.510;
    bench.getCanvas().setViewBounds(view, true);
    for (auto _ : state) {
        bench.getCanvas().fullRepaint();
        bench.paint();
    }
}
BENCHMARK(redrawOnePercent)->Apply(atAllSizes);

/// Ten new points, drawn on top of what is there and shown.
void appendTenAndShow(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    for (auto _ : state) {
        bench.appendAndDraw(10);
        bench.paint();
    }
}
BENCHMARK(appendTenAndShow)->Apply(atAllSizes);

/// The same under a resting mouse that asks for the point beneath it after each.
void appendTenAndHitTest(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    bench.getCanvas().setDefaultMouseOverDataTrackingEnabled(true);
    bench.getCanvas().fullRepaint();
    bench.paint();
    XYCanvas::datahit_t hit;
    for (auto _ : state) {
        bench.appendAndDraw(10);
        benchmark::DoNotOptimize(bench.getCanvas().dataHitTest(400, 300, hit, 10));
    }
}
BENCHMARK(appendTenAndHitTest)->Apply(atAllSizes);

/// A paint without news.
void paintUnchanged(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    for (auto _ : state)
        bench.paint();
}
BENCHMARK(paintUnchanged)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMillisecond);

} // namespace
