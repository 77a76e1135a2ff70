#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <tests/support/Memory.h>
#include <tests/support/Steps.h>

// A variable template `name<T>`: whether the call compiles, in which `argument<T>()` is a T.
#define HALV_COMPILES(name, call)          \
    template <typename T, typename = void> \
    constexpr bool name = false;           \
    template <typename T>                  \
    constexpr bool name<T, decltype(void(call))> = true

namespace Halvora::test {

template <typename T>
T argument();

inline unsigned draw(std::size_t end) { // 0 to end - 1
    static std::mt19937 random;
    return static_cast<unsigned>(random() % end);
}

// No unit is zero; some characters lie above U+FFFF, or below zero where wchar_t has a sign.
inline std::wstring anyText(std::size_t length) {
    std::wstring text(length, L'\0');
    for (wchar_t& c : text) {
        c = static_cast<wchar_t>(draw(0xFFFF) + 1 + draw(3) * 0x7FFF0000);
    }
    return text;
}

// length:u16le unit:u16le[], the units being the low 16 bits of the characters. The length counts
// `absent` units more than there are.
inline std::string rawForm(std::wstring const& text, std::size_t absent = 0) {
    std::string bytes;
    for (auto const unit : static_cast<wchar_t>(text.size() + absent) + text) {
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    }
    return bytes;
}

template <typename Text>
std::string bytesOf(Text const& text) {
    return {reinterpret_cast<char const*>(&text), text.size()};
}

inline std::string hexOf(std::string const& bytes) { // "02 00 FF"
    char const digits[] = "0123456789ABCDEF";
    std::string hex;
    for (char const c : bytes) {
        auto const byte = static_cast<unsigned char>(c);
        hex += {digits[byte >> 4], digits[byte & 15], ' '};
    }
    return hex.substr(0, hex.size() - !hex.empty());
}

// Whether two texts are the same; else it says where they part.
template <typename Text>
testing::AssertionResult same(Text const& expected, Text const& actual) {
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) {
        ++at;
    }
    return testing::AssertionResult(expected == actual)
           << "they part at element " << at << "\n  expected there, " << shown(expected.substr(at))
           << "\n  actual there,   " << shown(actual.substr(at)) << '\n';
}

// Makes a result by as many allocations as said, each of which may fail.
template <typename Make>
void expectAllocations(int expected, Make make) {
    auto const act = [&](int) { make(); };
    EXPECT_EQ(expected, failEachAllocation([] { return 0; }, act, [](int) {}))
        << __PRETTY_FUNCTION__;
}

// The same with an output that is empty; one that has been used has the memory.
template <typename Out, typename Into>
void expectReuse(int expected, Out out, Into into) {
    expectAllocations(expected, [&] {
        Out fresh;
        into(fresh);
    });
    expectAllocations(0, [&] { into(out); });
}

// sizeWithin of a class whose forms have `head` bytes before the units. The bytes lie alone on the
// heap, where a sanitizer sees what is read beyond them.
template <typename Text>
void checkSizeWithin(std::size_t head) {
    struct {
        std::size_t field, available; // what the length field says; bytes
        bool isWhole;
    } const rows[] = {
        {0,                    0,                                false},
        {0,                    head - 1,                         false}, // half a length field
        {0,                    head,                             true },
        {0,                    head + 1000,                      true }, // bytes behind the form do not matter
        {3,                    head + 5,                         false}, // one byte short
        {3,                    head + 6,                         true },
        {Text::maxLength,      head + 2 * Text::maxLength,       true },
        {Text::maxLength + 72, head + 2 * Text::maxLength,       false},
        {Text::maxLength + 72, head + 2 * Text::maxLength + 144, true }, // cut by an object
        {65535,                head + 131069,                    false},
        {65535,                head + 131070,                    true }, // the longest that can be announced
    };
    for (auto const& [field, available, isWhole] : rows) {
        std::string bytes(std::max(head, available), '\0');
        bytes[head - 2] = static_cast<char>(field & 0xFF);
        bytes[head - 1] = static_cast<char>(field >> 8);
        std::vector<char> const memory(bytes.begin(), bytes.begin() + static_cast<long>(available));
        EXPECT_EQ(isWhole ? head + 2 * field : 0, Text::sizeWithin(memory.data(), available))
            << "length field " << field << ", " << available << " bytes";
    }
    EXPECT_EQ(0u, Text::sizeWithin(nullptr, 1000));
}

} // namespace Halvora::test
