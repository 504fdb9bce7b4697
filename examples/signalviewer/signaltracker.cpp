#include "signaltracker.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double twoPi = 6.283185307179586;

constexpr double carrierBandwidthHz = 15.0; // of the loop noise; holds a signal of 35 dB-Hz
constexpr double damping = 0.7071;
/// Natural frequency, radians per second, of a loop of second order with that bandwidth.
constexpr double naturalFrequency
    = carrierBandwidthHz * 8.0 * damping / (4.0 * damping * damping + 1.0);
constexpr double codeBandwidthHz = 1.0;
constexpr double furthestDopplerHz = 10000.0; // noise leads a loop without a signal anywhere

/// Early and late stand half a chip from the prompt, in the middle of the slopes.
constexpr int earlyLateSteps = Correlator::lagsPerChip / 2;
constexpr double earlyLateChips = double(earlyLateSteps) / Correlator::lagsPerChip;

constexpr double averagedPrompts = 500.0; // of a millisecond each
constexpr double leastAmplitude = 1e-3; // of some 6 dB-Hz, below all that can be followed

} // namespace

SignalTracker::SignalTracker(AcquiredSignal const& signal)
    : m_prn(signal.prn)
    , m_phase(signal.phase)
    , m_correlator(signal.prn)
{
}

void SignalTracker::track(Samples const& samples)
{
    m_correlator.clear();
    std::size_t const milliseconds = samples.size() / samplesPerMs;
    for (std::size_t ms = 0; ms < milliseconds; ++ms) {
        Complex const prompt
            = m_correlator.add(samples.data() + ms * samplesPerMs, samplesPerMs, m_phase);
        m_phase = m_phase.after(samplesPerMs);
        correctCarrier(prompt);
        averagePrompt(prompt);
    }
    if (milliseconds > 0)
        correctCode(milliseconds);
}

void SignalTracker::correctCarrier(Complex prompt)
{
    double const error = std::arg(prompt) / twoPi; // cycles
    double const doppler
        = m_phase.dopplerHz + naturalFrequency * naturalFrequency * msInSeconds * error;
    m_phase.dopplerHz = std::clamp(doppler, -furthestDopplerHz, furthestDopplerHz);
    double const cycles
        = m_phase.carrierCycles + 2.0 * damping * naturalFrequency * msInSeconds * error;
    m_phase.carrierCycles = cycles - std::floor(cycles);
}

void SignalTracker::correctCode(std::size_t milliseconds)
{
    Samples const curve = m_correlator.curve(1.0);
    double const early = std::abs(curve[Correlator::furthestLag - earlyLateSteps]);
    double const late = std::abs(curve[Correlator::furthestLag + earlyLateSteps]);
    double const sum = early + late;
    double const lag = sum > 0.0 ? (1.0 - earlyLateChips) * (late - early) / sum : 0.0;
    m_promptLag += (lag - m_promptLag) * std::min(1.0, double(milliseconds) / m_promptsAveraged);
    double const gain = std::min(1.0, 4.0 * codeBandwidthHz * msInSeconds * double(milliseconds));
    // A peak at a later lag means that the replica runs ahead.
    m_phase.codeChips = wrappedChips(m_phase.codeChips - gain * lag);
}

void SignalTracker::averagePrompt(Complex prompt)
{
    m_promptsAveraged = std::min(m_promptsAveraged + 1.0, averagedPrompts);
    m_meanInPhase += (prompt.real() - m_meanInPhase) / m_promptsAveraged;
    m_meanPower += (std::norm(prompt) - m_meanPower) / m_promptsAveraged;
}

double SignalTracker::amplitude() const
{
    return std::max(m_meanInPhase / samplesPerMs, leastAmplitude);
}

double SignalTracker::cn0() const
{
    double const power = m_meanInPhase * m_meanInPhase;
    double const noise = m_meanPower - power; // in the bandwidth of a millisecond
    if (!(m_meanInPhase > 0.0 && noise > 0.0))
        return -std::numeric_limits<double>::infinity();
    return 10.0 * std::log10(power / noise / msInSeconds);
}
