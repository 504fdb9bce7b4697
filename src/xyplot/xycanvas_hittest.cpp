#include "xycanvas.h"

#include "dataarray.h"
#include "pointlocator.h"
#include "rounding.h"
#include "viewportmap.h"
#include "xydataset.h"
#include "xyplotcommon.h"

#include <QMouseEvent>
#include <cmath>
#include <cstdlib>

namespace {

/// Reach of the mouse. The maps list a point in the cells up to 5 pixels from it, so beyond that
/// only those in the mouse's own cell are found.
constexpr int hitReach = 10; // pixels

/// Tells which points the mouse reaches, and how far they are from it.
class MouseReach
{
public:
    MouseReach(XYDataSet& testedDataSet, ViewTransform const& transform, QPoint mousePosition,
               int maximumDistance)
        : look(testedDataSet.getLook())
        , isBar(look->isColorBar())
        , locator(testedDataSet, transform, false)
        , mouse(mousePosition)
        , reach(maximumDistance)
    {
    }

    /// Distance in pixels; NaN if the point is not reached. Sets @p pixel to its place.
    double distanceOf(int index, QPoint& pixel) const
    {
        PlotPoint const point = locator.locate(index);
        if (!point.valid)
            return NaN;
        pixel = point.pixel;
        double const dx = std::abs(double(mouse.x()) - pixel.x());
        double const dy = std::abs(double(mouse.y()) - pixel.y());
        double const distance = std::sqrt(dx * dx + dy * dy);
        bool const isReached = isBar ? dy <= barReach(index) && dx <= reach : distance <= reach;
        return isReached ? distance : NaN;
    }

private:
    /// A bar is met all over its thickness.
    double barReach(int index) const
    {
        qint64 const thickness
            = qint64(look->getLineThickness(index)) * getPlotRenderSettings().barThicknessFactor;
        return double(thickness / 2 + 1);
    }

    Look* look;
    bool isBar;
    PointLocator locator;
    QPoint mouse;
    int reach;
};

} // namespace

bool XYCanvas::dataHitTest(XYDataSet* dataSet, int x, int y, datahit_t& hit, int maximumDistance)
{
    if (!isMouseOverDataTrackingEnabled(dataSet))
        return false;
    ViewportMap<int>* const map = getViewportMap(dataSet);
    int column = 0;
    int row = 0;
    if (!map->lookupCell(x, y, column, row))
        return false;
    // A column that has shrunk since the points were entered leaves indices beyond its end.
    int const size = qMin(dataSet->xData->dataSize(), dataSet->yData->dataSize());
    MouseReach const mouse(*dataSet, transform, QPoint(x, y), maximumDistance);
    bool found = false;
    for (int const index : qAsConst(map->getItemVector(column, row))) {
        if (index >= size)
            continue;
        QPoint pixel;
        double const distance = mouse.distanceOf(index, pixel);
        if (distance != distance || (found && hit.distance <= distance))
            continue;
        hit = {dataSet,           index, double(index), distance, x, y, double(pixel.x()),
               double(pixel.y()), this};
        found = true;
    }
    return found;
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
