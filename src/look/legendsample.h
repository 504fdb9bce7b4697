#pragma once

#include "look.h"
#include <QPixmap>

class QPainter;
class QWidget;

/// Milliseconds by which a legend puts off a rebuild, so that a burst of changes leads to one.
constexpr int legendUpdateDelayMs = 200;

/// The sample of an appearance in a line of a legend.
struct LegendSample
{
    Look::Entry entry; ///< its thickness is not used
    double penWidth = 0.0; ///< pixels
    int symbolRadius = 0; ///< pixels; the side of a dot
};

/// Pixels of a thickness, scaled as the render settings say for the lines or bars of @p look.
double scaledThickness(Look const& look, int lineThickness);

/// Half the extent of @p symbol: @p dotSize of a dot, @p radius of an outline, 0 of all else.
int sampleSymbolRadius(E_SYMBOL symbol, double dotSize, double radius);

/**
 * An empty picture for a legend line.
 *
 * @param textWidth  room in pixels behind the sample and its gap
 * @return null (isNull) if there is nothing to paint on, or more than a painter reaches; no painter
 *         may be opened on it then
 */
QPixmap legendLinePixmap(int textWidth, int height, QColor background, qreal pixelRatio);

/// Paints the symbol and the line through it in the middle of a legend line of that height.
void paintLegendSample(QPainter& painter, LegendSample const& sample, int height);

/// Colour on which the samples of a legend on the screen are painted.
QColor windowColor(QWidget const& widget);
