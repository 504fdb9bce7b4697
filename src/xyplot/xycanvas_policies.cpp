#include "xycanvas.h"

#include "boundsarithmetic.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>

namespace {

/// Share of the view that is left free ahead of the newest point when the view follows.
constexpr double followAhead = 0.1;

/// Margins are widened by this much, so that rounding does not eat into them.
constexpr double marginReserve = 1.1;

/// Bounds up to this many times their initial extent do not shrink.
constexpr double initialExtentReserve = 1.001;

/// Part of a buffer that a shrinking edge keeps; less than a whole one, so that it does not flap.
constexpr double shrunkBuffer = 0.25;

/// An edge one whole buffer ahead of the data is not behind by rounding: slack per extent.
constexpr double shrinkSlack = 1e-9;

} // namespace

bool XYCanvas::EndValues::holds(Bounds::Direction direction, Bounds::End end)
{
    return (direction == Bounds::Horizontal || direction == Bounds::Vertical)
        && (end == Bounds::Lower || end == Bounds::Upper);
}

double& XYCanvas::EndValues::at(Bounds::Direction direction, Bounds::End end)
{
    return values[direction == Bounds::Horizontal ? 0 : 1][end == Bounds::Lower ? 0 : 1];
}

double XYCanvas::EndValues::at(Bounds::Direction direction, Bounds::End end) const
{
    return values[direction == Bounds::Horizontal ? 0 : 1][end == Bounds::Lower ? 0 : 1];
}

void XYCanvas::EndValues::fill(double value)
{
    for (double(&ends)[2] : values)
        std::fill_n(ends, 2, value);
}

double XYCanvas::getExtensionBuffer(Bounds::Direction direction, Bounds::End end) const
{
    double minimum = 0.0;
    double fraction = 0.0;
    getExtensionBufferParameters(direction, end, minimum, fraction);
    double const buffer = fraction * strictDataBounds.size(direction);
    return buffer > minimum ? buffer : minimum;
}

double XYCanvas::getShrinkThreshold(Bounds::Direction direction, Bounds::End end) const
{
    return getExtensionBuffer(direction, end);
}

void XYCanvas::getExtensionBufferParameters(Bounds::Direction direction, Bounds::End end,
                                            double& minimum, double& fraction) const
{
    if (!EndValues::holds(direction, end))
        return;
    minimum = extensionBufferMinimum.at(direction, end);
    fraction = extensionBufferFraction.at(direction, end);
}

void XYCanvas::setExtensionBufferParameters(
    double minimumHorizontalLower, double minimumHorizontalUpper, double minimumVerticalLower,
    double minimumVerticalUpper, double fractionHorizontalLower, double fractionHorizontalUpper,
    double fractionVerticalLower, double fractionVerticalUpper)
{
    extensionBufferMinimum = {{{minimumHorizontalLower, minimumHorizontalUpper},
                               {minimumVerticalLower, minimumVerticalUpper}}};
    extensionBufferFraction = {{{fractionHorizontalLower, fractionHorizontalUpper},
                                {fractionVerticalLower, fractionVerticalUpper}}};
}

void XYCanvas::adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots()
{
    constexpr double offlineInitialExtent = 1000.0; // one second of milliseconds
    for (Bounds::End const end : {Bounds::Lower, Bounds::Upper}) {
        extensionBufferMinimum.at(Bounds::Horizontal, end) = 0.0;
        extensionBufferFraction.at(Bounds::Horizontal, end) = 0.0;
    }
    initialDataBounds.minX = 0.0;
    initialDataBounds.maxX = offlineInitialExtent;
}

Bounds XYCanvas::calculateDataBounds(bool startFromCurrent)
{
    strictDataBounds = extendWithCustomDataBounds(calculateStrictDataBounds());
    Bounds bounds;
    if (startFromCurrent)
        bounds = dataBounds;
    if (fixedDataBounds)
        return bounds;
    applyBufferingToDataBounds(Bounds::Horizontal, bounds);
    applyBufferingToDataBounds(Bounds::Vertical, bounds);
    return bounds;
}

