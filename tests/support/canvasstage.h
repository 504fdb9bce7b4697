#pragma once

#include "dataarraytemplate.h"
#include "testimage.h"
#include "xycanvas.h"
#include "xydataset.h"

#include <QStringList>
#include <memory>

/**
 * A canvas without a plot: the lists that a plot would hold, and data sets of two dense columns.
 *
 * Markers stay the test's; the data sets go with the stage.
 */
class CanvasStage
{
public:
    CanvasStage() = default;
    ~CanvasStage()
    {
        canvas.reset();
        qDeleteAll(dataSets);
    }
    CanvasStage(CanvasStage const&) = delete;
    CanvasStage& operator=(CanvasStage const&) = delete;

    XYCanvas* operator->() const { return canvas.get(); }

    /// A data set of a solid line, one pixel wide, with these points.
    XYDataSet* add(QVector<double> const& xs, QVector<double> const& ys, QColor color = Qt::black)
    {
        auto* const dataSet
            = new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                            QStringLiteral("data"), color, SYMBOL_NONE, Qt::SolidLine, 1);
        for (int i = 0; i < xs.size(); ++i)
            dataSet->append(xs.at(i), ys.at(i));
        dataSets.append(dataSet);
        return dataSet;
    }

    /// Shows exactly @p view, with data bounds of the same size.
    void show(Bounds const& view) { canvas->setBounds(view, view, true); }

    /// What the canvas draws in a viewport of that size.
    TestImage paint(QSize size, qreal ratio = 1.0)
    {
        return TestImage(size, ratio, [this](QPainter* painter) { canvas->drawCanvas(painter); });
    }

    QList<XYDataSet*> dataSets;
    QList<Marker_t*> markers;
    QList<EllipseMarker_t*> ellipses;
    QList<CrossMarker_t*> crosses;

private:
    std::unique_ptr<XYCanvas> canvas
        = std::make_unique<XYCanvas>(&dataSets, &markers, &ellipses, &crosses, false, nullptr);
};

/// Every signal about bounds, policies and zooming, in the order in which they come.
class SignalLog
{
public:
    explicit SignalLog(XYCanvas* canvas)
    {
        auto const log = [=](auto signal, char const* name) {
            QObject::connect(canvas, signal, canvas,
                             [this, name] { entries.append(QString::fromLatin1(name)); });
        };
        auto const logFlag = [=](auto signal, char const* name) {
            QObject::connect(canvas, signal, canvas, [this, name](bool enabled) {
                entries.append(QStringLiteral("%1 %2").arg(QString::fromLatin1(name)).arg(enabled));
            });
        };
        log(&XYCanvas::dataBoundsChanged, "data");
        log(&XYCanvas::viewBoundsChanged, "view");
        log(&XYCanvas::horizontalViewBoundsUpdatePolicyChanged, "x policy");
        log(&XYCanvas::verticalViewBoundsUpdatePolicyChanged, "y policy");
        logFlag(&XYCanvas::zoomInHorizontalEnabled, "x in");
        logFlag(&XYCanvas::zoomInVerticalEnabled, "y in");
        logFlag(&XYCanvas::zoomOutHorizontalEnabled, "x out");
        logFlag(&XYCanvas::zoomOutVerticalEnabled, "y out");
        logFlag(&XYCanvas::zoomFullHorizontalEnabled, "x full");
        logFlag(&XYCanvas::zoomFullVerticalEnabled, "y full");
        logFlag(&XYCanvas::zoomFullBothEnabled, "both full");
    }

    QStringList take() { return std::exchange(entries, {}); }
    /// The same without the signals about zooming.
    QStringList takeBounds()
    {
        QStringList all = take();
        all.removeIf([](QString const& entry) { return entry.back().isDigit(); });
        return all;
    }

private:
    QStringList entries;
};
