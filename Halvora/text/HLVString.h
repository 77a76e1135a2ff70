#pragma once

#include <Halvora/Export.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora::detail {

// Whether an argument is a text by its type and so no packed or raw form: wide characters, or a
// literal, which is an array of `char const` (from C++20 on also of `char8_t const`).
template <typename T, typename Array = std::remove_extent_t<std::remove_reference_t<T>>,
          typename Char = std::remove_cv_t<std::remove_pointer_t<std::decay_t<T>>>>
inline constexpr bool isText =
    std::is_same_v<Char, wchar_t> || std::is_same_v<Char, char16_t> ||
    std::is_same_v<Char, char32_t> || std::is_same_v<Array, char const> ||
    std::is_same_v<Array, decltype(u8'x') const>;

// Only the view types themselves, not what converts to one: a call with a string or a pointer keeps
// its function.
template <typename T>
inline constexpr bool isNarrowView = std::is_same_v<T, std::string_view>;
template <typename T>
inline constexpr bool isWideView = std::is_same_v<T, std::wstring_view>;
template <typename T>
using IfView = std::enable_if_t<isNarrowView<T> || isWideView<T>>;
template <typename T>
using IfNarrowView = std::enable_if_t<isNarrowView<T>>;
template <typename T>
using IfWideView = std::enable_if_t<isWideView<T>>;

// `T`, where the compiler must not deduce it.
template <typename T>
using Same = std::enable_if_t<true, T>;

} // namespace Halvora::detail

#if defined(__GLIBCXX__)

namespace Halvora {

/// The family's portable text: unsigned 16-bit code units. `Convert` takes each for a character,
/// `Utf8` makes and reads surrogate pairs.
using HLVString = std::basic_string<unsigned short>;

} // namespace Halvora

// Instantiated once, in the library. From C++20 on every member is inline (constexpr) anyway, and
// the library, built as C++17, does not hold the newer ones. A DLL exports none of them.
#    if __cplusplus <= 201703L && !defined(_WIN32)
extern template class std::basic_string<unsigned short>;
#    endif

#else

#    include <algorithm>
#    include <cstddef>
#    include <cstring>
#    include <cwchar>
#    include <ios>

namespace Halvora {

/// What a string of unsigned 16-bit code units asks of its elements. The standard promises no
/// `std::char_traits<unsigned short>`, and libc++ has dropped it. Each member does what the
/// standard says of its name.
struct HALVTYPES_API HLVCharTraits {
    /// The element.
    using char_type = unsigned short;
    /// Holds every element and the end of a stream.
    using int_type = unsigned int;
    /// A distance in a stream.
    using off_type = std::streamoff;
    /// A place in a stream.
    using pos_type = std::streampos;
    /// Of a conversion.
    using state_type = std::mbstate_t;

    /// Copies one unit.
    static constexpr void assign(char_type& to, char_type const& from) noexcept { to = from; }
    /// Whether two units are equal.
    static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }
    /// Whether `a` is the smaller number.
    static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }
    /// The end of a stream: no unit's value.
    static constexpr int_type eof() noexcept { return ~int_type(); }
    /// `c`, or 0 for the end.
    static constexpr int_type not_eof(int_type c) noexcept { return c == eof() ? 0 : c; }
    /// The unit's value.
    static constexpr int_type to_int_type(char_type c) noexcept { return c; }
    /// The unit with this value.
    static constexpr char_type to_char_type(int_type c) noexcept {
        return static_cast<char_type>(c);
    }
    /// Whether two values are equal.
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }

    /// The order of the first `n` units, by their numbers: below, equal to or above 0.
    static constexpr int compare(char_type const* a, char_type const* b, std::size_t n) noexcept {
        for (; n != 0; --n, ++a, ++b) {
            if (*a != *b) {
                return *a < *b ? -1 : 1;
            }
        }
        return 0;
    }
    /// The units before the first zero.
    static constexpr std::size_t length(char_type const* text) noexcept {
        std::size_t n = 0;
        while (text[n] != 0) {
            ++n;
        }
        return n;
    }
    /// The first of `n` units that equals `c`; null without one.
    static constexpr char_type const* find(char_type const* text, std::size_t n,
                                           char_type const& c) noexcept {
        for (; n != 0; --n, ++text) {
            if (*text == c) {
                return text;
            }
        }
        return nullptr;
    }
    /// Copies `n` units between places that do not overlap.
    static char_type* copy(char_type* to, char_type const* from, std::size_t n) noexcept {
        return n == 0 ? to : static_cast<char_type*>(std::memcpy(to, from, n * sizeof *to));
    }
    /// Copies `n` units between places that may overlap.
    static char_type* move(char_type* to, char_type const* from, std::size_t n) noexcept {
        return n == 0 ? to : static_cast<char_type*>(std::memmove(to, from, n * sizeof *to));
    }
    /// Writes `n` times `c`.
    static char_type* assign(char_type* to, std::size_t n, char_type c) noexcept {
        std::fill_n(to, n, c);
        return to;
    }
};

/// The family's portable text: unsigned 16-bit code units. `Convert` takes each for a character,
/// `Utf8` makes and reads surrogate pairs.
using HLVString = std::basic_string<unsigned short, HLVCharTraits>;

} // namespace Halvora

#endif
