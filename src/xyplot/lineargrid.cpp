#include "lineargrid.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "ticks.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QPainter>
#include <QTextOption>
#include <cmath>
#include <limits>
#include <utility>

namespace {
DebugTag debugTag("LinearGrid");

/// Minor intervals that a scale shows between two ticks.
constexpr int minorDivisionsOfScale = 5;
/// The white patch of a label reaches this far beyond the text and the edge of the canvas.
constexpr int labelMargin = 5;
/// Ten to the power of more decimals than this overflows; no text need be longer.
constexpr int largestPrecision = std::numeric_limits<double>::max_exponent10;

/// Makes logical coordinates count pixels within the painter's viewport while it lives.
class CanvasWindow
{
public:
    explicit CanvasWindow(QPainter* target)
        : painter(target)
        , kept(target->window())
    {
        painter->setWindow(QRect(QPoint(0, 0), painter->viewport().size()));
    }
    ~CanvasWindow() { painter->setWindow(kept); }
    CanvasWindow(CanvasWindow const&) = delete;
    CanvasWindow& operator=(CanvasWindow const&) = delete;

private:
    QPainter* painter;
    QRect kept;
};

int truncateToPixel(double coordinate)
{
    return qBound(-pixelLimit, truncateToInt(coordinate), pixelLimit);
}
} // namespace

LinearGrid::LinearGrid(E_ORIENTATION_TYPE axis, QWidget* parent)
    : XYAbstractGrid(axis, parent)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("LinearGrid"));
}

LinearGrid::~LinearGrid()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("LinearGrid"));
}

void LinearGrid::computeParameters(QPainter* painter, double xMin, double yMin, double xMax,
                                   double yMax)
{
    QSize const size = painter->viewport().size();
    viewportWidth = size.width();
    viewportHeight = size.height();
    TickSpacing const ticks = isVertical() ? chooseTicks(yMin, yMax - yMin, viewportHeight)
                                           : chooseTicks(xMin, xMax - xMin, viewportWidth);
    tickStep = ticks.step;
    firstTick = ticks.first;
}

void LinearGrid::drawGrid(QPainter* painter, double xMin, double yMin, double xMax, double yMax)
{
    {
        CanvasWindow const window(painter);
        painter->setPen(gridColor);
        computeParameters(painter, xMin, yMin, xMax, yMax);
        if (!gridLinesHidden)
            drawLines(painter);
    }
    // Without labels there will be no drawLabels() to feed the scale.
    if (labelType == eNO_LABELS && scale)
        scale->drawScale(tickStep, firstTick, minorDivisionsOfScale, nullptr);
}

void LinearGrid::drawLines(QPainter* painter) const
{
    painter->save();
    QPen pen = painter->pen();
    pen.setWidth(getPlotRenderSettings().gridPenWidth);
    painter->setPen(pen);
    int const extent = isVertical() ? viewportHeight : viewportWidth;
    for (auto walk = TickWalk::upTo(firstTick, tickStep, extent); walk.isOnTick(); walk.advance()) {
        // Truncated, while the scale rounds: a line and its tick may be a pixel apart.
        int const position = truncateToPixel(walk.getPosition());
        if (isVertical())
            painter->drawLine(0, viewportHeight - position, viewportWidth,
                              viewportHeight - position);
        else
            painter->drawLine(position, 0, position, viewportHeight);
    }
    painter->restore();
}

void LinearGrid::drawLabels(QPainter* painter, double xMin, double yMin, double xMax, double yMax)
{
    if (labelType == eNO_LABELS)
        return;
    double const low = isVertical() ? yMin : xMin;
    double const range = isVertical() ? yMax - yMin : xMax - xMin;
    {
        CanvasWindow const window(painter);
        painter->setPen(gridColor);
        painter->save();
        computeParameters(painter, xMin, yMin, xMax, yMax);
        labels.clear();
        updateNumberOfDecimals(range);
        if (!isVertical()) {
            // Labels of the x axis read upwards from the lower edge; seen so, the axis is the
            // height of the turned canvas.
            std::swap(viewportWidth, viewportHeight);
            painter->rotate(-90.0);
            painter->translate(QPointF(-viewportWidth, 0));
        }
        buildLabels(painter, low, range);
        painter->restore();
    }
    if (scale)
        scale->drawScale(tickStep, firstTick, minorDivisionsOfScale, &labels);
}

void LinearGrid::updateNumberOfDecimals(double range)
{
    int const extent = isVertical() ? viewportHeight : viewportWidth;
    // An inverted range has a negative step and no ticks, though their product would look right.
    int const decimals = tickStep > 0.0 ? decimalsOfStep(range * (tickStep / extent)) : 0;
    bool const changed = decimals != numberOfDecimals;
    numberOfDecimals = decimals;
    // Labels of the x axis take the same room on its scale whatever their length.
    if (changed && isVertical())
        Q_EMIT numberOfDecimalsChanged();
}

void LinearGrid::buildLabels(QPainter* painter, double low, double range)
{
    // One font height more than the axis: the scale reaches further than the canvas.
    double const last = double(viewportHeight) + painter->fontMetrics().height();
    for (auto walk = TickWalk::upTo(firstTick, tickStep, last); walk.isOnTick(); walk.advance()) {
        double const position = walk.getPosition();
        labels.append(getLabel(position / viewportHeight * range + low, numberOfDecimals));
        if (hasCanvasLabels(labelType))
            drawCanvasLabel(painter, labels.last(), position);
    }
}

void LinearGrid::drawCanvasLabel(QPainter* painter, QString const& text, double position) const
{
    QFontMetrics const metrics = painter->fontMetrics();
    QRect const box = metrics.boundingRect(text);
    double const centre = isVertical() ? viewportHeight - position : position;
    int const halfHeight = metrics.height() / 2;
    int const bottom = truncateToPixel(centre + halfHeight);
    int const top = bottom - (box.bottom() - box.top());
    int const width = box.right() - box.left() + labelMargin;

    QRect const patch(QPoint(-labelMargin, top), QPoint(width + labelMargin, bottom));
    painter->fillRect(patch, Qt::white);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    painter->drawText(QRectF(labelMargin, top, width - 4, bottom + 1 - top), text, option);
}

QString LinearGrid::getLabel(double value, int decimals)
{
    int const places = decimals == -1 ? 1 : decimals;
    double const scaling = std::pow(10.0, places);
    double const rounded = std::floor(scaling * value + 0.5) / scaling;
    return QStringLiteral("%L1").arg(rounded, 0, 'f', qMin(places, largestPrecision),
                                     QLatin1Char(' '));
}