void XYCanvas::applyBufferingToDataBounds(Bounds::Direction direction, Bounds& bounds)
{
    Bounds widened = strictDataBounds;
    if (widened.isDetermined(direction)) {
        double const extent
            = bounds.isDetermined(direction) ? bounds.size(direction) : widened.size(direction);
        for (Bounds::End const end : {Bounds::Lower, Bounds::Upper}) {
            double const margin
                = determineViewPortMarginInDataCoordinates(direction, end, extent) * marginReserve;
            widened.set(direction, end,
                        widened.get(direction, end) + (end == Bounds::Lower ? -margin : margin));
        }
    }

    double const initialExtent = initialDataBounds.size(direction);
    if (!widened.isDetermined(direction)) {
        copyDirection(direction, initialDataBounds, bounds);
    } else if (bounds.isDetermined(direction)) {
        growAndShrink(direction, widened, bounds);
    } else {
        copyDirection(direction, widened, bounds);
        if (widened.size(direction) < initialExtent) {
            // In time the data starts at the left edge; values stay in the middle.
            if (direction == Bounds::Horizontal)
                bounds.maxX = bounds.minX + initialExtent;
            else
                bounds.setSize(direction, initialExtent);
        }
    }

    if (bounds.size(direction) == 0.0)
        copyDirection(direction, initialDataBounds, bounds);
    double const limit = getZoomLimitMinimumExtent(direction);
    if (bounds.size(direction) < limit)
        bounds.setSize(direction, limit);
}

void XYCanvas::growAndShrink(Bounds::Direction direction, Bounds const& widened, Bounds& bounds)
{
    // Along the axis that points out of the data, both ends follow the same rule.
    auto const outwards = [](Bounds::End end) { return end == Bounds::Upper ? 1.0 : -1.0; };
    bool grown[2] = {false, false};
    for (Bounds::End const end : {Bounds::Upper, Bounds::Lower}) {
        double const dataEnd = widened.get(direction, end);
        if ((dataEnd - bounds.get(direction, end)) * outwards(end) > 0.0) {
            bounds.set(direction, end,
                       dataEnd + outwards(end) * getExtensionBuffer(direction, end));
            grown[end] = true;
        }
    }

    double const extent = bounds.size(direction);
    if (!(extent > initialDataBounds.size(direction) * initialExtentReserve))
        return;
    // Nothing rounds where an edge is infinite, and it must come back from there.
    double const slack = std::isfinite(extent) ? shrinkSlack * extent : 0.0;
    for (Bounds::End const end : {Bounds::Upper, Bounds::Lower}) {
        double const dataEnd = widened.get(direction, end);
        double const threshold = getShrinkThreshold(direction, end);
        double const gap = (bounds.get(direction, end) - dataEnd) * outwards(end);
        if (!grown[end] && gap > threshold + slack)
            bounds.set(direction, end, dataEnd + outwards(end) * threshold * shrunkBuffer);
    }
}

void XYCanvas::updateBounds()
{
    Bounds const newData = calculateDataBounds(true);
    Bounds const newView = calculateUpdatedViewBounds(newData);
    if (differ(newData, dataBounds) || differ(newView, viewBounds)) {
        QScopedValueRollback<bool> const byPolicy(policyCausedViewBoundsChange, true);
        setBounds(newData, newView, true);
    }
}

void XYCanvas::setFixedDataBounds(Bounds const& bounds)
{
    fixedDataBounds = true;
    Bounds const view = calculateUpdatedViewBounds(bounds);
    QScopedValueRollback<bool> const byPolicy(policyCausedViewBoundsChange, true);
    setBounds(bounds, view, true);
}

void XYCanvas::setInitialDataBounds(Bounds const& bounds)
{
    initialDataBounds = bounds;
}

