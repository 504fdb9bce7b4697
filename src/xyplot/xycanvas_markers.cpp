#include "xycanvas.h"

#include "rounding.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <limits>

namespace {

/// Labels of horizontal lines stand in this grey, this far from the edge and from their line.
QColor const labelColor(100, 100, 100, 255);
constexpr int labelPenWidth = 3;
constexpr int labelX = 1;
constexpr int labelAboveLine = 3;
constexpr int labelBelowLine = 12;

QPen markerPen(QColor const& color, int lineWidth, Qt::PenStyle style)
{
    return QPen(QBrush(color), qMax(lineWidth, 0), style);
}

/// Pixel of a value on an axis; far values saturate.
int markerPixel(double distance, int pixels, double extent)
{
    return roundToPixel(distance * pixels / extent);
}

bool isShown(Bounds const& view, Bounds::Direction direction, double value)
{
    return view.size(direction) > 0.0 && view.get(direction, Bounds::Lower) <= value
        && value <= view.get(direction, Bounds::Upper);
}

std::unique_ptr<Marker_t> makeMarker(E_ORIENTATION_TYPE orientation, QColor const& color,
                                     int lineWidth)
{
    return std::make_unique<Marker_t>(
        Marker_t{eFOREGROUND_MARKER, orientation, 0.0, color, Qt::SolidLine, lineWidth, QString()});
}

/**
 * A drawing window with equal units per data unit on both axes, so that an ellipse keeps its shape
 * on axes of different scale and can be rotated; y upwards.
 */
class EllipseWindow
{
public:
    /// @param view  determined in both directions, with positive extents
    explicit EllipseWindow(Bounds const& canvasView)
        : view(canvasView)
    {
        double const xExtent = view.maxX - view.minX;
        double const yExtent = view.maxY - view.minY;
        bool const wide = yExtent <= xExtent;
        aspect = wide ? xExtent / yExtent : yExtent / xExtent;
        double shorter = shorterSide;
        double longer
            = std::trunc(wide ? xExtent * shorterSide / yExtent : yExtent * shorterSide / xExtent);
        shrunk = !(longer <= longestSide);
        if (shrunk) {
            // Both sides shrink alike: a window of whole units would no longer be square.
            longer = longestSide;
            shorter = longestSide / aspect;
        }
        width = wide ? longer : shorter;
        height = wide ? shorter : longer;
        unitsPerX = width / xExtent;
        unitsPerY = height / yExtent;
    }

    /// Place of the point @p offset, in data units, beside (@p x, @p y).
    QPointF place(double x, double y, QPointF offset = {}) const
    {
        return {(x - view.minX + offset.x()) * unitsPerX, (y - view.minY + offset.y()) * unitsPerY};
    }

    /// Positions and radii are whole units, unless the window had to shrink.
    double rounded(double units) const { return shrunk ? units : roundHalfUp(units); }

    /// False where no window can hold the sides of the view.
    bool isUsable() const { return std::isfinite(aspect); }

    /// Whether the outline of the ellipse can cross the window.
    bool mayShow(EllipseMarker_t const& ellipse) const;

    Bounds view;
    double width = 0.0;
    double height = 0.0;
    double unitsPerX = 0.0;
    double unitsPerY = 0.0;

private:
    static constexpr double shorterSide = 10000.0;
    static constexpr double longestSide = std::numeric_limits<int>::max();

    double aspect = 1.0; // longer side by shorter side
    bool shrunk = false; // then positions and radii stay real numbers
};

bool EllipseWindow::mayShow(EllipseMarker_t const& ellipse) const
{
    constexpr double radiansPerDegree = 0.017453292519943295;
    double const angle = ellipse.angle * radiansPerDegree;
    double const sine = std::sin(angle);
    double const cosine = std::cos(angle);
    double const a = ellipse.verticalAxis * 0.5;
    double const b = ellipse.horizontalAxis * 0.5;
    // Half axes in data units. The outline lies in the four corners of the rectangle around the
    // ellipse that the rhombus of the axis ends leaves.
    QPointF const up(a * sine, a * cosine);
    QPointF const right(b * cosine, -b * sine);
    QPointF const corners[4][3] = {
        {up - right, up, -right},
        {-right, -up, -up - right},
        {right, -up + right, -up},
        {right, up, up + right},
    };
    QRectF const window(0.0, 0.0, width, height);
    for (QPointF const(&corner)[3] : corners) {
        QPainterPath triangle;
        for (int i = 0; i < 3; ++i) {
            QPointF const point = place(ellipse.x, ellipse.y, corner[i]);
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
                return false;
            if (i == 0)
                triangle.moveTo(point);
            else
                triangle.lineTo(point);
        }
        triangle.closeSubpath();
        if (triangle.intersects(window))
            return true;
    }
    return false;
}

void strokeEllipse(QPainter* painter, EllipseMarker_t const& ellipse, EllipseWindow const& window)
{
    QPointF const centre = window.place(ellipse.x, ellipse.y);
    double const rx = window.rounded(ellipse.horizontalAxis * 0.5 * window.unitsPerX);
    double const ry = window.rounded(ellipse.verticalAxis * 0.5 * window.unitsPerY);
    painter->setPen(markerPen(ellipse.color, ellipse.lineWidth, ellipse.penStyle));
    painter->save();
    painter->translate(window.rounded(centre.x()), window.rounded(centre.y()));
    painter->rotate(-ellipse.angle);
    painter->drawEllipse(QRectF(QPointF(-rx, -ry), QPointF(rx, ry)).normalized());
    painter->restore();
}

} // namespace

