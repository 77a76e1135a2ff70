#pragma once

#include <cstdint>
#include <cstring>

namespace Halvora::detail {

// Four elements at a time for 32-bit ARM without NEON, where words at any address are read and
// written as quickly as bytes are. The first element lies in the lowest bits of a word.

using ArmWord = std::uint32_t;

inline ArmWord loadArm(void const* at) noexcept {
    ArmWord word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

inline void storeArm(void* at, ArmWord word) noexcept {
    std::memcpy(at, &word, sizeof word);
}

inline void convertFourArm(wchar_t* out, char const* in) noexcept {
    ArmWord const bytes = loadArm(in);
    out[0] = bytes & 0xFF;
    out[1] = bytes >> 8 & 0xFF;
    out[2] = bytes >> 16 & 0xFF;
    out[3] = bytes >> 24;
}

inline void convertFourArm(unsigned short* out, char const* in) noexcept {
    ArmWord const bytes = loadArm(in);
    storeArm(out, (bytes & 0xFF) | (bytes >> 8 & 0xFF) << 16);
    storeArm(out + 2, (bytes >> 16 & 0xFF) | bytes >> 24 << 16);
}

inline void convertFourArm(wchar_t* out, unsigned short const* in) noexcept {
    ArmWord const front = loadArm(in), back = loadArm(in + 2);
    out[0] = front & 0xFFFF;
    out[1] = front >> 16;
    out[2] = back & 0xFFFF;
    out[3] = back >> 16;
}

inline void convertFourArm(unsigned short* out, wchar_t const* in) noexcept {
    storeArm(out, (in[0] & 0xFFFF) | in[1] << 16);
    storeArm(out + 2, (in[2] & 0xFFFF) | in[3] << 16);
}

inline void convertFourArm(unsigned short* out, unsigned short const* in) noexcept {
    std::memcpy(out, in, 4 * sizeof *out);
}

// To narrow text: whether all four have a place in it; writes them if so.

inline bool narrowFourArm(char* out, wchar_t const* in) noexcept {
    ArmWord const a = in[0], b = in[1], c = in[2], d = in[3];
    if ((a | b | c | d) >> 8 != 0) {
        return false;
    }
    storeArm(out, a | b << 8 | c << 16 | d << 24);
    return true;
}

inline bool narrowFourArm(char* out, unsigned short const* in) noexcept {
    ArmWord const front = loadArm(in), back = loadArm(in + 2);
    if (((front | back) & 0xFF00FF00) != 0) {
        return false;
    }
    storeArm(out, ((front | front >> 8) & 0xFFFF) | (back | back >> 8) << 16);
    return true;
}

} // namespace Halvora::detail
