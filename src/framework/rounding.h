#pragma once

#include <cstdint>
#include <limits>

/** @file
 * The library's one rule for turning a real number into a pixel or another integer: halves go
 * upwards, also below zero, so that -2.5 gives -2 and a picture does not shift by a pixel where its
 * coordinates change sign. Every function saturates and gives 0 for NaN; none is ever undefined.
 */

namespace rounding {

/// The value within limits; 0 for NaN.
constexpr double held(double value, double lowest, double highest)
{
    if (value != value)
        return 0.0;
    return value < lowest ? lowest : value > highest ? highest : value;
}

/// Truncates towards zero; saturates at the given limits, which must be exact as a double.
template<typename Integer>
constexpr Integer truncateWithin(double value, Integer lowest, Integer highest)
{
    return static_cast<Integer>(
        held(value, static_cast<double>(lowest), static_cast<double>(highest)));
}

/// Halves upwards; saturates at the given limits, which must be exact as a double.
template<typename Integer>
constexpr Integer roundWithin(double value, Integer lowest, Integer highest)
{
    double const v = held(value, static_cast<double>(lowest), static_cast<double>(highest));
    if (v >= 0.0)
        return static_cast<Integer>(v + 0.5); // NOLINT(bugprone-incorrect-roundings): the rule
    auto const below = static_cast<std::int64_t>(v - 1.0);
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): the rule
    auto const offset = static_cast<std::int64_t>(v - static_cast<double>(below) + 0.5);
    return static_cast<Integer>(below + offset);
}

} // namespace rounding

/// Towards zero.
constexpr int truncateToInt(double value)
{
    return rounding::truncateWithin<int>(value, std::numeric_limits<int>::min(),
                                         std::numeric_limits<int>::max());
}

/// Halves upwards.
constexpr int roundHalfUp(double value)
{
    return rounding::roundWithin<int>(value, std::numeric_limits<int>::min(),
                                      std::numeric_limits<int>::max());
}

/// Halves upwards; saturates at plus and minus 2^62, far beyond what a double can count singly.
constexpr std::int64_t roundHalfUp64(double value)
{
    constexpr std::int64_t limit = std::int64_t(1) << 62;
    return rounding::roundWithin<std::int64_t>(value, -limit, limit);
}

/**
 * Pixels beyond this are far outside every screen. Saturating here leaves room in an int for
 * offsets and differences of two coordinates, and a clipped line still leaves on its own side.
 */
constexpr int pixelLimit = 1 << 28;

/// Viewport pixel of a coordinate: halves upwards, within plus and minus pixelLimit.
constexpr int roundToPixel(double coordinate)
{
    return rounding::roundWithin<int>(coordinate, -pixelLimit, pixelLimit);
}
