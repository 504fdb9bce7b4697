#pragma once

#include "columnruns.h"
#include "look.h"
#include "markers.h"
#include "pointlocator.h"
#include "testexport.h"
#include "verticalenvelope.h"
#include "viewportclip.h"
#include <QList>
#include <QPen>
#include <optional>

class StrokeSink;
class TrackedPoints;
class XYDataSet;
class XYDataSetDrawListener;
class XYDataSetFilter;
template<typename T> class ViewportMap;

/// What one drawing run over a data set reads, gathered before its first point.
struct TraceSettings
{
    XYDataSet* dataSet = nullptr;
    ViewTransform transform;
    double disconnectionThreshold = NaN; ///< data units of x; NaN connects across any distance
    bool symbolsDrawn = true;
    bool suppressBackwardLines = false;
    TrackedPoints* tracked = nullptr; ///< takes the points drawn; may be null
    QList<Marker_t>* dataMarkers = nullptr; ///< takes the markers that the look asks for
    bool visitsEachPoint = false; ///< never passes over runs of points; for tests
};

/// How a point is linked to the one before it.
enum Isolation : int {
    Linked = 0, ///< a line reaches it
    Unlinked = 1, ///< nothing known reaches it
    UnlinkedAcrossGap = 2, ///< a gap lies before it, and the point before the gap was unlinked too
};

/// Carried from one drawing run to the next.
struct TraceResult
{
    int isolation; ///< of the last point
    bool endDashDrawn; ///< the last point of a complete data set has been made visible
};

/**
 * Decides what a run of points amounts to: lines, symbols, dashes and pens, in their order.
 *
 * Works for any StrokeSink and needs no widget. A run that continues an earlier one covers the same
 * pixels as one run over all points, with two exceptions at its first point, whose pen is always
 * set: a point on the pixel of its predecessor counts as linked to it, and the look of a gap takes
 * effect.
 */
class ZELPLOT_TEST_EXPORT DataSetTracer
{
public:
    DataSetTracer(TraceSettings const& traceSettings, VerticalEnvelope& pendingLine,
                  StrokeSink& target);

    /**
     * Traces points @p first to @p last, none if @p last is less, as one of the parallel lines of
     * the look. The point before @p first is looked at again, to continue from it.
     *
     * @param isolation  of the point before @p first, as the run that drew it returned it
     */
    TraceResult trace(int lineIndex, int first, int last, int isolation);

private:
    struct Point
    {
        QPoint pixel;
        double x;
        int zone;
    };

    bool mayPassRuns(int first, int last) const;
    bool hasOwnHooks() const;
    void startTracking(int first);
    void trackUpTo(int last);
    int passColumn(int index, int last, E_SYMBOL symbol);
    bool isFilteredAlikeAt(int x) const;
    int passInvalid(int index, int last, PlotPoint const& point) const;
    void resumeBefore(int first, int lineIndex);
    PlotPoint locateWithOffset(int index) const;
    bool isExcluded(int index, QPoint pixel) const;
    E_SYMBOL symbolOf(int index) const;
    void closeAtInvalid(int index);
    void addDataMarker(int index, PlotPoint const& point);
    void enterAndDrawSymbol(int index, QPoint pixel, E_SYMBOL symbol);
    bool mustConsiderLineTo(Point const& current) const;
    void lineTo(int index, Point const& current, bool lookChanged, QPen const& currentPen);
    void leaveUnlined(Point const& current, bool lookChanged, QPen const& currentPen);
    void disconnect(int index);
    void connect(Point const& current);
    bool hidesBehindSymbol(int index) const;
    void dashPrevious();
    void flushEnvelope();
    void drawIfAny(std::optional<QLine> line);

    TraceSettings settings;
    Look& look;
    XYDataSetFilter* filter;
    XYDataSetDrawListener* listener;
    PointLocator locator;
    ViewportClip clip;
    VerticalEnvelope& envelope;
    StrokeSink& sink;
    bool colorBar;
    bool loneCell;
    int symbolRadius;

    // State of the pass.
    int yOffset = 0;
    Point previous = {};
    bool previousInvalid = true;
    bool lineMode = true;
    int isolation = Unlinked;
    std::optional<QPen> savedPen; // of the left point of the next line
    ViewportMap<int>* map = nullptr; // takes each point while it is drawn
    bool defersTracking = false;
    int trackedFrom = 0; // first point that is still to be noted
    std::optional<ColumnRuns> runs; // while points need not be visited one by one
};
