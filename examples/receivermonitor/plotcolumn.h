#pragma once

#include "lineartimegrid.h"
#include "receiverdata.h"
#include "xycanvas.h"

#include <QPixmap>
#include <QStringList>
#include <QVector>
#include <QWidget>

class QGridLayout;
class TimePlotWidget;
class XYPlot;

/**
 * The plots of a log above each other, with their legends in a column of its own beside them, so
 * that equal times stand above each other. A tool tip tells the point under the mouse.
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
    /// Shows or hides two lines that cross at the mouse; that of time goes through all plots.
    void showCrosshair(bool show);

    /// Names of the plots, from top to bottom.
    QStringList names() const;
    XYPlot* plot(int index) const;
    QList<XYCanvas*> canvases() const;
    /// Shows or hides a plot with its legend.
    void showPlot(int index, bool show);

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
    struct Panel
    {
        QString name;
        TimePlotWidget* plot;
        QWidget* legendArea; // null for a plot without legend
        int stretch;
        bool hasRows; // y means nothing
    };

    void addPlot(Content const& content, QGridLayout* grid);
    void setUpCanvas(XYCanvas* canvas, double leastValueExtent);
    void bindTogether();
    void tellPoint(XYCanvas::datahit_t const& hit, QMouseEvent const* event);

    ReceiverData& m_data;
    QVector<double>* m_timeExtent;
    double m_start;
    float m_hoursFromUtc;
    int m_leapSeconds;
    QVector<Panel> m_panels; // from top to bottom
};
