#pragma once

#include "lineartimegrid.h"
#include "toolbarplotwidget.h"
#include "zelplot_export.h"
#include <QList>
#include <QPointer>
#include <QString>
#include <QVector>

class ColorBarDrawListener;
class ViewportMaskFilter;
class XYDataSet;

/**
 * The ready-made plot over time: milliseconds of GNSS time, with scale and title above the canvas.
 *
 * A data set that is added gets a filter of the plot in place of its own, or, if it is a colour
 * bar, a draw listener. Through these, appearances turned off in the legend of a bar hide the
 * epochs of all other data sets. A listener belongs to one plot, so plots that show the same bar
 * each need a data set of their own, which may share the columns. The data sets stay the caller's
 * and must outlive the widget.
 */
class ZELPLOT_EXPORT TimePlotWidget : public ToolBarPlotWidget
{
    Q_OBJECT
public:
    /**
     * @param leapSeconds         GNSS time less UTC, or LinearTimeGrid::unknownDeltaLS
     * @param minimumHeight       pixels; the columns of the legend are as high at most
     * @param roundMeanToInteger  of the mean that marker one may show
     * @param verticalZoomLimit   smallest extent of the view in y, in its units
     */
    TimePlotWidget(short leapSeconds, QString title, int minimumHeight, int minimumWidth,
                   QString yAxisTitle, bool roundMeanToInteger, double verticalZoomLimit,
                   QWidget* parent);
    ~TimePlotWidget() override;

    void addDataSet(XYDataSet* dataSet);
    /// Replaces all data sets and brings the legend up to date.
    void setDataSets(QList<XYDataSet*> dataSets);
    /// Adds or refreshes the legend beside the plot if there are two data sets or more, or one
    /// that asks for it.
    void updateLegend();
    /// To be called after points have been appended to the columns: shows them.
    void updateTimePlot();
    /// Makes the title of the x axis tell the present form of time. Without the time grid, which
    /// the application may have deleted, this and the slots do nothing.
    void updateTimeAxisTitle();

public Q_SLOTS:
    void changeTimeAxis(ETimeType type);
    /// GNSS time less UTC; shows with the next drawing, as the other.
    void setDeltaLS(short leapSeconds);
    /// Hours from UTC to local time.
    void setUtcOffset(float utcOffset);

protected:
    void setXYPlot() override;

private:
    void giveFilter(XYDataSet* dataSet);
    void giveListener(XYDataSet* dataSet);
    void takeFiltersBack();
    void takeMarkersIntoView();
    void showMean();
    QString localOffsetText() const;

    XYPlot* plot;
    bool meanIsInteger;
    QVector<double> customVerticalBounds;
    QVector<ColorBarDrawListener*> colorBarListeners;
    QObject listenerContext; // goes before the vector, and a child of this widget only after it
    struct GivenFilter
    {
        QPointer<XYDataSet> dataSet;
        QPointer<ViewportMaskFilter> filter; // reads colorBarListeners
    };
    QVector<GivenFilter> givenFilters;
};
