#pragma once

#include <Halvora/Export.h>

#include <string>

#if defined(__GLIBCXX__)

namespace Halvora {

// The family's portable text: unsigned 16-bit code units, one a character, without surrogates.
using HLVString = std::basic_string<unsigned short>;

} // namespace Halvora

// Instantiated once, in the library. From C++20 on every member is inline (constexpr) anyway, and
// the library, built as C++17, does not hold the newer ones.
#    if __cplusplus <= 201703L
extern template class std::basic_string<unsigned short>;
#    endif

#else

#    include <algorithm>
#    include <cstddef>
#    include <cstring>
#    include <cwchar>
#    include <ios>

namespace Halvora {

// The standard promises no std::char_traits<unsigned short>, and libc++ has dropped it.
struct HALVTYPES_API HLVCharTraits {
    using char_type = unsigned short;
    using int_type = unsigned int;
    using off_type = std::streamoff;
    using pos_type = std::streampos;
    using state_type = std::mbstate_t;

    static constexpr void assign(char_type& to, char_type const& from) noexcept { to = from; }
    static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }
    static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }
    static constexpr int_type eof() noexcept { return ~int_type(); }
    static constexpr int_type not_eof(int_type c) noexcept { return c == eof() ? 0 : c; }
    static constexpr int_type to_int_type(char_type c) noexcept { return c; }
    static constexpr char_type to_char_type(int_type c) noexcept {
        return static_cast<char_type>(c);
    }
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }

    static constexpr int compare(char_type const* a, char_type const* b, std::size_t n) noexcept {
        for (; n != 0; --n, ++a, ++b) {
            if (*a != *b) {
                return *a < *b ? -1 : 1;
            }
        }
        return 0;
    }
    static constexpr std::size_t length(char_type const* text) noexcept {
        std::size_t n = 0;
        while (text[n] != 0) {
            ++n;
        }
        return n;
    }
    static constexpr char_type const* find(char_type const* text, std::size_t n,
                                           char_type const& c) noexcept {
        for (; n != 0; --n, ++text) {
            if (*text == c) {
                return text;
            }
        }
        return nullptr;
    }
    static char_type* copy(char_type* to, char_type const* from, std::size_t n) noexcept {
        return n == 0 ? to : static_cast<char_type*>(std::memcpy(to, from, n * sizeof *to));
    }
    static char_type* move(char_type* to, char_type const* from, std::size_t n) noexcept {
        return n == 0 ? to : static_cast<char_type*>(std::memmove(to, from, n * sizeof *to));
    }
    static char_type* assign(char_type* to, std::size_t n, char_type c) noexcept {
        std::fill_n(to, n, c);
        return to;
    }
};

using HLVString = std::basic_string<unsigned short, HLVCharTraits>;

} // namespace Halvora

#endif
