#pragma once

#include <Halvora/array/HLVArray.h>
#include <Halvora/types/ElementTypes.h>

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

// The integer of the same width and sign: std::int64_t is `long` on some machines.
template <typename T>
struct Same {
    using Type = T;
};
template <>
struct Same<long> {
    using Type = std::conditional_t<sizeof(long) == sizeof(int), int, long long>;
};
template <>
struct Same<unsigned long> {
    using Type = std::conditional_t<sizeof(long) == sizeof(int), unsigned int, unsigned long long>;
};

// True when elements of the type are values of T. A type may share its values with another, as
// ticks do with DT_UINT64.
template <typename T>
constexpr bool holds(eDataType type) noexcept {
    bool same = false;
    ElementTypes::visit(type, [&](auto row) {
        same = std::is_same_v<typename Same<T>::Type, typename decltype(row)::Value>;
    });
    return same;
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
