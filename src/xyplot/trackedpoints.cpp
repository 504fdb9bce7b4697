#include "trackedpoints.h"

#include "columnnotices.h"
#include "dataarraytemplate.h"

#include <typeinfo>

namespace {

/// Ranges from which on entering their points takes less memory.
constexpr size_t rangesWorthEntering = 4096;

/// Others may read their cells otherwise next time, or change them unnoticed.
bool isDense(DataArray const& column)
{
    return typeid(column) == typeid(DataArrayTemplate<double>);
}

} // namespace

TrackedPoints::TrackedPoints(ViewportMap<int> const& emptyMap)
    : map(emptyMap)
{
}

bool TrackedPoints::canDefer(PointLocator const& locator) const
{
    DataArray const& xs = *locator.getXColumn();
    return !handedOut && isDense(xs) && isDense(*locator.getYColumn()) && xs.isNondecreasing()
        && locator.keepsOrder();
}

void TrackedPoints::defer(int first, int last, PointLocator const& locator, int yOffset)
{
    // A cell that is missing now may come before the point is looked for.
    last = qMin(last, locator.pointCount() - 1);
    if (last < first)
        return;
    if (!sources.empty() && sources.back().placesLike(locator))
        sources.back() = locator; // knows more points
    else
        addSource(locator);
    int const source = int(sources.size()) - 1;
    bool const goesOn = !ranges.empty() && ranges.back().source == source
        && ranges.back().yOffset == yOffset && ranges.back().last == first - 1;
    if (goesOn)
        ranges.back().last = last;
    else
        ranges.push_back({first, last, yOffset, source});
    if (handedOut || ranges.size() >= rangesWorthEntering)
        fill();
}

ViewportMap<int>& TrackedPoints::filled()
{
    fill();
    return map;
}

ViewportMap<int>& TrackedPoints::handOut()
{
    handedOut = true;
    return filled();
}

QVector<int> const* TrackedPoints::cellAt(int x, int y)
{
    int column = 0;
    int row = 0;
    if (!map.lookupCell(x, y, column, row))
        return nullptr;
    fillColumn(column);
    return &map.getItemVector(column, row);
}

void TrackedPoints::addSource(PointLocator const& locator)
{
    sources.push_back(locator);
    for (DataArray const* const column : {locator.getXColumn(), locator.getYColumn()})
        connect(&column->getNotices(), &ColumnNotices::aboutToChangeCells, this,
                &TrackedPoints::fill, Qt::UniqueConnection);
}

void TrackedPoints::fill()
{
    if (entered.empty()) {
        for (Range const& range : ranges)
            enter(range, range.first, 0, map.getColumnCount() - 1);
    } else {
        for (int column = 0; column < map.getColumnCount(); ++column)
            fillColumn(column);
    }
    dropRanges();
}

/// All columns of cells have all points.
void TrackedPoints::dropRanges()
{
    for (PointLocator const& source : sources) {
        for (DataArray const* const column : {source.getXColumn(), source.getYColumn()})
            disconnect(&column->getNotices(), nullptr, this, nullptr);
    }
    sources.clear();
    ranges.clear();
    entered.clear();
}

void TrackedPoints::fillColumn(int column)
{
    if (ranges.empty())
        return;
    if (entered.empty())
        entered.resize(size_t(map.getColumnCount()));
    Progress& progress = entered[size_t(column)];
    int const lastRange = int(ranges.size()) - 1;
    for (;; ++progress.ranges, progress.points = 0) {
        Range const& range = ranges[size_t(progress.ranges)];
        enter(range, range.first + progress.points, column, column);
        if (progress.ranges == lastRange) {
            progress.points = range.last - range.first + 1;
            return;
        }
    }
}

/// Enters the points of a range from @p from on in these columns of cells, and in no other.
void TrackedPoints::enter(Range const& range, int from, int firstColumn, int lastColumn)
{
    if (from > range.last)
        return;
    PointLocator const& locator = sources[size_t(range.source)];
    int const height = locator.getViewportHeight();
    int const right = map.lastPixelEntering(lastColumn);
    // The storage may have shrunk without a word from the column.
    int const last = qMin(
        range.last, qMin(locator.getXColumn()->dataSize(), locator.getYColumn()->dataSize()) - 1);
    int index = locator.firstFromColumn(from, last, map.firstPixelEntering(firstColumn));
    for (; index <= last; ++index) {
        PlotPoint const point = locator.locate(index);
        if (point.pixel.x() > right)
            return;
        int const y = point.pixel.y() + range.yOffset;
        if (point.valid && y >= 0 && y < height)
            map.addItem(index, point.pixel.x(), height - 1 - y, firstColumn, lastColumn);
    }
}
