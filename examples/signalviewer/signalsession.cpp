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

SimulatedSatellite const* find(std::vector<SimulatedSatellite> const& satellites, int prn)
{
    auto const found = std::find_if(satellites.cbegin(), satellites.cend(),
                                    [prn](auto const& satellite) { return satellite.prn == prn; });
    return found != satellites.cend() ? &*found : nullptr;
}

/// Chips by which the satellite comes later than the prompt replica; NaN if it does not exist.
double trueLag(int prn, SignalPhase const& replica,
               std::vector<SimulatedSatellite> const& satellites)
{
    SimulatedSatellite const* const satellite = find(satellites, prn);
    return satellite ? chipsBetween(satellite->phase.codeChips, replica.codeChips) : NaN;
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
        m_channels.push_back({SignalTracker(found), trueLag(prn, found.phase, sky())});
        m_channels.back().tracker.track(m_block.received);
    }
    m_seconds = blockMs * msInSeconds;
}

void SignalSession::advance()
{
    for (Channel& channel : m_channels) {
        SignalTracker const& tracker = channel.tracker;
        channel.trueLag = trueLag(tracker.prn(), tracker.phase(), m_simulator.satellites());
    }
    m_simulator.next(blockMs, m_block);
    m_seconds += blockMs * msInSeconds;
    for (Channel& channel : m_channels)
        channel.tracker.track(m_block.received);
    if (m_selected < satelliteCount())
        showCorrelation();
    showSpectra();
}

SignalTracker const& SignalSession::tracker(qsizetype index) const
{
    return m_channels[size_t(index)].tracker;
}

SimulatedSatellite const* SignalSession::simulated(qsizetype index) const
{
    return find(m_simulator.satellites(), tracker(index).prn());
}

void SignalSession::select(qsizetype index)
{
    m_selected = index;
    showCorrelation();
}

void SignalSession::showCorrelation()
{
    auto const& [tracker, lag] = m_channels[size_t(m_selected)];
    Samples const curve = tracker.correlator().curve(tracker.amplitude());
    for (int i = 0; i < int(curve.size()); ++i)
        setPoint(m_measured, i, Correlator::lagChips(i), curve[size_t(i)].real());

    double const ends = Correlator::lagChips(int(curve.size()) - 1);
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
