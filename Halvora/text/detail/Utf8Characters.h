#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace Halvora::detail {

// Single characters of UTF-8, wide and 16-bit text.

using Byte = unsigned char;

inline constexpr std::uint32_t illFormed = 0xFFFFFFFF;

constexpr bool isContinuation(std::uint32_t byte) noexcept {
    return (byte & 0xC0) == 0x80;
}
constexpr bool isSurrogate(std::uint32_t code) noexcept {
    return (code & 0xFFFFF800) == 0xD800;
}

inline std::uint32_t bytesAt(void const* at) noexcept {
    std::uint32_t bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

// Takes the character at the front off, or the maximal subpart of an ill-formed sequence.
[[maybe_unused]] static std::uint32_t takeCharacter(Byte const*& at, Byte const* end) noexcept {
    Byte const lead = *at++;
    if (lead < 0x80) {
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return illFormed;
    }
    int const trailing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // These bounds of the second byte keep out overlong forms, surrogates and too large values.
    Byte low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    Byte high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    std::uint32_t code = lead & (0x3Fu >> trailing);
    for (int i = 0; i < trailing; ++i) {
        if (at == end || *at < low || *at > high) {
            return illFormed;
        }
        code = code << 6 | (*at++ & 0x3Fu);
        low = 0x80;
        high = 0xBF;
    }
    return code;
}

template <typename Unit>
std::uint32_t takeCharacter(Unit const*& at, Unit const* end) noexcept {
    auto const code = static_cast<std::make_unsigned_t<Unit>>(*at++);
    if (!isSurrogate(code)) {
        return code <= 0x10FFFF ? code : illFormed;
    }
    if (sizeof(Unit) != 2 || code >= 0xDC00 || at == end || (*at & 0xFC00) != 0xDC00) {
        return illFormed;
    }
    return 0x10000 + ((code & 0x3FFu) << 10 | (static_cast<std::uint32_t>(*at++) & 0x3FF));
}

// These two write what convertQuickly has left.

template <typename Unit>
void put(Unit*& out, std::uint32_t code) noexcept {
    if (sizeof(Unit) == 2 && code > 0xFFFF) {
        *out++ = static_cast<Unit>(0xD7C0 + (code >> 10));
        code = 0xDC00 | (code & 0x3FF);
    }
    *out++ = static_cast<Unit>(code);
}

[[maybe_unused]] static void put(char*& out, std::uint32_t code) noexcept {
    if (code < 0x10000) {
        *out++ = static_cast<char>(0xE0 | code >> 12);
    } else {
        *out++ = static_cast<char>(0xF0 | code >> 18);
        *out++ = static_cast<char>(0x80 | (code >> 12 & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (code >> 6 & 0x3F));
    *out++ = static_cast<char>(0x80 | (code & 0x3F));
}

} // namespace Halvora::detail
