#pragma once

#include "markers.h"
#include "zelplot_export.h"
#include <QColor>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>

class LinearTimeGrid;
class XYPlot;

/**
 * Base of the ready-made plots: wraps one XYPlot, gives it grids and two horizontal markers, and
 * binds it to the tool bar of its parent widget.
 *
 * The tool bar is the application's. The parent may have the signals showFullPlot(),
 * changeCursor(Qt::CursorShape), mouseTrackingOn(bool) and sendMouseCoords(bool), which reach the
 * plot, and the slot drawMouseCoords(QString, QString), which gets the texts of the mouse position.
 * Each that it lacks is reported as a failed connection in the debug output, and the plot works
 * without it.
 *
 * A subclass makes its plot in its constructor, then calls setXYPlot() and setUpXYPlot(), and
 * deletes the plot in its destructor.
 */
class ZELPLOT_EXPORT ToolBarPlotWidget : public QWidget
{
    Q_OBJECT
public:
    /**
     * @param parent       the widget with the tool bar
     * @param leapSeconds  GNSS time less UTC for a time axis; LinearTimeGrid::unknownDeltaLS
     *                     where it is not known or there is no time axis
     */
    ToolBarPlotWidget(QWidget* parent, short leapSeconds);
    ~ToolBarPlotWidget() override;

    /// For the constructor of a subclass: connects the plot to the tool bar and gives it grids, the
    /// y scale and, if wanted, the value marker.
    void setUpXYPlot(bool withValueMarker, bool withTimeGrid);

    XYPlot* getXYPlot() const { return xyPlot; }
    /// Null in a plot without a time axis, or once the grid has gone.
    LinearTimeGrid* getTimeGrid() const;

    /// Sets the appearance of a marker, which showHMarkerOne() and showHMarkerTwo() show. The two
    /// must have different labels.
    void addHorizMarkerOne(QString label, Qt::PenStyle style, QColor colour);
    void addHorizMarkerTwo(QString label, Qt::PenStyle style, QColor colour);
    /// Moves a marker to a y value; an empty label keeps the present one. Redraws nothing.
    void updateHorizMarkerOne(double position, QString label);
    void updateHorizMarkerTwo(double position, QString label);

    /// For the application: marker one shows the mean of the first data set.
    bool hMarkerOneShowsMean = false;

public Q_SLOTS:
    void showHMarkerOne(bool show);
    void showHMarkerTwo(bool show);
    void redrawCanvas();

protected:
    /// Copies the plot of the subclass to `xyPlot`.
    virtual void setXYPlot() = 0;

    std::unique_ptr<Marker_t> valueMarker; // a vertical line
    std::unique_ptr<Marker_t> hMarkerOne;
    std::unique_ptr<Marker_t> hMarkerTwo;
    QPointer<LinearTimeGrid> timeGrid;
    XYPlot* xyPlot = nullptr;

private:
    void connectToolBar();
    void showMarker(Marker_t* marker, bool& shown, bool show);

    bool hMarkerOneShown = false;
    bool hMarkerTwoShown = false;
    short deltaLS;
    QWidget* toolBarParent;
};
