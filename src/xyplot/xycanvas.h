#pragma once

#include "bounds.h"
#include "look.h"
#include "markers.h"
#include "viewtransform.h"
#include "xyabstractgrid.h"
#include "zelplot_export.h"
#include "zelplotglobals.h"
#include <QFrame>
#include <QHash>
#include <QList>
#include <QPixmap>
#include <QPointer>
#include <QSet>
#include <QVector>
#include <memory>

class QAbstractButton;
class QMouseEvent;
class QRubberBand;
class QScrollBar;
class StrokeSink;
class TrackedPoints;
class VerticalEnvelope;
class XYDataSet;
struct TraceSettings;
template<typename T> class ViewportMap;

/**
 * The drawing surface of a plot: maps data to pixels, keeps what is shown, and draws it.
 *
 * Grids, background markers and data sets live on a background pixmap, which a paint event only
 * copies. New points are added to it by drawNewPointsOnBackGround(); it is made anew when the view
 * or the size has changed, or on request. A drawing run that takes long hands the event loop back
 * between two data sets and goes on later.
 *
 * The lists of data sets and markers are the caller's and are read at each drawing, as are the data
 * sets, markers and grids themselves. Coordinates are data units ("world") or viewport pixels; the
 * latter count logical pixels, with y upwards or downwards as each operation says. NaN in bounds
 * and factors means not determined.
 */
class ZELPLOT_EXPORT XYCanvas : public QFrame
{
    Q_OBJECT

public:
    /// What the view does in one direction when the data bounds change.
    enum ViewBoundsUpdatePolicy : int {
        PolicyNone = 0, ///< stays untouched; zooming is off
        PolicyKeep = 1, ///< stays where the user put it, cut down to the data
        PolicyFollow = 2, ///< keeps its size and moves along with the newest points
        PolicyFull = 3, ///< equals the data bounds
    };
    Q_ENUM(ViewBoundsUpdatePolicy)

    /// The data point under the mouse, or the report that the mouse has left one.
    struct datahit_t
    {
        XYDataSet* dataSet = nullptr; ///< null after leaving a point
        int index = -1; ///< of the point in its columns
        double position = -1.0; ///< the index as a double; -1 after leaving
        double distance = NaN; ///< pixels from the mouse to the point
        int mouseX = -1; ///< viewport pixels; -1 without a mouse event
        int mouseY = -1; ///< y downwards
        double pointX = NaN; ///< viewport pixels
        double pointY = NaN; ///< y downwards
        XYCanvas* canvas = nullptr; ///< the canvas that found it
    };

    /**
     * @param plotDataSets       in drawing order; must not be null, as the other lists
     * @param suppressBackwards  whether a step backwards in x is left unconnected
     */
    XYCanvas(QList<XYDataSet*>* plotDataSets, QList<Marker_t*>* plotMarkers,
             QList<EllipseMarker_t*>* plotEllipseMarkers, QList<CrossMarker_t*>* plotCrossMarkers,
             bool suppressBackwards, QWidget* parent);
    ~XYCanvas() override;

    // Conversions. All give NaN while the view is not determined in that direction.

    double convertXWorldToViewport(double x) const;
    double convertXViewportToWorld(double v) const;
    /// @param fromBottom  true for y upwards from the lower edge, false for y downwards
    double convertYWorldToViewport(double y, bool fromBottom) const;
    double convertYViewportToWorld(double v, bool fromBottom) const;
    /**
     * Pixel of a data point, halves rounded upwards, saturating far outside the viewport.
     *
     * @param valid  set to false for a hole, an index outside the columns (which is reported), or
     *               while the view is not determined
     */
    QPoint convertDataPointToViewport(XYDataSet* dataSet, int index, bool& valid,
                                      bool fromBottom) const;
    /// Takes over the present view and viewport into the conversions.
    void computeFactors();
    /// Sets bounds, policies, buffers, margins and zoom limits to their initial values.
    void initializeViewTransform();

    // Grids.

    /// Takes a grid for an axis; it stays the caller's and may be null.
    void setGrid(E_ORIENTATION_TYPE orientation, XYAbstractGrid* grid, bool repaint);
    /// The grid of the y axis for eVERTICAL, of the x axis for all else; may be null.
    XYAbstractGrid* getGrid(E_ORIENTATION_TYPE orientation) const;

    // Data bounds.