Bounds XYCanvas::calculateUpdatedViewBounds(Bounds const& newDataBounds)
{
    Bounds view = viewBounds;
    calculateUpdatedViewBounds(Bounds::Horizontal, newDataBounds, view);
    calculateUpdatedViewBounds(Bounds::Vertical, newDataBounds, view);
    return view;
}

void XYCanvas::calculateUpdatedViewBounds(Bounds::Direction direction, Bounds const& newDataBounds,
                                          Bounds& view)
{
    ViewBoundsUpdatePolicy const policy = getViewBoundsUpdatePolicy(direction);
    if (!newDataBounds.isDetermined(direction)) {
        view.set(direction, Bounds::Lower, NaN);
        view.set(direction, Bounds::Upper, NaN);
        if (policy == PolicyKeep)
            setViewBoundsUpdatePolicy(direction, PolicyFull, false);
        return;
    }
    switch (policy) {
    case PolicyFollow:
        calculateFollowPolicyUpdatedViewBounds(direction, newDataBounds, view);
        break;
    case PolicyFull:
        copyDirection(direction, newDataBounds, view);
        break;
    case PolicyKeep:
        if (!differ(newDataBounds, dataBounds, direction) || !view.isDetermined(direction))
            break;
        view.clip(direction, newDataBounds);
        if (!view.isDetermined(direction)) {
            copyDirection(direction, newDataBounds, view);
            setViewBoundsUpdatePolicy(direction, PolicyFull, false);
        }
        break;
    case PolicyNone:
    default:
        break;
    }
}

void XYCanvas::calculateFollowPolicyUpdatedViewBounds(Bounds::Direction direction,
                                                      Bounds const& newDataBounds, Bounds& view)
{
    constexpr Bounds::End lower = Bounds::Lower;
    constexpr Bounds::End upper = Bounds::Upper;
    double const newMin = newDataBounds.get(direction, lower);
    double const newMax = newDataBounds.get(direction, upper);
    double const oldMin = dataBounds.get(direction, lower);
    double const oldMax = dataBounds.get(direction, upper);
    double const viewMin = view.get(direction, lower);
    double const viewMax = view.get(direction, upper);

    bool const anyUnknown = !dataBounds.isDetermined(direction) || !view.isDetermined(direction);
    bool const apart = !(viewMin < newMax) || !(newMin < viewMax);
    bool const showsAll = !(view.size(direction) < newDataBounds.size(direction));
    bool const grownAtBothEnds = newMin < oldMin && newMax > oldMax;
    if (anyUnknown || apart || showsAll || grownAtBothEnds) {
        copyDirection(direction, newDataBounds, view);
        return;
    }

    bool shiftedLow = false;
    bool shifted = false;
    if (newMin < oldMin && newMin < viewMin) {
        shift(direction, view, newMin - viewMin);
        shiftedLow = true;
    }
    if (newMax > oldMax && newMax > view.get(direction, upper)) {
        shift(direction, view, newMax - view.get(direction, upper));
        shifted = true;
    }

    // A tenth of the view stays free ahead of the newest point, so that the next full redraw comes
    // only after the data has crossed it.
    Bounds const last = calculateLastDataPointsBounds();
    double const lastMin = last.get(direction, lower);
    double const lastMax = last.get(direction, upper);
    double const ahead = followAhead * view.size(direction);
    if (lastMax > view.get(direction, upper)) {
        if (shiftedLow)
            view.set(direction, upper, lastMax + ahead);
        else
            shift(direction, view, (lastMax - view.get(direction, upper)) + ahead);
        shifted = true;
    }
    // Only where the newest points are all lost to the left does the view go back.
    if (view.get(direction, lower) > lastMax) {
        if (shifted)
            view.set(direction, lower, lastMin - ahead);
        else
            shift(direction, view, (lastMin - view.get(direction, lower)) - ahead);
    }
    pushInside(direction, newDataBounds, view);
}

