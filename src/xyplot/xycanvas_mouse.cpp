#include "xycanvas.h"

#include "rounding.h"

#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>
#include <algorithm>
#include <cstdlib>

namespace {

/// A wheel tells eighths of a degree, and has a notch every 15 degrees.
constexpr int wheelUnitsPerDegree = 8;
constexpr int wheelDegreesPerNotch = 15;

/// So many halvings lead from the largest double to the smallest, whatever a driver may report.
constexpr int mostNotches = 2100;

} // namespace

/// Pixel of the mouse, which a device finer than the screen may place between two.
QPoint XYCanvas::pixelOf(QMouseEvent const& event)
{
    return {roundToPixel(event.position().x()), roundToPixel(event.position().y())};
}

void XYCanvas::mousePressEvent(QMouseEvent* event)
{
    QPoint const position = pixelOf(*event);
    if (event->button() != Qt::LeftButton) {
        dropRubberBand();
    } else if (cursor().shape() == Qt::OpenHandCursor) {
        setCursor(Qt::ClosedHandCursor);
        dragLastPosition = position;
    } else {
        rubberBandOrigin = position;
        rubberBand = new QRubberBand(QRubberBand::Rectangle, this);
        rubberBand->setGeometry(QRect(position, position - QPoint(2, 2)));
        rubberBand->show();
    }
    dataHitTestAndEmit(event);
}

void XYCanvas::mouseMoveEvent(QMouseEvent* event)
{
    QPoint const position = pixelOf(*event);
    double const xExtent = viewBounds.size(Bounds::Horizontal);
    double const yExtent = viewBounds.size(Bounds::Vertical);
    double const height = viewportRect.height();
    QPointF const world(xExtent * (position.x() / double(viewportRect.width())) + viewBounds.minX,
                        ((height - position.y()) / height) * yExtent + viewBounds.minY);
    reportMousePosition(world);

    if (cursor().shape() == Qt::ClosedHandCursor)
        dragTo(position);
    else if (cursor().shape() == Qt::CrossCursor && rubberBand)
        rubberBand->setGeometry(QRect(rubberBandOrigin, position).normalized());
    dataHitTestAndEmit(event);
    updateMouseMarkers(world.x(), world.y(), false);
    mouseHasMoved = true;
}

void XYCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        if (cursor().shape() == Qt::ClosedHandCursor)
            setCursor(Qt::OpenHandCursor);
        else if (rubberBand && mouseHasMoved)
            zoomToRubberBand();
        // A band of a press without a move stays behind, empty, as a child of the canvas.
        rubberBand = nullptr;
    }
    dataHitTestAndEmit(event);
}

void XYCanvas::wheelEvent(QWheelEvent* event)
{
    int const notches
        = std::clamp(event->angleDelta().y() / wheelUnitsPerDegree / wheelDegreesPerNotch,
                     -mostNotches, mostNotches);
    event->accept();
    if (viewportRect.isEmpty())
        return;
    auto const worldUnderMouse = [this, event] {
        return QPointF(convertXViewportToWorld(event->position().x()),
                       convertYViewportToWorld(event->position().y(), false));
    };
    QPointF const before = worldUnderMouse();
    for (int i = 0; i < std::abs(notches); ++i) {
        if (notches > 0)
            zoomInBoth();
        else
            zoomOutBoth();
    }
    // Brings the point under the mouse back under it; a view without extent has no such point.
    QPointF const moved = before - worldUnderMouse();
    auto const known = [](double distance) { return distance == distance ? distance : 0.0; };
    dragViewBounds(known(moved.x()), known(moved.y()));
}

void XYCanvas::leaveEvent(QEvent* event)
{
    dataHitTestAndEmit(event);
    mouseMarkerMouseLeave(false);
    QFrame::leaveEvent(event);
}

/// Tells the data coordinates of the mouse, as texts in the form of the axes and as numbers.
void XYCanvas::reportMousePosition(QPointF world)
{
    // During a drag the text goes on even where it is switched off.
    if (sendTextualMouseCoords || cursor().shape() == Qt::ClosedHandCursor) {
        auto const label = [this](XYAbstractGrid* grid, Bounds::Direction direction, double value) {
            return grid ? grid->getLabel(value, getDecimalPlaces(viewBounds.size(direction)))
                        : QString();
        };
        QString const yLabel = label(verticalGrid, Bounds::Vertical, world.y());
        QString const xLabel = label(horizontalGrid, Bounds::Horizontal, world.x());
        Q_EMIT mouseMoved(xLabel, yLabel);
    }
    if (sendMouseCoords)
        Q_EMIT mouseCoords(world.x(), world.y());
}

/// Moves the content along with the hand.
void XYCanvas::dragTo(QPoint position)
{
    QPoint const moved = position - dragLastPosition;
    dragLastPosition = position;
    if (viewportRect.isEmpty())
        return;
    dragViewBounds(-(viewBounds.size(Bounds::Horizontal) / viewportRect.width()) * moved.x(),
                   (viewBounds.size(Bounds::Vertical) / viewportRect.height()) * moved.y());
}

void XYCanvas::zoomToRubberBand()
{
    rubberBand->hide();
    QRect const band = rubberBand->geometry().normalized();
    if (!viewportRect.isEmpty()) {
        auto const x = std::minmax(
            {convertXViewportToWorld(band.left()), convertXViewportToWorld(band.right())});
        auto const y = std::minmax({convertYViewportToWorld(band.bottom(), false),
                                    convertYViewportToWorld(band.top(), false)});
        zoomTo(Bounds{x.first, x.second, y.first, y.second});
    }
    dropRubberBand();
    mouseHasMoved = false;
}

void XYCanvas::dropRubberBand()
{
    delete rubberBand;
}

int XYCanvas::getDecimalPlaces(double extent)
{
    if (extent > 100.0 || extent != extent)
        return 0;
    if (extent > 10.0)
        return 1;
    return extent > 1.0 ? 2 : 3;
}