    Bounds getDataBounds() const { return dataBounds; }
    Bounds getStrictDataBounds() const { return strictDataBounds; }
    Bounds getInitialDataBounds() const { return initialDataBounds; }
    Bounds getViewBounds() const { return viewBounds; }
    /// The view as it was after the last viewBoundsChanged().
    Bounds getPreviouslyEmittedViewBounds() const { return previouslyEmittedViewBounds; }

    /// Extent of all data sets, invisible ones included.
    Bounds calculateStrictDataBounds();
    /// Extent of the newest point of every data set.
    Bounds calculateLastDataPointsBounds();
    /// @p bounds, widened to hold every custom value.
    Bounds extendWithCustomDataBounds(Bounds const& bounds) const;
    /// Further x values that the data bounds must hold. The vector stays the caller's, is read at
    /// each computation of the bounds, and must outlive the canvas.
    void addCustomHorizontalDataBoundsVector(QVector<double>* values);
    void addCustomVerticalDataBoundsVector(QVector<double>* values);

    /// Pixels that stay free beyond the data.
    void setViewportMargin(int horizontalLower, int horizontalUpper, int verticalLower,
                           int verticalUpper);
    double getViewportMargin(Bounds::Direction direction, Bounds::End end) const;
    /**
     * A margin in data units.
     *
     * @param fallbackExtent  data extent of the viewport where the present view does not tell it
     */
    double determineViewPortMarginInDataCoordinates(Bounds::Direction direction, Bounds::End end,
                                                    double fallbackExtent) const;

    /// Buffered bounds of all data; updates the strict bounds on the way.
    Bounds calculateDataBounds(bool startFromCurrent);
    /// Moves one direction of the buffered bounds after the strict bounds, in steps.
    void applyBufferingToDataBounds(Bounds::Direction direction, Bounds& bounds);
    /// Distance by which a growing edge jumps ahead of the data, data units.
    double getExtensionBuffer(Bounds::Direction direction, Bounds::End end) const;
    /// Distance by which the data must fall back before an edge follows, data units.
    double getShrinkThreshold(Bounds::Direction direction, Bounds::End end) const;
    void getExtensionBufferParameters(Bounds::Direction direction, Bounds::End end, double& minimum,
                                      double& fraction) const;
    /// Minima in data units, fractions of the strict extent.
    void setExtensionBufferParameters(double minimumHorizontalLower, double minimumHorizontalUpper,
                                      double minimumVerticalLower, double minimumVerticalUpper,
                                      double fractionHorizontalLower,
                                      double fractionHorizontalUpper, double fractionVerticalLower,
                                      double fractionVerticalUpper);
    /// Takes away the horizontal buffering, which is of no use for finished data.
    void adaptExtensionBufferParametersAndInitialDataBoundForOfflineTimePlots();
    /// Fixes the data bounds for good; later data no longer moves them.
    void setFixedDataBounds(Bounds const& bounds);
    /// Extent used while there is too little data. Takes effect at the next computation.
    void setInitialDataBounds(Bounds const& bounds);

    // View.

    /// To be called after data was appended and before it is drawn: moves bounds and view.
    void updateBounds();
    /// The view that the policies make of new data bounds. May change a policy.
    Bounds calculateUpdatedViewBounds(Bounds const& newDataBounds);
    void calculateUpdatedViewBounds(Bounds::Direction direction, Bounds const& newDataBounds,
                                    Bounds& view);
    void calculateFollowPolicyUpdatedViewBounds(Bounds::Direction direction,
                                                Bounds const& newDataBounds, Bounds& view);
    /**
     * Takes over data bounds and view as they stand, and asks for a full redraw if the view moves.
     *
     * @param emitSignals  false leaves what has changed owed until emitPendingEmits(), so that both
     *                     directions can move and be reported as one change
     */
    void setBounds(Bounds const& newData, Bounds const& newView, bool emitSignals);
    void setViewBounds(Bounds const& view, bool emitSignals);
    /// Emits what is owed, the data bounds first.
    void emitPendingEmits();
    /// Emits both bounds signals and both policy signals, changed or not.
    void forceEmitViewTransformSignals();

