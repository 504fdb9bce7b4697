#pragma once

#include "zelplot_export.h"
#include <QVector>
#include <QtGlobal>

/**
 * A coarse grid over a viewport that lists the items drawn in each cell, so that looking for what
 * is near a pixel takes one cell.
 *
 * An item is entered in each cell that it comes within a radius of: whatever lies that close to a
 * pixel stands in the pixel's own cell. Pixels count from the top left corner.
 */
template<typename T> class ViewportMap
{
public:
    /**
     * An empty grid over @p viewportWidth by @p viewportHeight pixels.
     *
     * @param radius   pixels; below 1, an item stands in its own cell only
     * @param columns  cells across
     * @param rows     cells down
     */
    explicit ViewportMap(int viewportWidth = 0, int viewportHeight = 0, int radius = 5,
                         int columns = 20, int rows = 20)
        : width(viewportWidth)
        , height(viewportHeight)
        , itemRadius(radius)
        , columnCount(columns)
        , rowCount(rows)
    {
        clearData();
    }

    /// Empties the cells. Without a viewport or cells there is no grid, and nothing is entered.
    void clearData()
    {
        cells.clear();
        cellWidth = 0;
        cellHeight = 0;
        if (width < 0 || height < 0 || columnCount <= 0 || rowCount <= 0)
            return;
        cellWidth = pixelsPerCell(width, columnCount);
        cellHeight = pixelsPerCell(height, rowCount);
        cells.fill(QVector<QVector<T>>(rowCount), columnCount);
    }

    /// Enters @p item, drawn at (x, y); nothing if that lies outside, even by less than the radius.
    void addItem(T const& item, int x, int y) { addItem(item, x, y, 0, columnCount - 1); }
    /// The same for some columns of cells only.
    void addItem(T const& item, int x, int y, int firstColumn, int lastColumn)
    {
        int column = 0;
        int row = 0;
        if (!lookupCell(x, y, column, row))
            return;
        int const reach = qMax(itemRadius, 0);
        firstColumn = qMax(firstColumn, qMax(x - reach, 0) / cellWidth);
        lastColumn = qMin(lastColumn, lastCellWithin(x, width, cellWidth));
        int const firstRow = qMax(y - reach, 0) / cellHeight;
        int const lastRow = lastCellWithin(y, height, cellHeight);
        for (column = firstColumn; column <= lastColumn; ++column) {
            for (row = firstRow; row <= lastRow; ++row)
                cells[column][row].append(item);
        }
    }

    /// The cell of pixel (x, y); false, and nothing written, outside the viewport.
    bool lookupCell(int x, int y, int& column, int& row) const
    {
        if (cellWidth == 0 || cellHeight == 0)
            return false;
        if (x < 0 || y < 0 || x >= width || y >= height)
            return false;
        column = x / cellWidth;
        row = y / cellHeight;
        return true;
    }

    int getColumnCount() const { return columnCount; }
    /// Leftmost pixel column whose items stand in that column of cells.
    int firstPixelEntering(int column) const
    {
        return int(qMax(qint64(column) * cellWidth - qMax(itemRadius, 0), qint64(0)));
    }
    /// The rightmost one; -1 if there is none.
    int lastPixelEntering(int column) const
    {
        qint64 const right = (qint64(column) + 1) * cellWidth - 1 + qMax(itemRadius, 0);
        return int(qMin(right, qint64(width) - 1));
    }

    /// The items of a cell that exists, in order of entry.
    QVector<T>& getItemVector(int column, int row) { return cells[column][row]; }

private:
    /// Rounded up, so that the cells cover the viewport; the last ones may reach beyond it.
    static int pixelsPerCell(int pixels, int cellCount)
    {
        return pixels / cellCount + (pixels % cellCount != 0 ? 1 : 0);
    }

    int lastCellWithin(int position, int pixels, int cellSize) const
    {
        int const last = pixels - 1;
        int const reach = qMax(itemRadius, 0);
        return (last - position > reach ? position + reach : last) / cellSize;
    }

    int width;
    int height;
    int itemRadius;
    int columnCount;
    int rowCount;
    int cellWidth = 0; // pixels; 0 while there is no grid
    int cellHeight = 0;
    QVector<QVector<QVector<T>>> cells; // by column, then row
};

extern template class ZELPLOT_EXPORT ViewportMap<int>;
