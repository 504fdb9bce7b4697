#include "benchcanvas.h"
#include "dataarraytemplate.h"
#include "timeplotwidget.h"
#include "xyplot.h"
#include <QCoreApplication>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

constexpr int satellites = 64;
constexpr double epochMs = 100.0;
constexpr double longestViewMs = 1e7;
/// Epochs between two bursts, in which all change their appearance; the legend then has the time to
/// rebuild once.
constexpr int epochsPerBurst = 8192;

/// A time plot of C/N0 of many satellites, all epochs in view.
class SatellitePlot
{
public:
    explicit SatellitePlot(bool withLegend)
        : image(1000, 600, QImage::Format_ARGB32_Premultiplied)
        , widget(18, QString(), 400, 600, QString(), false, 1.0, &window)
    {
        for (int i = 0; i < satellites; ++i) {
            auto* const ys = new DataArrayTemplate<double>();
            dataSets.push_back(std::make_unique<XYDataSet>(times, ys, QString::number(i), Qt::blue,
                                                           SYMBOL_NONE, Qt::SolidLine, 1));
            widget.addDataSet(dataSets.back().get());
        }
        appendEpoch();
        if (withLegend)
            widget.updateLegend();
        getCanvas().setFixedDataBounds({0.0, longestViewMs, -100.0, 100.0});
    }

    void appendEpoch()
    {
        times->append(epochs * epochMs);
        bool const isBurst = epochs % epochsPerBurst == 0;
        for (auto const& dataSet : dataSets) {
            dataSet->yData->append(walk.next());
            if (isBurst)
                dataSet->getLook()->changeFromLast(epochs / epochsPerBurst % 2 == 0 ? Qt::red
                                                                                    : Qt::blue);
        }
        ++epochs;
    }

    void show()
    {
        widget.updateTimePlot();
        QPainter painter(&image);
        getCanvas().drawCanvas(&painter);
        painter.end();
        QCoreApplication::processEvents();
    }

private:
    XYCanvas& getCanvas() { return *widget.getXYPlot()->getCanvas(); }

    QImage image;
    NoisyWalk walk;
    DataArray* times = new DataArrayTemplate<double>();
    std::vector<std::unique_ptr<XYDataSet>> dataSets;
    QWidget window;
    TimePlotWidget widget;
    int epochs = 0;
};

/// One epoch of 64 satellites, drawn and shown; without (0) and with (1) a legend.
void appendEpochOf64(benchmark::State& state)
{
    SatellitePlot plot(state.range(0) == 1);
    for (auto _ : state) {
        plot.appendEpoch();
        plot.show();
    }
}
BENCHMARK(appendEpochOf64)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