    void setHorizontalViewBoundsUpdatePolicy(ViewBoundsUpdatePolicy policy, bool applyNow);
    void setVerticalViewBoundsUpdatePolicy(ViewBoundsUpdatePolicy policy, bool applyNow);
    /// @param applyNow  moves the view at once, before the signal about the policy goes out
    void setViewBoundsUpdatePolicy(Bounds::Direction direction, ViewBoundsUpdatePolicy policy,
                                   bool applyNow);
    ViewBoundsUpdatePolicy getHorizontalViewBoundsUpdatePolicy() const;
    ViewBoundsUpdatePolicy getVerticalViewBoundsUpdatePolicy() const;
    ViewBoundsUpdatePolicy getViewBoundsUpdatePolicy(Bounds::Direction direction) const;
    /// Whether reaching that end of the data by hand turns PolicyFollow on.
    bool isAutoFollowMin(Bounds::Direction direction) const;
    bool isAutoFollowMax(Bounds::Direction direction) const;
    /// Within viewBoundsChanged(): whether a policy or new data moved the view, not the user.
    bool viewBoundsChangeCausedByPolicy() const { return policyCausedViewBoundsChange; }

    // Zoom limits: the smallest extent of the view, data units.

    double getZoomLimitMinimumExtent(Bounds::Direction direction) const;
    double getHorizontalZoomLimit() const { return horizontalZoomLimit; }
    double getVerticalZoomLimit() const { return verticalZoomLimit; }
    void setHorizontalZoomLimit(double limit);
    void setVerticalZoomLimit(double limit);

    // Moving the view. It stays within the data bounds and keeps to the zoom limits. With
    // emitSignals false the signals stay owed, so that both directions can be told as one change.

    /// Halves the extent, about the centre or, while following, from the end that follows. A view
    /// that does not follow is kept from then on.
    void zoomIn(Bounds::Direction direction, bool emitSignals);
    /// Doubles the extent about the centre, sliding along where the data ends; from showing all
    /// data on the view stays full.
    void zoomOut(Bounds::Direction direction, bool emitSignals);
    /// Shows all data and turns PolicyFull on.
    void zoomFull(Bounds::Direction direction, bool emitSignals);
    /// Shows @p min to @p max as far as there is data, and keeps it; wholly outside the data the
    /// view becomes NaN, as it does if either is NaN. With PolicyNone nothing moves.
    void zoomTo(Bounds::Direction direction, double min, double max, bool emitSignals);
    void zoomTo(Bounds const& bounds);
    void zoomToHorizontal(double min, double max);
    void zoomToVertical(double min, double max);
    /// Moves the view by @p delta data units with PolicyKeep and PolicyFollow only; it follows from
    /// then on if it ends at the newest data, else it is kept.
    void dragViewBounds(Bounds::Direction direction, double delta, bool emitSignals);
    void dragViewBounds(double dx, double dy);

    // Buttons and scroll bars stay the caller's; either side may go first.

    void connectAsZoomInHorizontalButton(QAbstractButton* button);
    void connectAsZoomInVerticalButton(QAbstractButton* button);
    void connectAsZoomOutHorizontalButton(QAbstractButton* button);
    void connectAsZoomOutVerticalButton(QAbstractButton* button);
    void connectAsZoomFullHorizontalButton(QAbstractButton* button);
    void connectAsZoomFullVerticalButton(QAbstractButton* button);
    void connectAsZoomFullBothButton(QAbstractButton* button);
    /// To be called once for each direction; a second call is reported and takes the new bar.
    void setHorizontalScrollBar(QScrollBar* bar);
    void setVerticalScrollBar(QScrollBar* bar);
    QScrollBar* getScrollBar(Bounds::Direction direction);
    QScrollBar* getHorizontalScrollBar();
    QScrollBar* getVerticalScrollBar();
    /// Shows in a scroll bar where the view lies in the data.
    void setScrollBarState(Bounds::Direction direction);
    void setScrollBarStates();
    /// Moves the view to where a scroll bar stands.
    void reflectScrollBarState(Bounds::Direction direction);

    /// Decimals that are worth showing of a coordinate in a view of that extent: 0 to 3.
    int getDecimalPlaces(double extent);

    void determineZoomButtonsEnablement(Bounds::Direction direction, bool& zoomIn, bool& zoomOut,
                                        bool& zoomFull);
    void configureZoomButtonsEnablement();

    // Redraw.

    /// Makes the next paint rebuild the background pixmap, and asks for one.
    void fullRepaint();
    /// Draws everything with a painter on any device, at the size of its viewport.
    void drawCanvas(QPainter* painter);
    /// A new background pixmap, owned by the caller; null (isNull) for an empty viewport.
    QPixmap* drawBackgroundPixmap();
    void paintBackground(QPainter* painter);
    /**
     * Draws the pending points of all data sets, colour bars above all lines.
     *
     * @param fullRedraw  forgets first what has been drawn
     */
    void drawDataSets(QPainter* painter, bool fullRedraw);
    /// Whether drawing runs are never interrupted.
    void setContinueBackgroundDrawingUntilFinished(bool on);
    /// The next full redraw is not interrupted.
    void setContinueBackgroundDrawingUntilFinishedForNextFullRedraw();
    void clearDataSetFilterCaches();

