#include "cacode.h"

namespace {

constexpr int stages = 10;

/// The two stages of G2 whose sum, added to G1, is the code of a satellite; counted from 1.
struct PhaseSelector
{
    int first;
    int second;
};

constexpr std::array<PhaseSelector, lastPrn> phaseSelectors = {{
    {2, 6}, {3, 7}, {4, 8}, {5, 9}, {1, 9},  {2, 10}, {1, 8}, {2, 9}, {3, 10}, {2, 3}, {3, 4},
    {5, 6}, {6, 7}, {7, 8}, {8, 9}, {9, 10}, {1, 4},  {2, 5}, {3, 6}, {4, 7},  {5, 8}, {6, 9},
    {1, 3}, {4, 6}, {5, 7}, {6, 8}, {7, 9},  {8, 10}, {1, 6}, {2, 7}, {3, 8},  {4, 9},
}};

/// A shift register that feeds the sum of the tapped stages back into stage 1.
class ShiftRegister
{
public:
    /// @param taps  bit n - 1 stands for stage n
    explicit ShiftRegister(unsigned taps)
        : m_taps(taps)
    {
    }

    unsigned stage(int number) const { return m_stages >> (number - 1) & 1U; }

    void shift()
    {
        unsigned fedBack = 0;
        for (int number = 1; number <= stages; ++number)
            fedBack ^= (m_taps >> (number - 1) & 1U) & stage(number);
        m_stages = (m_stages << 1 | fedBack) & ((1U << stages) - 1);
    }

private:
    unsigned m_taps;
    unsigned m_stages = (1U << stages) - 1; // all ones at the start of a period
};

} // namespace

CaCode caCode(int prn)
{
    ShiftRegister g1(0b10'0000'0100); // 1 + x^3 + x^10
    ShiftRegister g2(0b11'1010'0110); // 1 + x^2 + x^3 + x^6 + x^8 + x^9 + x^10
    PhaseSelector const selector = phaseSelectors.at(std::size_t(prn - firstPrn));
    CaCode code = {};
    for (signed char& chip : code) {
        unsigned const bit
            = g1.stage(stages) ^ g2.stage(selector.first) ^ g2.stage(selector.second);
        chip = bit == 0 ? 1 : -1;
        g1.shift();
        g2.shift();
    }
    return code;
}
