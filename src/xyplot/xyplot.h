#pragma once

#include "markers.h"
#include "xyabstractgrid.h"
#include "xylegend.h"
#include "xyplotcommon.h"
#include "zelplot_export.h"
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>

class QFrame;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLayout;
class QMenu;
class QPainter;
class QPoint;
class QPushButton;
class QRect;
class QScrollBar;
class QVBoxLayout;
class VerticalLabel;
class VerticalScrollBar;
class XYCanvas;
class XYDataSet;
class XYScale;

/**
 * One plot: a canvas with up to two scales, titles, a legend and scroll bars with zoom buttons.
 *
 * It owns the lists of data sets and markers that the canvas draws; what stands in them stays the
 * caller's and must leave the plot before it goes. A plot is of use once its canvas has grids
 * (XYCanvas::setGrid()), and they come before the scales.
 *
 * For grids and scales, eHORIZONTAL is the x axis. For axis titles it is the other way round: the
 * title of eHORIZONTAL is the rotated one of the y axis, that of eVERTICAL the upright one of the
 * x axis. And the "horizontal scale" whose width the plot computes is the one beside the canvas.
 *
 * The pictures of the buttons are the application's, in its resources: ":/pic/tp_showall_small.png"
 * and, with "_horizontal" and "_vertical" before "_small", those of the single directions.
 */
class ZELPLOT_EXPORT XYPlot : public QWidget
{
    Q_OBJECT
public:
    /**
     * @param withScrollBars        also builds the zoom buttons beside them
     * @param xAxisTitleOnTop       puts the title of the x axis over the canvas instead of under it
     * @param suppressBackwardLines leaves a step backwards in x unconnected
     */
    XYPlot(bool withScrollBars, bool xAxisTitleOnTop, bool suppressBackwardLines, QWidget* parent);
    ~XYPlot() override;

    XYCanvas* getCanvas() const { return canvas; }
    /// Null until addScale(), as the other.
    XYScale* getXScale() const;
    XYScale* getYScale() const;
    XYLegend* getLegend() const;
    QList<XYDataSet*> getDataSets() const { return *dataSets; }
    QList<Marker_t*> getMarkers() const { return *markers; }
    /// Null in a plot without scroll bars, as the other.
    QScrollBar* getHorizontalScrollBar() const;
    VerticalScrollBar* getVerticalScrollBar() const;

    // Data sets and markers. Those removed show until the next redraw.

    /// Appends @p dataSet, in drawing order, and redraws a quarter of a second later.
    void addDataSet(XYDataSet* dataSet);
    /// Removes it as often as it stands in the list.
    void removeDataSet(XYDataSet* dataSet);
    void removeAllDataSets();
    /// Whether some data set, visible or not, has a valid y value.
    bool hasData() const;
    /// Appends a line marker, unless one with an equal label, be it empty, is there already, which
    /// the debug output tells.
    void addMarker(Marker_t* marker);
    void removeMarker(Marker_t* marker);
    void addEllipseMarker(EllipseMarker_t* marker);
    void removeEllipseMarker(EllipseMarker_t* marker);
    void addCrossMarker(CrossMarker_t* marker);
    void removeCrossMarker(CrossMarker_t* marker);
    /// Adds what was appended to the columns to the picture, without a redraw.
    void drawNewPoints();

    // Titles. One that is empty takes no room.

    void setPlotTitle(QString const& title);
    QString getPlotTitle() const;
    /// Any orientation but eHORIZONTAL sets that of the x axis.
    void setAxisTitle(E_ORIENTATION_TYPE orientation, QString const& title);
    /// Any orientation but eVERTICAL gives that of the y axis.
    QString getAxisTitle(E_ORIENTATION_TYPE orientation) const;
    /// Pixels of a line of an axis title, by the render settings in force.
    int getAxisTitleFontHeight() const;
    /// Pixels of an axis title that is wrapped to @p width pixels.
    int getAxisTitleTextHeight(E_ORIENTATION_TYPE orientation, int width);
    /// Draws an axis title in one line about @p centre.
    void drawAxisTitle(QPainter* painter, E_ORIENTATION_TYPE orientation, QPoint centre);
    /// Draws an axis title wrapped into @p rect, in whose middle it stands.
    void drawAxisTitle(QPainter* painter, E_ORIENTATION_TYPE orientation, QRect rect);

    // Scales.

    /// Adds the scale of a grid that the canvas has; @p onTop is for the x axis alone.
    void addScale(E_ORIENTATION_TYPE orientation, bool onTop);
    void removeScale(E_ORIENTATION_TYPE orientation);
    /// Plots whose y scales are to have one width; may hold this plot.
    void setGroupOfPlots(QList<XYPlot*> const& plots);
    /// Pixels that the y scale needs for the labels of all data, whatever is in view, or with
    /// @p includeGroup that of the group which needs most; 0 without a scale.
    int calculateHorizontalScaleWidth(bool includeGroup) const;
    /// Fixes the width of the y scale, with @p includeGroup of each in the group.
    void setHorizontalScaleWidth(int width, bool includeGroup);
    /// Sets where a grid puts its labels, and makes room on its scale.
    void setLabelType(E_ORIENTATION_TYPE orientation, E_LABEL_TYPE type);
    /// Spreads the data sets that leave the plot their place over a canvas @p forgedCanvasHeight
    /// pixels high, or as high as it is if that is less than 1.
    void repositionAutopositionedDataSets(int forgedCanvasHeight);

