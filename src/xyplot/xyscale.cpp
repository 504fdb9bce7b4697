#include "xyscale.h"

#include "debugtag.h"
#include "memleaktracer.h"
#include "rounding.h"
#include "ticks.h"
#include "xyplotcommon.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace {
DebugTag debugTag("XYScale");

/// A tick length from the render settings, within what leaves offsets room in an int.
int lengthOf(int setting)
{
    return qBound(-pixelLimit, setting, pixelLimit);
}

/// The painter's pen, made to end where the tick ends.
void setTickPen(QPainter* painter, int width)
{
    QPen pen = painter->pen();
    pen.setCapStyle(Qt::FlatCap);
    pen.setWidth(width);
    painter->setPen(pen);
}
} // namespace

XYScale::XYScale(E_ORIENTATION_TYPE axis, E_LABEL_TYPE type, bool topOrLeft, QWidget* parent)
    : QWidget(parent)
    , orientation(axis)
    , labelType(type)
    , atTopOrLeft(topOrLeft)
{
    debugTag.ask();
    MemLeakTracer::getInstance()->doAllocateObject(QStringLiteral("XYScale"));
}

XYScale::~XYScale()
{
    MemLeakTracer::getInstance()->doDeallocateObject(QStringLiteral("XYScale"));
}

void XYScale::drawScale(double step, double first, int divisions, QStringList* texts)
{
    // A vertical scale stores its first tick shifted, so it compares unequal and always repaints.
    bool const sameSpacing = step == tickStep && first == firstTick && divisions == minorDivisions;
    if (!sameSpacing) {
        overhang = isVertical() ? verticalOverhang : 0;
        tickStep = step;
        firstTick = first + overhang;
        minorDivisions = divisions;
    }
    QStringList const newLabels = texts ? *texts : QStringList();
    if (sameSpacing && newLabels == labels)
        return;
    labels = newLabels;
    update();
}

void XYScale::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setViewport(contentsRect());
    painter.setWindow(QRect(QPoint(0, 0), contentsRect().size()));
    paint(&painter);
}

void XYScale::paint(QPainter* painter)
{
    if (!(tickStep > 0.0))
        return;
    painter->save();
    painter->setFont(getPlotRenderSettings().scaleFont);
    QSize const size = painter->viewport().size();
    if (isAbove())
        drawTickLabels(painter, size);
    drawMajorTicks(painter, size);
    drawMinorTicks(painter, size);
    if (!isAbove())
        drawTickLabels(painter, size);
    paintLabelsAtFixedPosition(*painter);
    painter->restore();
}

void XYScale::drawMajorTicks(QPainter* painter, QSize size) const
{
    PlotRenderSettings_t const& settings = getPlotRenderSettings();
    setTickPen(painter, settings.gridPenWidth);
    // Above the canvas the ticks begin one step earlier than in the other two forms.
    double const first = isAbove() ? firstTick - tickStep : firstTick;
    drawTicks(painter, size, first, tickStep, lengthOf(settings.majorTickLength));
}

void XYScale::drawMinorTicks(QPainter* painter, QSize size) const
{
    PlotRenderSettings_t const& settings = getPlotRenderSettings();
    setTickPen(painter, settings.minorPenWidth);
    drawTicks(painter, size, firstTick - tickStep, tickStep / minorDivisions,
              lengthOf(settings.minorTickLength));
}

void XYScale::drawTicks(QPainter* painter, QSize size, double first, double step, int length) const
{
    int const width = size.width();
    int const height = size.height();
    double const end = isVertical() ? height : width;
    for (auto walk = TickWalk::before(first, step, end); walk.isOnTick(); walk.advance()) {
        int const position = roundToPixel(walk.getPosition());
        if (mustHideScale(position, 0))
            continue;
        QLine line(position, 0, position, length);
        if (isVertical())
            line = QLine(width - 1 - length, height - position, width, height - position);
        else if (atTopOrLeft)
            line = QLine(position, height, position, height - 1 - length);
        painter->drawLines(&line, 1);
    }
}

void XYScale::drawTickLabels(QPainter* painter, QSize size) const
{
    if (!hasScaleLabels(labelType))
        return;
    QFontMetrics const metrics = painter->fontMetrics();
    int const height = metrics.height();
    int const end = isVertical() ? size.height() : size.width();
    int const flags = isVertical() ? int(Qt::AlignRight) : int(Qt::AlignHCenter | Qt::AlignVCenter);
    int const top = isAbove() ? 1 : lengthOf(getPlotRenderSettings().majorTickLength) + 1;
    auto walk = TickWalk::before(firstTick, tickStep, end + tickStep);
    for (QString const& text : labels) {
        if (!walk.isOnTick())
            return;
        int const position = roundToPixel(walk.getPosition());
        walk.advance();

        int const extent = isVertical() ? height : metrics.horizontalAdvance(text);
        if (mustHideScale(position, extent / 2))
            continue;
        int const low = (isVertical() ? end - position : position) - extent / 2;
        // A label that would touch an end of the scale is left out, not shifted to fit.
        if (low <= 0 || low + extent - 1 >= end)
            continue;
        QRect box;
        if (isVertical())
            box = QRect(0, low, size.width() - getTickReserve(), extent);
        else
            box = QRect(low, top, extent, height);
        painter->drawText(box, flags, text);
    }
}

void XYScale::paintLabelsAtFixedPosition(QPainter& painter) const
{
    painter.save();
    painter.setFont(getPlotRenderSettings().fixedLabelFont);
    QFontMetrics const metrics = painter.fontMetrics();
    QSize const size = painter.viewport().size();
    int const height = metrics.height();
    for (auto const& [place, text] : fixedLabels) {
        int const position = roundToPixel(place);
        int const width = metrics.horizontalAdvance(text);
        QPoint const corner = isVertical()
            ? QPoint(size.width() - getTickReserve() - width, size.height() - height / 2 - position)
            : QPoint(position - width / 2, 1);
        painter.drawText(QRect(corner, QSize(width, height)), Qt::AlignHCenter | Qt::AlignVCenter,
                         text);
    }
    painter.restore();
}

void XYScale::addIntervalToHideScale(int from, int to)
{
    hideIntervals.append(qMakePair(from, to));
}

void XYScale::clearIntervalsToHideScale()
{
    hideIntervals.clear();
}

bool XYScale::mustHideScale(int position, int halfExtent) const
{
    qint64 const low = qint64(position) - halfExtent;
    qint64 const high = qint64(position) + halfExtent;
    return std::any_of(hideIntervals.cbegin(), hideIntervals.cend(), [=](auto const& interval) {
        return high >= interval.first && low <= interval.second;
    });
}

void XYScale::addLabelAtFixedPosition(int position, QString const& text)
{
    fixedLabels.append(qMakePair(position, text));
}

void XYScale::clearLabelsAtFixedPosition()
{
    fixedLabels.clear();
}

int XYScale::getRequiredWidthForLabelsAtFixedPosition() const
{
    if (!isVertical() || fixedLabels.isEmpty())
        return 0;
    QFontMetrics const metrics(getPlotRenderSettings().fixedLabelFont);
    int widest = 0;
    for (auto const& label : fixedLabels)
        widest = qMax(widest, metrics.horizontalAdvance(label.second));
    return widest + getTickReserve();
}

int XYScale::getTickReserve()
{
    return lengthOf(getPlotRenderSettings().majorTickLength) * 5 / 4;
}
