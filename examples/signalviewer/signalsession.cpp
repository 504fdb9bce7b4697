#include "signalsession.h"

#include "dataarraytemplate.h"
#include "zelplotglobals.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double hzPerMHz = 1e6;

/// Of usual strengths, spread over the Dopplers that a receiver on the ground meets.
std::vector<SimulatedSatellite> sky()
{
    return {
        {3, 47.0, {123.40, 0.1, 1850.0}},   {7, 44.0, {650.25, 0.7, -2710.0}},
        {14, 50.0, {901.70, 0.4, 320.0}},   {19, 42.0, {37.90, 0.9, 3975.0}},
        {28, 45.0, {512.60, 0.2, -4120.0}},
    };
}

/// Point @p index becomes (@p x, @p y), or if there are just as many points is appended.
void setPoint(XYDataSet& dataSet, int index, double x, double y)
{
    if (index < dataSet.yData->dataSize()) {
        dataSet.xData->replace(index, x);
        dataSet.yData->replace(index, y);
    } else {
        dataSet.append(x, y);
    }
}

} // namespace

SignalSession::SignalSession(unsigned seed)
    : m_simulator(sky(), seed)
    , m_measured(new DataArrayTemplate<double>, new DataArrayTemplate<double>, tr("measured"),
                 QColor(0x1f, 0x4e, 0x9c), SYMBOL_NONE, Qt::SolidLine, 2)
    , m_expected(new DataArrayTemplate<double>, new DataArrayTemplate<double>, tr("as simulated"),
                 QColor(0xe0, 0x8a, 0x1e), SYMBOL_NONE, Qt::SolidLine, 1)
    , m_received(new DataArrayTemplate<double>, new DataArrayTemplate<double>, tr("received"),
                 QColor(0x1f, 0x4e, 0x9c), SYMBOL_NONE, Qt::SolidLine, 1)
    , m_satellites(new DataArrayTemplate<double>, new DataArrayTemplate<double>,
                   tr("without noise"), QColor(0xe0, 0x8a, 0x1e), SYMBOL_NONE, Qt::SolidLine, 1)
{
    m_simulator.next(blockMs, m_block);
    Acquisition acquisition(m_block.received);
    for (int prn = firstPrn; prn <= lastPrn; ++prn) {
        AcquiredSignal const found = acquisition.search(prn);
        if (!found.isPresent())
            continue;
        m_trackers.emplace_back(found);
        m_trackers.back().track(m_block.received);
    }
    m_seconds = blockMs * msInSeconds;
}

void SignalSession::advance()
{
    // Where the prompt replica and the signal stand at the start of the block.
    std::optional<double> trueLag;
    if (m_selected < satelliteCount()) {
        SignalTracker const& shown = tracker(m_selected);
        if (auto const satellite = simulated(shown.prn()))
            trueLag = chipsBetween(satellite->phase.codeChips, shown.phase().codeChips);
    }
    m_simulator.next(blockMs, m_block);
    m_seconds += blockMs * msInSeconds;
    for (SignalTracker& tracker : m_trackers)
        tracker.track(m_block.received);

    if (m_selected < satelliteCount())
        showCorrelation(tracker(m_selected), trueLag);
    showSpectra();
}

std::optional<SimulatedSatellite> SignalSession::simulated(int prn) const
{
    for (SimulatedSatellite const& satellite : m_simulator.satellites()) {
        if (satellite.prn == prn)
            return satellite;
    }
    return std::nullopt;
}

void SignalSession::showCorrelation(SignalTracker const& tracker, std::optional<double> trueLag)
{
    Samples const curve = tracker.correlator().curve(tracker.amplitude());
    for (int i = 0; i < int(curve.size()); ++i)
        setPoint(m_measured, i, Correlator::lagChips(i), curve[size_t(i)].real());

    double const ends = Correlator::lagChips(int(curve.size()) - 1);
    double const lag = trueLag.value_or(NaN);
    double const triangle[][2]
        = {{-ends, 0.0}, {lag - 1.0, 0.0}, {lag, 100.0}, {lag + 1.0, 0.0}, {ends, 0.0}};
    for (int i = 0; i < int(std::size(triangle)); ++i)
        setPoint(m_expected, i, triangle[i][0], triangle[i][1]);
}

void SignalSession::showSpectra()
{
    auto const show = [this](XYDataSet& dataSet, Samples const& samples) {
        std::vector<double> const densities = m_spectrum.densities(samples);
        for (int i = 0; i < PowerSpectrum::size; ++i) {
            double const decibels = 10.0 * std::log10(densities[size_t(i)]) + noiseDb;
            setPoint(dataSet, i,
                     PowerSpectrum::frequencyHz(i) / hzPerMHz + intermediateFrequencyMHz,
                     std::max(0.0, decibels));
        }
    };
    show(m_received, m_block.received);
    show(m_satellites, m_block.satellites);
}
