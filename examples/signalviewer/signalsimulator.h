#pragma once

#include "signalphase.h"

#include <random>
#include <vector>

/// A satellite as it is received.
struct SimulatedSatellite
{
    int prn = firstPrn; ///< firstPrn to lastPrn
    double cn0 = 45.0; ///< dB-Hz; infinitely little is no signal
    SignalPhase phase; ///< at the first sample; Doppler within 10 kHz
};

/**
 * Makes the signal of a few satellites at complex baseband, block after block without a break.
 *
 * Each satellite sends its C/A code and nothing else: no navigation data, no other code, no change
 * of Doppler. Chips are rectangular, and the noise is white over the whole sample rate.
 */
class SignalSimulator
{
public:
    struct Block
    {
        Samples satellites; ///< what the satellites send, as no receiver ever sees it
        Samples received; ///< the same with noise of variance 1
    };

    /// @param seed  the same noise for the same seed
    SignalSimulator(std::vector<SimulatedSatellite> satellites, unsigned seed);

    /// The next @p milliseconds of the signal; @p block keeps its memory from call to call.
    void next(int milliseconds, Block& block);

    /// The satellites, their phases at the first sample of the next block.
    std::vector<SimulatedSatellite> const& satellites() const { return m_satellites; }

private:
    std::vector<SimulatedSatellite> m_satellites;
    std::vector<CaCode> m_codes; // of the satellites, in their order
    std::mt19937_64 m_random;
    std::normal_distribution<double> m_noise; // of one component
};
