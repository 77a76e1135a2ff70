#ifndef HALVORA_TYPES_BINARY16INLINE_H // the two headers include each other: no `#pragma once`
#define HALVORA_TYPES_BINARY16INLINE_H

// The templates around Binary16, whose header includes this one.

#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <type_traits>

namespace Halvora::detail {

// An argument that is taken by a conversion, so that any other viable overload is the better one.
template <typename T>
struct LastChoice {
    template <typename Given, typename = std::enable_if_t<
                                  std::is_convertible_v<std::remove_reference_t<Given>*, T*>>>
    LastChoice(Given&& given) noexcept : chosen(given) {}
    T& chosen;
};

} // namespace Halvora::detail

/// Hash of all 16 bytes.
template <>
struct std::hash<Halvora::Binary16> {
    /// Equal values give equal results, the same in every run.
    HALVTYPES_WRAPS std::size_t operator()(Halvora::Binary16 const& value) const noexcept {
        std::uint64_t half[2];
        std::memcpy(half, &value, sizeof half);
        // Odd multipliers and shifts (the finisher of splitmix64) spread ids that differ in few
        // bits. Without the first shift the top bits of the halves could cancel each other out.
        std::uint64_t mixed = half[1] * 0x9E3779B97F4A7C15u;
        mixed ^= (mixed >> 32) ^ half[0];
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return static_cast<std::size_t>(mixed ^ (mixed >> 31));
    }
};

#endif
