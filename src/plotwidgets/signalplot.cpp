#include "signalplot.h"

#include "xycanvas.h"
#include "xyplot.h"

namespace {

constexpr int leastHeight = 400; // pixels
constexpr int leastWidth = 600;

/// Smallest extents of the view, in the units of the axes.
constexpr double horizontalZoomLimit = 0.2;
constexpr double verticalZoomLimit = 10.0;

} // namespace

XYPlot* newSignalPlot()
{
    auto* const plot = new XYPlot(true, false, true, nullptr);
    plot->setMinimumHeight(leastHeight);
    plot->minimumPlotWidth = leastWidth;
    plot->setMinimumWidth(leastWidth);
    return plot;
}

void finishSignalPlot(XYPlot& plot, QString const& yTitle, QString const& xTitle)
{
    plot.setAxisTitle(eHORIZONTAL, yTitle);
    plot.setAxisTitle(eVERTICAL, xTitle);
    plot.addScale(eHORIZONTAL, false);
    plot.getCanvas()->setHorizontalZoomLimit(horizontalZoomLimit);
    plot.getCanvas()->setVerticalZoomLimit(verticalZoomLimit);
}
