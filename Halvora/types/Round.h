#pragma once

#include <Halvora/Export.h>

namespace Halvora {

// Rounding of measured and configured quantities. Static members only; pure functions that neither
// allocate nor throw. Results are fixed to the bit: every step is rounded to the type named, no
// multiplication is fused with an addition, and powers of ten are pow(10.0, digits).
class HALVTYPES_API Round {
public:
    Round() = delete;

    // To an integer, halves away from zero: 2.5 gives 3, -2.5 gives -3. A result outside int gives
    // the nearest int limit (infinities included), NaN gives 0.
    static int convert(double const& value) noexcept;
    static int convert(float const& value) noexcept;

    // To a fixed-point integer: value * 10^digits, rounded as above, so (12.345, 2) gives 1235.
    // `digits` may be negative. The float form scales in double and rounds the product to float.
    static int convert(double value, int digits) noexcept;
    static int convert(float value, int digits) noexcept;

    // To a whole value, halves upward for both signs: floor(value + 0.5).
    static double round(double const& value) noexcept;
    static float round(float const& value) noexcept;

    // To `digits` decimal digits, halves upward: floor(value * 10^digits + 0.5) * 10^-digits. The
    // last step multiplies, so the result carries the rounding of that product: (-1.25, 1) gives
    // -1.2000000000000002. The float form rounds the scaled value and the result to float.
    static double round(double value, int digits) noexcept;
    static float round(float value, int digits) noexcept;
};

} // namespace Halvora
