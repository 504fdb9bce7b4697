#include "theirplot.h"

#include <QCoreApplication>
#include <qcustomplot.h>

TheirPlot::TheirPlot(QRect data)
    : plot(std::make_unique<QCustomPlot>())
{
    plot->resize(plotSize);
    // Margins of its own would make the area of the data larger or smaller than ours.
    QMargins const margins(data.left(), data.top(), plotSize.width() - data.right() - 1,
                           plotSize.height() - data.bottom() - 1);
    plot->axisRect()->setAutoMargins(QCP::msNone);
    plot->axisRect()->setMargins(margins);
    startAnew();
    plot->show();
    QCoreApplication::processEvents();
}

TheirPlot::~TheirPlot() = default;

void TheirPlot::startAnew()
{
    plot->clearGraphs();
    graph = plot->addGraph();
    graph->setPen(QPen(Qt::blue, 1));
}

void TheirPlot::setMarks(Marks marks)
{
    auto const shape
        = marks == Marks::Crosses ? QCPScatterStyle::ssCross : QCPScatterStyle::ssCircle;
    graph->setLineStyle(marks == Marks::None ? QCPGraph::lsLine : QCPGraph::lsNone);
    graph->setScatterStyle(marks == Marks::None ? QCPScatterStyle()
                                                : QCPScatterStyle(shape, markSize));
}

void TheirPlot::append(double x, double y)
{
    graph->addData(x, y);
}

void TheirPlot::appendOneByOne(Points const& points)
{
    for (Points::Run const& run : points.runs) {
        for (int i = 0; i < run.xs.size(); ++i)
            graph->addData(run.xs.at(i), run.ys.at(i));
    }
}

void TheirPlot::appendInRuns(Points const& points)
{
    for (Points::Run const& run : points.runs)
        graph->addData(run.xs, run.ys, true);
}

View TheirPlot::findBounds()
{
    bool isFound = false;
    QCPRange const xs = graph->getKeyRange(isFound);
    QCPRange const ys = graph->getValueRange(isFound);
    return {xs.lower, xs.upper, ys.lower, ys.upper};
}

void TheirPlot::show(View const& view)
{
    plot->xAxis->setRange(view.minX, view.maxX);
    plot->yAxis->setRange(view.minY, view.maxY);
    plot->replot(QCustomPlot::rpImmediateRefresh);
}

void TheirPlot::showAppended()
{
    plot->replot(QCustomPlot::rpImmediateRefresh);
}

QRect TheirPlot::dataRect() const
{
    return plot->axisRect()->rect();
}

bool TheirPlot::savePicture(QString const& fileName)
{
    return plot->grab().save(fileName);
}
