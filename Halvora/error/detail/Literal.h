#pragma once

#include <ostream>
#include <string_view>
#include <type_traits>

namespace Halvora::detail {

// The literal in the width of the stream that it is written to.
template <typename Char>
constexpr std::basic_string_view<Char> literal(std::string_view narrow, std::wstring_view wide) {
    if constexpr (std::is_same_v<Char, char>) {
        static_cast<void>(wide);
        return narrow;
    } else {
        static_cast<void>(narrow);
        return wide;
    }
}

// The insertion of a string; without a field width at half its cost.
template <typename Char>
void insert(std::basic_ostream<Char>& stream, std::basic_string_view<Char> text) {
    if (stream.width() != 0) {
        stream << text;
    } else {
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

} // namespace Halvora::detail
