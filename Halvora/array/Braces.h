#pragma once

#include <cstddef>
#include <initializer_list>
#include <type_traits>

namespace Halvora::detail {

template <typename T>
constexpr bool isCharacter = std::is_same_v<T, char> || std::is_same_v<T, wchar_t> ||
                             std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>
#if defined(__cpp_char8_t)
                             || std::is_same_v<T, char8_t>
#endif
    ;

struct AnyNumber {
    template <typename T, typename = std::enable_if_t<(std::is_arithmetic_v<T> ||
                                                       std::is_enum_v<T>)&&!isCharacter<T>>>
    AnyNumber(T) noexcept {}
};

struct WideLiteral {
    template <std::size_t N>
    WideLiteral(wchar_t const (&)[N]) noexcept {}
};

// The braces from which a std::wstring can be made, though nobody means that text: `{1, 2u}` would
// be two control characters, `{3, L'x'}` as well, and `{L"a", L"b"}` whatever lies in memory
// between the two. A function that is overloaded on a text and on this refuses them.
struct NoText {
    NoText(std::initializer_list<AnyNumber>) noexcept {}
    NoText(AnyNumber, wchar_t) noexcept {}
    NoText(WideLiteral, WideLiteral) noexcept {}
};

} // namespace Halvora::detail
