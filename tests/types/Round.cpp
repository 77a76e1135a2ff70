#include <Halvora/types/Round.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <random>

using namespace Halvora;

namespace {

// The result of one operation in its type: without excess precision, and fused with nothing.
template <typename Real>
Real stored(Real result) {
    Real const volatile inMemory = result;
    return inMemory;
}

template <typename Real>
void expectRounding(Real value, int digits) {
    auto const convert = [](Real x) {
        double const whole = std::trunc(stored(x + std::copysign(Real(0.5), x)));
        return static_cast<int>(std::isnan(x) ? 0 : std::clamp<double>(whole, INT_MIN, INT_MAX));
    };
    auto const round = [](Real x) { return std::floor(stored(x + Real(0.5))); };
    auto const scale = [](Real x, double by) {
        return stored(Real(stored(x * std::pow(10.0, by))));
    };
    auto const same = [](Real a, Real b) {
        return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
    };
    Real const scaled = scale(value, digits);
    EXPECT_TRUE(convert(value) == Round::convert(value) &&
                convert(scaled) == Round::convert(value, digits) &&
                same(round(value), Round::round(value)) &&
                same(scale(round(scaled), -1.0 * digits), Round::round(value, digits)))
        << std::hexfloat << value << " to " << digits;
}

template <typename Real>
void expectRoundingOfMany() {
    for (double const edge : {0.0, 0.5, 8388609.0, 4503599627370497.0, 2147483646.5, 2147483647.5,
                              2147483648.5, 3e38, 1e308, 1e-45, 5e-324, HUGE_VAL, std::nan("")}) {
        for (int const digits : {INT_MIN, -400, -309, -1, 0, 1, 9, 308, 324, INT_MAX}) {
            expectRounding(static_cast<Real>(edge), digits);
            expectRounding(static_cast<Real>(-edge), digits);
        }
    }
    std::mt19937 random(4);
    std::uniform_int_distribution<int> any(INT_MIN, INT_MAX);
    for (int i = 0; i < 200000; ++i) {
        int const digits = i % 25 - 12, whole = any(random) / (1 << i % 31);
        auto const halfway = static_cast<Real>((whole + 0.5) / std::pow(10.0, digits));
        expectRounding(halfway, digits);
        expectRounding(std::nextafter(halfway, Real(0)), digits);
    }
}

TEST(Round, everyStepIsRoundedToItsType) {
    expectRoundingOfMany<float>();
    expectRoundingOfMany<double>();
    EXPECT_TRUE(Round::convert(1.005, 2) == 100 && Round::convert(1.005f, 2) == 101 &&
                Round::convert(-2.5) == -3);
    EXPECT_TRUE(Round::round(-1.25, 1) == -1.2000000000000002 && Round::round(-2.5) == -2);
}

} // namespace
