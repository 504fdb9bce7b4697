#include "signalphase.h"

#include <cmath>

namespace {

Complex unitVector(double cycles)
{
    constexpr double twoPi = 6.283185307179586;
    return std::polar(1.0, twoPi * cycles);
}

} // namespace

double wrappedChips(double chips)
{
    double const wrapped = chips - codeLength * std::floor(chips / codeLength);
    return wrapped < codeLength ? wrapped : 0.0; // a tiny negative number rounds up to the period
}

double chipsBetween(double from, double to)
{
    return std::remainder(to - from, double(codeLength));
}

SignalPhase SignalPhase::after(int samples) const
{
    double const cycles = carrierCycles + dopplerHz * samples / sampleRateHz;
    return {wrappedChips(codeChips + samples * chipsPerSample()), cycles - std::floor(cycles),
            dopplerHz};
}

PhaseWalk::PhaseWalk(SignalPhase const& start)
    : m_codeChips(start.codeChips)
    , m_chipsPerSample(start.chipsPerSample())
    , m_carrier(unitVector(start.carrierCycles))
    , m_turn(unitVector(start.dopplerHz / sampleRateHz))
{
}
