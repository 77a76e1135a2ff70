#include <Halvora/types/Round.h>

#include <cmath>
#include <limits>

namespace Halvora {

namespace {

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

// The exponent is negated as a double: the smallest int has no positive counterpart.
double powerOfTen(double exponent) noexcept {
    return std::pow(10.0, exponent);
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
    return withOneNaN(whole * powerOfTen(-static_cast<double>(digits)));
}

float Round::round(float value, int digits) noexcept {
    float const scaled = static_cast<float>(value * powerOfTen(digits));
    double const whole = std::floor(scaled + 0.5f);
    return withOneNaN(static_cast<float>(whole * powerOfTen(-static_cast<double>(digits))));
}

} // namespace Halvora
