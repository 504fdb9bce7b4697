#include "powerspectrum.h"
#include "signalsimulator.h"

#include <QTest>
#include <numeric>

/// Faults: frequencies out of place, a density of another unit.
class tst_PowerSpectrum : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsTheLobesOfTheCodeOverTheNoise();
};

void tst_PowerSpectrum::showsTheLobesOfTheCodeOverTheNoise()
{
    SignalSimulator simulator({{1, 45.0, {0.0, 0.0, 0.0}}}, 1);
    SignalSimulator::Block block;
    simulator.next(20, block);
    PowerSpectrum spectrum;
    std::vector<double> const clean = spectrum.densities(block.satellites);
    std::vector<double> const received = spectrum.densities(block.received);
    // Mean density about a frequency, so that the lines of the code do not matter.
    auto const around = [&](std::vector<double> const& densities, double megahertz) {
        auto const centre = std::ptrdiff_t((megahertz * 1e6 / sampleRateHz + 0.5) * 512);
        auto const first = densities.begin() + centre - 4;
        return 10.0 * std::log10(std::accumulate(first, first + 9, 0.0) / 9.0);
    };

    QCOMPARE(PowerSpectrum::frequencyHz(256), 0.0);
    // C/N0 less the chip rate in dB: 45 - 60.1, and the lines of this code about the carrier.
    QVERIFY(std::abs(around(clean, 0.0) - -15.1) < 2.0);
    for (double const null : {-1.023, 1.023}) {
        QVERIFY(around(clean, null) < around(clean, 0.0) - 20.0);
        QVERIFY(around(clean, null) < around(clean, 1.5 * null) - 7.0); // the side lobe behind it
        QVERIFY(around(clean, 0.5 * null) > around(clean, 0.0) - 6.0); // sinc of one half: -3.9
    }
    QVERIFY(std::abs(around(received, 1.5)) < 0.5);
    QVERIFY(spectrum.densities(Samples(511)) == std::vector<double>(512));
}

QTEST_APPLESS_MAIN(tst_PowerSpectrum)
#include "tst_powerspectrum.moc"
