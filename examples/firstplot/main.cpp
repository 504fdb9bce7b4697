#include <QApplication>
#include <QTimer>
#include <cmath>
#include <zelplot.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    XYDataSet wave(new DataArrayTemplate<double>, new DataArrayTemplate<double>, "wave", Qt::blue,
                   SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
    QList<XYDataSet*> dataSets = {&wave};
    QList<Marker_t*> markers;
    QList<EllipseMarker_t*> ellipses;
    QList<CrossMarker_t*> crosses;
    XYCanvas canvas(&dataSets, &markers, &ellipses, &crosses, false, nullptr);
    canvas.setGrid(eHORIZONTAL, new LinearGrid(eHORIZONTAL, &canvas), false);
    canvas.setGrid(eVERTICAL, new LinearGrid(eVERTICAL, &canvas), false);
    canvas.resize(800, 400);
    canvas.show();

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &canvas, [&, x = 0.0]() mutable {
        wave.append(x += 20.0, std::sin(x / 700.0) + 0.2 * std::sin(x / 90.0));
        canvas.updateBounds();
        canvas.drawNewPointsOnBackGround();
    });
    timer.start(20);
    return QApplication::exec();
}
