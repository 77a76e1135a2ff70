#include <Halvora/types/Binary16.h>
#include <Halvora/types/Round.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace Halvora;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// Bit for bit: a zero has its sign, a NaN no sign and no payload.
template <typename Real>
bool isSame(Real a, Real b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(Round, toAnIntegerHalvesGoAwayFromZero) {
    struct {
        double value;
        int digits, expected, expectedOfFloat;
    } const rows[] = {
        {2.5,     0,  3,       3      },
        {-2.5,    0,  -3,      -3     },
        {0.49999, 0,  0,       0      },
        {2.4999,  0,  2,       2      },
        {12.345,  2,  1235,    1235   },
        {-1.25,   1,  -13,     -13    },
        {1234.5,  -2, 12,      12     },
        {1.005,   2,  100,     101    },
        {1e300,   0,  INT_MAX, INT_MAX},
        {-3e9,    0,  INT_MIN, INT_MIN},
        {nan,     0,  0,       0      },
        {8388609, 0,  8388609, 8388610},
    };
    for (auto const& row : rows) {
        auto const narrow = static_cast<float>(std::min(row.value, 3e38));
        EXPECT_EQ(row.expected, Round::convert(row.value, row.digits)) << row.value;
        EXPECT_EQ(row.expectedOfFloat,
                  Round::convert(std::isnan(row.value) ? NAN : narrow, row.digits))
            << row.value;
    }
}

TEST(Round, toAFloatingPointValueHalvesGoUpward) {
    struct {
        double value;
        int digits;
        double expected;
    } const rows[] = {
        {2.5,    0,    3                  },
        {-2.5,   0,    -2                 },
        {-2.4,   0,    -2                 },
        {2.675,  2,    2.68               },
        {0.125,  2,    0.13               },
        {1234.5, -2,   1200               },
        {1.005,  2,    1.0                },
        {-1.25,  1,    -1.2000000000000002},
        {1e300,  10,   infinity           },
        {1.0,    309,  infinity           },
        {0.0,    309,  nan                },
        {1.0,    -309, nan                },
        {-nan,   2,    nan                },
    };
    for (auto const& row : rows) {
        double const actual = Round::round(row.value, row.digits);
        EXPECT_TRUE(isSame(row.expected, actual))
            << row.value << " to " << row.digits << ": " << actual;
    }
    EXPECT_EQ(1.01f, Round::round(1.005f, 2));
    EXPECT_EQ(8388610.0f, Round::round(8388609.0f));
    EXPECT_EQ(1.0, Round::round(0.49999999999999994));
}

// The result of one operation in its type: without excess precision, and fused with nothing.
template <typename Real>
Real stored(Real result) {
    Real const volatile inMemory = result;
    return inMemory;
}

template <typename Real>
Real oneNaN(Real result) {
    return std::isnan(result) ? Real(nan) : result;
}

template <typename Real>
void expectRounding(Real value, int digits) {
    auto const convert = [](Real x) {
        double const whole = std::trunc(stored(x + std::copysign(Real(0.5), x)));
        return static_cast<int>(std::isnan(x) ? 0 : std::clamp<double>(whole, INT_MIN, INT_MAX));
    };
    auto const round = [](Real x) { return oneNaN(std::floor(stored(x + Real(0.5)))); };
    auto const scale = [](Real x, double by) {
        return oneNaN(stored(Real(stored(x * std::pow(10.0, by)))));
    };
    Real const scaled = scale(value, digits), back = scale(round(scaled), -1.0 * digits);
    EXPECT_TRUE(convert(value) == Round::convert(value) &&
                convert(scaled) == Round::convert(value, digits) &&
                isSame(round(value), Round::round(value)) &&
                isSame(back, Round::round(value, digits)))
        << std::hexfloat << value << " to " << digits << ": expected " << convert(value) << ' '
        << convert(scaled) << ' ' << round(value) << ' ' << back << ", got "
        << Round::convert(value) << ' ' << Round::convert(value, digits) << ' '
        << Round::round(value) << ' ' << Round::round(value, digits);
}

template <typename Real>
void expectRoundingOfMany() {
    for (double const edge : {0.0, 0.5, 8388609.0, 4503599627370497.0, 2147483646.5, 2147483647.5,
                              2147483648.5, 3e38, 1e308, 1e-45, 5e-324, infinity, nan}) {
        for (int const digits : {INT_MIN, -400, -309, -1, 0, 1, 9, 308, 324, INT_MAX}) {
            expectRounding(static_cast<Real>(edge), digits);
            expectRounding(static_cast<Real>(-edge), digits);
        }
    }
    std::mt19937 random(4);
    std::uniform_int_distribution<int> any(INT_MIN, INT_MAX);
    for (int i = 0; i < 100000; ++i) {
        int const digits = i % 25 - 12, whole = any(random) / (1 << i % 31);
        auto const halfway = static_cast<Real>((whole + 0.5) / std::pow(10.0, digits));
        expectRounding(halfway, digits);
        expectRounding(std::nextafter(halfway, Real(0)), digits);
    }
}

TEST(Round, everyStepIsRoundedToItsType) {
    expectRoundingOfMany<float>();
    expectRoundingOfMany<double>();
}

// The bits themselves: processors give what an invalid operation makes either sign.
TEST(Round, thereIsOneNaN) {
    for (double const value : {infinity, -infinity, nan, -nan}) {
        Binary16 bits(Round::round(value, -400));
        EXPECT_EQ(Binary16(0x7FF8000000000000), bits) << value;
        bits = Round::round(static_cast<float>(value), -400);
        EXPECT_EQ(Binary16(0x7FC00000), bits) << value;
    }
}

} // namespace