void XYCanvas::drawMarkers(E_MARKER_TYPE type, QPainter* painter)
{
    painter->save();
    auto const drawOfType = [&](Marker_t const* marker, bool isFirstInList) {
        if (marker && marker->type == type)
            drawMarker(*marker, painter, isFirstInList);
    };
    for (int i = 0; i < markers->size(); ++i)
        drawOfType(markers->at(i), i == 0);
    for (Marker_t const& marker : qAsConst(dataMarkers))
        drawOfType(&marker, false);
    if (!mouseMarkersHidden) {
        QFlags<Qt::Orientation> const shown
            = mouseMarkerOrientationsInForce(mouseMarkersAreInterplot);
        if (shown.testFlag(Qt::Horizontal))
            drawOfType(horizontalMouseMarker.get(), false);
        if (shown.testFlag(Qt::Vertical))
            drawOfType(verticalMouseMarker.get(), false);
    }
    if (currentTimeMarkerEnabled)
        drawOfType(currentTimeMarker.get(), false);
    if (intervalTimeMarkerEnabled) {
        drawOfType(intervalStartTimeMarker.get(), false);
        drawOfType(intervalStopTimeMarker.get(), false);
    }
    painter->restore();
}

void XYCanvas::drawMarker(Marker_t const& marker, QPainter* painter, bool isFirstInList)
{
    int const width = transform.width;
    int const height = transform.height;
    painter->setWindow(QRect(0, 0, width, height));
    painter->setPen(markerPen(marker.color, marker.lineWidth, marker.penStyle));
    if (marker.orientation == eVERTICAL && isShown(viewBounds, Bounds::Vertical, marker.value)) {
        int const y = height
            - markerPixel(std::abs(viewBounds.minY - marker.value), height,
                          viewBounds.size(Bounds::Vertical));
        painter->drawLine(0, y, width, y);
        if (!marker.label.isEmpty()) {
            painter->setPen(markerPen(labelColor, labelPenWidth, Qt::SolidLine));
            painter->drawText(labelX, isFirstInList ? y - labelAboveLine : y + labelBelowLine,
                              marker.label);
        }
    } else if (marker.orientation == eHORIZONTAL
               && isShown(viewBounds, Bounds::Horizontal, marker.value)) {
        int const x = markerPixel(std::abs(viewBounds.minX - marker.value), width,
                                  viewBounds.size(Bounds::Horizontal));
        painter->drawLine(x, 0, x, height);
    }
}

void XYCanvas::drawCrossMarkers(QPainter* painter)
{
    usePixelsUpwards(painter);
    double const xExtent = viewBounds.size(Bounds::Horizontal);
    double const yExtent = viewBounds.size(Bounds::Vertical);
    if (!(xExtent > 0.0) || !(yExtent > 0.0))
        return;
    for (CrossMarker_t const* const cross : qAsConst(*crossMarkers)) {
        if (cross->x != cross->x || cross->y != cross->y)
            continue;
        painter->setPen(markerPen(cross->color, cross->lineWidth, cross->penStyle));
        int const x = markerPixel(cross->x - viewBounds.minX, transform.width, xExtent);
        int const y = markerPixel(cross->y - viewBounds.minY, transform.height, yExtent);
        int const arm = rounding::truncateWithin<int>(cross->size, -pixelLimit, pixelLimit);
        painter->drawLine(x, y - arm, x, y + arm);
        painter->drawLine(x - arm, y, x + arm, y);
    }
}

