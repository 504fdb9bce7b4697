#include "acquisition.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr double pi = 3.141592653589793;
constexpr std::size_t delays = samplesPerMs;
constexpr std::size_t dopplers
    = std::size_t(2 * Acquisition::dopplerRangeHz / Acquisition::dopplerStepHz) + 1;
/// Samples beyond which a replica shares no chip with the peak.
constexpr std::size_t samplesPerChip = 4;
/// Steps of the fine search for the Doppler in the width of its peak.
constexpr int fineStepsPerPeak = 8;

double rasterDoppler(std::size_t index)
{
    return double(index) * Acquisition::dopplerStepHz - Acquisition::dopplerRangeHz;
}

/// Where the parabola through three values at -1, 0 and 1 has its top, 0 if it has none.
double parabolaOffset(double left, double centre, double right)
{
    double const bend = left - 2.0 * centre + right;
    return bend < 0.0 ? 0.5 * (left - right) / bend : 0.0;
}

} // namespace

Acquisition::Acquisition(Samples samples)
    : m_samples(std::move(samples))
    , m_milliseconds(m_samples.size() / samplesPerMs)
    , m_forward(samplesPerMs, FourierTransform::Direction::Forward)
    , m_backward(samplesPerMs, FourierTransform::Direction::Backward)
    , m_powers(dopplers * delays)
{
    m_spectra.reserve(dopplers * m_milliseconds);
    for (std::size_t doppler = 0; doppler < dopplers; ++doppler) {
        for (std::size_t ms = 0; ms < m_milliseconds; ++ms) {
            // Powers do not tell in which phase the carrier of a millisecond starts.
            PhaseWalk walk({0.0, 0.0, rasterDoppler(doppler)});
            Complex const* sample = m_samples.data() + ms * samplesPerMs;
            for (Complex& value : m_forward) {
                value = *sample++ * std::conj(walk.carrier());
                walk.step();
            }
            m_forward.run();
            m_spectra.emplace_back(m_forward.begin(), m_forward.end());
        }
    }
}

AcquiredSignal Acquisition::search(int prn)
{
    CaCode const code = caCode(prn);
    sumPowers(code);
    Peak const peak = highestPeak();

    AcquiredSignal found;
    found.prn = prn;
    found.peakToNext = peak.power / highestPowerElsewhere(peak);
    found.phase.dopplerHz = rasterDoppler(peak.doppler);
    double const delayInSamples = double(peak.delay) + triangleOffset(peak);
    double const codeAtDelay = -delayInSamples * chipRateHz / sampleRateHz;
    found.phase.codeChips = wrappedChips(codeAtDelay);
    refineCarrier(code, found.phase);
    // The sum shows the code where it stands in the middle of the stretch.
    double const slippedChips
        = found.phase.dopplerHz / carrierCyclesPerChip * msInSeconds * double(m_milliseconds) / 2.0;
    found.phase.codeChips = wrappedChips(codeAtDelay - slippedChips);
    return found;
}

void Acquisition::sumPowers(CaCode const& code)
{
    PhaseWalk walk(SignalPhase{});
    for (Complex& value : m_forward) {
        value = code[std::size_t(walk.codeChips())];
        walk.step();
    }
    m_forward.run();

    std::fill(m_powers.begin(), m_powers.end(), 0.0);
    for (std::size_t i = 0; i < m_spectra.size(); ++i) {
        std::transform(m_spectra[i].cbegin(), m_spectra[i].cend(), m_forward.begin(),
                       m_backward.begin(),
                       [](Complex signal, Complex replica) { return signal * std::conj(replica); });
        m_backward.run();
        double* power = m_powers.data() + i / m_milliseconds * delays;
        for (Complex const& value : m_backward)
            *power++ += std::norm(value);
    }
}

std::size_t Acquisition::powerIndex(Peak const& at) const
{
    return at.doppler * delays + at.delay;
}

Acquisition::Peak Acquisition::highestPeak() const
{
    auto const highest = std::max_element(m_powers.cbegin(), m_powers.cend());
    auto const index = std::size_t(highest - m_powers.cbegin());
    return {index / delays, index % delays, *highest};
}

double Acquisition::highestPowerElsewhere(Peak const& peak) const
{
    double highest = 0.0;
    for (std::size_t i = 0; i < m_powers.size(); ++i) {
        std::size_t const way = (i % delays + delays - peak.delay) % delays;
        if (way > samplesPerChip && way < delays - samplesPerChip)
            highest = std::max(highest, m_powers[i]);
    }
    return highest;
}

double Acquisition::triangleOffset(Peak const& peak) const
{
    double const* const row = m_powers.data() + peak.doppler * delays;
    double const floor = std::accumulate(row, row + delays, 0.0) / double(delays);
    auto const amplitude
        = [=](std::size_t delay) { return std::sqrt(std::max(0.0, row[delay % delays] - floor)); };
    double const left = amplitude(peak.delay + delays - 1);
    double const right = amplitude(peak.delay + 1);
    double const rise = amplitude(peak.delay) - std::min(left, right);
    return rise > 0.0 ? 0.5 * (right - left) / rise : 0.0;
}

void Acquisition::refineCarrier(CaCode const& code, SignalPhase& phase) const
{
    Samples prompts(m_milliseconds);
    PhaseWalk walk({phase.codeChips, 0.0, phase.dopplerHz});
    for (std::size_t i = 0; i < m_milliseconds * samplesPerMs; ++i) {
        double const chip = code[std::size_t(walk.codeChips())];
        prompts[i / samplesPerMs] += chip * m_samples[i] * std::conj(walk.carrier());
        walk.step();
    }

    // A sum over all milliseconds, its carrier turned back by the offset from their middle times.
    auto const sumAt = [&](double offsetHz) {
        Complex sum;
        for (std::size_t ms = 0; ms < m_milliseconds; ++ms)
            sum += prompts[ms]
                * std::polar(1.0, -2.0 * pi * offsetHz * msInSeconds * (double(ms) + 0.5));
        return sum;
    };
    double const step = 1.0 / (fineStepsPerPeak * msInSeconds * double(m_milliseconds));
    int const steps = int(dopplerStepHz / step);
    double best = 0.0;
    for (int i = -steps; i <= steps; ++i) {
        if (std::abs(sumAt(i * step)) > std::abs(sumAt(best)))
            best = i * step;
    }
    best += step
        * parabolaOffset(std::abs(sumAt(best - step)), std::abs(sumAt(best)),
                         std::abs(sumAt(best + step)));
    double const cycles = std::arg(sumAt(best)) / (2.0 * pi);
    phase.carrierCycles = cycles - std::floor(cycles);
    phase.dopplerHz += best;
}
