#pragma once

#include "signalphase.h"

/**
 * Correlates a signal with the code of one satellite, at many lags about the prompt one at once.
 *
 * The samples, their carrier wiped off, are gathered by the place in the code at which the prompt
 * replica stands. As a lag is a whole number of such places, the curve is that of a replica shifted
 * by exactly this lag, at a cost that grows with the samples but not with samples times lags.
 */
class Correlator
{
public:
    static constexpr int lagsPerChip = 20;
    static constexpr int furthestLag = lagsPerChip * 3 / 2; ///< to either side, in steps

    explicit Correlator(int prn);

    /// Takes up @p count samples, at the first of which the prompt replica stands at @p replica.
    /// @return the prompt correlation of these samples: their sum after wiping off code and carrier
    Complex add(Complex const* samples, int count, SignalPhase const& replica);

    /**
     * The correlation of all samples since clear().
     *
     * Its values stand for lags from -furthestLag to furthestLag; a signal that comes later than
     * the prompt replica has its peak at a positive lag.
     *
     * @param amplitude  that of a signal with a peak of 100; more than 0
     * @return in percent; all 0 without samples
     */
    Samples curve(double amplitude) const;

    void clear();

    /// Chips of the value @p index of the curve.
    static double lagChips(int index) { return double(index - furthestLag) / lagsPerChip; }

private:
    CaCode m_code;
    Samples m_gathered; // by place in the code
    double m_count = 0.0;
};