void XYCanvas::setHorizontalViewBoundsUpdatePolicy(ViewBoundsUpdatePolicy policy, bool applyNow)
{
    setViewBoundsUpdatePolicy(Bounds::Horizontal, policy, applyNow);
}

void XYCanvas::setVerticalViewBoundsUpdatePolicy(ViewBoundsUpdatePolicy policy, bool applyNow)
{
    setViewBoundsUpdatePolicy(Bounds::Vertical, policy, applyNow);
}

void XYCanvas::setViewBoundsUpdatePolicy(Bounds::Direction direction, ViewBoundsUpdatePolicy policy,
                                         bool applyNow)
{
    bool const horizontal = direction == Bounds::Horizontal;
    ViewBoundsUpdatePolicy& stored
        = horizontal ? horizontalViewBoundsUpdatePolicy : verticalViewBoundsUpdatePolicy;
    if (stored == policy)
        return;
    stored = policy;
    if (applyNow) {
        QScopedValueRollback<bool> const byPolicy(policyCausedViewBoundsChange, true);
        setViewBounds(calculateUpdatedViewBounds(dataBounds), true);
    }
    if (horizontal)
        Q_EMIT horizontalViewBoundsUpdatePolicyChanged();
    else
        Q_EMIT verticalViewBoundsUpdatePolicyChanged();
}

XYCanvas::ViewBoundsUpdatePolicy XYCanvas::getHorizontalViewBoundsUpdatePolicy() const
{
    return horizontalViewBoundsUpdatePolicy;
}

XYCanvas::ViewBoundsUpdatePolicy XYCanvas::getVerticalViewBoundsUpdatePolicy() const
{
    return verticalViewBoundsUpdatePolicy;
}

XYCanvas::ViewBoundsUpdatePolicy
XYCanvas::getViewBoundsUpdatePolicy(Bounds::Direction direction) const
{
    return direction == Bounds::Horizontal ? horizontalViewBoundsUpdatePolicy
                                           : verticalViewBoundsUpdatePolicy;
}

bool XYCanvas::isAutoFollowMin(Bounds::Direction /*direction*/) const
{
    return false;
}

bool XYCanvas::isAutoFollowMax(Bounds::Direction direction) const
{
    // New data arrives at the upper end of x and nowhere else.
    return direction == Bounds::Horizontal;
}

void XYCanvas::setBounds(Bounds const& newData, Bounds const& newView, bool emitSignals)
{
    bool const dataChanged = differ(newData, dataBounds);
    if (dataChanged) {
        dataBounds = newData;
        dataBoundsChangedPending = true;
    }
    bool const viewChanged = differ(newView, viewBounds);
    if (viewChanged) {
        viewBounds = newView;
        computeFactors();
        // The place of the mouse in the data is no longer true.
        mouseMarkerMouseLeave(false);
        viewBoundsChangedPending = true;
    }
    if (emitSignals)
        emitPendingEmits();
    if (viewChanged)
        fullRepaint();
    if (dataChanged || viewChanged)
        followChangedLimits();
}

void XYCanvas::setViewBounds(Bounds const& view, bool emitSignals)
{
    setBounds(dataBounds, view, emitSignals);
}

void XYCanvas::emitPendingEmits()
{
    if (dataBoundsChangedPending) {
        dataBoundsChangedPending = false;
        Q_EMIT dataBoundsChanged();
    }
    if (viewBoundsChangedPending) {
        viewBoundsChangedPending = false;
        Q_EMIT viewBoundsChanged();
        previouslyEmittedViewBounds = viewBounds;
    }
}

void XYCanvas::forceEmitViewTransformSignals()
{
    Q_EMIT dataBoundsChanged();
    Q_EMIT horizontalViewBoundsUpdatePolicyChanged();
    Q_EMIT verticalViewBoundsUpdatePolicyChanged();
    Q_EMIT viewBoundsChanged();
}
