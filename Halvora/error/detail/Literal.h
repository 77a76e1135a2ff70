#pragma once

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

} // namespace Halvora::detail
