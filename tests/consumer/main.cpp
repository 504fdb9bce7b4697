#include <QApplication>
#include <zelplot.h>

int main(int argc, char** argv)
{
    QApplication const application(argc, argv);
    XYDataSet dataSet(new DataArrayTemplate<double>(), new DataArrayTemplate<double>(), "C/N0",
                      Qt::blue, SYMBOL_NONE, Qt::SolidLine, 1, nullptr);
    dataSet.append(0.0, 41.5);
    return dataSet.yData->getMean() == 41.5 ? 0 : 1;
}
