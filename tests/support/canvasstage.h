#pragma once

#include "dataarraytemplate.h"
#include "testimage.h"
#include "xycanvas.h"
#include "xydataset.h"

#include <QRegularExpression>

/// A canvas without a plot: the lists that a plot would hold, and data sets of two dense columns.
/// Markers stay the test's; the data sets go with the stage.
class CanvasStage
{
public:
    CanvasStage() = default;
    explicit CanvasStage(Bounds const& view) { show(view); }
    ~CanvasStage() { qDeleteAll(dataSets); }

    XYCanvas* operator->() { return &canvas; }

    /// A data set of a solid line, one pixel wide, with these points.
    XYDataSet* add(QVector<double> const& xs, QVector<double> const& ys, QColor color = Qt::black)
    {
        dataSets.append(new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                                      "data", color, SYMBOL_NONE, Qt::SolidLine, 1));
        for (int i = 0; i < xs.size(); ++i)
            dataSets.last()->append(xs.at(i), ys.at(i));
        return dataSets.last();
    }

    /// Shows exactly @p view, with data bounds of the same size.
    void show(Bounds const& view) { canvas.setBounds(view, view, true); }

    /// What the canvas draws in a viewport of that size.
    TestImage paint(QSize size = {200, 100}, qreal ratio = 1.0)
    {
        return TestImage(size, ratio, [this](QPainter* painter) { canvas.drawCanvas(painter); });
    }

    QList<XYDataSet*> dataSets;
    QList<Marker_t*> markers;
    QList<EllipseMarker_t*> ellipses;
    QList<CrossMarker_t*> crosses;

private:
    XYCanvas canvas{&dataSets, &markers, &ellipses, &crosses, false, nullptr};
};

/// Every signal about bounds, policies and zooming, in the order in which they come.
class SignalLog
{
public:
    explicit SignalLog(XYCanvas* canvas)
    {
        auto const log = [=](QString const& name, auto signal) {
            QObject::connect(canvas, signal, canvas, [=](auto... enabled) {
                entries.append((name + ... + QStringLiteral(" %1").arg(enabled)));
            });
        };
        log("data", &XYCanvas::dataBoundsChanged);
        log("view", &XYCanvas::viewBoundsChanged);
        log("x policy", &XYCanvas::horizontalViewBoundsUpdatePolicyChanged);
        log("y policy", &XYCanvas::verticalViewBoundsUpdatePolicyChanged);
        log("x in", &XYCanvas::zoomInHorizontalEnabled);
        log("y in", &XYCanvas::zoomInVerticalEnabled);
        log("x out", &XYCanvas::zoomOutHorizontalEnabled);
        log("y out", &XYCanvas::zoomOutVerticalEnabled);
        log("x full", &XYCanvas::zoomFullHorizontalEnabled);
        log("y full", &XYCanvas::zoomFullVerticalEnabled);
        log("both full", &XYCanvas::zoomFullBothEnabled);
    }

    QStringList take() { return std::exchange(entries, {}); }
    /// The same without the signals about zooming.
    QStringList takeBounds() { return take().filter(QRegularExpression("\\D$")); }

private:
    QStringList entries;
};
