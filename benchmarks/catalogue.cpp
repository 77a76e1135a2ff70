// The catalogue of types, rounding, versions.

#include "Bench.h"

#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/Round.h>
#include <Halvora/version/KrVersion.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#ifdef HALVTYPES_WITH_FMT
#    include <fmt/format.h>
#endif

using namespace Halvora;

namespace {

std::vector<eDataType> allTypes() {
    std::vector<eDataType> types;
    for (int i = DT_VOID; i <= DT_STRINGRES; ++i) {
        types.push_back(static_cast<eDataType>(i));
    }
    return types;
}

// By a switch, as a program without the catalogue has it.
char const* nameBySwitch(eDataType type) {
    switch (type) {
    case DT_VOID: return "VOID";
    case DT_BOOL: return "BOOL";
    case DT_BYTE: return "BYTE";
    case DT_INT16: return "INT16";
    case DT_INT32: return "INT32";
    case DT_INT64: return "INT64";
    case DT_UINT16: return "UINT16";
    case DT_UINT32: return "UINT32";
    case DT_UINT64: return "UINT64";
    case DT_FLOAT: return "FLOAT";
    case DT_DOUBLE: return "DOUBLE";
    case DT_STRING: return "STRING";
    case DT_TICK: return "TICK";
    case DT_ID: return "ID";
    case DT_BINARY16: return "BINARY16";
    case DT_STRINGRES: return "STRINGRES";
    }
    return "!UNKNOWN!";
}

// The first letters of all names.
template <typename NameOf>
void addNames(char const* who, NameOf nameOf) {
    bench::addSame("name of each type", 16, who, std::string("VBBIIIUUUFDSTIBS"),
                   [types = allTypes(), nameOf]() mutable {
                       benchmark::DoNotOptimize(types.data());
                       char letters[16];
                       std::transform(types.begin(), types.end(), letters,
                                      [&nameOf](eDataType type) { return nameOf(type)[0]; });
                       return std::string(letters, 16);
                   });
}

template <typename CommonOf>
void addCommon(char const* who, int expected, CommonOf commonOf) {
    bench::addSame("common type of each pair", 256, who, expected,
                   [types = allTypes(), commonOf]() mutable {
                       benchmark::DoNotOptimize(types.data());
                       int sum = 0;
                       for (eDataType const a : types) {
                           for (eDataType const b : types) {
                               sum += commonOf(a, b);
                           }
                       }
                       return sum;
                   });
}

void addCatalogue() {
    std::unordered_map<int, std::string> names;
    std::array<char const*, 16> table{};
    std::unordered_map<int, int> pairs;
    std::array<eDataType, 256> square{};
    auto const common = [](eDataType a, eDataType b) {
        eDataType type = DT_VOID;
        HalvTypes::getSmallestCommonDataType(a, b, type);
        return type;
    };
    int sum = 0;
    for (eDataType const a : allTypes()) {
        table[a] = nameBySwitch(a);
        names.emplace(a, table[a]);
        for (eDataType const b : allTypes()) {
            sum += pairs[16 * a + b] = square[static_cast<unsigned>(16 * a + b)] = common(a, b);
        }
    }
    addNames("ours", HalvTypes::dataTypeToString);
    addNames("limit", [table](eDataType type) { return table[type]; });
    addNames("a switch", nameBySwitch);
    addNames("std::unordered_map", [names](eDataType type) { return names.at(type).c_str(); });
    addCommon("ours", sum, common);
    addCommon("limit", sum, [square](eDataType a, eDataType b) {
        return square[static_cast<unsigned>(16 * a + b)];
    });
    addCommon("std::unordered_map", sum,
              [pairs](eDataType a, eDataType b) { return pairs.at(16 * a + b); });
}

// The sum of 256 values, each rounded to `digits` places. No value lies half-way.
template <typename Rounded>
void addRounding(char const* name, char const* who, Rounded rounded, int digits) {
    std::vector<double> values(256);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = 0.3791 * static_cast<double>(i) - 40.00012;
    }
    auto const add = [rounded, digits](double sum, double one) {
        return sum + static_cast<double>(rounded(one, digits));
    };
    double expected = 0;
    for (double const one : values) {
        expected = expected + (digits == 0 ? Round::convert(one) : Round::round(one, digits));
    }
    bench::addSame(name, values.size(), who, expected, [values, add, digits]() mutable {
        benchmark::DoNotOptimize(values.data());
        benchmark::DoNotOptimize(digits);
        return std::accumulate(values.begin(), values.end(), 0.0, add);
    });
}

void addRoundings() {
    constexpr char whole[] = "round to an integer";
    constexpr char places[] = "round to 2 places";
    addRounding(
        whole, "ours", [](double v, int) { return Round::convert(v); }, 0);
    addRounding(
        whole, "limit", [](double v, int) { return static_cast<int>(v + std::copysign(0.5, v)); },
        0);
    addRounding(
        whole, "std::lround", [](double v, int) { return std::lround(v); }, 0);
    addRounding(
        whole, "std::round", [](double v, int) { return std::round(v); }, 0);
    addRounding(
        whole, "std::nearbyint", [](double v, int) { return std::nearbyint(v); }, 0);
    addRounding(
        places, "ours", [](double v, int digits) { return Round::round(v, digits); }, 2);
    addRounding(
        places, "limit", [](double v, int) { return std::floor(v * 100 + 0.5) * 0.01; }, 2);
    addRounding(
        places, "std::round", [](double v, int) { return std::round(v * 100) * 0.01; }, 2);
    addRounding(
        places, "std::nearbyint", [](double v, int) { return std::nearbyint(v * 100) * 0.01; }, 2);
    addRounding(
        places, "std::pow",
        [](double v, int digits) {
            return std::floor(std::pow(10.0, digits) * v + 0.5) * std::pow(10.0, -digits);
        },
        2);
}

void addVersions() {
    constexpr std::string_view text = "3.12.4096.7 (rc)";
    KrVersion const version(3, 12, 4096, 7, "rc", "", "", "", false, "", "", 0, 0, "", "", "", "",
                            "", "");
    auto const addVersion = [text](char const* who, auto write) {
        auto const isRight = [text](std::string const& written) { return written == text; };
        bench::addPrint("version to a stream", 1, who, isRight, write);
    };
    addVersion("ours", [version](auto& stream) { stream << version; });
    addVersion("limit", [text](auto& stream) { stream.write(text.data(), 16); });
    addVersion("a plain stream", [version](auto& stream) {
        stream << version.getMajor() << '.' << version.getMinor() << '.' << version.getBuild()
               << '.' << version.getRevision() << " (" << version.getReleaseType() << ')';
    });
#ifdef HALVTYPES_WITH_FMT
    addVersion("fmt", [version](auto& stream) {
        stream << fmt::format("{}.{}.{}.{} ({})", version.getMajor(), version.getMinor(),
                              version.getBuild(), version.getRevision(), version.getReleaseType());
    });
#endif
}

} // namespace

int main(int argc, char** argv) {
    addCatalogue();
    addRoundings();
    addVersions();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
