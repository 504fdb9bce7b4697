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
    /// None for a data set of another kind, or in a view whose x runs backwards.
    static std::optional<ColumnRuns> of(XYDataSet& dataSet, PointLocator const& pointLocator,
                                        double disconnectionThreshold);

    /// Pixels that a run covers in y, without the offset of parallel lines.
    struct Extent
    {
        int lowest;
        int highest;
    };

    /**
     * The last point up to @p last that the curve reaches from @p index on pixel column @p column,
     * its own, with every point between valid, linked and of one appearance; @p index if there is
     * none worth a search.
     */
    int endOfRun(int index, int last, int column) const;
    /// What points @p first to @p last of such a run cover.
    Extent extentOf(int first, int last) const;

    /// The last point up to @p last with the appearance of @p index that shares its column; for
    /// one that a filter leaves out.
    int endOfExcluded(int index, int last, int column) const;
    /// The last point up to @p last with the appearance of @p index up to which all are holes,
    /// itself included; for a hole.
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
    int cutAtHole(int index, int last) const;
    int cutAtValue(int index, int last) const;
    int endOfAppearance(int index, int last) const;

    Look* look;
    PointLocator const* locator;
    double threshold;
    DataArrayTemplate<double> const* xs = nullptr;
    DataArrayTemplate<double> const* ys = nullptr;
    bool looksByValue = false; // the appearance changes with each new y
};
