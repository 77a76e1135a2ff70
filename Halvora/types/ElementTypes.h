#pragma once

#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>

#include <array>
#include <string>
#include <type_traits>

namespace Halvora {

class ResString;

/// True for the sixteen data types, `DT_VOID` to `DT_STRINGRES`; false for every other number.
constexpr bool isDataType(eDataType type) noexcept {
    return type >= DT_VOID && type <= DT_STRINGRES;
}

/// True for the types whose values are text objects: `DT_STRING` and `DT_STRINGRES`.
constexpr bool isTextType(eDataType type) noexcept {
    return type == DT_STRING || type == DT_STRINGRES;
}

/// A row of the table of element types: the data type `Type` has values of the C++ type `T`.
template <eDataType Type, typename T>
struct Element {
    /// The C++ type of a value.
    using Value = T;

    /// The data type.
    static constexpr eDataType type = Type;

    /// True when values are text objects; the others are plain bytes.
    static constexpr bool isText = isTextType(Type);

    /// The size of a value in bytes; 0 for texts.
    static constexpr unsigned int width() noexcept {
        if constexpr (isText) {
            return 0;
        } else {
            return sizeof(T);
        }
    }
};

/// A list of rows.
template <typename... Rows>
struct ElementTable : Rows... {
    /// Calls `visit` with each row in turn.
    template <typename Visit>
    static constexpr void forEach(Visit&& visit) {
        (visit(Rows()), ...);
    }

    /// Calls `visit` with the row of `type`. False, and no call, when there is none.
    template <typename Visit>
    static constexpr bool visit(eDataType type, Visit&& visit) {
        return ((type == Rows::type && (visit(Rows()), true)) || ...);
    }
};

/// Each data type that has values, in the order of the numbers, and the C++ type of these values.
/// The only such table: what depends on a data type follows from it. `DT_VOID` has no row.
using ElementTypes =
    ElementTable<Element<DT_BOOL, bool>, Element<DT_BYTE, unsigned char>, Element<DT_INT16, short>,
                 Element<DT_INT32, int>, Element<DT_INT64, long long>,
                 Element<DT_UINT16, unsigned short>, Element<DT_UINT32, unsigned int>,
                 Element<DT_UINT64, unsigned long long>, Element<DT_FLOAT, float>,
                 Element<DT_DOUBLE, double>, Element<DT_STRING, std::wstring>,
                 Element<DT_TICK, unsigned long long>, Element<DT_ID, Binary16>,
                 Element<DT_BINARY16, Binary16>, Element<DT_STRINGRES, ResString>>;

namespace detail {

template <eDataType Type, typename T>
Element<Type, T> elementOf(Element<Type, T> const&);

// `long` is the 64-bit integer where it has 64 bits, and nobody's value type where it has not.
template <typename T>
using WithoutLong = std::conditional_t<
    sizeof(long) == sizeof(long long) && std::is_same_v<T, long>, long long,
    std::conditional_t<sizeof(long) == sizeof(long long) && std::is_same_v<T, unsigned long>,
                       unsigned long long, T>>;

template <typename T, typename... Rows>
constexpr bool isValueIn(ElementTable<Rows...> const&) noexcept {
    return (std::is_same_v<T, typename Rows::Value> || ...);
}
template <typename T>
constexpr bool isElementValue = isValueIn<WithoutLong<T>>(ElementTypes());

constexpr std::array<unsigned char, DT_STRINGRES + 1> elementWidths() noexcept {
    std::array<unsigned char, DT_STRINGRES + 1> widths{};
    ElementTypes::forEach([&](auto row) { widths[row.type] = row.width(); });
    return widths;
}

} // namespace detail

/// The row of `Type`. Does not compile for a type without values.
template <eDataType Type>
using ElementOf = decltype(detail::elementOf<Type>(ElementTypes()));

/// The C++ type of the values of `Type`: `ElementValue<DT_TICK>` is `unsigned long long`.
template <eDataType Type>
using ElementValue = typename ElementOf<Type>::Value;

/// The size of a value of `type` in bytes; 0 for texts, `DT_VOID` and unknown types.
constexpr unsigned int elementWidth(eDataType type) noexcept {
    constexpr auto widths = detail::elementWidths();
    return isDataType(type) ? widths[static_cast<unsigned int>(type)] : 0;
}

} // namespace Halvora
