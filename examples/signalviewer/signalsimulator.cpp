#include "signalsimulator.h"

#include <cmath>

namespace {

constexpr double noiseVariancePerComponent = 0.5;

} // namespace

SignalSimulator::SignalSimulator(std::vector<SimulatedSatellite> satellites, unsigned seed)
    : m_satellites(std::move(satellites))
    , m_random(seed)
    , m_noise(0.0, std::sqrt(noiseVariancePerComponent))
{
    for (SimulatedSatellite const& satellite : m_satellites)
        m_codes.push_back(caCode(satellite.prn));
}

void SignalSimulator::next(int milliseconds, Block& block)
{
    int const count = milliseconds * samplesPerMs;
    block.satellites.assign(std::size_t(count), Complex());
    for (std::size_t i = 0; i < m_satellites.size(); ++i) {
        SimulatedSatellite& satellite = m_satellites[i];
        CaCode const& code = m_codes[i];
        double const amplitude = std::sqrt(powerOfCn0(satellite.cn0));
        PhaseWalk walk(satellite.phase);
        for (Complex& sample : block.satellites) {
            sample += amplitude * code[std::size_t(walk.codeChips())] * walk.carrier();
            walk.step();
        }
        satellite.phase = satellite.phase.after(count);
    }
    block.received = block.satellites;
    for (Complex& sample : block.received) {
        double const inPhase = m_noise(m_random);
        sample += Complex(inPhase, m_noise(m_random));
    }
}
