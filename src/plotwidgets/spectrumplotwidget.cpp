#include "spectrumplotwidget.h"

#include "debugtag.h"
#include "lineartimegrid.h"
#include "memleaktracer.h"
#include "signalplot.h"
#include "xycanvas.h"
#include "xyplot.h"

namespace {
DebugTag debugTag("SpectrumPlotWidget");
} // namespace

SpectrumPlotWidget::SpectrumPlotWidget(QWidget* parent)
    : ToolBarPlotWidget(parent, LinearTimeGrid::unknownDeltaLS)
    , plot(newSignalPlot())
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("SpectrumPlotWidget"));
    SpectrumPlotWidget::setXYPlot();
    setUpXYPlot(true, false);
    finishSignalPlot(*plot, QStringLiteral("Power (dB)"), QStringLiteral("Frequency (MHz)"));
    plot->addLegend(true, eLEGEND_RIGHT, nullptr);
}

SpectrumPlotWidget::~SpectrumPlotWidget()
{
    delete plot;
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("SpectrumPlotWidget"));
}

void SpectrumPlotWidget::setXYPlot()
{
    xyPlot = plot;
}

void SpectrumPlotWidget::updatePlot(double value)
{
    valueMarker->value = value;
    redrawCanvas();
}

void SpectrumPlotWidget::addDataSet(XYDataSet* dataSet, unsigned int minX, unsigned int minY,
                                    unsigned int maxX, unsigned int maxY)
{
    plot->addDataSet(dataSet);
    plot->getCanvas()->setFixedDataBounds({double(minX), double(maxX), double(minY), double(maxY)});
}

void SpectrumPlotWidget::setAxisTitle(E_ORIENTATION_TYPE orientation, QString title)
{
    plot->setAxisTitle(orientation, title);
}
