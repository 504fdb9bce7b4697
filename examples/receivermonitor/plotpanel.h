#pragma once

#include "lineartimegrid.h"
#include "receiverdata.h"
#include "xycanvas.h"

#include <QWidget>

/// One canvas with its grids over GNSS time, and above it the text that tells what it shows.
class PlotPanel : public QWidget
{
    Q_OBJECT
public:
    /// What a panel shows. The data sets stay the caller's, for as long as the panel lives.
    struct Content
    {
        QString title;
        QVector<ColorName> colors; ///< named behind the title, in their order
        DataSetList dataSets;
        double leastValueExtent = 1.0; ///< vertical extent in view while there is little data
        bool hasValueLabels = true; ///< false where all data sets have a fixed position
    };

    /// The time axis, which all panels of a window share.
    struct TimeAxis
    {
        int leapSeconds = 18;
        double start = 0.0; ///< GNSS milliseconds at the left edge as long as there is no data
        QVector<double>* extent = nullptr; ///< times that must be in view; the caller's
    };

    PlotPanel(Content const& content, TimeAxis const& axis, QWidget* parent);
    ~PlotPanel() override;

    /// Moves bounds and view after the columns have grown, and draws what is new.
    void showNewData();
    /// Draws everything anew after the columns were emptied.
    void startAnew();
    void setTimeType(ETimeType timeType);
    /// For a log that is fed as a whole: no room ahead of the data, and no interruption.
    void useForFinishedData();

private:
    DataSetList m_dataSets;
    QList<Marker_t*> m_markers;
    QList<EllipseMarker_t*> m_ellipses;
    QList<CrossMarker_t*> m_crosses;
    XYCanvas* m_canvas;
    LinearTimeGrid* m_timeGrid;
};
