#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "librarytest.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <QScopedPointer>

/// A colour bar with samples at 100, 200 and 300, the last one red, and a curve beside it.
class tst_ColorBarFilter : public LibraryTest
{
    Q_OBJECT
private Q_SLOTS:
    void maskKeepsColumns1To9999();
    void nearestSampleDecidesWhereBothKindsOccur();
    void deletedPartnersAreNotRead();

private:
    static XYDataSet* makeDataSet()
    {
        return new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                             QString(), Qt::green, SYMBOL_NONE, Qt::SolidLine, 6);
    }

    void makeObjects() override;
    void deleteObjects() override;

    QScopedPointer<XYDataSet> bar;
    QScopedPointer<XYDataSet> curve;
    QVector<ColorBarDrawListener*> listeners;
    QScopedPointer<ViewportMaskFilter> filter;
    ColorBarDrawListener* listener = nullptr;
    Look::Entry const red{Qt::red, SYMBOL_NONE, Qt::SolidLine, 6};
};

void tst_ColorBarFilter::makeObjects()
{
    curve.reset(makeDataSet());
    for (double const time : {190.0, 290.0, 310.0})
        curve->append(time, 1.0);
    filter.reset(new ViewportMaskFilter(curve.get(), &listeners));

    bar.reset(makeDataSet());
    for (double const time : {100.0, 200.0, 300.0})
        bar->append(time, 0.0);
    bar->getLook()->changeFromLast(red);
    listener = new ColorBarDrawListener(bar.get());
    bar->setDrawListener(listener);
    listeners.append(listener); // later than the filter, which sees it all the same
    listener->filterEntry(red, true);
}

void tst_ColorBarFilter::deleteObjects()
{
    filter.reset();
    curve.reset();
    bar.reset();
}

void tst_ColorBarFilter::maskKeepsColumns1To9999()
{
    for (int const column : {-1, 0, 1, 9999, 10000}) {
        listener->drawingDataPoint(2, column);
        QCOMPARE(filter->excludeDataPoint(2, column), column == 1 || column == 9999);
    }
}

void tst_ColorBarFilter::nearestSampleDecidesWhereBothKindsOccur()
{
    listener->drawingDataPoint(1, 7);
    QVERIFY(!filter->excludeDataPoint(1, 7));
    listener->drawingDataPoint(2, 7);
    listener->drawingDataPoint(2, 7);
    QVERIFY(!filter->excludeDataPoint(0, 7)); // 190 is nearest to 200
    QVERIFY(filter->excludeDataPoint(1, 7)); // 290 is nearest to 300
    QVERIFY(!filter->excludeDataPoint(2, 7)); // 310 is beyond the bar: its first sample
    filter->clearCache();
    QVERIFY(!filter->excludeDataPoint(1, 7));
    listener->filterEntry(red, true); // a switch, no count
    listener->filterEntry(red, false);
    listener->drawingDataPoint(2, 7);
    QVERIFY(!filter->excludeDataPoint(2, 7));
}

void tst_ColorBarFilter::deletedPartnersAreNotRead()
{
    listener->drawingDataPoint(1, 7);
    listener->drawingDataPoint(2, 7);
    curve.reset();
    QVERIFY(!filter->excludeDataPoint(1, 7));

    bar.reset();
    QVERIFY(!filter->excludeDataPoint(1, 7));
    QVERIFY(listeners.isEmpty());
}

QTEST_MAIN(tst_ColorBarFilter)
#include "tst_colorbarfilter.moc"
