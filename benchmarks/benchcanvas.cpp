#include "benchcanvas.h"

#include "dataarraytemplate.h"
#include <QPainter>

namespace {
constexpr QSize viewport(1000, 600);
/// Appended points stay in view however often a benchmark runs.
constexpr double appendedStep = BenchCanvas::dataExtent * 1e-10;
} // namespace

double NoisyWalk::next()
{
    level += step(generator);
    return level + noise(generator);
}

BenchCanvas::BenchCanvas(int points)
    : canvas(&dataSets, &markers, &ellipses, &crosses, false, nullptr)
    , xGrid(eHORIZONTAL, nullptr)
    , yGrid(eVERTICAL, nullptr)
    , dataSet(new DataArrayTemplate<double>(), new DataArrayTemplate<double>(),
              QStringLiteral("walk"), Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1, nullptr)
    , colorBar(new DataArrayTemplate<double>(), new DataArrayTemplate<double>(),
               QStringLiteral("state"), Qt::green, SYMBOL_NONE, Qt::SolidLine, 4, nullptr)
    , image(viewport, QImage::Format_ARGB32_Premultiplied)
{
    dataSets.append(&dataSet);
    canvas.setGrid(eHORIZONTAL, &xGrid, false);
    canvas.setGrid(eVERTICAL, &yGrid, false);
    canvas.setContinueBackgroundDrawingUntilFinished(true);
    canvas.setHorizontalViewBoundsUpdatePolicy(XYCanvas::PolicyFull, false);
    for (int i = 0; i < points; ++i) {
        lastX = dataExtent * i / points;
        dataSet.append(lastX, walk.next());
    }
    Bounds bounds = dataSet.getBounds();
    bounds.maxX = dataExtent * roomFactor;
    canvas.setFixedDataBounds(bounds);
    paint();
}

void BenchCanvas::addColorBar(int states)
{
    colorBar.getLook()->setColorBar(10);
    for (int i = 0; i < states; ++i) {
        colorBar.append(dataExtent * i / states, i % 2);
        colorBar.getLook()->changeFromLast(i % 2 == 0 ? Qt::green : Qt::red);
    }
    dataSets.append(&colorBar);
}

void BenchCanvas::appendAndDraw(int points)
{
    for (int i = 0; i < points; ++i) {
        lastX += appendedStep;
        dataSet.append(lastX, walk.next());
    }
    canvas.updateBounds();
    canvas.drawNewPointsOnBackGround();
}

void BenchCanvas::paint()
{
    QPainter painter(&image);
    canvas.drawCanvas(&painter);
}
