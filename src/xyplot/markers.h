#pragma once

#include "xyabstractgrid.h"
#include "zelplot_export.h"
#include <QColor>
#include <QString>

/// The layer of a line marker.
enum E_MARKER_TYPE : int {
    eBACKGROUND_MARKER = 0, ///< in the background pixmap, under the data; a change needs a redraw
    eFOREGROUND_MARKER = 1, ///< on the widget at each paint, over the data
};

/// A line across the whole viewport at one data value. A value that is not a number hides it.
struct Marker_t
{
    E_MARKER_TYPE type = eBACKGROUND_MARKER;
    /// The axis that `value` lies on: eVERTICAL gives a horizontal line at a y value.
    E_ORIENTATION_TYPE orientation = eHORIZONTAL;
    double value = 0.0; ///< data units
    QColor color;
    Qt::PenStyle penStyle = Qt::SolidLine;
    int lineWidth = 0; ///< pixels; 0 is a cosmetic pen
    QString label; ///< drawn at a horizontal line only; empty for none
};

/// The outline of an ellipse, in data units.
struct EllipseMarker_t
{
    double x = 0.0; ///< centre
    double y = 0.0;
    double verticalAxis = 0.0; ///< full length of the axis that points up at angle 0
    double horizontalAxis = 0.0; ///< full length of the axis that points right at angle 0
    double angle = 0.0; ///< degrees, clockwise from up
    QColor color;
    Qt::PenStyle penStyle = Qt::SolidLine;
    int lineWidth = 0; ///< in units of 1/10000 of the shorter side of the viewport
};

/// An upright cross of fixed size at a data point.
struct CrossMarker_t
{
    double x = 0.0;
    double y = 0.0;
    double size = 0.0; ///< arm length in pixels, truncated when drawn
    QColor color;
    Qt::PenStyle penStyle = Qt::SolidLine;
    int lineWidth = 0;
};
