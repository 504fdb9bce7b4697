#include "colorbardrawlistener.h"
#include "dataarraytemplate.h"
#include "datasettracer.h"
#include "librarytest.h"
#include "recordingsink.h"
#include "valuebasedlook.h"
#include "viewportmaskfilter.h"
#include "xydataset.h"

#include <array>
#include <cmath>
#include <numeric>
#include <random>

/// Passing over runs of points must amount to exactly what visiting each does.
class tst_ColumnRuns : public LibraryTest
{
    Q_OBJECT
private:
    using Random = std::mt19937;
    static int below(Random& random, int limit) { return int(random() % unsigned(limit)); }

    /// A data set of all that can happen to a curve.
    static std::unique_ptr<XYDataSet> makeDataSet(Random& random)
    {
        auto dataSet = std::make_unique<XYDataSet>(
            new DataArrayTemplate<double>, new DataArrayTemplate<double>, "curve", Qt::red,
            SYMBOL_NONE, Qt::SolidLine, 1 + below(random, 4));
        Look* look = dataSet->getLook();
        bool const byValue = below(random, 5) == 0;
        if (byValue) {
            auto* const table
                = new ValueBasedLook(dataSet.get(), Qt::red, SYMBOL_NONE, Qt::SolidLine, 1);
            table->addTableEntry(10.0, Qt::green, "");
            table->addTableEntry(30.0, Qt::blue, SYMBOL_PLUS, Qt::SolidLine, 1, "");
            look = table;
        }
        if (below(random, 6) == 0)
            look->setColorBar(5);
        int const holesIn = std::array{0, 5, 300, 5000}[size_t(below(random, 4))];
        int const gapsIn = std::array{0, 50, 3000}[size_t(below(random, 3))];
        bool const steps = byValue || below(random, 3) == 0;
        double x = 0.0;
        double y = 25.0;
        int holeRun = 0;
        // Of a column that lags behind, the last points have no x as yet.
        int const xCount = below(random, 8) == 0 ? 19900 : 20000;
        for (int i = 0; i < 20000; ++i) {
            x += gapsIn != 0 && below(random, gapsIn) == 0 ? 40.0 : below(random, 3) * 0.5;
            if (!steps || below(random, 200) == 0)
                y = steps ? 10.0 * below(random, 6) : y + (below(random, 201) - 100) * 0.02;
            if (holeRun == 0 && holesIn != 0 && below(random, holesIn) == 0)
                holeRun = 1 + below(random, holesIn * 2);
            double const far = below(random, 2000) == 0 ? 1e300 * (below(random, 3) - 1) : 0.0;
            double const cell
                = below(random, 4000) == 0 ? std::numeric_limits<double>::infinity() : y + far;
            if (i < xCount)
                dataSet->xData->append(x);
            dataSet->yData->append(holeRun > 0 ? NaN : cell);
            holeRun = qMax(holeRun - 1, 0);
            if (!byValue && below(random, 700) == 0)
                look->changeFromLast(QColor::fromHsv(below(random, 360), 255, 255),
                                     below(random, 8) == 0 ? SYMBOL_CROSS : SYMBOL_NONE,
                                     std::array{Qt::NoPen, Qt::DashLine,
                                                Qt::SolidLine}[size_t(qMin(below(random, 12), 2))],
                                     1 + below(random, 3));
        }
        if (below(random, 3) == 0)
            dataSet->setComplete(true);
        return dataSet;
    }

    /// Pixel columns at random that show what is turned off, what is not, or both.
    static void fillMask(Random random, ColorBarDrawListener* listener, XYDataSet* bar)
    {
        listener->clearCache();
        for (int x = 1; x < 100; ++x) {
            for (int times = below(random, 3); times > 0; --times)
                listener->drawingDataPoint(below(random, bar->yData->dataSize()), x);
        }
    }

    /// Traces in one run, or in two if @p border is not 0; what is carried on between runs.
    static QString trace(TraceSettings const& settings, int border, StrokeSink& sink)
    {
        QString carried;
        VerticalEnvelope envelope;
        int isolation = Unlinked;
        int const count = settings.dataSet->yData->dataSize();
        for (auto const& [first, last] : {std::pair(0, border - 1), {border, count - 1}}) {
            if (last < first)
                continue;
            DataSetTracer tracer(settings, envelope, sink);
            TraceResult const result = tracer.trace(0, first, last, isolation);
            isolation = result.isolation;
            carried += QString("%1 %2;").arg(result.isolation).arg(result.endDashDrawn);
        }
        return carried;
    }

    static QImage picture(TraceSettings const& settings, int border)
    {
        QImage image(100, 50, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setWindow(0, 50, 100, -50);
        painter.setRenderHint(QPainter::Antialiasing);
        PainterStrokeSink sink(painter);
        trace(settings, border, sink);
        return image;
    }

private Q_SLOTS:
    void passingAmountsToVisiting_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 50; ++seed)
            QTest::addRow("%u", seed) << seed;
    }
    void passingAmountsToVisiting();
    void manyPointsGiveTheSamePicture();
    void derivedColumnIsRead();
};

