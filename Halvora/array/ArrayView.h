#pragma once

#include <Halvora/array/HLVArray.h>

#include <cstddef>
#include <string>
#include <type_traits>

namespace Halvora {

// A read-only look at the elements of an array, for loops and algorithms; std::span takes it where
// there is one. Valid until the array is next changed or destroyed.
template <typename T>
class ArrayView {
public:
    // As the standard library calls them.
    using value_type = T;
    using const_iterator = T const*;

    // No element, or `size` elements from `data` on, which stay their owner's.
    constexpr ArrayView() noexcept = default;
    constexpr ArrayView(T const* data, std::size_t size) noexcept : m_data(data), m_size(size) {}

    // The elements in their order. No index is tested.
    constexpr T const* begin() const noexcept { return m_data; }
    constexpr T const* end() const noexcept { return m_data + m_size; }
    constexpr T const* data() const noexcept { return m_data; }
    constexpr std::size_t size() const noexcept { return m_size; } // elements
    constexpr bool empty() const noexcept { return m_size == 0; }
    constexpr T const& operator[](std::size_t index) const noexcept { return m_data[index]; }

private:
    T const* m_data = nullptr;
    std::size_t m_size = 0;
};

namespace detail {

// Whether elements of the type are values of T: ticks are unsigned 64-bit integers like DT_UINT64,
// identifiers Binary16 like DT_BINARY16, and `long` is the integer of its width.
template <typename T>
constexpr bool holds(eDataType type) noexcept {
    constexpr bool isSigned =
        std::is_same_v<T, int> || std::is_same_v<T, long> || std::is_same_v<T, long long>;
    constexpr bool isUnsigned = std::is_same_v<T, unsigned int> ||
                                std::is_same_v<T, unsigned long> ||
                                std::is_same_v<T, unsigned long long>;
    switch (type) {
    case DT_BOOL: return std::is_same_v<T, bool>;
    case DT_BYTE: return std::is_same_v<T, unsigned char>;
    case DT_INT16: return std::is_same_v<T, short>;
    case DT_UINT16: return std::is_same_v<T, unsigned short>;
    case DT_INT32: return isSigned && sizeof(T) == 4;
    case DT_UINT32: return isUnsigned && sizeof(T) == 4;
    case DT_INT64: return isSigned && sizeof(T) == 8;
    case DT_UINT64:
    case DT_TICK: return isUnsigned && sizeof(T) == 8;
    case DT_FLOAT: return std::is_same_v<T, float>;
    case DT_DOUBLE: return std::is_same_v<T, double>;
    case DT_ID:
    case DT_BINARY16: return std::is_same_v<T, Binary16>;
    case DT_STRING: return std::is_same_v<T, std::wstring>;
    case DT_STRINGRES: return std::is_same_v<T, ResString>;
    case DT_VOID: break;
    }
    return false;
}

} // namespace detail

// The elements of the array as values of T; an empty view if they are of another type.
template <typename T>
ArrayView<T> viewOf(HLVArray const& array) noexcept {
    if (!detail::holds<T>(array.getDataType())) {
        return {};
    }
    unsigned short count = array.getCount();
    T const* values = nullptr;
    if constexpr (std::is_same_v<T, std::wstring>) {
        array.getString(count, values);
    } else if constexpr (std::is_same_v<T, ResString>) {
        array.getResString(count, values);
    } else {
        values = static_cast<T const*>(array.getData());
    }
    return {values, count};
}

} // namespace Halvora
