// Everything where everything can be tried: each input that there is, beside a slow reference that
// shares no code with the library. Takes minutes, so it is built and run by its own name only.
#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <tests/support/Forms.h>
#include <tests/support/SlowSplit.h>

using namespace Halvora;
using namespace Halvora::test;

namespace {

constexpr std::uint64_t all32 = std::uint64_t(1) << 32;
constexpr std::uint32_t blockLength = std::uint32_t(1) << 20;

// Calls firstWrong for every block of 32-bit numbers, on all processors, until one is not all32.
void expectForAll32(std::function<std::uint64_t(std::uint32_t first)> const& firstWrong) {
    std::atomic<std::uint64_t> next{0}, wrong{all32};
    std::vector<std::thread> threads(std::max(1u, std::thread::hardware_concurrency()));
    for (std::thread& thread : threads) {
        thread = std::thread([&] {
            for (std::uint64_t at = 0; wrong == all32 && at < all32;) {
                at = next.fetch_add(blockLength);
                std::uint64_t const found =
                    at < all32 ? firstWrong(static_cast<std::uint32_t>(at)) : all32;
                wrong = std::min<std::uint64_t>(wrong, found);
            }
        });
    }
    std::for_each(threads.begin(), threads.end(), [](std::thread& thread) { thread.join(); });
    EXPECT_EQ(all32, wrong) << "wrong is 0x" << std::hex << wrong;
}

template <typename To, typename From>
To bitsAs(From from) {
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

// A sum of two floats is exact enough as a double that rounding it again gives the float's own sum.
float sum(float a, double b) {
    return static_cast<float>(static_cast<double>(a) + b);
}

bool convertsRight(float value) {
    double const whole = std::trunc(sum(value, value >= 0 ? 0.5 : -0.5));
    int const expected = std::isnan(value)      ? 0
                         : whole >= 2147483647  ? std::numeric_limits<int>::max()
                         : whole <= -2147483648 ? std::numeric_limits<int>::min()
                                                : static_cast<int>(whole);
    return Round::convert(value) == expected;
}

bool roundsRight(float value) {
    static auto const notANumber = bitsAs<std::uint32_t>(Round::round(std::nanf("")));
    auto const result = bitsAs<std::uint32_t>(Round::round(value));
    return std::isnan(value) ? result == notANumber
                             : result == bitsAs<std::uint32_t>(std::floor(sum(value, 0.5)));
}

TEST(Exhaustive, everyFloatIsRounded) {
    expectForAll32([](std::uint32_t first) {
        for (std::uint32_t i = 0; i < blockLength; ++i) {
            auto const value = bitsAs<float>(first + i);
            if (!convertsRight(value) || !roundsRight(value)) {
                return std::uint64_t{first} + i;
            }
        }
        return all32;
    });
}

TEST(Exhaustive, everyWideCharacterIsNarrowed) {
    if (sizeof(wchar_t) != 4) {
        GTEST_SKIP() << "wide characters have 16 bits here";
    }
    expectForAll32([](std::uint32_t first) {
        thread_local std::wstring wide(blockLength, L'\0');
        thread_local std::string narrow;
        thread_local HLVString units;
        for (std::uint32_t i = 0; i < blockLength; ++i) {
            wide[i] = static_cast<wchar_t>(first + i);
        }
        Convert::toAString(narrow, blockLength, wide.data());
        Convert::toHLVString(units, wide);
        for (std::uint32_t i = 0; i < blockLength; ++i) {
            std::uint32_t const c = first + i;
            if (static_cast<unsigned char>(narrow[i]) != (c < 256 ? c : ' ') ||
                units[i] != c % 65536) {
                return std::uint64_t{c};
            }
        }
        return all32;
    });
}

// The text, and all of up to twelve characters that begin with it.
void expectSplit(std::string const& text) {
    std::vector<std::string> expected, fields;
    ASSERT_EQ(splitByStream<false>(text, ',', expected), Convert::split(text, ',', fields));
    ASSERT_EQ(splitByStream<true>(text, ',', expected), Convert::splitQuoted(text, ',', fields));
    for (char const next : {'a', ',', '"'}) {
        text.size() < 12 ? expectSplit(text + next) : void();
    }
}

TEST(Exhaustive, everyShortTextIsSplit) {
    expectSplit("");
}

TEST(Exhaustive, everyLengthOfAFormIsPutIntoEverySlot) {
    Forms<ResString> packed{0, "sixteen bytes id", ""};
    Forms<VarChar> raw{0, "", ""};
    for (unsigned length = 0; length <= 300; ++length) {
        packed.field = raw.field = length;
        for (unsigned capacity = 0; capacity <= 300; ++capacity) {
            ASSERT_EQ("", packed.wrongWith(0, capacity, 700)) << length << " into " << capacity;
            ASSERT_EQ("", raw.wrongWith(0, capacity, 700)) << length << " into " << capacity;
        }
        packed.units = raw.units += {static_cast<char>(length), static_cast<char>(0xA5 + length)};
    }
}

} // namespace