void XYCanvas::drawEllipsoidalMarkers(QPainter* painter)
{
    bool const viewUsable
        = viewBounds.size(Bounds::Horizontal) > 0.0 && viewBounds.size(Bounds::Vertical) > 0.0;
    if (!viewUsable || viewportRect.isEmpty())
        return;
    EllipseWindow const window(viewBounds);
    if (!window.isUsable())
        return;
    painter->save();
    usePixelsUpwards(painter);
    painter->scale(viewportRect.width() / window.width, viewportRect.height() / window.height);
    for (EllipseMarker_t const* const ellipse : qAsConst(*ellipseMarkers)) {
        if (window.mayShow(*ellipse))
            strokeEllipse(painter, *ellipse, window);
    }
    painter->restore();
}

QFlags<Qt::Orientation> XYCanvas::mouseMarkerOrientationsInForce(bool interplot) const
{
    return interplot ? interplotMouseMarkerOrientations : mouseMarkerOrientations;
}

template<typename T> void XYCanvas::setAndUpdate(T& field, T const& value)
{
    field = value;
    update();
}

void XYCanvas::enableMouseMarkers(QFlags<Qt::Orientation> orientations)
{
    setAndUpdate(mouseMarkerOrientations, orientations);
}

void XYCanvas::disableMouseMarkers()
{
    setAndUpdate(mouseMarkerOrientations, {});
}

void XYCanvas::enableInterplotMouseMarkers(QFlags<Qt::Orientation> orientations)
{
    setAndUpdate(interplotMouseMarkerOrientations, orientations);
}

void XYCanvas::disableInterplotMouseMarkers()
{
    setAndUpdate(interplotMouseMarkerOrientations, {});
}

void XYCanvas::setXYCanvassesForInterplotMouseMarkers(QList<XYCanvas*> const& canvases)
{
    interplotCanvases.clear();
    for (XYCanvas* const canvas : canvases)
        interplotCanvases.append(canvas);
}

void XYCanvas::updateMouseMarkers(double x, double y, bool interplot)
{
    ensureMouseMarkers();
    mouseMarkersHidden = false;
    horizontalMouseMarker->value = y;
    verticalMouseMarker->value = x;
    mouseMarkersAreInterplot = interplot;
    if (mouseMarkerOrientationsInForce(interplot))
        update();
    if (interplot)
        return;
    for (QPointer<XYCanvas> const& canvas : qAsConst(interplotCanvases)) {
        if (canvas && canvas != this)
            canvas->updateMouseMarkers(x, y, true);
    }
}

void XYCanvas::mouseMarkerMouseLeave(bool interplot)
{
    mouseMarkersHidden = true;
    if (mouseMarkerOrientationsInForce(interplot))
        update();
    if (interplot)
        return;
    for (QPointer<XYCanvas> const& canvas : qAsConst(interplotCanvases)) {
        if (canvas && canvas != this)
            canvas->mouseMarkerMouseLeave(true);
    }
}

void XYCanvas::ensureMouseMarkers()
{
    if (!horizontalMouseMarker)
        horizontalMouseMarker = makeMarker(eVERTICAL, Qt::gray, 0);
    if (!verticalMouseMarker)
        verticalMouseMarker = makeMarker(eHORIZONTAL, Qt::gray, 0);
}

void XYCanvas::ensureCurrentTimeMarker()
{
    if (!currentTimeMarker)
        currentTimeMarker = makeMarker(eHORIZONTAL, Qt::red, 2);
}

void XYCanvas::ensureIntervalTimeMarker()
{
    if (!intervalStartTimeMarker)
        intervalStartTimeMarker = makeMarker(eHORIZONTAL, Qt::blue, 2);
    if (!intervalStopTimeMarker)
        intervalStopTimeMarker = makeMarker(eHORIZONTAL, Qt::blue, 2);
}

void XYCanvas::enableCurrentTimeMarker()
{
    ensureCurrentTimeMarker();
    setAndUpdate(currentTimeMarkerEnabled, true);
}

void XYCanvas::disableCurrentTimeMarker()
{
    setAndUpdate(currentTimeMarkerEnabled, false);
}

void XYCanvas::updateCurrentTimeMarker(double x)
{
    ensureCurrentTimeMarker();
    setAndUpdate(currentTimeMarker->value, x);
}

void XYCanvas::enableIntervalTimeMarker()
{
    ensureIntervalTimeMarker();
    setAndUpdate(intervalTimeMarkerEnabled, true);
}

void XYCanvas::disableIntervalTimeMarker()
{
    setAndUpdate(intervalTimeMarkerEnabled, false);
}

void XYCanvas::updateIntervalStartTimeMarker(double x)
{
    ensureIntervalTimeMarker();
    setAndUpdate(intervalStartTimeMarker->value, x);
}

void XYCanvas::updateIntervalStopTimeMarker(double x)
{
    ensureIntervalTimeMarker();
    setAndUpdate(intervalStopTimeMarker->value, x);
}
