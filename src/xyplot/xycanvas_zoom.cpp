#include "xycanvas.h"

namespace {

/// The zoom-in button goes off just before the limit is reached.
constexpr double zoomLimitReserve = 1.01;

} // namespace

double XYCanvas::getZoomLimitMinimumExtent(Bounds::Direction direction) const
{
    return direction == Bounds::Vertical ? verticalZoomLimit : horizontalZoomLimit;
}

void XYCanvas::setHorizontalZoomLimit(double limit)
{
    horizontalZoomLimit = limit;
}

void XYCanvas::setVerticalZoomLimit(double limit)
{
    verticalZoomLimit = limit;
}

/// What controls the view follows here: whatever shows how far the view can still move.
void XYCanvas::followChangedLimits()
{
    configureZoomButtonsEnablement();
}

void XYCanvas::determineZoomButtonsEnablement(Bounds::Direction direction, bool& zoomIn,
                                              bool& zoomOut, bool& zoomFull)
{
    bool const movable = dataBounds.isDetermined(direction) && viewBounds.isDetermined(direction)
        && getViewBoundsUpdatePolicy(direction) != PolicyNone;
    double const extent = viewBounds.size(direction);
    zoomIn = movable && getZoomLimitMinimumExtent(direction) * zoomLimitReserve < extent;
    zoomOut = movable && extent < dataBounds.size(direction);
    zoomFull = zoomOut;
}

void XYCanvas::configureZoomButtonsEnablement()
{
    struct Enablement
    {
        bool in = false;
        bool out = false;
        bool full = false;
    };
    Enablement horizontal;
    Enablement vertical;
    determineZoomButtonsEnablement(Bounds::Horizontal, horizontal.in, horizontal.out,
                                   horizontal.full);
    determineZoomButtonsEnablement(Bounds::Vertical, vertical.in, vertical.out, vertical.full);
    Q_EMIT zoomInHorizontalEnabled(horizontal.in);
    Q_EMIT zoomInVerticalEnabled(vertical.in);
    Q_EMIT zoomOutHorizontalEnabled(horizontal.out);
    Q_EMIT zoomOutVerticalEnabled(vertical.out);
    Q_EMIT zoomFullHorizontalEnabled(horizontal.full);
    Q_EMIT zoomFullVerticalEnabled(vertical.full);
    Q_EMIT zoomFullBothEnabled(horizontal.full || vertical.full);
}
