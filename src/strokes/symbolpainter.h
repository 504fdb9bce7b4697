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

/// One of the lines of a symbol, in radii from its centre.
struct SymbolLine
{
    QPoint from; ///< the end at which dashes start
    QPoint to;
};

/// The lines of a symbol, in the order in which they are painted one over the other.
struct SymbolLines
{
    SymbolLine const* begin() const { return first; }
    SymbolLine const* end() const { return first + count; }

    SymbolLine const* first = nullptr;
    int count = 0; ///< 0 for a symbol of another kind, and for none
};

SymbolLines linesOfSymbol(E_SYMBOL symbol);
