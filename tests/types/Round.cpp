#include <Halvora/types/Binary16.h>
#include <Halvora/types/Round.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using namespace Halvora;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Round, convertsHalvesAwayFromZeroAndRoundsThemUpward) {
    // The value, the digits, and what convert() and round() make of them.
    std::tuple<double, int, int, double> const rows[] = {
        {2.5,                 0,   3,       3                  },
        {-2.5,                0,   -3,      -2                 },
        {0.49999999999999994, 0,   1,       1                  },
        {12.345,              2,   1235,    12.35              },
        {1.005,               2,   100,     1                  },
        {-1.25,               1,   -13,     -1.2000000000000002},
        {1234.5,              -2,  12,      1200               },
        {4503599627370497,    0,   INT_MAX, 4503599627370498   },
        {-1e300,              10,  INT_MIN, -infinity          },
        {1,                   309, INT_MAX, infinity           },
        {0,                   309, 0,       nan                },
        {-nan,                2,   0,       nan                }
    };
    for (auto const& [value, digits, converted, expected] : rows) {
        EXPECT_EQ(converted, Round::convert(value, digits)) << value;
        double const rounded = Round::round(value, digits);
        EXPECT_EQ(Binary16(expected), Binary16(rounded)) << value << " gives " << rounded;
    }
    EXPECT_TRUE(Round::convert(1.005f, 2) == 101 && Round::round(1.005f, 2) == 1.01f);
    EXPECT_EQ(8388610.0f, Round::round(8388609.0f));
}

// The result of one operation in its type: without excess precision, fused with nothing, and of all
// NaNs the same one.
template <typename Real>
Real stored(Real result) {
    Real const volatile inMemory = result;
    return std::isnan(result) ? Real(nan) : inMemory;
}

// As the C library of the ARM target has it.
double powerOfTen(std::int64_t exponent) {
    double const nearest = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
    bool const above = exponent == 23 || exponent == 126 || exponent == 210;
    return above ? std::nextafter(nearest, infinity) : nearest;
}

template <typename Real>
void expectRounding(Real value, int digits) {
    auto const convert = [](Real x) {
        double const whole = std::trunc(stored(x + std::copysign(Real(0.5), x)));
        return static_cast<int>(std::isnan(x) ? 0 : std::clamp<double>(whole, INT_MIN, INT_MAX));
    };
    auto const round = [](Real x) { return stored(std::floor(stored(x + Real(0.5)))); };
    auto const scale = [](Real x, std::int64_t by) {
        return stored(Real(stored(x * powerOfTen(by))));
    };
    Real const scaled = scale(value, digits), back = scale(round(scaled), -std::int64_t(digits));
    SCOPED_TRACE(::testing::Message() << std::hexfloat << value << " to " << digits);
    EXPECT_EQ(convert(value), Round::convert(value));
    EXPECT_EQ(convert(scaled), Round::convert(value, digits));
    EXPECT_EQ(Binary16(round(value)), Binary16(Round::round(value)));
    EXPECT_EQ(Binary16(back), Binary16(Round::round(value, digits)));
}

template <typename Real>
void expectRoundingOfMany() {
    for (double const edge : {0.0, 0.5, 8388609.0, 2147483646.5, 2147483647.5, 2147483648.5, 3e38,
                              1e308, 1e-45, 5e-324, infinity, nan}) {
        for (int const digits : {INT_MIN, -309, -126, -23, -1, 0, 9, 22, 210, 308, 324, INT_MAX}) {
            expectRounding(static_cast<Real>(edge), digits);
            expectRounding(static_cast<Real>(-edge), digits);
        }
    }
    std::mt19937 random(4);
    for (int i = 0; i < 50000 && !::testing::Test::HasFailure(); ++i) {
        int const digits = i % 25 - 12, whole = static_cast<int>(random()) / (1 << i % 31);
        auto const halfway = static_cast<Real>((whole + 0.5) / std::pow(10.0, digits));
        expectRounding(halfway, digits);
        expectRounding(std::nextafter(halfway, Real(0)), digits);
    }
}

TEST(Round, everyStepIsRoundedToItsType) {
    EXPECT_EQ(Binary16(0x7FC00000), Binary16(Round::round(float(infinity), -400)));
    expectRoundingOfMany<float>();
    expectRoundingOfMany<double>();
}

} // namespace
