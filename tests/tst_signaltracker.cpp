#include "signalsimulator.h"
#include "signaltracker.h"

#include <QTest>

/// Faults: a loop that loses the signal, a curve that is shifted or of another shape or height.
class tst_SignalTracker : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void holdsTheSignal_data();
    void holdsTheSignal();
    void correlationIsTheTriangleOfTheCode();
};

void tst_SignalTracker::holdsTheSignal_data()
{
    QTest::addColumn<double>("cn0");
    QTest::addColumn<double>("dopplerHz");
    QTest::newRow("weak") << 38.0 << 4700.0;
    QTest::newRow("strong") << 50.0 << -3300.0;
}

void tst_SignalTracker::holdsTheSignal()
{
    QFETCH(double, cn0);
    QFETCH(double, dopplerHz);
    SignalSimulator simulator({{5, cn0, {1022.5, 0.2, dopplerHz}}, {9, 45.0, {300.0, 0.0, 900.0}}},
                              3);
    SignalSimulator::Block block;
    simulator.next(20, block);
    SignalTracker tracker(Acquisition(block.received).search(5));
    tracker.track(block.received);

    for (int i = 0; i < 50; ++i) {
        simulator.next(20, block);
        tracker.track(block.received);
    }

    // The code has moved by its Doppler, some three chips, over a full period.
    SignalPhase const truth = simulator.satellites().front().phase;
    QVERIFY(std::abs(chipsBetween(truth.codeChips, tracker.phase().codeChips)) < 0.05);
    QVERIFY(std::abs(truth.dopplerHz - tracker.phase().dopplerHz) < 10.0);
    QVERIFY(std::abs(std::remainder(truth.carrierCycles - tracker.phase().carrierCycles, 1)) < 0.1);
    QVERIFY2(std::abs(tracker.cn0() - cn0) < 1.0, qPrintable(QString::number(tracker.cn0())));
}

void tst_SignalTracker::correlationIsTheTriangleOfTheCode()
{
    // The signal comes a quarter of a chip later than the replica.
    SignalSimulator simulator({{16, 60.0, {9.75, 0.0, 1000.0}}}, 2);
    SignalSimulator::Block block;
    simulator.next(20, block);
    Correlator correlator(16);
    correlator.add(block.satellites.data(), int(block.satellites.size()), {10.0, 0.0, 1000.0});

    Samples const curve = correlator.curve(std::sqrt(powerOfCn0(60.0)));

    QCOMPARE(Correlator::lagChips(0), -1.5);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        double const distance = std::abs(Correlator::lagChips(int(i)) - 0.25);
        double const triangle = 100.0 * std::max(0.0, 1.0 - distance);
        // Beyond a chip a C/A code keeps up to 65 of its 1023 chips.
        double const tolerance = distance < 1.0 ? 2.0 + 6.5 * distance : 6.5;
        QVERIFY2(std::abs(curve[i] - triangle) < tolerance, qPrintable(QString::number(distance)));
    }
}

QTEST_APPLESS_MAIN(tst_SignalTracker)
#include "tst_signaltracker.moc"