void tst_ColumnRuns::passingAmountsToVisiting()
{
    QFETCH(unsigned, seed);
    Random random(seed);
    std::unique_ptr<XYDataSet> const dataSet = makeDataSet(random);
    XYDataSet bar(new DataArrayTemplate<double>, new DataArrayTemplate<double>, "bar", Qt::red,
                  SYMBOL_NONE, Qt::SolidLine, 1);
    for (int i = 0; i < 10000; ++i) {
        bar.append(i, 1.0);
        bar.getLook()->changeFromLast(i % 150 < 50 ? Qt::red : Qt::green);
    }
    auto* const barListener = new ColorBarDrawListener(&bar);
    bar.setDrawListener(barListener);
    barListener->filterEntry(bar.getLook()->getApplicableLookEntry(1), true);
    // One that looks at another data set marks each point for itself.
    auto* const ownListener
        = new ColorBarDrawListener(below(random, 4) == 0 ? &bar : dataSet.get());
    dataSet->setDrawListener(ownListener);
    ownListener->filterEntry(dataSet->getLook()->getApplicableLookEntry(3000), true);
    ownListener->filterEntry(bar.getLook()->getApplicableLookEntry(1), true);
    QVector<ColorBarDrawListener*> listeners{barListener};
    if (below(random, 4) == 0)
        listeners.append(ownListener); // hides points by what it is told of those before
    if (below(random, 3) == 0)
        dataSet->setFilter(new ViewportMaskFilter(dataSet.get(), &listeners));

    TraceSettings settings;
    settings.dataSet = dataSet.get();
    double const from = below(random, 3) == 0 ? below(random, 9000) : 0.0;
    double const to = from + std::array{10.0, 300.0, 20000.0, 20000.0}[size_t(below(random, 4))];
    double const low = below(random, 2) == 0 ? 20.0 : -10.0;
    double const high = std::array{60.0, 60.0, 60.0, low, 1e308 * 1.7}[size_t(below(random, 5))];
    settings.transform.set(Bounds{from, to, high > 60.0 ? -high : low, high}, 100, 50);
    settings.disconnectionThreshold = std::array{NaN, 0.7, 5.0, 0.0}[size_t(below(random, 4))];
    settings.symbolsDrawn = below(random, 2) == 0;
    settings.suppressBackwardLines = below(random, 2) == 0;
    QList<Marker_t> markers;
    settings.dataMarkers = &markers;
    int const border = below(random, 2) == 0 ? 0 : 5000 + below(random, 9000);

    QStringList outcomes;
    QList<QImage> pictures;
    for (bool const visits : {true, false}) {
        settings.visitsEachPoint = visits;
        fillMask(random, barListener, &bar);
        ownListener->clearCache();
        RecordingSink sink;
        QString outcome = trace(settings, border, sink);
        for (int x = 0; x < 102; ++x)
            outcome += QString::number(ownListener->excludeDataPointsAtViewportX(x));
        outcomes.append(outcome + sink.drawn + messages->take().join('\n'));
        pictures.append(picture(settings, border));
        messages->take();
    }
    QCOMPARE(outcomes.at(1), outcomes.at(0));
    QCOMPARE(pictures.at(1), pictures.at(0));
}

void tst_ColumnRuns::manyPointsGiveTheSamePicture()
{
    constexpr int count = 10000000;
    constexpr int runLength = 50000;
    Random random(1);
    XYDataSet dataSet(new DataArrayTemplate<double>, new DataArrayTemplate<double>, "curve",
                      Qt::red, SYMBOL_NONE, Qt::SolidLine, 1);
    for (int run = 0; run < count / runLength; ++run) {
        QVector<double> xs(runLength);
        QVector<double> ys(runLength);
        std::iota(xs.begin(), xs.end(), run * runLength);
        xs.first() += 0.5; // behind a gap
        for (double& y : ys) {
            auto const bits = random();
            y = bits % 30000 == 0 ? NaN : run + double(bits % 1000) * 0.01;
        }
        dataSet.append(xs.constData(), ys.constData(), runLength);
    }
    TraceSettings settings;
    settings.dataSet = &dataSet;
    settings.transform.set(Bounds{0.0, count, 0.0, 210.0}, 100, 50);
    settings.disconnectionThreshold = 1.2;
    QImage const passed = picture(settings, 0);
    settings.visitsEachPoint = true;
    QCOMPARE(passed, picture(settings, 0));
}

/// A column of the application may read otherwise than it stores.
void tst_ColumnRuns::derivedColumnIsRead()
{
    struct HalvedColumn : DataArrayTemplate<double>
    {
        double getValue(int index) const override { return DataArrayTemplate::getValue(index) / 2; }
    };
    XYDataSet dataSet(new DataArrayTemplate<double>, new HalvedColumn, "halved", Qt::red,
                      SYMBOL_NONE, Qt::SolidLine, 1);
    for (int i = 0; i < 20000; ++i)
        dataSet.append(i, i % 40);
    TraceSettings settings;
    settings.dataSet = &dataSet;
    settings.transform.set(Bounds{0.0, 20000.0, 0.0, 50.0}, 100, 50);
    RecordingSink sink;
    trace(settings, 0, sink);
    QVERIFY(sink.drawn.contains("50,0-50,20") && !sink.drawn.contains(",39"));
}

QTEST_MAIN(tst_ColumnRuns)
#include "tst_columnruns.moc"