    // Drawing of one data set. The painter's window has y upwards.

    /// Draws the pending points.
    void drawDataSet(QPainter* painter, XYDataSet* dataSet);
    /// Range of the points to draw; @p last is less than @p first where none are.
    void getPointsToBeDrawn(XYDataSet* dataSet, int& first, int& last);
    /// Index of the last point drawn since the last full redraw; -1 for none.
    int getLastProcessedIndex(XYDataSet const* dataSet) const;
    void setLastProcessedIndex(XYDataSet const* dataSet, int index);
    void clearLastProcessedIndices();
    /// How the last point drawn is linked to the one before it: 0 linked, 1 not, 2 not even across
    /// the gap before it.
    int getLastProcessedPointDegreeOfIsolation(XYDataSet const* dataSet) const;
    void setLastProcessedPointDegreeOfIsolation(XYDataSet const* dataSet, int degree);
    void clearLastProcessedPointDegreeOfIsolation();
    /// Sets the pen for a point; true if lines are to be drawn, false if symbols only.
    bool setDataSetLook(XYDataSet* dataSet, QPainter* painter, int index, int lineIndex);
    /// Draws a line cut to the viewport.
    void drawLine(QPainter* painter, QPoint from, QPoint to, int fromCode, int toCode);
    QPoint calculateCrossing(QPoint inner, QPoint outer, int code) const;
    int outsideClip(QPoint point) const;
    bool maybeIntersectsViewport(int first, int second) const;
    void drawSymbol(QPoint point, E_SYMBOL symbol, int size, QPainter* painter);
    int getSymbolFactor(XYDataSet* dataSet);
    void addVerticalAccumulatedLine(int x, int y1, int y2, QPainter* painter);
    void flushVerticalAccumulatedLine(QPainter* painter);
    void clearVerticalAccumulatedLine();
    /// Largest distance in x that is still connected, data units; NaN means any.
    void setHorizontalDisconnectionThreshold(double threshold);
    double getHorizontalDisconnectionThreshold() const { return horizontalDisconnectionThreshold; }
    void drawColorBarBackgrounds(QPainter* painter);

    // Tracking of drawn points, for finding the one under the mouse.

    void setDefaultMouseOverDataTrackingEnabled(bool enabled);
    void setMouseOverDataTrackingEnabled(XYDataSet* dataSet, bool enabled);
    bool isMouseOverDataTrackingEnabled(XYDataSet* dataSet);
    /// The map of drawn points, made on first use; owned here, until the next full redraw. Once it
    /// was asked for, each run enters its points at once, which costs a visit to each.
    ViewportMap<int>* getViewportMap(XYDataSet* dataSet);
    void clearViewportMaps();
    /**
     * The point nearest to viewport pixel (x, y), y downwards, of the drawn points of all data sets
     * that are tracked; of equally near ones the first. Costs the points of one cell of the map.
     *
     * @param hit              the point; without one, only its data set is set, to null
     * @param maximumDistance  pixels; a colour bar is met over its whole thickness
     */
    bool dataHitTest(int x, int y, datahit_t& hit, int maximumDistance);
    /// The same for one data set; @p hit is written only if there is one.
    bool dataHitTest(XYDataSet* dataSet, int x, int y, datahit_t& hit, int maximumDistance);
    /// Tells by mouseOverData() the point under the mouse, at each event while it is over one, and
    /// once, with a null data set, that it has left it. Events other than the mouse's leave it.
    void dataHitTestAndEmit(QEvent* event);

    // Markers.

