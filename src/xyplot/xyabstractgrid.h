#pragma once

#include "zelplot_export.h"
#include <QColor>
#include <QPointer>
#include <QWidget>

class QPainter;
class XYScale;

/// The axis to which a grid or scale belongs.
enum E_ORIENTATION_TYPE : int {
    eHORIZONTAL = 0, ///< x axis: vertical grid lines, a scale above or below the canvas
    eVERTICAL = 1 ///< y axis: horizontal grid lines, a scale left of the canvas
};

/// Where tick labels are drawn.
enum E_LABEL_TYPE : int {
    eNO_LABELS = 0,
    eSCALE_LABELS = 1, ///< on the scale only
    eCANVAS_LABELS = 2, ///< inside the canvas only
    eSCALE_AND_CANVAS_LABELS = 3
};

constexpr bool hasScaleLabels(E_LABEL_TYPE type)
{
    return type == eSCALE_LABELS || type == eSCALE_AND_CANVAS_LABELS;
}

constexpr bool hasCanvasLabels(E_LABEL_TYPE type)
{
    return type == eCANVAS_LABELS || type == eSCALE_AND_CANVAS_LABELS;
}

/**
 * The grid of one axis of a canvas: the only place where tick positions are computed.
 *
 * While a canvas paints its background it asks its grids for lines and labels; a grid hands the
 * spacing and the texts on to its scale. A grid is a widget for the sake of its owner and its
 * signal, but is never shown.
 */
class ZELPLOT_EXPORT XYAbstractGrid : public QWidget
{
    Q_OBJECT
public:
    XYAbstractGrid(E_ORIENTATION_TYPE axis, QWidget* parent);
    ~XYAbstractGrid() override;

    /**
     * Draws the grid lines of a view, whose bounds are in data units.
     *
     * The painter's viewport is the canvas area in logical pixels. The painter keeps the grid's
     * pen.
     */
    virtual void drawGrid(QPainter* painter, double xMin, double yMin, double xMax, double yMax)
        = 0;
    /// Builds the tick labels of the same view, draws those that stand inside the canvas and
    /// feeds the scale. Does nothing with eNO_LABELS.
    virtual void drawLabels(QPainter* painter, double xMin, double yMin, double xMax, double yMax)
        = 0;
    /// The text of a tick at @p value, in data units.
    virtual QString getLabel(double value, int decimals) = 0;

    E_ORIENTATION_TYPE getOrientation() const { return orientation; }
    /// Takes effect, for the scale as well, with the next paint; asks for none.
    void setLabelType(E_LABEL_TYPE type);
    E_LABEL_TYPE getLabelType() const { return labelType; }
    /// Decimals of the labels, as the last drawLabels() found them.
    int getNumberOfDecimals() const { return numberOfDecimals; }

    /// Colour of the lines and of the labels inside the canvas.
    void setGridColor(QColor color) { gridColor = color; }
    QColor getGridColor() const { return gridColor; }
    /// Leaves out the lines; labels and scale stay.
    void setGridLinesHidden(bool hidden) { gridLinesHidden = hidden; }
    bool areGridLinesHidden() const { return gridLinesHidden; }

    /// The axis widget that the grid feeds, not owned; null if there is none or it has been
    /// deleted.
    XYScale* getScale() const;
    void setScale(XYScale* newScale);

Q_SIGNALS:
    /// The labels of a vertical axis have got another number of decimals, hence another width.
    void numberOfDecimalsChanged();

protected:
    E_ORIENTATION_TYPE const orientation;
    E_LABEL_TYPE labelType = eCANVAS_LABELS;
    QColor gridColor = Qt::lightGray;
    QPointer<XYScale> scale;
    int numberOfDecimals = 0;
    bool gridLinesHidden = false;
};
