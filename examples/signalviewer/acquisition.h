#pragma once

#include "fouriertransform.h"
#include "signalphase.h"

#include <vector>

/// What the search for one satellite has found; of use only if the satellite is there.
struct AcquiredSignal
{
    int prn = firstPrn;
    SignalPhase phase; ///< at the first sample that was searched
    /// Power of the highest peak over that of the highest one elsewhere, more than a chip away.
    double peakToNext = 0.0;

    /// In 10 ms, satellites from 40 dB-Hz on reach it. Those that are not there stay below 1.6,
    /// also beside one of 51 dB-Hz.
    static constexpr double leastPeakToNext = 2.0;
    bool isPresent() const { return peakToNext >= leastPeakToNext; }
};

/**
 * Searches a stretch of signal for satellites, all code phases at once.
 *
 * For each Doppler of a raster the signal is correlated with the code by FFT, a millisecond at a
 * time, and the powers are summed over the milliseconds. About the highest peak the triangle of the
 * code tells the phase within a sample, and the turn of the carrier from one millisecond to the
 * next the Doppler within the raster.
 */
class Acquisition
{
public:
    static constexpr double dopplerRangeHz = 5000.0; ///< to either side
    static constexpr double dopplerStepHz = 500.0;

    /// @param samples  2 ms or more; an incomplete last one is left out
    explicit Acquisition(Samples samples);

    AcquiredSignal search(int prn);

private:
    struct Peak
    {
        std::size_t doppler = 0; // index of the raster
        std::size_t delay = 0; // samples
        double power = 0.0;
    };

    std::size_t powerIndex(Peak const& at) const;
    void sumPowers(CaCode const& code);
    Peak highestPeak() const;
    double highestPowerElsewhere(Peak const& peak) const;
    /// Samples by which the top of the triangle stands beyond the highest one, -0.5 to 0.5.
    double triangleOffset(Peak const& peak) const;
    /// Sets Doppler and carrier phase of @p phase, which has them of the raster.
    void refineCarrier(CaCode const& code, SignalPhase& phase) const;

    Samples m_samples;
    std::size_t m_milliseconds;
    FourierTransform m_forward;
    FourierTransform m_backward;
    std::vector<Samples> m_spectra; // Doppler by Doppler, millisecond by millisecond
    std::vector<double> m_powers; // Doppler by Doppler, delay by delay
};
