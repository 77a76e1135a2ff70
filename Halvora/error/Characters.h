#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The characters of wide texts, for what is written as UTF-8.
namespace Halvora::detail {

constexpr bool isSurrogate(std::uint32_t character) {
    return character >= 0xD800 && character < 0xE000;
}

constexpr bool isControl(std::uint32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// Calls take(character) for each: the two units of a pair of surrogates are one character, a lone
// one is passed on, and what is no character at all becomes U+FFFD.
template <typename Take>
void forEachCharacter(std::wstring_view text, Take take) {
    auto const unitAt = [&](std::size_t i) {
        return i < text.size() ? static_cast<std::uint32_t>(text[i]) : 0;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t character = unitAt(i);
        if ((character & ~0x3FFu) == 0xD800 && (unitAt(i + 1) & ~0x3FFu) == 0xDC00) {
            character = 0x10000 + ((character & 0x3FF) << 10) + (unitAt(++i) & 0x3FF);
        }
        take(character > 0x10FFFF ? 0xFFFD : character);
    }
}

// A lone surrogate as U+FFFD.
inline void appendUtf8(std::string& out, std::uint32_t character) {
    character = isSurrogate(character) ? 0xFFFD : character;
    auto const append = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
        return;
    }
    int const following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    append((0xF00u >> (following + 1) & 0xFF) | character >> (6 * following));
    for (int i = following - 1; i >= 0; --i) {
        append(0x80 | (character >> (6 * i) & 0x3F));
    }
}

} // namespace Halvora::detail
