#pragma once

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora::test {

inline unsigned draw(std::size_t end) { // 0 to end - 1
    static std::mt19937 random;
    return static_cast<unsigned>(random() % end);
}

// One element, cut where wchar_t has 16 bits.
inline std::wstring wideUnit(unsigned character) {
    return std::wstring(1, static_cast<wchar_t>(character));
}

// No unit is zero; some characters lie above U+FFFF, or below zero where wchar_t has a sign.
inline std::wstring anyText(std::size_t length) {
    std::wstring text(length, L'\0');
    for (wchar_t& c : text) {
        c = static_cast<wchar_t>(draw(0xFFFF) + 1 + draw(3) * 0x7FFF0000);
    }
    return text;
}

template <typename Char>
std::basic_string_view<Char> viewOf(std::basic_string<Char> const& text) {
    return text;
}

// A text in a message: its length, then elements in hexadecimal, from `at` on.
template <typename Text>
std::string shown(Text const& text, std::size_t at = 0) {
    std::ostringstream stream;
    stream << text.size() << " elements, from " << at << " on:" << std::hex;
    for (std::size_t i = at; i < text.size() && i < at + 12; ++i) {
        stream << ' ' << +static_cast<std::make_unsigned_t<typename Text::value_type>>(text[i]);
    }
    return stream.str();
}

// Whether two texts are the same; else it shows both from where they part.
template <typename Text>
testing::AssertionResult same(Text const& expected, Text const& actual) {
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) {
        ++at;
    }
    return testing::AssertionResult(expected == actual)
           << "expected " << shown(expected, at) << "\n  actual " << shown(actual, at) << '\n';
}

// The text of the exception by which a call refuses what it gets.
template <typename Refusal, typename Call>
std::string refusal(Call call) {
    try {
        call();
    } catch (Refusal const& e) {
        return e.what();
    }
    return "no refusal";
}

// A packed or raw form.
template <typename Text>
std::string bytesOf(Text const& object) {
    return {reinterpret_cast<char const*>(&object), object.size()};
}

} // namespace Halvora::test
