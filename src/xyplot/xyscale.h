#pragma once

#include "xyabstractgrid.h"
#include "zelplot_export.h"
#include <QPair>
#include <QStringList>
#include <QVector>
#include <QWidget>

/**
 * The axis widget beside a canvas: tick marks, tick labels, and labels at fixed positions.
 *
 * A scale chooses nothing; the grid of its axis hands it spacing and texts at every paint of the
 * canvas. Positions are pixels along the axis from the left edge of the widget, or, for a vertical
 * scale, upwards from its bottom edge, below which it reaches further than the canvas.
 */
class ZELPLOT_EXPORT XYScale : public QWidget
{
    Q_OBJECT
public:
    /// @p topOrLeft puts the ticks of a horizontal scale at its lower edge, next to a canvas below.
    XYScale(E_ORIENTATION_TYPE axis, E_LABEL_TYPE type, bool topOrLeft, QWidget* parent);
    ~XYScale() override;

    /**
     * Takes over spacing and labels, and schedules a repaint if they have changed.
     *
     * @param step       pixels between two major ticks; not above zero draws nothing
     * @param first      position of the first tick from the low end of the canvas
     * @param divisions  minor intervals to a major one
     * @param texts      of consecutive ticks from @p first on; copied; null means none
     */
    void drawScale(double step, double first, int divisions, QStringList* texts);

    /// Draws the scale into the painter's viewport, with the render settings in force. On the
    /// screen that is the contents rectangle of the widget.
    void paint(QPainter* painter);

    /// Pixels by which the scale is longer than the canvas at its low end; 0 before drawScale().
    int getOverhang() const { return overhang; }
    bool isAtTopOrLeft() const { return atTopOrLeft; }
    E_LABEL_TYPE getLabelType() const { return labelType; }
    /// Takes effect with the next paint; asks for none.
    void setLabelType(E_LABEL_TYPE type) { labelType = type; }

    /// Draws no tick and no label from @p from to @p to, both included. Asks for no repaint.
    void addIntervalToHideScale(int from, int to);
    void clearIntervalsToHideScale();
    /// Whether something at @p position, reaching @p halfExtent to both sides, meets an interval.
    bool mustHideScale(int position, int halfExtent) const;

    /// Draws @p text at @p position as long as there are ticks, hidden or not. Asks for no repaint.
    void addLabelAtFixedPosition(int position, QString const& text);
    void clearLabelsAtFixedPosition();
    void paintLabelsAtFixedPosition(QPainter& painter) const;
    /// Width for the widest fixed label and the ticks; 0 without such labels or if horizontal.
    int getRequiredWidthForLabelsAtFixedPosition() const;

    /// Pixels by which a vertical scale reaches below its canvas.
    static constexpr int verticalOverhang = 18;

    /// The strip in pixels that a scale keeps for its ticks beside the labels.
    static int getTickReserve();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isVertical() const { return orientation == eVERTICAL; }
    bool isAbove() const { return !isVertical() && atTopOrLeft; }
    void drawMajorTicks(QPainter* painter, QSize size) const;
    void drawMinorTicks(QPainter* painter, QSize size) const;
    void drawTicks(QPainter* painter, QSize size, double first, double step, int length) const;
    void drawTickLabels(QPainter* painter, QSize size) const;

    E_ORIENTATION_TYPE const orientation;
    E_LABEL_TYPE labelType;
    QStringList labels;
    double tickStep = 0.0;
    double firstTick = 0.0;
    int minorDivisions = 0;
    bool const atTopOrLeft;
    int overhang = 0;
    QVector<QPair<int, int>> hideIntervals;
    QVector<QPair<int, QString>> fixedLabels;
};
