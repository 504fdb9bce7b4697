#pragma once

#include "dataarray.h"
#include "rounding.h"
#include "testexport.h"
#include "viewtransform.h"
#include <QPoint>
#include <cmath>
#include <optional>

class XYDataSet;

/// A data point on the viewport.
struct PlotPoint
{
    QPoint pixel; ///< viewport pixels
    double x = NaN; ///< x in data units
    bool valid = false; ///< false for a hole, or while the view is not determined
};

/// Finds the points of one data set on the viewport, for as long as its columns do not change.
class ZELPLOT_TEST_EXPORT PointLocator
{
public:
    /// @param yUpwards  true for y upwards from the lower edge, false for y downwards
    PointLocator(XYDataSet& dataSet, ViewTransform const& viewTransform, bool yUpwards);

    /**
     * Place of point @p index; coordinates saturate at plus and minus pixelLimit.
     *
     * An index outside a column is reported as an assertion and read as a hole there. The y column
     * is not read where the look fixes y.
     */
    PlotPoint locate(int index) const
    {
        bool const inX = index >= 0 && index < xSize;
        bool const inY = index >= 0 && index < ySize;
        if (!inX || !inY)
            reportOutOfBounds(inX, inY);
        PlotPoint point;
        if (inX)
            point.x = xData->getValue(index);
        double const x = transform.xToViewport(point.x);
        point.valid = x == x;
        point.pixel.setX(roundToPixel(x));
        if (fixedY) {
            point.pixel.setY(*fixedY);
            return point;
        }
        double const y = transform.yToViewport(inY ? yData->getValue(index) : NaN, fromBottom);
        point.valid = point.valid && y == y;
        point.pixel.setY(roundToPixel(y));
        return point;
    }

    /// Pixel column of point @p index, which must be inside the x column.
    int columnOf(int index) const
    {
        return roundToPixel(transform.xToViewport(xData->getValue(index)));
    }
    /// Pixel row of a y value; the look must not fix y.
    int rowOf(double y) const { return roundToPixel(transform.yToViewport(y, fromBottom)); }
    bool hasFixedY() const { return fixedY.has_value(); }
    /// Every number has its pixel, and larger x lie further to the right. Factors of zero and
    /// infinity make some numbers NaN.
    bool keepsOrder() const
    {
        return transform.xFactor > 0.0 && std::isfinite(transform.xFactor)
            && (fixedY || (transform.yFactor != 0.0 && std::isfinite(transform.yFactor)));
    }
    /// The first point from @p first to @p last at or to the right of a pixel column, @p last + 1
    /// if there is none; x must be in order and the points inside the x column.
    int firstFromColumn(int first, int last, int column) const;
    /// Whether @p other finds each point, that both know, at the same pixel.
    bool placesLike(PointLocator const& other) const;
    /// Points that stand in both columns.
    int pointCount() const { return qMin(xSize, ySize); }
    DataArray const* getXColumn() const { return xData; }
    DataArray const* getYColumn() const { return yData; }
    int getViewportHeight() const { return transform.height; }

private:
    static void reportOutOfBounds(bool inX, bool inY);

    ViewTransform transform;
    DataArray const* xData;
    DataArray const* yData;
    int xSize;
    int ySize;
    bool fromBottom;
    std::optional<int> fixedY;
};
