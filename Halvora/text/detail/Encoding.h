#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include <Halvora/text/detail/Narrowing.h>

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

inline constexpr std::size_t blockLength = 16;

template <typename To, typename From>
void convertBlock(To* __restrict out, From const* __restrict in) noexcept {
    for (std::size_t i = 0; i < blockLength; ++i) {
        out[i] = convertElement<To>(in[i]);
    }
}

// Converts n elements between buffers that do not overlap. Compilers leave a loop of unknown length
// scalar at -O2, but not one of exactly 16: the last block ends at n and overlaps the one before.
template <typename To, typename From>
[[gnu::always_inline]] inline void convertHere(To* __restrict out, From const* __restrict in,
                                               std::size_t n) noexcept {
    if (n < blockLength) {
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = convertElement<To>(in[i]);
        }
        return;
    }
    std::size_t const last = n - blockLength;
    for (std::size_t at = 0; at < last; at += blockLength) {
        convertBlock(out + at, in + at);
    }
    convertBlock(out + last, in + last);
}

// The same as a call, which takes less code, and at 16 elements a fifth longer.
template <typename To, typename From>
void convertRun(To* out, From const* in, std::size_t n) noexcept {
    convertHere(out, in, n);
}

inline constexpr std::size_t chunkLength = 256;

// As convertInto, for an output of another length.
template <typename String, typename From>
[[gnu::noinline]] void resizeAndConvert(String& out, From const* in, std::size_t n) {
    using To = typename String::value_type;
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

// Replaces `out` by the conversion of n elements. What a reused output never needs, and the stack
// frame for it, is a function of its own.
template <typename String, typename From>
void convertInto(String& out, From const* in, std::size_t n) {
    if (n == out.size()) {
        convertHere(out.data(), in, n);
    } else {
        resizeAndConvert(out, in, n);
    }
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
    resizeAndConvert(out, in, n);
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

// The number or code unit at any address, even or odd.
inline unsigned short unitAt(void const* bytes) noexcept {
    unsigned short unit;
    std::memcpy(&unit, bytes, sizeof unit);
    return unit;
}

} // namespace Halvora::detail