    // Legend.

    /**
     * Adds a legend, or brings the present one up to date, whose form then stays.
     *
     * @param checkable  whether the user can show and hide data sets with it
     * @param menu       for eLEGEND_IN_MENU, else not used
     */
    void addLegend(bool checkable, E_LEGEND_POSITION position, QMenu* menu);
    void removeLegend();
    /// Where a legend that is added later goes instead of beside this plot; stays the caller's.
    void setParentLayoutForLegend(QLayout* layout);

    // Pictures.

    /**
     * The plot in exactly @p size pixels, drawn with other fonts, widths and lengths.
     *
     * The plot need not be shown. Both scales should be there. If the labels at fixed positions
     * turn out to need another width of the y scale, the drawing starts over, and for each time
     * that it does, an entry with @p settings stays on the stack of render settings, for the caller
     * to pop. From then on the canvas draws its background in one go.
     *
     * @param drawLegend      with the plot's legend, if it has one, in at most a third of the width
     * @param drawXAxisTitle  that of the y axis is always drawn
     * @param title           of the picture, below the canvas, in place of the plot's; may be empty
     * @return null (isNull) for an empty size
     */
    QPixmap renderToPixmap(QSize size, PlotRenderSettings_t settings, bool drawLegend,
                           bool drawXAxisTitle, QString title);

    /// Puts a scroll bar and its zoom buttons into @p layout, once for each orientation; for the
    /// constructor, or for an application that wants them elsewhere.
    void createScrollBar(QLayout* layout, Qt::Orientation orientation);

    int minimumPlotWidth = 0; ///< a note of the ready-made plots; the minimum width that they set

Q_SIGNALS:
    void mouseMoved(QString xLabel, QString yLabel);
    /// To be emitted from outside: see XYCanvas::setConnectFirstLast().
    void connectFirstLast(bool val);
    /// To be emitted from outside: see XYCanvas::enableSendingMouseCoords().
    void sendMouseCoords(bool val);
    void mouseCoords(double x, double y);

public Q_SLOTS:
    void redrawCanvas();
    /// The same, in one go however long it takes.
    void redrawCanvasWithoutInterruption();
    /// Whether mouseMoved() is emitted.
    void enableMouseTracking(bool enable);
    void showFullPlot();
    /// Also of a legend that is added later.
    void setLegendVisible(bool flag);
    void updateHorizontalScaleWidth();
    void updateVerticalScaleHeight();
    /**
     * Makes the labels of data sets with a fixed position on the y scale anew, and hides its
     * numbers around them.
     *
     * @param forgedCanvasHeight        pixels; less than 1 for that of the canvas
     * @param forcedHorScrollBarHeight  pixels; negative for that of the scroll bar
     */
    void setupYScaleForFixedPositionedDatasets(int forgedCanvasHeight,
                                               int forcedHorScrollBarHeight);
    void setupYScaleForFixedPositionedDatasets(int forgedCanvasHeight);
    void setupYScaleForFixedPositionedDatasets();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void updateVerticalScale();

private:
    struct Picture;

    /// A title may be wrapped into as many lines as fit into that height, pixels.
    static constexpr int highestTitle = 1000;

    QPixmap render(Picture const& wanted, PlotRenderSettings_t const& settings, int restartsLeft);
    void measurePicture(Picture& picture);
    void paintTitleOf(Picture& picture);
    void paintCanvasOf(Picture& picture);
    void paintAxesOf(Picture& picture);
    QPixmap composePicture(Picture const& picture) const;
    void createTitles();
    void createCanvas(bool suppressBackwardLines);
    void createCanvasFrame(bool withScrollBars);
    QPushButton* createShowAllButton();
    void fillLayout(bool xAxisTitleOnTop);
    void addYScale();
    void addXScale(bool onTop);
    void detachScale(XYScale* scale, E_ORIENTATION_TYPE orientation);
    int canvasHeightOr(int forgedCanvasHeight) const;
    void labelFixedPositions(int canvasHeight, int forcedHorScrollBarHeight);
    int widthOfWidestLabel() const;
    void placeLegend(E_LEGEND_POSITION position);
    void connectLegend();
    bool hasVisibleColorBar() const;

    std::unique_ptr<QList<Marker_t*>> markers; // on the heap: the canvas reads the lists
    QVBoxLayout* mainLayout = nullptr;
    XYCanvas* canvas = nullptr;
    QFrame* canvasFrame = nullptr;
    QGridLayout* plotGrid = nullptr;
    QHBoxLayout* rowLayout = nullptr;
    QLabel* titleLabel = nullptr;
    QLabel* xAxisTitleLabel = nullptr;
    VerticalLabel* yAxisTitleLabel = nullptr;
    QPointer<QScrollBar> horizontalScrollBar; // in a layout that may be the application's
    QPointer<XYScale> yScale;
    QPointer<XYScale> xScale;
    QPointer<XYLegend> legend;
    QPointer<QLayout> parentLayoutForLegend;
    E_LEGEND_POSITION legendPosition = eLEGEND_BOTTOM; // of `legend`
    bool legendVisible = true;
    std::unique_ptr<QList<XYDataSet*>> dataSets;
    std::unique_ptr<QList<EllipseMarker_t*>> ellipseMarkers;
    std::unique_ptr<QList<CrossMarker_t*>> crossMarkers;
    QPointer<VerticalScrollBar> verticalScrollBar;
    QList<QPointer<XYPlot>> groupOfPlots;
};
