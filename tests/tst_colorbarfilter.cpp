#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "messagerecorder.h"
#include "objectcounts.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <QScopedPointer>
#include <QTest>

/// A colour bar with samples at 100, 200 and 300, the last one red, and a curve beside it.
class tst_ColorBarFilter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void filterIsASwitchAndNoCount();
    void maskKeepsColumns1To9999();
    void nearestSampleDecidesWhereBothKindsOccur();
    void anyColorBarExcludesUntilTheCacheIsCleared();
    void deletedPartnersAreNotRead();

private:
    static XYDataSet* makeDataSet()
    {
        return new XYDataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                             QString(), Qt::green, SYMBOL_NONE, Qt::SolidLine, 6);
    }

    QScopedPointer<MessageRecorder> messages;
    QScopedPointer<XYDataSet> bar;
    QScopedPointer<XYDataSet> curve;
    QVector<ColorBarDrawListener*> listeners;
    QScopedPointer<ViewportMaskFilter> filter;
    ColorBarDrawListener* listener = nullptr;
    Look::Entry const red{Qt::red, SYMBOL_NONE, Qt::SolidLine, 6};
};

void tst_ColorBarFilter::init()
{
    messages.reset(new MessageRecorder);
    curve.reset(makeDataSet());
    for (double const time : {190.0, 290.0, 310.0})
        curve->append(time, 1.0);
    listeners.clear();
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

void tst_ColorBarFilter::cleanup()
{
    filter.reset();
    curve.reset();
    bar.reset();
    QCOMPARE(messages->take(), QStringList());
    QCOMPARE(liveObjects(), QStringList());
}

void tst_ColorBarFilter::filterIsASwitchAndNoCount()
{
    listener->filterEntry(red, true);
    QVERIFY(listener->decideToExcludeDataPoint(2));
    QVERIFY(!listener->decideToExcludeDataPoint(1));
    listener->filterEntry(red, false);
    listener->filterEntry(red, false);
    QVERIFY(!listener->isFiltered(red));
}

void tst_ColorBarFilter::maskKeepsColumns1To9999()
{
    for (int const column : {-1, 0, 1, 9999, 10000}) {
        QVERIFY(!filter->excludeDataPoint(2, column));
        listener->drawingDataPoint(2, column);
        QCOMPARE(filter->excludeDataPoint(2, column), column == 1 || column == 9999);
    }
}

void tst_ColorBarFilter::nearestSampleDecidesWhereBothKindsOccur()
{
    listener->drawingDataPoint(1, 7);
    QCOMPARE(listener->excludeDataPointsAtViewportX(7), ColorBarDrawListener::Show);
    QVERIFY(!filter->excludeDataPoint(1, 7));
    listener->drawingDataPoint(2, 7);
    listener->drawingDataPoint(2, 7);
    QCOMPARE(listener->excludeDataPointsAtViewportX(7), ColorBarDrawListener::Partial);
    QVERIFY(!filter->excludeDataPoint(0, 7)); // 190 is nearest to 200
    QVERIFY(filter->excludeDataPoint(1, 7)); // 290 is nearest to 300
    QVERIFY(!filter->excludeDataPoint(2, 7)); // 310 is beyond the bar: its first sample
}

void tst_ColorBarFilter::anyColorBarExcludesUntilTheCacheIsCleared()
{
    QScopedPointer<XYDataSet> const otherBar(makeDataSet());
    ColorBarDrawListener other(otherBar.get());
    listeners.prepend(&other);
    other.drawingDataPoint(0, 7);
    listener->drawingDataPoint(2, 7);
    QVERIFY(filter->excludeDataPoint(1, 7));
    filter->clearCache();
    QVERIFY(!filter->excludeDataPoint(1, 7));
}

void tst_ColorBarFilter::deletedPartnersAreNotRead()
{
    listener->drawingDataPoint(1, 7);
    listener->drawingDataPoint(2, 7);
    curve.reset();
    QVERIFY(!filter->excludeDataPoint(1, 7));

    QScopedPointer<ColorBarDrawListener> const taken(listener);
    bar->setDrawListener(nullptr);
    auto* const owned = new ColorBarDrawListener(bar.get());
    bar->setDrawListener(owned);
    listeners.append(owned);
    bar.reset();
    QVERIFY(!filter->excludeDataPoint(1, 7));
    QVERIFY(!taken->excludeDataPointAtWorldX(300.0));
    QCOMPARE(listeners, QVector<ColorBarDrawListener*>{taken.get()});
}

QTEST_MAIN(tst_ColorBarFilter)
#include "tst_colorbarfilter.moc"
