// What each operation of Round makes of ordinary, large and tiny values, as tables.

#include <Halvora/types/Round.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <string>

using namespace Halvora;

namespace {

struct Row {
    char const* text;
    double x;
};

// The shortest text that reads back as the same number.
template <typename Real>
std::string shortest(Real x) {
    char text[32];
    for (int digits = 8; digits <= 17; ++digits) {
        std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(x));
        if (static_cast<Real>(std::strtod(text, nullptr)) == x) {
            break;
        }
    }
    return text;
}

template <typename Real>
void printTable(char const* type, std::initializer_list<Row> rows) {
    std::printf("| `%s` x | `convert(x)` | `round(x)` | `convert(x, 2)` | `round(x, 2)` |\n", type);
    std::printf("|---|---|---|---|---|\n");
    for (Row const& row : rows) {
        auto const x = static_cast<Real>(row.x);
        std::printf("| %s | %d | %s | %d | %s |\n", row.text, Round::convert(x),
                    shortest(Round::round(x)).c_str(), Round::convert(x, 2),
                    shortest(Round::round(x, 2)).c_str());
    }
    std::printf("\n");
}

void printDigits(std::initializer_list<Row> rows, std::initializer_list<int> digits) {
    std::printf("| `double` x | n | `convert(x, n)` | `round(x, n)` |\n");
    std::printf("|---|---|---|---|\n");
    auto digit = digits.begin();
    for (Row const& row : rows) {
        std::printf("| %s | %d | %d | %s |\n", row.text, *digit, Round::convert(row.x, *digit),
                    shortest(Round::round(row.x, *digit)).c_str());
        ++digit;
    }
}

} // namespace

int main() {
    double const infinity = std::numeric_limits<double>::infinity();
    printTable<double>("double", {
                                     {"2.5",                 2.5                },
                                     {"-2.5",                -2.5               },
                                     {"-1.25",               -1.25              },
                                     {"12.345",              12.345             },
                                     {"1.005",               1.005              },
                                     {"0.49999999999999994", 0.49999999999999994},
                                     {"2^52 + 1",            4503599627370497.0 },
                                     {"3e9",                 3e9                },
                                     {"1e300",               1e300              },
                                     {"5e-324",              5e-324             },
                                     {"-0.0",                -0.0               },
                                     {"infinity",            infinity           },
                                     {"NaN",                 std::nan("")       }
    });
    printTable<float>("float", {
                                   {"2.5",      2.5         },
                                   {"-2.5",     -2.5        },
                                   {"1.005",    1.005       },
                                   {"2^23 - 1", 8388607     },
                                   {"2^23 + 1", 8388609     },
                                   {"2^24 - 1", 16777215    },
                                   {"2^24",     16777216    },
                                   {"1e38",     1e38        },
                                   {"1e-45",    1e-45       },
                                   {"infinity", infinity    },
                                   {"NaN",      std::nan("")}
    });
    printDigits(
        {
            {"1234.5", 1234.5},
            {"-1.25",  -1.25 },
            {"1e300",  1e300 },
            {"1e-300", 1e-300},
            {"1",      1     },
            {"0",      0     },
            {"1",      1     }
    },
        {-2, 1, 10, 10, 309, 309, -309});
}
