// Everything where everything can be tried: each input that there is, beside a slow reference that
// shares no code with the library. Takes minutes, so it is built and run by its own name only.
#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include <tests/support/SlowSplit.h>

using namespace Halvora;
using namespace Halvora::test;

namespace {

constexpr std::uint64_t all32 = std::uint64_t(1) << 32;

// Calls `holds` with every 32-bit number, on all processors, and tells the first that it denies.
void expectForAll32(
    std::function<bool(std::uint32_t first, std::uint32_t& bad)> const& blockHolds) {
    constexpr std::uint64_t block = std::uint64_t(1) << 20;
    unsigned const workers = std::max(1u, std::thread::hardware_concurrency());
    std::vector<std::uint64_t> denied(workers, all32);
    std::vector<std::thread> threads;
    for (unsigned worker = 0; worker < workers; ++worker) {
        threads.emplace_back([&, worker] {
            for (std::uint64_t at = worker * block; at < all32; at += workers * block) {
                std::uint32_t bad = 0;
                if (!blockHolds(static_cast<std::uint32_t>(at), bad)) {
                    denied[worker] = std::min<std::uint64_t>(denied[worker], bad);
                }
            }
        });
    }
    std::for_each(threads.begin(), threads.end(), [](std::thread& thread) { thread.join(); });
    std::uint64_t const first = *std::min_element(denied.begin(), denied.end());
    EXPECT_EQ(all32, first) << "the first that is wrong: 0x" << std::hex << first;
}

constexpr std::uint32_t blockLength = std::uint32_t(1) << 20;

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
    expectForAll32([](std::uint32_t first, std::uint32_t& bad) {
        for (std::uint32_t i = 0; i < blockLength; ++i) {
            auto const value = bitsAs<float>(first + i);
            if (!convertsRight(value) || !roundsRight(value)) {
                bad = first + i;
                return false;
            }
        }
        return true;
    });
}

TEST(Exhaustive, everyWideCharacterIsNarrowed) {
    if (sizeof(wchar_t) != 4) {
        GTEST_SKIP() << "wide characters have 16 bits here";
    }
    expectForAll32([](std::uint32_t first, std::uint32_t& bad) {
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
                bad = c;
                return false;
            }
        }
        return true;
    });
}

TEST(Exhaustive, everyCodeUnitIsConverted) {
    HLVString units(65536, 0);
    std::iota(units.begin(), units.end(), static_cast<unsigned short>(0));
    std::string const narrow = Convert::toAString(units);
    std::wstring const wide = Convert::toWString(units);
    for (unsigned c = 0; c < 65536; ++c) {
        ASSERT_EQ(c < 256 ? c : ' ', static_cast<unsigned char>(narrow[c])) << c;
        ASSERT_EQ(c, static_cast<std::uint32_t>(wide[c]));
    }
}

unsigned digitOf(unsigned char c) {
    std::string_view const lower = "0123456789:;<=>?", letters = "abcdefABCDEF";
    std::size_t const at = lower.find(static_cast<char>(c));
    std::size_t const letter = letters.find(static_cast<char>(c));
    return static_cast<unsigned>(at != lower.npos         ? at
                                 : letter != letters.npos ? 10 + letter % 6
                                                          : 0);
}

TEST(Exhaustive, everyPairOfDigitsIsRead) {
    for (unsigned high = 0; high < 256; ++high) {
        for (unsigned low = 0; low < 256; ++low) {
            auto const byte = Convert::toByte(static_cast<char>(high), static_cast<char>(low));
            unsigned const expected = digitOf(static_cast<unsigned char>(high)) * 16 +
                                      digitOf(static_cast<unsigned char>(low));
            ASSERT_EQ(expected, byte) << high << ' ' << low;
        }
    }
}

// The text of `length` characters out of four whose number this is.
std::string textOf(std::uint32_t number, unsigned length) {
    std::string text(length, '\0');
    for (char& c : text) {
        c = "a,\""[number % 3];
        number /= 3;
    }
    return text;
}

template <typename Text>
void expectSplit(Text const& text) {
    std::vector<Text> expected, fields;
    Convert::split(text, ',', fields);
    ASSERT_EQ(splitByStream<false>(text, ',', expected), fields);
    Convert::splitQuoted(text, ',', fields);
    ASSERT_EQ(splitByStream<true>(text, ',', expected), fields);
}

TEST(Exhaustive, everyShortTextIsSplit) {
    std::uint32_t count = 1;
    for (unsigned length = 0; length <= 12; ++length, count *= 3) {
        for (std::uint32_t number = 0; number < count; ++number) {
            std::string const text = textOf(number, length);
            expectSplit(text);
            ASSERT_FALSE(HasFatalFailure()) << text;
        }
    }
}

// The low 16 bits of a number, as forms keep them.
void put16(std::vector<unsigned char>& bytes, std::size_t at, unsigned value) {
    bytes[at] = static_cast<unsigned char>(value);
    bytes[at + 1] = static_cast<unsigned char>(value >> 8);
}

constexpr unsigned unitAt(unsigned i) {
    return 0xA5C3 + i * 257;
}

// A form with `head` bytes before its length field, in a slot of `slot` bytes.
std::vector<unsigned char> form(std::size_t head, unsigned length, unsigned kept, std::size_t slot,
                                unsigned char fill) {
    std::vector<unsigned char> bytes(slot, fill);
    std::fill_n(bytes.begin(), head, static_cast<unsigned char>(0x7E));
    put16(bytes, head, length);
    for (unsigned i = 0; i < kept; ++i) {
        put16(bytes, head + 2 + 2 * i, unitAt(i));
    }
    return bytes;
}

TEST(Exhaustive, everyLengthOfAPackedFormIsPutIntoEverySlot) {
    for (unsigned length = 0; length <= 300; ++length) {
        auto const packed = form(16, length, length, 18 + 2 * length, 0);
        ASSERT_EQ(18 + 2 * length, ResString::size(packed.data()));
        for (unsigned capacity = 0; capacity <= 300; ++capacity) {
            unsigned const kept = std::min(length, capacity);
            auto const expected = form(16, kept, kept, 18 + 2 * capacity, 0);
            std::vector<unsigned char> slot(expected.size(), 0xEE);
            ResString::set(packed.data(), capacity, slot.data());
            ASSERT_EQ(expected, slot) << length << " units in a slot of " << capacity;
        }
    }
}

TEST(Exhaustive, everyLengthOfARawFormIsPutIntoEverySlot) {
    std::wstring text;
    for (unsigned length = 0; length <= 300; ++length) {
        for (unsigned capacity = 0; capacity <= 300; ++capacity) {
            unsigned const kept = std::min(length, capacity);
            auto const expected = form(0, kept, kept, 2 + 2 * capacity, 0x30);
            std::vector<unsigned char> slot(expected.size(), 0xEE);
            VarChar::set(text.data(), length, capacity, slot.data());
            ASSERT_EQ(expected, slot) << length << " units in a slot of " << capacity;
            ASSERT_TRUE(VarChar::equal(slot.data(), text.data(), kept));
        }
        text += static_cast<wchar_t>(0x50000 + unitAt(length));
    }
}

} // namespace
