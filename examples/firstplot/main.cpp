#include <QApplication>
#include <QTimer>
#include <cmath>
#include <zelplot.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    XYDataSet wave(new DataArrayTemplate<double>, new DataArrayTemplate<double>, "wave", Qt::blue,
                   SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
    XYPlot plot(true, false, false, nullptr);
    for (E_ORIENTATION_TYPE const axis : {eHORIZONTAL, eVERTICAL}) {
        plot.getCanvas()->setGrid(axis, new LinearGrid(axis, &plot), false);
        plot.setLabelType(axis, eSCALE_LABELS);
        plot.addScale(axis, false);
    }
    plot.addDataSet(&wave);
    plot.resize(800, 400);
    plot.show();

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &plot, [&, x = 0.0]() mutable {
        wave.append(x += 20.0, std::sin(x / 700.0) + 0.2 * std::sin(x / 90.0));
        plot.getCanvas()->updateBounds();
        plot.drawNewPoints();
    });
    timer.start(20);
    return QApplication::exec();
}
