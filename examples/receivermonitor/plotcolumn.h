#pragma once

#include "lineartimegrid.h"
#include "receiverdata.h"

#include <QPixmap>
#include <QVector>
#include <QWidget>

class QGridLayout;
class TimePlotWidget;

/**
 * The plots of a log above each other, with their legends in a column of its own beside them, so
 * that equal times stand above each other.
 *
 * It is the partner that its plots ask for: they connect by name to the first four signals, by
 * which a tool bar controls them all, and to drawMouseCoords().
 */
class PlotColumn : public QWidget
{
    Q_OBJECT
public:
    /**
     * @param receiverData  stays the caller's, for as long as the column lives
     * @param start         GNSS milliseconds at the left edge as long as there is no data
     */
    PlotColumn(ReceiverData& receiverData, double start, int leapSeconds, QWidget* parent);
    ~PlotColumn() override;

    /// Moves bounds and views after the columns have grown, and draws what is new.
    void showNewData();
    /// Draws everything anew after the columns were emptied.
    void startAnew();
    void setTimeType(ETimeType timeType);
    /// Shows or hides the lines at the means of altitude and satellites in use.
    void showMeans(bool show);

    /**
     * A picture of all data, in exactly @p size logical pixels; the legends are left out of one
     * too narrow for them.
     *
     * To be called once, of a column that has no parent and was never shown.
     */
    QPixmap picture(QSize size);

Q_SIGNALS:
    void showFullPlot();
    void changeCursor(Qt::CursorShape shape);
    void mouseTrackingOn(bool on);
    void sendMouseCoords(bool on);
    /// Where the mouse stands in the data, in the form of the axes.
    void mouseMoved(QString const& text);

public Q_SLOTS:
    void drawMouseCoords(const QString xLabel, const QString yLabel);

private:
    struct Content;

    void addPlot(Content const& content, QGridLayout* grid);
    void shareScaleWidth();

    QVector<double>* m_timeExtent;
    double m_start;
    float m_hoursFromUtc;
    int m_leapSeconds;
    QVector<TimePlotWidget*> m_plots;
    QVector<TimePlotWidget*> m_plotsWithMean;
    QVector<QWidget*> m_legendAreas;
};
