#include "plotpicture.h"

#include "xycanvas.h"
#include "xyplot.h"
#include "xyplotcommon.h"

#include <QFontInfo>

namespace {

/// A length of the screen in a picture, in pixels; what is there does not vanish.
int scaled(int length, double factor)
{
    return qMax(1, qRound(length * factor));
}

PlotRenderSettings_t settingsFor(PictureOptions const& options)
{
    PlotRenderSettings_t settings = getDefaultPlotRenderSettings();
    double const factor = options.fontSize / QFontInfo(settings.scaleFont).pointSizeF();
    for (QFont* const font : {&settings.axisTitleFont, &settings.scaleFont,
                              &settings.fixedLabelFont, &settings.plotTitleFont})
        font->setPointSizeF(QFontInfo(*font).pointSizeF() * factor);
    // The names in the legend take the size of its heading.
    settings.legendTitleFont.setPointSize(options.fontSize);
    settings.majorTickLength = scaled(settings.majorTickLength, factor);
    settings.minorTickLength = scaled(settings.minorTickLength, factor);
    settings.legendSymbolWidth = scaled(settings.legendSymbolWidth, factor);
    settings.legendSymbolGap = scaled(settings.legendSymbolGap, factor);
    settings.barThicknessFactor = scaled(settings.barThicknessFactor, factor);
    settings.lineThicknessFactor = options.lineThickness;
    settings.gridPenWidth = scaled(settings.gridPenWidth, options.lineThickness / 2.0);
    settings.minorPenWidth = settings.gridPenWidth;
    return settings;
}

} // namespace

QPixmap renderPicture(XYPlot& plot, PictureOptions const& options)
{
    getPlotRenderSettings(); // puts those of the screen on a stack that is still empty
    auto const depth = plotRenderSettings.size();
    QPixmap const picture = plot.renderToPixmap(options.size, settingsFor(options),
                                                options.hasLegend, true, options.title);
    // A rendering that had to start over leaves its settings behind, with the scales made for them.
    plotRenderSettings.resize(depth);
    plot.setupYScaleForFixedPositionedDatasets();
    plot.updateVerticalScaleHeight();
    plot.getCanvas()->setContinueBackgroundDrawingUntilFinished(false);
    plot.redrawCanvas();
    return picture;
}
