#pragma once

#include "pointlocator.h"
#include "testexport.h"
#include "viewportmap.h"
#include <QObject>
#include <vector>

/**
 * The points of one data set drawn since the last full redraw, for finding those near the mouse.
 *
 * Entering each point in a map while it is drawn would cost a visit to each. So a run may be noted
 * as a range of indices, whose points enter a cell of the map when somebody asks for it: the same
 * points in the same order. Before a column goes, or changes otherwise than by growing, all are
 * entered.
 */
class ZELPLOT_TEST_EXPORT TrackedPoints : public QObject
{
public:
    explicit TrackedPoints(ViewportMap<int> const& emptyMap);

    /// Whether points of @p locator may be noted: those of dense columns with x in order, as long
    /// as nobody outside holds the map.
    bool canDefer(PointLocator const& locator) const;
    /**
     * Notes that points @p first to @p last have been drawn, but for the invalid ones.
     *
     * @param locator  one that canDefer(), with y upwards
     * @param yOffset  of the line they were drawn for, pixels upwards
     */
    void defer(int first, int last, PointLocator const& locator, int yOffset);

    /// Enters what has been noted. Whoever enters points by himself does so in this map.
    ViewportMap<int>& filled();
    /// The map for a keeper: filled, and from now on up to date after each run.
    ViewportMap<int>& handOut();
    /// The points drawn near viewport pixel (x, y), y downwards, in the order of drawing; null
    /// outside the viewport.
    QVector<int> const* cellAt(int x, int y);

private:
    struct Range
    {
        int first;
        int last;
        int yOffset;
        int source;
    };
    /// What has been entered in one column of cells.
    struct Progress
    {
        int ranges = 0; ///< all of them
        int points = 0; ///< of the range behind, which may have grown since
    };

    void fill();
    void fillColumn(int column);
    void enter(Range const& range, int from, int firstColumn, int lastColumn);
    void addSource(PointLocator const& locator);
    void dropRanges();

    ViewportMap<int> map;
    std::vector<PointLocator> sources; // where points of ranges were found
    std::vector<Range> ranges;
    std::vector<Progress> entered; // by column of cells; empty while nothing is
    bool handedOut = false;
};
