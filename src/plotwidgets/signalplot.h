#pragma once

#include <QString>

class XYPlot;

/// A plot for curves over lag or frequency, which start again at the low end and are not to be
/// connected back to it; without a parent.
XYPlot* newSignalPlot();

/// Titles, the x scale below the canvas, and zoom limits; once the plot has its grids.
void finishSignalPlot(XYPlot& plot, QString const& yTitle, QString const& xTitle);
