#pragma once

#include "xyabstractgrid.h"
#include "zelplot_export.h"
#include <QStringList>

/**
 * A grid with evenly spaced ticks at 2, 5, 10 or 20 times a power of ten.
 *
 * Pixel positions along the axis are measured from its low end: the left or the bottom edge.
 */
class ZELPLOT_EXPORT LinearGrid : public XYAbstractGrid
{
    Q_OBJECT
public:
    LinearGrid(E_ORIENTATION_TYPE axis, QWidget* parent);
    ~LinearGrid() override;

    void drawGrid(QPainter* painter, double xMin, double yMin, double xMax, double yMax) override;
    void drawLabels(QPainter* painter, double xMin, double yMin, double xMax, double yMax) override;

    /// @p value rounded to @p decimals in the form of the default locale; -1 decimals mean 1.
    QString getLabel(double value, int decimals) override;

    /// Takes over the size of the painter's viewport and chooses the ticks of the view.
    virtual void computeParameters(QPainter* painter, double xMin, double yMin, double xMax,
                                   double yMax);

    /// Pixels between two ticks, as last computed; not above zero or not a number without ticks.
    double getTickStep() const { return tickStep; }
    /// Position of the first tick, as last computed: zero or negative, less than a step away.
    double getFirstTick() const { return firstTick; }
    /// Texts of consecutive ticks from getFirstTick() on, as the last drawLabels() built them.
    QStringList getLabels() const { return labels; }

protected:
    int viewportWidth = 0; ///< of the last painter; swapped with the height by horizontal labels
    int viewportHeight = 0;
    double firstTick = 0.0;
    double tickStep = 0.0;
    QStringList labels;

private:
    bool isVertical() const { return orientation == eVERTICAL; }
    void drawLines(QPainter* painter) const;
    void updateNumberOfDecimals(double range);
    void buildLabels(QPainter* painter, double low, double range);
    void drawCanvasLabel(QPainter* painter, QString const& text, double position) const;
};
