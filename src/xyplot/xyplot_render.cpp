#include "rounding.h"
#include "xycanvas.h"
#include "xylegend.h"
#include "xyplot.h"
#include "xyplotcommon.h"
#include "xyscale.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>

namespace {

/// Height of the horizontal scroll bar, which a picture does not show: with the frame it makes up
/// what a y scale reaches below its canvas.
constexpr int renderedScrollBarHeight = 17;

/// Fixed labels may widen the y scale only once the height of the canvas is known; a scale that
/// then comes out otherwise each time stays as it is after so many new starts.
constexpr int mostRestarts = 3;

/// Strips for titles, in heights of their text, and the margin around the title of the picture.
constexpr double stripPerTextHeight = 1.5;
constexpr double marginPerTextHeight = 0.3;

/// The part of the width that a legend may take.
constexpr int legendWidthDivisor = 3;

constexpr int titleFlags = Qt::TextWordWrap | Qt::AlignRight;

int heightOf(QRect const& room, QString const& title)
{
    return QFontMetrics(getPlotRenderSettings().plotTitleFont)
        .boundingRect(room, titleFlags, title)
        .height();
}

/// Pixels around the title of the picture.
int titleMargin()
{
    return truncateToInt(marginPerTextHeight
                         * QFontMetrics(getPlotRenderSettings().plotTitleFont).height());
}

/// Pixels of the strip of an axis title.
int stripFor(int textHeight)
{
    return truncateToInt(stripPerTextHeight * textHeight);
}

/// A picture made by painting; null if it is empty, with nothing painted.
template<typename Paint> QPixmap painted(QSize size, QColor ground, Paint const& paint)
{
    QPixmap pixmap(size.expandedTo(QSize(0, 0)));
    pixmap.fill(ground);
    if (!pixmap.isNull()) {
        QPainter painter(&pixmap);
        paint(painter);
    }
    return pixmap;
}

} // namespace

/// The parts of a picture of a plot, measured and painted one after the other, and put together.
struct XYPlot::Picture
{
    QSize size;
    bool hasLegend = false;
    bool hasXAxisTitle = false;
    QString title;

    int scaleWidth = 0; // of the y scale
    int scaleHeight = 0; // of the x scale
    int xAxisTitleHeight = 0;
    int yAxisTitleWidth = 0;
    int titleHeight = 0;
    QSize canvasSize;

    QPixmap legend;
    QPixmap canvas;
    QPixmap xScale;
    QPixmap yScale;
    QPixmap xAxisTitle;
    QPixmap yAxisTitle;
    QPixmap titleText;
};

QPixmap XYPlot::renderToPixmap(QSize size, PlotRenderSettings_t settings, bool drawLegend,
                               bool drawXAxisTitle, QString title)
{
    auto const held = [](int length) { return qBound(0, length, pixelLimit); };
    Picture wanted;
    wanted.size = QSize(held(size.width()), held(size.height()));
    wanted.hasLegend = drawLegend && legend;
    wanted.hasXAxisTitle = drawXAxisTitle && !getAxisTitle(eVERTICAL).isEmpty();
    wanted.title = title;
    return render(wanted, settings, mostRestarts);
}

QPixmap XYPlot::render(Picture const& wanted, PlotRenderSettings_t const& settings,
                       int restartsLeft)
{
    Picture picture = wanted;
    plotRenderSettings.push(settings);
    setupYScaleForFixedPositionedDatasets(0, renderedScrollBarHeight);
    updateHorizontalScaleWidth();
    updateVerticalScaleHeight();

    QPointer<XYPlot> const self(this);
    measurePicture(picture);
    if (!self) { // gone while the legend was asking the user
        plotRenderSettings.pop();
        return {};
    }
    paintCanvasOf(picture);
    int const scaleWidth = yScale ? yScale->minimumSize().width() : 0;
    if (scaleWidth != picture.scaleWidth && restartsLeft > 0) {
        // What was pushed stays on the stack for its owner to take off.
        return render(wanted, settings, restartsLeft - 1);
    }
    paintAxesOf(picture);

    plotRenderSettings.pop();
    setupYScaleForFixedPositionedDatasets();
    updateHorizontalScaleWidth();
    updateVerticalScaleHeight();
    canvas->fullRepaint();
    return composePicture(picture);
}

