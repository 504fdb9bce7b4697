#include "xycanvas.h"

#include "boundsarithmetic.h"
#include "debugtag.h"
#include "rounding.h"

#include <QAbstractButton>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

DebugTag debugTag("XYCanvas", "src/xyplot/xycanvas");

/// The zoom-in button goes off just before the limit is reached.
constexpr double zoomLimitReserve = 1.01;

/// A step in halves the extent, a step out doubles it.
constexpr double zoomStep = 0.5;

/// Value of a scroll bar for the whole extent of the data.
constexpr double scrollBarScale = 1e9;

/// Single steps of a scroll bar in a page.
constexpr double stepsPerPage = 25.0;

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

/// Tells buttons and scroll bars how far the view can still move.
void XYCanvas::followChangedLimits()
{
    configureZoomButtonsEnablement();
    setScrollBarStates();
}

void XYCanvas::zoomIn(Bounds::Direction direction, bool emitSignals)
{
    double const extent = viewBounds.size(direction);
    double const factor
        = extent > 0.0 ? qMax(zoomStep, getZoomLimitMinimumExtent(direction) / extent) : zoomStep;
    double const lower = viewBounds.get(direction, Bounds::Lower);
    double const upper = viewBounds.get(direction, Bounds::Upper);
    bool const follows = getViewBoundsUpdatePolicy(direction) == PolicyFollow;

    Bounds view = viewBounds;
    if (follows && isAutoFollowMax(direction)
        && upper == dataBounds.get(direction, Bounds::Upper)) {
        // The end that follows the data stays where it is.
        view.set(direction, Bounds::Lower, upper - extent * factor);
    } else if (follows && isAutoFollowMin(direction)
               && lower == dataBounds.get(direction, Bounds::Lower)) {
        view.set(direction, Bounds::Upper, extent * factor + lower);
    } else {
        if (view.isDetermined(direction)) {
            double const grown = (factor - 1.0) * extent * 0.5;
            setDirection(direction, view, lower - grown, upper + grown);
        }
        if (!follows)
            setViewBoundsUpdatePolicy(direction, PolicyKeep, false);
    }
    setViewBounds(view, emitSignals);
}

void XYCanvas::zoomOut(Bounds::Direction direction, bool emitSignals)
{
    Bounds view = viewBounds;
    if (view.isDetermined(direction)) {
        double const half = view.size(direction) * zoomStep;
        setDirection(direction, view, view.get(direction, Bounds::Lower) - half,
                     view.get(direction, Bounds::Upper) + half);
    }
    pushInside(direction, dataBounds, view);
    if (view.size(direction) == dataBounds.size(direction))
        setViewBoundsUpdatePolicy(direction, PolicyFull, false);
    setViewBounds(view, emitSignals);
}

void XYCanvas::zoomFull(Bounds::Direction direction, bool emitSignals)
{
    setViewBoundsUpdatePolicy(direction, PolicyFull, false);
    Bounds view = viewBounds;
    copyDirection(direction, dataBounds, view);
    setViewBounds(view, emitSignals);
}

void XYCanvas::zoomTo(Bounds::Direction direction, double min, double max, bool emitSignals)
{
    if (getViewBoundsUpdatePolicy(direction) != PolicyNone) {
        Bounds view = viewBounds;
        bool const bothKnown = min == min && max == max;
        setDirection(direction, view, bothKnown ? min : NaN, bothKnown ? max : NaN);
        double const limit = getZoomLimitMinimumExtent(direction);
        if (view.size(direction) < limit)
            view.setSize(direction, limit);
        view.clip(direction, dataBounds);
        setViewBoundsUpdatePolicy(direction, PolicyKeep, false);
        setViewBounds(view, false);
    }
    if (emitSignals)
        emitPendingEmits();
}

void XYCanvas::zoomTo(Bounds const& bounds)
{
    zoomTo(Bounds::Horizontal, bounds.minX, bounds.maxX, false);
    zoomTo(Bounds::Vertical, bounds.minY, bounds.maxY, true);
}

void XYCanvas::zoomToHorizontal(double min, double max)
{
    zoomTo(Bounds::Horizontal, min, max, true);
}

void XYCanvas::zoomToVertical(double min, double max)
{
    zoomTo(Bounds::Vertical, min, max, true);
}

