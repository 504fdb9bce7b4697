#include "xycanvas.h"

#include "dataarray.h"
#include "pointlocator.h"
#include "rounding.h"
#include "trackedpoints.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QMouseEvent>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

/// Reach of the mouse. The maps list a point in the cells up to 5 pixels from it, so beyond that
/// only those in the mouse's own cell are found.
constexpr int hitReach = 10; // pixels

/// Looks at all of them, without a branch for each, which takes several at a time.
bool isAscending(QVector<int> const& indices)
{
    int const* const values = indices.constData();
    int descents = 0;
    for (qsizetype i = 1; i < indices.size(); ++i)
        descents |= int(values[i] < values[i - 1]);
    return descents == 0;
}

/// The search for the point nearest to the mouse among those of one cell of a map.
class NearestPoint
{
public:
    NearestPoint(XYDataSet& testedDataSet, ViewTransform const& transform, QPoint mousePosition,
                 int maximumDistance)
        : dataSet(testedDataSet)
        , look(testedDataSet.getLook())
        , isBar(look->isColorBar())
        , locator(testedDataSet, transform, false)
        , runsRightwards(testedDataSet.xData->isNondecreasing() && transform.xFactor > 0.0)
        , mouse(mousePosition)
        , reach(maximumDistance)
    {
    }

    /// @p indices  of points, as they were drawn
    void search(QVector<int> const& indices)
    {
        // A column that has shrunk since leaves indices beyond its end.
        int const size = dataSet.yData->dataSize();
        // Parallel lines enter their points one line after the other.
        bool const canBisect
            = runsRightwards && size <= dataSet.xData->dataSize() && isAscending(indices);
        if (!canBisect) {
            for (int const index : indices) {
                if (index < size)
                    consider(index, locator.locate(index), false);
            }
            return;
        }
        // From the column of the mouse to both sides, until a column is further than the point.
        auto const end = std::lower_bound(indices.cbegin(), indices.cend(), size);
        auto const isLeft
            = [this](int index, int x) { return locator.locate(index).pixel.x() < x; };
        auto const middle = std::lower_bound(indices.cbegin(), end, mouse.x(), isLeft);
        for (auto it = middle; it != end && reachesColumnOf(*it, false); ++it) { }
        for (auto it = middle; it != indices.cbegin() && reachesColumnOf(*(it - 1), true); --it) { }
    }

    bool isFound() const { return nearest >= 0; }
    int getIndex() const { return nearest; }
    double getDistance() const { return distance; } ///< pixels
    QPoint getPixel() const { return pixel; }

private:
    bool reachesColumnOf(int index, bool winsTies)
    {
        PlotPoint const point = locator.locate(index);
        double const dx = std::abs(double(mouse.x()) - point.pixel.x());
        if (dx > reach || (isFound() && dx > distance))
            return false;
        consider(index, point, winsTies);
        return true;
    }

    /// Of equally near points the one entered first counts, which a walk backwards meets last.
    void consider(int index, PlotPoint const& point, bool winsTies)
    {
        if (!point.valid)
            return;
        double const dx = std::abs(double(mouse.x()) - point.pixel.x());
        double const dy = std::abs(double(mouse.y()) - point.pixel.y());
        double const d = std::sqrt(dx * dx + dy * dy);
        bool const isReached = isBar ? dx <= reach && dy <= double(barReach(index)) : d <= reach;
        if (!isReached || (isFound() && (d > distance || (d == distance && !winsTies))))
            return;
        nearest = index;
        distance = d;
        pixel = point.pixel;
    }

    /// A bar is met all over its thickness.
    qint64 barReach(int index) const
    {
        qint64 const thickness
            = qint64(look->getLineThickness(index)) * getPlotRenderSettings().barThicknessFactor;
        return thickness / 2 + 1;
    }

    XYDataSet& dataSet;
    Look* look;
    bool isBar;
    PointLocator locator;
    bool runsRightwards;
    QPoint mouse;
    int reach;

    int nearest = -1; // index
    double distance = NaN;
    QPoint pixel;
};

} // namespace

bool XYCanvas::dataHitTest(XYDataSet* dataSet, int x, int y, datahit_t& hit, int maximumDistance)
{
    if (!isMouseOverDataTrackingEnabled(dataSet))
        return false;
    QVector<int> const* const drawn = trackedPoints(dataSet).cellAt(x, y);
    if (!drawn)
        return false;
    NearestPoint point(*dataSet, transform, QPoint(x, y), maximumDistance);
    point.search(*drawn);
    if (!point.isFound())
        return false;
    int const index = point.getIndex();
    QPoint const pixel = point.getPixel();
    hit = {dataSet,           index, double(index), point.getDistance(), x, y, double(pixel.x()),
           double(pixel.y()), this};
    return true;
}

bool XYCanvas::dataHitTest(int x, int y, datahit_t& hit, int maximumDistance)
{
    hit.dataSet = nullptr;
    for (XYDataSet* const dataSet : qAsConst(*dataSets)) {
        datahit_t candidate;
        if (dataHitTest(dataSet, x, y, candidate, maximumDistance)
            && (!hit.dataSet || candidate.distance < hit.distance))
            hit = candidate;
    }
    return hit.dataSet != nullptr;
}

void XYCanvas::dataHitTestAndEmit(QEvent* event)
{
    auto* const mouseEvent = dynamic_cast<QMouseEvent*>(event);
    QPoint const position = mouseEvent ? pixelOf(*mouseEvent) : QPoint(-1, -1);
    datahit_t hit;
    if (mouseEvent && dataHitTest(position.x(), position.y(), hit, hitReach)) {
        lastDataHit = hit;
        isOverData = true;
        Q_EMIT mouseOverData(hit, mouseEvent);
        return;
    }
    if (!std::exchange(isOverData, false))
        return;
    lastDataHit.dataSet = nullptr;
    lastDataHit.position = -1.0;
    lastDataHit.distance = NaN;
    lastDataHit.mouseX = position.x();
    lastDataHit.mouseY = position.y();
    lastDataHit.pointX = NaN;
    lastDataHit.pointY = NaN;
    Q_EMIT mouseOverData(lastDataHit, mouseEvent);
}
