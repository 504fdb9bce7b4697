#pragma once

#include "fouriertransform.h"

#include <vector>

/// Estimates power densities by Welch's method: Hann windows that overlap by half.
class PowerSpectrum
{
public:
    static constexpr int size = 512; ///< frequencies, as many as samples in a window

    PowerSpectrum();

    /**
     * Density at each frequency, lowest first; white noise of variance 1 has a density of 1.
     *
     * @return all 0 for less samples than a window
     */
    std::vector<double> densities(Samples const& samples);

    /// Frequency @p index of the densities, -sampleRateHz / 2 to just below sampleRateHz / 2.
    static double frequencyHz(int index) { return (double(index) / size - 0.5) * sampleRateHz; }

private:
    FourierTransform m_transform;
    std::vector<double> m_window; // its squares add up to 1
};
