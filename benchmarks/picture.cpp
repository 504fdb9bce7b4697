#include "benchcanvas.h"
#include "dataarraytemplate.h"
#include "xyplot.h"
#include <QPainter>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

constexpr int dataSetCount = 40;
constexpr int points = 100000;
constexpr QSize pictureSize(3840, 2160);

/// A plot with scales and 40 data sets of 100,000 points each.
class LargePlot
{
public:
    LargePlot()
        : plot(true, true, false, nullptr)
    {
        for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL}) {
            getCanvas().setGrid(axis, new LinearGrid(axis, &plot), false);
            plot.setLabelType(axis, eSCALE_LABELS);
            plot.addScale(axis, true);
        }
        for (int i = 0; i < points; ++i)
            times->append(i);
        for (int i = 0; i < dataSetCount; ++i) {
            auto* const ys = new DataArrayTemplate<double>();
            for (int k = 0; k < points; ++k)
                ys->append(walk.next() + i);
            dataSets.push_back(std::make_unique<XYDataSet>(times, ys, QString::number(i), Qt::blue,
                                                           SYMBOL_NONE, Qt::SolidLine, 1));
            plot.addDataSet(dataSets.back().get());
        }
        getCanvas().setContinueBackgroundDrawingUntilFinished(true);
        getCanvas().setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
        getCanvas().updateBounds();
    }

    XYPlot& getPlot() { return plot; }
    XYCanvas& getCanvas() { return *plot.getCanvas(); }

private:
    NoisyWalk walk;
    DataArray* times = new DataArrayTemplate<double>();
    std::vector<std::unique_ptr<XYDataSet>> dataSets;
    XYPlot plot;
};

void pictureIn4K(benchmark::State& state)
{
    LargePlot large;
    for (auto _ : state) {
        benchmark::DoNotOptimize(large.getPlot().renderToPixmap(
            pictureSize, getDefaultPlotRenderSettings(), false, true, QStringLiteral("title")));
    }
}
BENCHMARK(pictureIn4K)->Unit(benchmark::kMillisecond);

/// The same data on a canvas alone, as large as the picture.
void canvasIn4K(benchmark::State& state)
{
    LargePlot large;
    for (auto _ : state) {
        QPixmap pixmap(pictureSize);
        QPainter painter(&pixmap);
        large.getCanvas().fullRepaint();
        large.getCanvas().drawCanvas(&painter);
    }
}
BENCHMARK(canvasIn4K)->Unit(benchmark::kMillisecond);

/// One move of the mouse over a canvas that shows that many tracked points.
void hitTest(benchmark::State& state)
{
    BenchCanvas bench(int(state.range(0)));
    bench.getCanvas().setDefaultMouseOverDataTrackingEnabled(true);
    bench.getCanvas().fullRepaint();
    bench.paint();
    XYCanvas::datahit_t hit;
    int x = 0;
    for (auto _ : state) {
        x = (x + 7) % 800;
        benchmark::DoNotOptimize(bench.getCanvas().dataHitTest(x, 300, hit, 10));
    }
}
BENCHMARK(hitTest)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

} // namespace
