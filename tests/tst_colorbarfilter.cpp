#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "librarytest.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <QScopedPointer>

class tst_ColorBarFilter : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void hidesTheCurveWhereTheBarShowsWhatIsTurnedOff();

private:
    static XYDataSet* makeDataSet(QVector<double> const& times)
    {
        auto* const dataSet
            = new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>, QString(),
                            Qt::green, SYMBOL_NONE, Qt::SolidLine, 6);
        for (double const time : times)
            dataSet->append(time, 1.0);
        return dataSet;
    }
};

void tst_ColorBarFilter::hidesTheCurveWhereTheBarShowsWhatIsTurnedOff()
{
    QVector<ColorBarDrawListener*> listeners;
    QScopedPointer<XYDataSet> curve(makeDataSet({190, 290, 310}));
    ViewportMaskFilter filter(curve.get(), &listeners);

    QScopedPointer<XYDataSet> bar(makeDataSet({100, 200, 300}));
    Look::Entry const red{Qt::red, SYMBOL_NONE, Qt::SolidLine, 6};
    bar->getLook()->changeFromLast(red);
    auto* const listener = new ColorBarDrawListener(bar.get());
    bar->setDrawListener(listener);
    listeners.append(listener); // later than the filter, which sees it all the same
    listener->filterEntry(red, true);

    for (int const column : {-1, 0, 1, 9999, 10000}) { // what the mask has no room for stays
        listener->drawingDataPoint(2, column);
        QCOMPARE(filter.excludeDataPoint(2, column), column == 1 || column == 9999);
    }
    listener->drawingDataPoint(1, 7);
    QVERIFY(!filter.excludeDataPoint(1, 7));
    listener->drawingDataPoint(2, 7); // both kinds: the nearest sample decides
    QVERIFY(!filter.excludeDataPoint(0, 7)); // 190 is nearest to 200
    QVERIFY(filter.excludeDataPoint(1, 7)); // 290 is nearest to 300
    QVERIFY(!filter.excludeDataPoint(2, 7)); // 310 is beyond the bar: its first sample
    filter.clearCache();
    QVERIFY(!filter.excludeDataPoint(1, 7));

    listener->drawingDataPoint(1, 7);
    listener->drawingDataPoint(2, 7);
    curve.reset(); // is not read
    QVERIFY(!filter.excludeDataPoint(1, 7));
    bar.reset();
    QVERIFY(!filter.excludeDataPoint(1, 7));
    QVERIFY(listeners.isEmpty());
}

QTEST_MAIN(tst_ColorBarFilter)
#include "tst_colorbarfilter.moc"
