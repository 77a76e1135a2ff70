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
template <typename T>
constexpr bool isNumber = (std::is_arithmetic_v<T> || std::is_enum_v<T>)&&!isCharacter<T>;
template <typename T>
constexpr bool isNumberOrCharacter = std::is_arithmetic_v<T> || std::is_enum_v<T>;

// The braces from which a string of `Char` can be made, though nobody means that text: `{1, 2u}`
// would be two control characters, `{3, 'x'}` as well, and `{"a", "b"}` whatever lies in memory
// between the two. A function that is overloaded on a text and on this refuses them. Nothing else
// turns into it: no number without braces, nor `{}`.
template <typename Char>
struct NoText {
    template <typename T, typename = std::enable_if_t<isNumber<T>>>
    NoText(std::initializer_list<T>) noexcept {}
    template <typename First, typename Second, typename... Others,
              typename = std::enable_if_t<isNumber<First> && isNumberOrCharacter<Second> &&
                                          (isNumberOrCharacter<Others> && ...)>>
    NoText(First, Second, Others...) noexcept {}
    template <std::size_t N, std::size_t M>
    NoText(Char const (&)[N], Char const (&)[M]) noexcept {}
};

} // namespace Halvora::detail
