#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

class XYPlot;

/// How a picture of a plot is to look.
struct PictureOptions
{
    int plot = 0; ///< which one, from the top
    QSize size = QSize(1600, 900); ///< pixels
    int fontSize = 9; ///< points; ticks, bars and samples of the legend grow and shrink along
    int lineThickness = 1; ///< times that of the screen
    bool hasLegend = true;
    QString title; ///< below the plot; none if empty
};

/// What @p plot shows, drawn anew by @p options. The plot on the screen stays as it is.
QPixmap renderPicture(XYPlot& plot, PictureOptions const& options);