    void drawMarkers(E_MARKER_TYPE type, QPainter* painter);
    void drawMarker(Marker_t const& marker, QPainter* painter, bool isFirstInList);
    void drawEllipsoidalMarkers(QPainter* painter);
    /// Leaves the painter's window with y upwards.
    void drawCrossMarkers(QPainter* painter);
    void enableMouseMarkers(QFlags<Qt::Orientation> orientations);
    void disableMouseMarkers();
    void enableInterplotMouseMarkers(QFlags<Qt::Orientation> orientations);
    void disableInterplotMouseMarkers();
    /// The canvases that share the mouse markers; this one may be among them.
    void setXYCanvassesForInterplotMouseMarkers(QList<XYCanvas*> const& canvases);
    /// @param interplot  the mouse is over another canvas
    void updateMouseMarkers(double x, double y, bool interplot);
    void mouseMarkerMouseLeave(bool interplot);
    void enableCurrentTimeMarker();
    void disableCurrentTimeMarker();
    void updateCurrentTimeMarker(double x);
    void enableIntervalTimeMarker();
    void disableIntervalTimeMarker();
    void updateIntervalStartTimeMarker(double x);
    void updateIntervalStopTimeMarker(double x);

Q_SIGNALS:
    /// Place of the mouse, in the form of the axes' labels.
    void mouseMoved(QString xLabel, QString yLabel);
    /// The same in data units; not finite before the first paint or while the view is unknown.
    void mouseCoords(double x, double y);
    /// Kept for applications that connect to it; never emitted.
    void mouseOverData(XYDataSet* dataSet, int index, double distance, QMouseEvent* event);
    void dataBoundsChanged();
    void viewBoundsChanged();
    void horizontalViewBoundsUpdatePolicyChanged();
    void verticalViewBoundsUpdatePolicyChanged();
    void zoomInHorizontalEnabled(bool enabled);
    void zoomInVerticalEnabled(bool enabled);
    void zoomOutHorizontalEnabled(bool enabled);
    void zoomOutVerticalEnabled(bool enabled);
    void zoomFullHorizontalEnabled(bool enabled);
    void zoomFullVerticalEnabled(bool enabled);
    void zoomFullBothEnabled(bool enabled);
    /// See dataHitTestAndEmit(). @p event is null where the mouse has left the widget.
    void mouseOverData(XYCanvas::datahit_t hit, QMouseEvent* event);

public Q_SLOTS:
    /// Adds the pending points to the background pixmap, unless it is due to be rebuilt.
    void drawNewPointsOnBackGround();
    /// Whether a line closes the curve from its first to its last point.
    void setConnectFirstLast(bool val);
    void changeCursor(Qt::CursorShape cursor);
    /// Whether moves of the mouse emit mouseCoords(); off at first.
    void enableSendingMouseCoords(bool val);
    /// Whether moves of the mouse emit mouseMoved(); on at first, and always during a drag.
    void enableSendingTextualMouseCoords(bool val);

    void zoomInBoth();
    void zoomInHorizontal();
    void zoomInVertical();
    void zoomOutBoth();
    void zoomOutHorizontal();
    void zoomOutVertical();
    void zoomFull();
    void zoomFullHorizontal();
    void zoomFullVertical();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void reflectScrollBarState();

private:
    /// One value for each end of each direction.
    struct EndValues
    {
        double values[2][2];

        /// False for a direction or an end outside the enumerations.
        static bool holds(Bounds::Direction direction, Bounds::End end);
        double& at(Bounds::Direction direction, Bounds::End end);
        double at(Bounds::Direction direction, Bounds::End end) const;
        void fill(double value);
    };
    /// What a drawing run must not repeat for a data set; forgotten with the processed indices.
    struct RunMarks
    {
        bool endDashDrawn = false;
        bool closingLineDrawn = false;
        bool columnShrunk = false;
        int xSize = 0; ///< cells of the x column at the last run
    };

    void followChangedLimits();
    void connectZoomButton(QAbstractButton* button, char const* slot, char const* enabled);
    void takeScrollBar(Bounds::Direction direction);
    void followFrom(Bounds::Direction direction, Bounds::End end, Bounds& view);
    static QPoint pixelOf(QMouseEvent const& event);
    void reportMousePosition(QPointF world);
    void dragTo(QPoint position);
    void zoomToRubberBand();
    void dropRubberBand();
    void growAndShrink(Bounds::Direction direction, Bounds const& widened, Bounds& bounds);

    bool isFullRedrawDue(QPainter const* painter) const;
    void redrawFully(QPainter const* painter);
    void usePixels(QPainter* painter) const;
    void usePixelsUpwards(QPainter* painter) const;
    bool mustYield(qint64 elapsedMs) const;
    TraceSettings traceSettings(XYDataSet* dataSet);
    TrackedPoints& trackedPoints(XYDataSet* dataSet);
    void drawDataSet(StrokeSink& sink, XYDataSet* dataSet);
    void drawClosingLine(StrokeSink& sink, XYDataSet* dataSet);
    void watch(XYDataSet const* dataSet);
    void forget(XYDataSet const* dataSet);