void XYCanvas::dragViewBounds(Bounds::Direction direction, double delta, bool emitSignals)
{
    ViewBoundsUpdatePolicy const policy = getViewBoundsUpdatePolicy(direction);
    bool const movable = policy == PolicyKeep || policy == PolicyFollow;
    if (viewBounds.isDetermined(direction) && movable) {
        Bounds view = viewBounds;
        shift(direction, view, delta);
        pushInside(direction, dataBounds, view);
        bool const atEnd
            = (isAutoFollowMax(direction)
               && view.get(direction, Bounds::Upper) == dataBounds.get(direction, Bounds::Upper))
            || (isAutoFollowMin(direction)
                && view.get(direction, Bounds::Lower) == dataBounds.get(direction, Bounds::Lower));
        setViewBoundsUpdatePolicy(direction, atEnd ? PolicyFollow : PolicyKeep, false);
        setViewBounds(view, false);
    }
    if (emitSignals)
        emitPendingEmits();
}

void XYCanvas::dragViewBounds(double dx, double dy)
{
    dragViewBounds(Bounds::Horizontal, dx, false);
    dragViewBounds(Bounds::Vertical, dy, true);
}

void XYCanvas::zoomInBoth()
{
    zoomIn(Bounds::Horizontal, false);
    zoomIn(Bounds::Vertical, true);
}

void XYCanvas::zoomInHorizontal()
{
    zoomIn(Bounds::Horizontal, true);
}

void XYCanvas::zoomInVertical()
{
    zoomIn(Bounds::Vertical, true);
}

void XYCanvas::zoomOutBoth()
{
    zoomOut(Bounds::Horizontal, false);
    zoomOut(Bounds::Vertical, true);
}

void XYCanvas::zoomOutHorizontal()
{
    zoomOut(Bounds::Horizontal, true);
}

void XYCanvas::zoomOutVertical()
{
    zoomOut(Bounds::Vertical, true);
}

void XYCanvas::zoomFull()
{
    zoomFull(Bounds::Horizontal, false);
    zoomFull(Bounds::Vertical, true);
}

void XYCanvas::zoomFullHorizontal()
{
    zoomFull(Bounds::Horizontal, true);
}

void XYCanvas::zoomFullVertical()
{
    zoomFull(Bounds::Vertical, true);
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

/// Connects a button, which acts on press and not on release, and keeps it enabled as told.
void XYCanvas::connectZoomButton(QAbstractButton* button, char const* slot, char const* enabled)
{
    if (!button)
        return;
    connect(button, SIGNAL(pressed()), this, slot);
    connect(this, enabled, button, SLOT(setEnabled(bool)));
}

void XYCanvas::connectAsZoomInHorizontalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomInHorizontal()), SIGNAL(zoomInHorizontalEnabled(bool)));
}

void XYCanvas::connectAsZoomInVerticalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomInVertical()), SIGNAL(zoomInVerticalEnabled(bool)));
}

void XYCanvas::connectAsZoomOutHorizontalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomOutHorizontal()), SIGNAL(zoomOutHorizontalEnabled(bool)));
}

void XYCanvas::connectAsZoomOutVerticalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomOutVertical()), SIGNAL(zoomOutVerticalEnabled(bool)));
}

void XYCanvas::connectAsZoomFullHorizontalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomFullHorizontal()), SIGNAL(zoomFullHorizontalEnabled(bool)));
}

void XYCanvas::connectAsZoomFullVerticalButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomFullVertical()), SIGNAL(zoomFullVerticalEnabled(bool)));
}

void XYCanvas::connectAsZoomFullBothButton(QAbstractButton* button)
{
    connectZoomButton(button, SLOT(zoomFull()), SIGNAL(zoomFullBothEnabled(bool)));
}

void XYCanvas::setHorizontalScrollBar(QScrollBar* bar)
{
    if (horizontalScrollBar)
        debugTag.assertionFailed(__func__, __LINE__, "Only set horizontal scroll bar once");
    horizontalScrollBar = bar;
    takeScrollBar(Bounds::Horizontal);
}

void XYCanvas::setVerticalScrollBar(QScrollBar* bar)
{
    if (verticalScrollBar)
        debugTag.assertionFailed(__func__, __LINE__, "Only set vertical scroll bar once");
    verticalScrollBar = bar;
    takeScrollBar(Bounds::Vertical);
}

