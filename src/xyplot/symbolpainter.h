#pragma once

#include "look.h"
#include "testexport.h"
#include <QPoint>

class QPainter;

/**
 * Draws the outline of a symbol with the pen of the painter and its present brush.
 *
 * @param centre  in the coordinates of the painter; the names of the triangles hold where y grows
 *                downwards
 * @param radius  half the extent of the symbol
 */
ZELPLOT_TEST_EXPORT void paintSymbol(QPainter& painter, QPoint centre, E_SYMBOL symbol, int radius);
