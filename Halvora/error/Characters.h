#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The characters of wide texts, for what is written for people and programs.
namespace Halvora::detail {

constexpr bool isControl(std::uint32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// Half a surrogate pair, or above U+10FFFF.
constexpr bool isNone(std::uint32_t character) {
    return (character >= 0xD800 && character < 0xE000) || character > 0x10FFFF;
}

// Calls take(character) for each. Wide text that was 16-bit text holds pairs of surrogates: two
// units are one character then. What is none is passed on as it is.
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
        take(character);
    }
}

// The way back, as UTF-16 where `wchar_t` has 16 bits.
inline void appendCharacter(std::wstring& text, std::uint32_t character) {
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        text += static_cast<wchar_t>(0xD7C0 + (character >> 10));
        character = 0xDC00 | (character & 0x3FF);
    }
    text += static_cast<wchar_t>(character);
}

} // namespace Halvora::detail
