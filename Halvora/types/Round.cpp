#include <Halvora/types/Round.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace Halvora {

namespace {

static_assert(FLT_EVAL_METHOD == 0, "Each step is rounded to its type; on x86 use -mfpmath=sse.");

// Truncates towards zero; what int cannot hold gives the nearest limit, NaN gives 0.
template <typename Real>
int truncate(Real value) noexcept {
    constexpr Real limit = 2147483648.0;
    if (value >= limit) {
        return std::numeric_limits<int>::max();
    }
    if (value <= -limit) {
        return std::numeric_limits<int>::min();
    }
    return std::isnan(value) ? 0 : static_cast<int>(value);
}

template <typename Real>
int roundAwayFromZero(Real value) noexcept {
    constexpr Real half = 0.5;
    return truncate(value >= 0 ? value + half : value - half);
}

// The nearest double; for three exponents the one above it, which std::pow gives on the ARM target.
double powerOfTenFallback(int exponent) noexcept {
    int const digits = std::min(std::abs(std::max(exponent, -999)), 999);
    char const text[] = {'1',
                         'e',
                         exponent < 0 ? '-' : '+',
                         static_cast<char>('0' + digits / 100),
                         static_cast<char>('0' + digits / 10 % 10),
                         static_cast<char>('0' + digits % 10),
                         '\0'};
    double const nearest = std::strtod(text, nullptr);
    bool const above = exponent == 23 || exponent == 126 || exponent == 210;
    return above ? std::nextafter(nearest, DBL_MAX) : nearest;
}

// The same on every machine, which std::pow is not. Up to 10^22 a double is exact.
[[gnu::noinline]] double powerOfTen(int exponent) noexcept {
    static constexpr double exact[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int count = std::size(exact);
    if (exponent >= count || exponent <= -count) {
        return powerOfTenFallback(exponent);
    }
    return exponent >= 0 ? exact[exponent] : 1 / exact[-exponent];
}

// 10^-digits; the smallest int has no positive counterpart.
double inversePowerOfTen(int digits) noexcept {
    return powerOfTen(-std::max(digits, -std::numeric_limits<int>::max()));
}

// Processors differ in the sign and payload of the NaN that they make.
template <typename Real>
Real withOneNaN(Real result) noexcept {
    return std::isnan(result) ? std::numeric_limits<Real>::quiet_NaN() : result;
}

} // namespace

int Round::convert(double const& value) noexcept {
    return roundAwayFromZero(value);
}

int Round::convert(float const& value) noexcept {
    return roundAwayFromZero(value);
}

int Round::convert(double value, int digits) noexcept {
    return roundAwayFromZero(value * powerOfTen(digits));
}

int Round::convert(float value, int digits) noexcept {
    return roundAwayFromZero(static_cast<float>(value * powerOfTen(digits)));
}

double Round::round(double const& value) noexcept {
    return withOneNaN(std::floor(value + 0.5));
}

float Round::round(float const& value) noexcept {
    return withOneNaN(std::floor(value + 0.5f));
}

double Round::round(double value, int digits) noexcept {
    double const whole = std::floor(powerOfTen(digits) * value + 0.5);
    return withOneNaN(whole * inversePowerOfTen(digits));
}

float Round::round(float value, int digits) noexcept {
    float const scaled = static_cast<float>(value * powerOfTen(digits));
    double const whole = std::floor(scaled + 0.5f);
    return withOneNaN(static_cast<float>(whole * inversePowerOfTen(digits)));
}

} // namespace Halvora
