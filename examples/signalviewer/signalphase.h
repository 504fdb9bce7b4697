#pragma once

#include "cacode.h"
#include "samples.h"

/// Folds @p chips into one period of the code: 0 up to, not including, codeLength.
double wrappedChips(double chips);
/// The way from @p from to @p to, the shorter one round the period: -codeLength / 2 to codeLength
/// / 2.
double chipsBetween(double from, double to);

/// Where code and carrier of a satellite stand at some sample, and how fast they run.
struct SignalPhase
{
    double codeChips = 0.0; ///< 0 up to, not including, codeLength
    double carrierCycles = 0.0; ///< 0 to 1
    double dopplerHz = 0.0; ///< of the carrier; the code is off by as much in proportion

    /// Chips that the code advances from one sample to the next.
    double chipsPerSample() const
    {
        return (chipRateHz + dopplerHz / carrierCyclesPerChip) / sampleRateHz;
    }

    /// The phase @p samples later; may be negative.
    SignalPhase after(int samples) const;
};

/// Goes through a signal sample by sample, without a sine or a division at each.
class PhaseWalk
{
public:
    explicit PhaseWalk(SignalPhase const& start);

    double codeChips() const { return m_codeChips; } ///< 0 up to, not including, codeLength
    Complex carrier() const { return m_carrier; } ///< of magnitude 1

    void step()
    {
        m_codeChips += m_chipsPerSample;
        if (m_codeChips >= codeLength)
            m_codeChips -= codeLength;
        m_carrier *= m_turn;
    }

private:
    double m_codeChips;
    double m_chipsPerSample;
    Complex m_carrier;
    Complex m_turn;
};
