#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>

namespace Halvora::detail {

// The one rule by which an element of narrow (char), 16-bit (unsigned short) or wide (wchar_t) text
// becomes an element of another: its unsigned value, cut to 16 bits, or a space where narrow text
// has no such character.
template <typename To, typename From>
constexpr To convertElement(From element) noexcept {
    auto const value = static_cast<std::make_unsigned_t<From>>(element);
    if constexpr (sizeof(To) == 1) {
        // The shift spares an unsigned comparison, which vectors of x86-64 lack.
        return static_cast<To>((value >> 8) != 0 ? 0x20 : value);
    } else {
        return static_cast<To>(value);
    }
}

// Converts n elements between buffers that do not overlap. Compilers leave a loop of unknown length
// scalar at -O2, but not one of exactly 16: the last block ends at n and overlaps the one before.
template <typename To, typename From>
void convertRun(To* __restrict out, From const* __restrict in, std::size_t n) noexcept {
    constexpr std::size_t block = 16;
    if (n < block) {
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = convertElement<To>(in[i]);
        }
        return;
    }
    for (std::size_t start = 0; start < n; start += block) {
        std::size_t const at = std::min(start, n - block);
        for (std::size_t i = 0; i < block; ++i) {
            out[at + i] = convertElement<To>(in[at + i]);
        }
    }
}

inline constexpr std::size_t chunkLength = 256;

// Replaces `out` by the conversion of n elements.
template <typename String, typename From>
void convertInto(String& out, From const* in, std::size_t n) {
    using To = typename String::value_type;
    if (n == out.size()) {
        convertRun(out.data(), in, n);
        return;
    }
    if (n > out.capacity()) {
        out.clear(); // nothing to carry over into the new buffer
    }
    if (std::is_same_v<To, unsigned short> && n > out.size()) {
        // resize() would fill this instantiation element by element.
        out.clear();
        out.reserve(n);
        To chunk[chunkLength];
        for (std::size_t at = 0; at < n; at += chunkLength) {
            std::size_t const length = std::min(n - at, chunkLength);
            convertRun(chunk, in + at, length);
            out.append(chunk, length);
        }
        return;
    }
    out.resize(n);
    convertRun(out.data(), in, n);
}

// The conversion of n elements as a new string.
template <typename String, typename From>
String converted(From const* in, std::size_t n) {
    using To = typename String::value_type;
    if (n <= chunkLength) {
        To chunk[chunkLength];
        convertRun(chunk, in, n);
        return String(chunk, n);
    }
    String out;
    convertInto(out, in, n);
    return out;
}

// The number of elements before the first zero, at most `limit`; 0 for null.
template <typename Char>
std::size_t terminatedLength(Char const* text,
                             std::size_t limit = std::numeric_limits<std::size_t>::max()) noexcept {
    std::size_t n = 0;
    if (text != nullptr) {
        while (n < limit && text[n] != Char()) {
            ++n;
        }
    }
    return n;
}

} // namespace Halvora::detail
