#include "benchcanvas.h"
#include <benchmark/benchmark.h>

namespace {

void atAllSizes(benchmark::internal::Benchmark* benchmark)
{
    for (int const points : {10000, 100000, 1000000, 10000000})
        benchmark->Arg(points);
    benchmark->Unit(benchmark::kMillisecond);
}

void redrawEachTime(benchmark::State& state, BenchCanvas& bench)
{
    for (auto _ : state) {
        bench.getCanvas().fullRepaint();
        bench.paint();
    }
}

/// The whole picture anew, as after a change of the view.
void redrawAll(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    redrawEachTime(state, bench);
}
BENCHMARK(redrawAll)->Apply(atAllSizes);

/// The same with the points kept for finding the one under the mouse.
void redrawAllTracked(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    bench.getCanvas().setDefaultMouseOverDataTrackingEnabled(true);
    redrawEachTime(state, bench);
}
BENCHMARK(redrawAllTracked)->Apply(atAllSizes);

/// 100,000 points with a pen of so many pixels.
void redrawWithPen(benchmark::State& state)
{
    BenchCanvas bench(100000);
    bench.getLook().setDefaultLineThickness(int(state.range(0)));
    redrawEachTime(state, bench);
}
BENCHMARK(redrawWithPen)->Arg(1)->Arg(2)->Arg(3)->Arg(5)->Unit(benchmark::kMillisecond);

/// 100,000 symbols of 8 pixels, without a line.
void redrawSymbols(benchmark::State& state)
{
    BenchCanvas bench(100000);
    bench.getLook().setDefault(Qt::blue, E_SYMBOL(state.range(0)), Qt::NoPen, 1);
    bench.getLook().setSymbolSize(8);
    bench.getLook().setSymbolDrawingThreshold(0);
    redrawEachTime(state, bench);
}
BENCHMARK(redrawSymbols)->DenseRange(SYMBOL_DOT, SYMBOL_DIAMOND)->Unit(benchmark::kMillisecond);

/// The whole picture with a hundredth of the points in view.
void redrawOnePercent(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    Bounds view = bench.getCanvas().getViewBounds();
    view.minX = BenchCanvas::dataExtent * 0.500;
    view.maxX = BenchCanvas::dataExtent * 0.510;
    bench.getCanvas().setViewBounds(view, true);
    redrawEachTime(state, bench);
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

/// The same above a colour bar of so many states.
void appendTenBesideColorBar(benchmark::State& state)
{
    BenchCanvas bench(100000);
    bench.addColorBar(int(state.range(0)));
    bench.getCanvas().fullRepaint();
    bench.paint();
    for (auto _ : state) {
        bench.appendAndDraw(10);
        bench.paint();
    }
}
BENCHMARK(appendTenBesideColorBar)->Arg(100)->Unit(benchmark::kMillisecond);

/// The whole picture with a colour bar of so many states.
void redrawWithColorBar(benchmark::State& state)
{
    BenchCanvas bench(10000);
    bench.addColorBar(int(state.range(0)));
    redrawEachTime(state, bench);
}
BENCHMARK(redrawWithColorBar)->Arg(100)->Unit(benchmark::kMillisecond);

/// A paint without news.
void paintUnchanged(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    for (auto _ : state)
        bench.paint();
}
BENCHMARK(paintUnchanged)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMillisecond);

} // namespace
