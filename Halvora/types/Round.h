#pragma once

#include <Halvora/Export.h>

namespace Halvora {

/// Rounding of measured and configured quantities. Static members only, no instances; the functions
/// neither allocate nor throw and depend on their arguments alone. Results are fixed to the bit:
/// every step is rounded to the type named, and no multiplication is fused with an addition. A
/// power of ten is the nearest `double`, that of 23, 126 and 210 the next one above it: what
/// `pow(10.0, digits)` gives on the ARM target, on every machine. A NaN is always the same one:
/// positive, quiet, without a payload, so that it prints as "nan" everywhere.
class HALVTYPES_API Round {
public:
    /// There are no instances; without `explicit`, C++17 would let `Round{}` through.
    explicit Round() = delete;

    /// @name To an integer
    /// Halves go away from zero: 2.5 gives 3, -2.5 gives -3. Added is 0.5, below zero subtracted,
    /// and the type may have to round the sum: 0.49999999999999994 gives 1, 8388609.0f gives
    /// 8388610. What lies outside `int`, infinities included, gives the nearest `int` limit; NaN
    /// gives 0.
    /// @{

    /// `value` rounded, halves away from zero.
    static int convert(double const& value) noexcept;
    /// `value` rounded, halves away from zero; computed in `float`.
    static int convert(float const& value) noexcept;

    /// `value` * 10^`digits` rounded, halves away from zero, so (12.345, 2) gives 1235. `digits`
    /// may be negative: (1234.5, -2) gives 12.
    static int convert(double value, int digits) noexcept;
    /// The same; the product is taken in `double`, then rounded to `float`, so (1.005f, 2) gives
    /// 101, where (1.005, 2) gives 100.
    static int convert(float value, int digits) noexcept;
    /// @}

    /// @name To a floating-point value
    /// Halves go upward for both signs: 2.5 gives 3, -2.5 gives -2. What `value` + 0.5 does not
    /// hold exactly is rounded by the addition: 8388609.0f gives 8388610.0f. Where 10^`digits` or
    /// the product leaves the type's range, the result is infinite, zero or NaN.
    /// @{

    /// floor(`value` + 0.5).
    static double round(double const& value) noexcept;
    /// floor(`value` + 0.5), the sum taken in `float`.
    static float round(float const& value) noexcept;

    /// floor(`value` * 10^`digits` + 0.5) * 10^-`digits`; `digits` may be negative. The last step
    /// multiplies and is rounded too: (-1.25, 1) gives -1.2000000000000002.
    static double round(double value, int digits) noexcept;
    /// The same; both products are taken in `double`, then rounded to `float`, the sum in `float`.
    static float round(float value, int digits) noexcept;
    /// @}
};

} // namespace Halvora
