#include "correlator.h"

#include <algorithm>

namespace {

constexpr std::size_t places = std::size_t(codeLength) * Correlator::lagsPerChip;

} // namespace

Correlator::Correlator(int prn)
    : m_code(caCode(prn))
    , m_gathered(places)
{
}

Complex Correlator::add(Complex const* samples, int count, SignalPhase const& replica)
{
    Complex prompt;
    PhaseWalk walk(replica);
    for (int i = 0; i < count; ++i) {
        auto const place = std::size_t(walk.codeChips() * lagsPerChip);
        Complex const wiped = samples[i] * std::conj(walk.carrier());
        m_gathered[place] += wiped;
        prompt += double(m_code[place / lagsPerChip]) * wiped;
        walk.step();
    }
    m_count += count;
    return prompt;
}

Samples Correlator::curve(double amplitude) const
{
    Samples values(2 * furthestLag + 1);
    if (m_count == 0.0)
        return values;

    // What falls on a chip that starts at some place, for all places.
    Samples chipSums(places);
    Complex sum;
    for (std::size_t i = 0; i < lagsPerChip; ++i)
        sum += m_gathered[i];
    for (std::size_t place = 0; place < places; ++place) {
        chipSums[place] = sum;
        sum += m_gathered[(place + lagsPerChip) % places] - m_gathered[place];
    }

    for (std::size_t i = 0; i < values.size(); ++i) {
        Complex& value = values[i];
        std::size_t place = (places + i - furthestLag) % places;
        for (signed char const chip : m_code) {
            value += double(chip) * chipSums[place];
            place = (place + lagsPerChip) % places;
        }
        value *= 100.0 / (m_count * amplitude);
    }
    return values;
}

void Correlator::clear()
{
    std::fill(m_gathered.begin(), m_gathered.end(), Complex());
    m_count = 0.0;
}
