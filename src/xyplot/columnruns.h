#pragma once

#include "dataarraytemplate.h"
#include "pointlocator.h"
#include <optional>

class Look;
class XYDataSet;

/**
 * Finds the points of a data set that share a pixel column, and what they amount to, from the
 * summaries of its columns and without a visit to each.
 *
 * For dense columns of doubles with x in order and a look of the library.
 */
class ColumnRuns
{
public:
    /// None for a data set of another kind, or in a view that does not keep the order of x.
    static std::optional<ColumnRuns> of(XYDataSet& dataSet, PointLocator const& pointLocator,
                                        double disconnectionThreshold);

    /// Pixels that a run covers in y, without the offset of parallel lines.
    struct Extent
    {
        int lowest = 0;
        int highest = 0;
    };

    /// Points behind one, on its pixel column, each valid, linked and of its appearance.
    struct Run
    {
        int end = 0; ///< the last of them
        Extent extent;
    };

    /// The run behind point @p index, on pixel column @p column, up to @p last; none if it is not
    /// worth a search.
    std::optional<Run> runBehind(int index, int last, int column) const;

    /// The last point up to @p last with the appearance of @p index that shares its column; for
    /// one that a filter leaves out.
    int endOfExcluded(int index, int last, int column) const;
    /// The last point up to @p last with the appearance of @p index up to which all are holes,
    /// itself included; @p index if it is invalid for another cause.
    int endOfHoles(int index, int last) const;

private:
    ColumnRuns(Look& dataSetLook, PointLocator const& pointLocator, double disconnectionThreshold)
        : look(&dataSetLook)
        , locator(&pointLocator)
        , threshold(disconnectionThreshold)
    {
    }

    int endOfColumn(int index, int last, int column) const;
    int cutAtGap(int index, int last) const;
    bool endsSoon(int index) const;
    int cutAtHole(int index, int last) const;
    Extent extentOf(int index, int last) const;
    int endOfAppearance(int index, int last) const;

    Look* look;
    PointLocator const* locator;
    double threshold;
    DataArrayTemplate<double> const* xs = nullptr;
    DataArrayTemplate<double> const* ys = nullptr;
    mutable qint64 nextSearch = 0; // first point worth one
    mutable int lengthBefore = 0; // points behind the first of the column searched last
    mutable int holeSearch = 0; // point behind which the first hole is nextHole
    mutable int nextHole = 0;
    bool looksByValue = false; // the appearance changes with each new y
};
