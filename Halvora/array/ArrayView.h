#pragma once

#include <Halvora/array/HLVArray.h>
#include <Halvora/types/ElementTypes.h>

#include <cstddef>
#include <string>
#include <type_traits>

#if defined(__has_include)
#    if __has_include(<version>)
#        include <version>
#    endif
#endif
#if defined(__cpp_lib_ranges)
#    include <ranges>
#endif

// Says that the result refers to the argument, so that clang warns about one that outlives it.
#if defined(__has_cpp_attribute)
#    if __has_cpp_attribute(clang::lifetimebound)
#        define HALVTYPES_LIFETIMEBOUND [[clang::lifetimebound]]
#    endif
#endif
#if !defined(HALVTYPES_LIFETIMEBOUND)
#    define HALVTYPES_LIFETIMEBOUND
#endif

namespace Halvora {

/// A read-only look at the elements of an array, for loops and algorithms: a borrowed range and a
/// view for those of C++20, and `std::span` takes it. The elements stay the array's; the view is
/// valid until the array is next changed or destroyed.
template <typename T>
class ArrayView {
public:
    /// The type of an element.
    using value_type = T;
    /// Iterators are pointers.
    using const_iterator = T const*;

    /// No element.
    constexpr ArrayView() noexcept = default;
    /// `size` elements from `data` on, which stay their owner's.
    constexpr ArrayView(T const* data, std::size_t size) noexcept : m_data(data), m_size(size) {}

    /// The first element.
    constexpr T const* begin() const noexcept { return m_data; }
    /// Behind the last element.
    constexpr T const* end() const noexcept { return m_data + m_size; }
    /// As `begin`; null where the array holds no storage.
    constexpr T const* data() const noexcept { return m_data; }
    /// The number of elements.
    constexpr std::size_t size() const noexcept { return m_size; }
    /// True when there is no element.
    constexpr bool empty() const noexcept { return m_size == 0; }
    /// The element at `index`, which is less than `size()`: only the standard library's assertions
    /// (`_GLIBCXX_ASSERTIONS`) test it, and end the program.
    constexpr T const& operator[](std::size_t index) const noexcept {
#if defined(__glibcxx_assert)
        __glibcxx_assert(index < m_size);
#endif
        return m_data[index];
    }

private:
    T const* m_data = nullptr;
    std::size_t m_size = 0;
};

namespace detail {

// True when elements of the type are values of T. A type may share its values with another, as
// ticks do with DT_UINT64.
template <typename T>
constexpr bool holds(eDataType type) noexcept {
    bool same = false;
    // By reference, or GCC notes on ARM that GCC 6 passed such rows otherwise.
    ElementTypes::visit(type, [&](auto const& row) {
        using Row = std::decay_t<decltype(row)>;
        same = std::is_same_v<WithoutLong<T>, typename Row::Value>;
    });
    return same;
}

} // namespace detail

/// The elements of `array` as values of `T`; an empty view if they are of another type. Ticks are
/// values of `unsigned long long`, identifiers of `Binary16`. Where `long` has 64 bits it stands
/// for `long long`; where it has 32, `viewOf<long>` does not compile.
template <typename T>
ArrayView<T> viewOf(HLVArray const& array HALVTYPES_LIFETIMEBOUND) noexcept {
    constexpr bool isLong = std::is_same_v<T, long> || std::is_same_v<T, unsigned long>;
    static_assert(!isLong || detail::isElementValue<T>, "no element is a `long` on this machine");
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

/// A temporary array is gone before its view is used.
template <typename T>
ArrayView<T> viewOf(HLVArray const&&) = delete;

} // namespace Halvora

#if defined(__cpp_lib_ranges)
template <typename T>
constexpr bool std::ranges::enable_borrowed_range<Halvora::ArrayView<T>> = true;
template <typename T>
constexpr bool std::ranges::enable_view<Halvora::ArrayView<T>> = true;
#endif
