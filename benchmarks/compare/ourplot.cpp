#include "ourplot.h"

#include "dataarraytemplate.h"
#include "lineargrid.h"
#include "xycanvas.h"

#include <QCoreApplication>

OurPlot::OurPlot()
    : plot(true, false, false, nullptr)
{
    XYCanvas* const canvas = plot.getCanvas();
    for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL}) {
        canvas->setGrid(axis, new LinearGrid(axis, &plot), false);
        plot.setLabelType(axis, eSCALE_LABELS);
        plot.addScale(axis, false);
    }
    // The view is the benchmark's, and no drawing run is put off until after the clock has stopped.
    canvas->setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, false);
    canvas->setVerticalViewBoundsUpdatePolicy(XYCanvas::PolicyNone, false);
    canvas->setContinueBackgroundDrawingUntilFinished(true);
    startAnew();
    plot.resize(plotSize);
    plot.show();
    QCoreApplication::processEvents();
}

OurPlot::~OurPlot()
{
    plot.removeAllDataSets();
}

void OurPlot::startAnew()
{
    plot.removeAllDataSets();
    dataSets.clear();
    addSeries();
}

void OurPlot::addSeries()
{
    dataSets.push_back(std::make_unique<XYDataSet>(
        new DataArrayTemplate<double>(), new DataArrayTemplate<double>(), QStringLiteral("walk"),
        Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1, nullptr));
    plot.addDataSet(dataSets.back().get());
}

void OurPlot::setMarks(Marks marks)
{
    E_SYMBOL const symbol = marks == Marks::Crosses ? SYMBOL_CROSS : SYMBOL_CIRCLE;
    Look* const look = dataSets.back()->getLook();
    look->setDefault(Qt::blue, marks == Marks::None ? SYMBOL_NONE : symbol,
                     marks == Marks::None ? Qt::SolidLine : Qt::NoPen, 1);
    look->setSymbolSize(markSize);
}

void OurPlot::setLineThickness(int pixels)
{
    dataSets.back()->getLook()->setDefaultLineThickness(pixels);
}

void OurPlot::appendOneByOne(Points const& points)
{
    XYDataSet& dataSet = *dataSets.back();
    for (Points::Run const& run : points.runs) {
        for (int i = 0; i < run.xs.size(); ++i)
            dataSet.append(run.xs.at(i), run.ys.at(i));
    }
}

void OurPlot::appendInRuns(Points const& points)
{
    for (Points::Run const& run : points.runs)
        dataSets.back()->append(run.xs.constData(), run.ys.constData(), int(run.xs.size()));
}

View OurPlot::findBounds()
{
    Bounds const bounds = dataSets.back()->getBounds();
    return {bounds.minX, bounds.maxX, bounds.minY, bounds.maxY};
}

void OurPlot::show(View const& view)
{
    XYCanvas* const canvas = plot.getCanvas();
    canvas->setViewBounds({view.minX, view.maxX, view.minY, view.maxY}, true);
    canvas->fullRepaint();
    canvas->repaint(); // along with the scales, which have news as well
}

void OurPlot::showAppended()
{
    plot.getCanvas()->updateBounds();
    plot.drawNewPoints();
    plot.getCanvas()->repaint();
}

QRect OurPlot::dataRect() const
{
    QWidget const* const canvas = plot.getCanvas();
    return {canvas->mapTo(&plot, QPoint(0, 0)), canvas->size()};
}

bool OurPlot::savePicture(QString const& fileName)
{
    return plot.grab().save(fileName);
}