void XYCanvas::takeScrollBar(Bounds::Direction direction)
{
    QScrollBar* const bar = getScrollBar(direction);
    if (!bar)
        return;
    connect(bar, SIGNAL(valueChanged(int)), this, SLOT(reflectScrollBarState()));
    setScrollBarState(direction);
}

QScrollBar* XYCanvas::getScrollBar(Bounds::Direction direction)
{
    return direction == Bounds::Horizontal ? horizontalScrollBar : verticalScrollBar;
}

QScrollBar* XYCanvas::getHorizontalScrollBar()
{
    return horizontalScrollBar;
}

QScrollBar* XYCanvas::getVerticalScrollBar()
{
    return verticalScrollBar;
}

void XYCanvas::setScrollBarStates()
{
    for (Bounds::Direction const direction : {Bounds::Horizontal, Bounds::Vertical}) {
        if (getScrollBar(direction))
            setScrollBarState(direction);
    }
}

void XYCanvas::setScrollBarState(Bounds::Direction direction)
{
    QScrollBar* const bar = getScrollBar(direction);
    if (!bar)
        return;
    // What the canvas writes must not come back as a wish of the user.
    QScopedValueRollback<bool> const writing(scrollBarUpdateInProgress, true);
    double const dataExtent = dataBounds.size(direction);
    bool const scrollable = viewBounds.isDetermined(direction) && dataBounds.isDetermined(direction)
        && differ(viewBounds, dataBounds, direction) && dataExtent != 0.0;
    if (!scrollable) {
        bar->setValue(0);
        bar->setRange(0, 0);
        bar->setPageStep(1);
        bar->setEnabled(false);
        return;
    }
    bar->setEnabled(getViewBoundsUpdatePolicy(direction) != PolicyNone);
    double const page = (viewBounds.size(direction) / dataExtent) * scrollBarScale;
    double const offset
        = viewBounds.get(direction, Bounds::Lower) - dataBounds.get(direction, Bounds::Lower);
    bar->setRange(0, truncateToInt(scrollBarScale - page));
    bar->setValue(truncateToInt(offset / dataExtent * scrollBarScale));
    bar->setPageStep(truncateToInt(page));
    bar->setSingleStep(truncateToInt(page / stepsPerPage));
}

void XYCanvas::reflectScrollBarState()
{
    QObject const* const bar = sender();
    if (!bar || scrollBarUpdateInProgress)
        return;
    if (bar == horizontalScrollBar)
        reflectScrollBarState(Bounds::Horizontal);
    else if (bar == verticalScrollBar)
        reflectScrollBarState(Bounds::Vertical);
}

void XYCanvas::reflectScrollBarState(Bounds::Direction direction)
{
    QScrollBar const* const bar = getScrollBar(direction);
    if (!bar || bar->maximum() == bar->minimum())
        return;
    int const value = bar->value();
    double const range = double(bar->maximum()) - bar->minimum();
    double const t = (double(value) - bar->minimum()) / range;
    double const extent = viewBounds.size(direction);
    double const lower = (1.0 - t) * dataBounds.get(direction, Bounds::Lower)
        + (dataBounds.get(direction, Bounds::Upper) - extent) * t;
    Bounds view = viewBounds;
    setDirection(direction, view, lower, lower + extent);

    ViewBoundsUpdatePolicy const policy = getViewBoundsUpdatePolicy(direction);
    bool const atMaximum = value == bar->maximum();
    bool const atMinimum = value == bar->minimum();
    if (policy == PolicyKeep && atMaximum && isAutoFollowMax(direction))
        followFrom(direction, Bounds::Upper, view);
    else if (policy == PolicyKeep && atMinimum && isAutoFollowMin(direction))
        followFrom(direction, Bounds::Lower, view);
    else if (policy == PolicyFollow && !atMaximum && !atMinimum)
        setViewBoundsUpdatePolicy(direction, PolicyKeep, false);
    setViewBounds(view, true);
}

/// Turns following on at an end of the data, with the newest points in view.
void XYCanvas::followFrom(Bounds::Direction direction, Bounds::End end, Bounds& view)
{
    setViewBoundsUpdatePolicy(direction, PolicyFollow, false);
    includeValue(direction, view, calculateLastDataPointsBounds().get(direction, end));
}
