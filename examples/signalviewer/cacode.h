#pragma once

#include <array>

/// Chips of a C/A code, after which it repeats: one millisecond. IS-GPS-200, 3.3.2.3.
constexpr int codeLength = 1023;
constexpr double chipRateHz = 1.023e6;
/// Cycles of the L1 carrier in a chip: the Doppler of the code is that of the carrier less this.
constexpr double carrierCyclesPerChip = 1540.0;

constexpr int firstPrn = 1;
constexpr int lastPrn = 32;

/// The chips of one period as signs: the logic values 0 and 1 of the code are 1 and -1 here.
using CaCode = std::array<signed char, codeLength>;

/**
 * The C/A code of satellite @p prn, from its first chip on (IS-GPS-200, 3.3.2.3 and table 3-Ia).
 *
 * @param prn  firstPrn to lastPrn
 */
CaCode caCode(int prn);
