#pragma once

#include <cmath>
#include <complex>
#include <vector>

/// One sample at baseband: in phase and quadrature. Noise has a variance of 1, both parts together.
using Complex = std::complex<double>;
using Samples = std::vector<Complex>;

constexpr double sampleRateHz = 4.0e6;
/// Samples in a millisecond, which is also a period of the C/A code.
constexpr int samplesPerMs = 4000;
constexpr double msInSeconds = 1e-3;

/// Power of a signal (its amplitude squared) with @p cn0 dB-Hz over noise of variance 1.
inline double powerOfCn0(double cn0)
{
    return std::pow(10.0, cn0 / 10.0) / sampleRateHz;
}
