#pragma once

#include "bounds.h"
#include "zelplotglobals.h"

/**
 * The straight-line map between data and viewport coordinates of one view.
 *
 * Viewport coordinates are logical pixels, x to the right from 0. Where a flag chooses the origin
 * of y, true means the lower edge with y upwards, false the upper edge with y downwards. The
 * divisions are done once, so that each point costs a subtraction and a multiplication.
 */
struct ViewTransform
{
    Bounds view; ///< what the viewport shows, data units
    int width = 0; ///< pixels
    int height = 0;
    double xFactor = NaN; ///< pixels per data unit; NaN while the view is not determined
    double xInverseFactor = NaN; ///< data units per pixel
    double yFactor = NaN; ///< pixels per data unit, negative: larger values lie higher
    double yInverseFactor = NaN;

    /// Takes a view and a viewport. A view without extent in a direction has NaN factors there.
    void set(Bounds const& newView, int newWidth, int newHeight)
    {
        view = newView;
        width = newWidth;
        height = newHeight;
        double const xExtent = view.maxX - view.minX;
        bool const xUsable = xExtent == xExtent && xExtent != 0.0;
        xFactor = xUsable ? width / xExtent : NaN;
        xInverseFactor = xUsable ? xExtent / width : NaN;
        double const yExtent = view.maxY - view.minY;
        bool const yUsable = yExtent == yExtent && yExtent != 0.0;
        yFactor = yUsable ? height / -yExtent : NaN;
        yInverseFactor = yUsable ? -yExtent / height : NaN;
    }

    double xToViewport(double x) const { return (x - view.minX) * xFactor; }
    double xToWorld(double v) const { return v * xInverseFactor + view.minX; }
    double yToViewport(double y, bool fromBottom) const
    {
        return fromBottom ? -((y - view.minY) * yFactor) : (y - view.maxY) * yFactor;
    }
    double yToWorld(double v, bool fromBottom) const
    {
        return fromBottom ? view.minY - v * yInverseFactor : yInverseFactor * v + view.maxY;
    }
};