/// In this order, as each size depends on those before.
void XYPlot::measurePicture(Picture& picture)
{
    int const width = picture.size.width();
    int const height = picture.size.height();
    picture.scaleWidth = yScale ? yScale->minimumSize().width() : 0;
    picture.scaleHeight = xScale ? xScale->minimumSize().height() : 0;
    if (picture.hasXAxisTitle)
        picture.xAxisTitleHeight = stripFor(getAxisTitleFontHeight());
    int const heightOfPlot = height - picture.scaleHeight - picture.xAxisTitleHeight;
    if (picture.hasLegend && legend) {
        QPointer<XYPlot> const self(this);
        picture.legend
            = legend->drawLegendToPixmap(QSize(width / legendWidthDivisor, heightOfPlot));
        if (!self)
            return;
    }
    int const legendWidth = picture.legend.width();

    if (!getAxisTitle(eHORIZONTAL).isEmpty()) {
        // The width of this very title is not known yet; the height of the other stands in for it.
        int estimate = 0;
        if (!picture.title.isEmpty()) {
            QRect const room(
                QPoint(0, 0),
                QPoint(width - picture.scaleWidth - 1 - picture.xAxisTitleHeight - legendWidth,
                       highestTitle - 1));
            estimate = heightOf(room, picture.title) + 2 * titleMargin();
        }
        picture.yAxisTitleWidth
            = stripFor(getAxisTitleTextHeight(eHORIZONTAL, heightOfPlot - estimate));
    }
    picture.canvasSize
        = QSize(width - picture.scaleWidth - picture.yAxisTitleWidth - legendWidth, heightOfPlot);
    paintTitleOf(picture);
    picture.canvasSize.rheight() -= picture.titleHeight;
}

void XYPlot::paintTitleOf(Picture& picture)
{
    if (picture.title.isEmpty())
        return;
    int const margin = titleMargin();
    QRect const room
        = QRect(QPoint(0, 0), picture.canvasSize).adjusted(margin, margin, -margin, -margin);
    picture.titleHeight = heightOf(room, picture.title) + 2 * margin;
    QSize const size(picture.canvasSize.width(), picture.titleHeight);
    picture.titleText = painted(size, QColor(0, 0, 0, 0), [&](QPainter& painter) {
        painter.setFont(getPlotRenderSettings().plotTitleFont);
        painter.drawText(painter.viewport().adjusted(margin, margin, -margin, -margin), titleFlags,
                         picture.title);
    });
}

void XYPlot::paintCanvasOf(Picture& picture)
{
    QSize const size = picture.canvasSize;
    setupYScaleForFixedPositionedDatasets(size.height(), renderedScrollBarHeight);
    canvas->setContinueBackgroundDrawingUntilFinished(true);
    canvas->fullRepaint(); // what it has of that size was drawn with other settings
    picture.canvas = painted(size, Qt::white, [&](QPainter& painter) {
        painter.save();
        canvas->drawCanvas(&painter);
        painter.restore();
        QRect const frame(QPoint(0, 0), QPoint(size.width() - 2, size.height() - 2));
        painter.drawRects(&frame, 1);
    });
}

void XYPlot::paintAxesOf(Picture& picture)
{
    int const width = picture.canvasSize.width();
    int const height = picture.canvasSize.height();
    if (xScale) {
        picture.xScale = painted(QSize(width, picture.scaleHeight), Qt::white,
                                 [&](QPainter& painter) { xScale->paint(&painter); });
    }
    if (yScale) {
        picture.yScale = painted(QSize(picture.scaleWidth, height + yScale->getOverhang()),
                                 Qt::white, [&](QPainter& painter) { yScale->paint(&painter); });
    }
    auto const paintTitle = [this](QSize size, E_ORIENTATION_TYPE which) {
        return painted(size, Qt::white, [&](QPainter& painter) {
            drawAxisTitle(&painter, which, QRect(QPoint(0, 0), size));
        });
    };
    if (picture.hasXAxisTitle)
        picture.xAxisTitle = paintTitle(QSize(width, picture.xAxisTitleHeight), eVERTICAL);
    if (!getAxisTitle(eHORIZONTAL).isEmpty())
        picture.yAxisTitle = paintTitle(QSize(picture.yAxisTitleWidth, height), eHORIZONTAL);
}

QPixmap XYPlot::composePicture(Picture const& picture) const
{
    bool const isXScaleOnTop = xScale && xScale->isAtTopOrLeft();
    int const width = picture.canvasSize.width();
    int const height = picture.canvasSize.height();
    int const left = picture.yAxisTitle.width();
    QPoint const canvasPlace(left + picture.scaleWidth,
                             isXScaleOnTop ? picture.xAxisTitle.height() + picture.xScale.height()
                                           : 0);
    int const xScaleTop = isXScaleOnTop ? picture.xAxisTitle.height() : height;
    int const xAxisTitleTop = isXScaleOnTop ? 0 : height + picture.xScale.height();

    struct Part
    {
        QPixmap const& pixmap;
        QPoint place;
    };
    // The canvas covers what the y scale shows beside it.
    Part const parts[] = {
        {picture.xAxisTitle, {canvasPlace.x(), xAxisTitleTop}},
        {picture.yAxisTitle, {0, canvasPlace.y()}},
        {picture.xScale, {canvasPlace.x(), xScaleTop}},
        {picture.yScale, {left, canvasPlace.y()}},
        {picture.canvas, canvasPlace},
        {picture.legend, {canvasPlace.x() + width, picture.xAxisTitleHeight + picture.scaleHeight}},
        {picture.titleText, {canvasPlace.x(), canvasPlace.y() + height}},
    };
    return painted(picture.size, Qt::white, [&](QPainter& painter) {
        for (Part const& part : parts)
            painter.drawPixmap(QPointF(part.place), part.pixmap);
    });
}
