#pragma once

#include <cstdint>
#include <cstring>

namespace Halvora::detail {

inline constexpr unsigned char upperCaseLetters = 'A' - '9' - 1;
inline constexpr unsigned char lowerCaseLetters = 'a' - '9' - 1;

// Writes the 8 digits of a number, most significant first: its nibbles are spread over the bytes of
// one 64-bit word and turned into digits all at once. `letters` is the gap between '9' and the
// letter that stands for 10.
inline char* putHex8(char* out, std::uint32_t number, unsigned char letters) noexcept {
    constexpr std::uint64_t each = 0x0101010101010101u;
    std::uint64_t nibbles = __builtin_bswap32(number);
    nibbles = (nibbles | (nibbles << 16)) & 0x0000FFFF0000FFFFu;
    nibbles = (nibbles | (nibbles << 8)) & 0x00FF00FF00FF00FFu;
    constexpr std::uint64_t low = 0x000F000F000F000Fu;
    nibbles = ((nibbles >> 4) & low) | ((nibbles & low) << 8);
    std::uint64_t const aboveNine = ((nibbles + each * 6) >> 4) & each;
    std::uint64_t const digits = nibbles + each * '0' + aboveNine * letters;
    std::memcpy(out, &digits, sizeof digits);
    return out + sizeof digits;
}

} // namespace Halvora::detail
