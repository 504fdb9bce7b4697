#pragma once

#include "testexport.h"
#include <QPen>

class Look;

/// How one point of a data set is stroked.
struct LookPen
{
    QPen pen;
    bool drawsLines; ///< false where the pen is for symbols only
};

/**
 * The pen for a point, scaled by the render settings in force.
 *
 * @param index      point of the look's data set, 0 to size - 1
 * @param lineIndex  which of the parallel lines of a multi-line look
 */
ZELPLOT_TEST_EXPORT LookPen lookPen(Look& look, int index, int lineIndex);
