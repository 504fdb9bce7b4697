#include "correlationplotwidget.h"

#include "debugtag.h"
#include "lineartimegrid.h"
#include "memleaktracer.h"
#include "signalplot.h"
#include "xycanvas.h"
#include "xyplot.h"

namespace {
DebugTag debugTag("CorrelationPlotWidget");

constexpr double largestLag = 1.5; // chips
constexpr double largestAmplitude = 150.0; // percent
} // namespace

CorrelationPlotWidget::CorrelationPlotWidget(XYDataSet* first, XYDataSet* second, QWidget* parent)
    : ToolBarPlotWidget(parent, LinearTimeGrid::unknownDeltaLS)
    , plot(newSignalPlot())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("CorrelationPlotWidget"));
    CorrelationPlotWidget::setXYPlot();
    connect(parent, SIGNAL(connectFirstLast(bool)), plot, SIGNAL(connectFirstLast(bool)));
    setUpXYPlot(true, false);
    finishSignalPlot(*plot, QStringLiteral("Normalized Correlation Amplitude (%)"),
                     QStringLiteral("Lag (chips)"));
    plot->addDataSet(first);
    plot->addDataSet(second);
    plot->addLegend(true, eLEGEND_RIGHT, nullptr);
    XYCanvas* const canvas = plot->getCanvas();
    canvas->setFixedDataBounds({-largestLag, largestLag, -largestAmplitude, largestAmplitude});
    canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
    canvas->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, true);
}

CorrelationPlotWidget::~CorrelationPlotWidget()
{
    delete plot;
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("CorrelationPlotWidget"));
}

void CorrelationPlotWidget::setXYPlot()
{
    xyPlot = plot;
}

void CorrelationPlotWidget::updatePlot(double value)
{
    valueMarker->value = value;
    redrawCanvas();
}