    /// Changes what a foreground marker shows, which costs a paint and no redraw.
    template<typename T> void setAndUpdate(T& field, T const& value);
    void ensureMouseMarkers();
    void ensureCurrentTimeMarker();
    void ensureIntervalTimeMarker();
    QFlags<Qt::Orientation> mouseMarkerOrientationsInForce(bool interplot) const;

    QPointer<XYAbstractGrid> verticalGrid;
    QPointer<XYAbstractGrid> horizontalGrid;
    ViewTransform transform; // of viewBounds onto viewportRect

    QList<XYDataSet*>* dataSets;
    QList<Marker_t*>* markers;
    QList<Marker_t> dataMarkers; // made while drawing, until the next full redraw
    QList<EllipseMarker_t*>* ellipseMarkers;
    QList<CrossMarker_t*>* crossMarkers;

    QRect viewportRect; // of the painter of the last full redraw
    qreal backgroundPixelRatio = 1.0; // of its device
    bool needsFullRedraw = true;
    std::unique_ptr<QPixmap> backgroundPixmap;
    bool suppressBackwardLines;
    QPoint rubberBandOrigin;
    QPointer<QRubberBand> rubberBand; // while a zoom rectangle is being dragged
    bool mouseHasMoved = false; // since the last zoom by rubber band
    QPoint dragLastPosition;
    bool connectFirstLast = false;
    bool sendMouseCoords = false;
    bool sendTextualMouseCoords = true;
    bool continueBackgroundDrawingUntilFinished = false;
    bool continueBackgroundDrawingForNextFullRedraw = false;

    Bounds dataBounds; // buffered: the limits of the view
    Bounds strictDataBounds;
    bool fixedDataBounds = false;
    Bounds initialDataBounds;
    bool dataBoundsChangedPending = false;
    EndValues extensionBufferMinimum = {};
    EndValues extensionBufferFraction = {};
    EndValues viewportMargin = {};
    QVector<QVector<double>*> customVerticalDataBounds;
    QVector<QVector<double>*> customHorizontalDataBounds;

    Bounds viewBounds;
    Bounds previouslyEmittedViewBounds;
    bool viewBoundsChangedPending = false;
    bool policyCausedViewBoundsChange = false;
    ViewBoundsUpdatePolicy horizontalViewBoundsUpdatePolicy = PolicyFollow;
    ViewBoundsUpdatePolicy verticalViewBoundsUpdatePolicy = PolicyFull;
    QPointer<QScrollBar> horizontalScrollBar;
    QPointer<QScrollBar> verticalScrollBar;
    bool scrollBarUpdateInProgress = false; // the canvas writes to a scroll bar
    double horizontalZoomLimit = 0.0;
    double verticalZoomLimit = 0.0;

    QHash<XYDataSet const*, int> lastProcessedIndices;
    QHash<XYDataSet const*, int> lastProcessedPointDegreesOfIsolation;
    QHash<XYDataSet const*, RunMarks> runMarks;
    QSet<XYDataSet const*> watchedDataSets; // forgotten when they die
    double horizontalDisconnectionThreshold = NaN;
    std::unique_ptr<VerticalEnvelope> verticalLine; // of the drawing run

    QHash<XYDataSet*, bool> mouseOverDataTracking;
    bool defaultMouseOverDataTracking = false;
    QHash<XYDataSet*, TrackedPoints*> viewportMaps; // behind the maps
    datahit_t lastDataHit;
    bool isOverData = false; // a hit was told and its end was not

    QFlags<Qt::Orientation> mouseMarkerOrientations;
    QFlags<Qt::Orientation> interplotMouseMarkerOrientations;
    QList<QPointer<XYCanvas>> interplotCanvases;
    bool mouseMarkersAreInterplot = false;
    bool mouseMarkersHidden = true;
    std::unique_ptr<Marker_t> horizontalMouseMarker;
    std::unique_ptr<Marker_t> verticalMouseMarker;
    bool currentTimeMarkerEnabled = false;
    bool intervalTimeMarkerEnabled = false;
    std::unique_ptr<Marker_t> currentTimeMarker;
    std::unique_ptr<Marker_t> intervalStartTimeMarker;
    std::unique_ptr<Marker_t> intervalStopTimeMarker;
};

Q_DECLARE_METATYPE(XYCanvas::datahit_t)
