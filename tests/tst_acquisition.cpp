#include "acquisition.h"
#include "signalsimulator.h"

#include <QTest>

namespace {
constexpr double halfSample = 0.5 * chipRateHz / sampleRateHz; // chips
} // namespace

/// Faults: a peak at the wrong place, a satellite that is not there.
class tst_Acquisition : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void findsASatelliteWhereItWasPut_data();
    void findsASatelliteWhereItWasPut();
};

void tst_Acquisition::findsASatelliteWhereItWasPut_data()
{
    QTest::addColumn<int>("prn");
    QTest::addColumn<double>("codeChips");
    QTest::addColumn<double>("dopplerHz");
    QTest::addColumn<double>("cn0");

    QTest::newRow("weak") << 7 << 650.3 << 1180.0 << 41.0;
    QTest::newRow("at the start of the code") << 1 << 0.0 << 0.0 << 45.0;
    QTest::newRow("at the end of the code, between samples") << 32 << 1022.9 << -260.0 << 45.0;
    QTest::newRow("between two Dopplers") << 19 << 511.1 << -2250.0 << 45.0;
    QTest::newRow("at the edge of the search") << 14 << 3.3 << 5000.0 << 45.0;
    QTest::newRow("strong") << 28 << 77.77 << 4321.0 << 60.0;
}

void tst_Acquisition::findsASatelliteWhereItWasPut()
{
    QFETCH(int, prn);
    QFETCH(double, codeChips);
    QFETCH(double, dopplerHz);
    QFETCH(double, cn0);
    // One more satellite makes the searched one stand out no less.
    SignalSimulator simulator(
        {{prn, cn0, {codeChips, 0.3, dopplerHz}}, {11, 48.0, {400.0, 0.0, -700.0}}}, 1);
    SignalSimulator::Block block;
    simulator.next(10, block);
    Acquisition acquisition(block.received);

    AcquiredSignal const found = acquisition.search(prn);
    AcquiredSignal const absent = acquisition.search(22);

    QVERIFY(found.isPresent());
    QVERIFY(std::abs(chipsBetween(codeChips, found.phase.codeChips)) < halfSample);
    QVERIFY(std::abs(found.phase.dopplerHz - dopplerHz) < 12.0); // far less than half a step
    QVERIFY2(!absent.isPresent(), qPrintable(QString::number(absent.peakToNext)));
}

QTEST_APPLESS_MAIN(tst_Acquisition)
#include "tst_acquisition.moc"
