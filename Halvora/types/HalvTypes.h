#pragma once

#include <Halvora/Export.h>

namespace Halvora {

class KrVersion;

/// The scalar data types. Stored, passed across the library's boundary and printed: never renumber.
enum eDataType : int {
    DT_VOID = 0,       ///< no value
    DT_BOOL = 1,       ///< bool
    DT_BYTE = 2,       ///< unsigned 8-bit integer
    DT_INT16 = 3,      ///< signed 16-bit integer
    DT_INT32 = 4,      ///< signed 32-bit integer
    DT_INT64 = 5,      ///< signed 64-bit integer
    DT_UINT16 = 6,     ///< unsigned 16-bit integer
    DT_UINT32 = 7,     ///< unsigned 32-bit integer
    DT_UINT64 = 8,     ///< unsigned 64-bit integer
    DT_FLOAT = 9,      ///< IEEE 754 single precision
    DT_DOUBLE = 10,    ///< IEEE 754 double precision
    DT_STRING = 11,    ///< std::wstring
    DT_TICK = 12,      ///< unsigned 64-bit tick count
    DT_ID = 13,        ///< Binary16 used as an identifier
    DT_BINARY16 = 14,  ///< Binary16
    DT_STRINGRES = 15, ///< ResString
};

/// The groups of data types. Stored, passed across the library's boundary and printed: never
/// renumber.
enum eDataTypeGroup : int {
    DTG_VOID = 0,     ///< DT_VOID
    DTG_BOOL = 1,     ///< DT_BOOL
    DTG_NUMERIC = 2,  ///< DT_BYTE to DT_DOUBLE
    DTG_STRING = 3,   ///< DT_STRING and DT_STRINGRES
    DTG_TICK = 4,     ///< DT_TICK
    DTG_ID = 5,       ///< DT_ID
    DTG_BINARY16 = 6, ///< DT_BINARY16
};

/// The catalogue of data types. Static members only, no instances; the functions neither allocate
/// nor throw, and accept every value of their arguments, also numbers that no enumerator has.
class HALVTYPES_API HalvTypes {
public:
    /// There are no instances; without `explicit`, C++17 would let `HalvTypes{}` through.
    explicit HalvTypes() = delete;

    /// The group of `type`; `DTG_VOID` for a number outside 0 to 15.
    static eDataTypeGroup getDataTypeGroup(eDataType type) noexcept;

    /// Points `types` at the constant list of the types of `group` and sets `count` to its length
    /// in elements. A number outside 0 to 6 gets the list of `DTG_VOID`.
    static void getDataTypeGroup(eDataTypeGroup group, eDataType const*& types,
                                 int& count) noexcept;

    /// The widest type of `group`; `DT_VOID` for a number outside 0 to 6.
    static eDataType getMaxDataType(eDataTypeGroup group) noexcept;

    /// Writes into `common` the type that values of `a` and `b` are widened to, and returns true;
    /// without one `common` is `DT_VOID` and the result false.
    ///
    /// - Equal types, and any type with `DT_VOID`, have one, also numbers that name no type.
    /// - Integers widen until both ranges fit; `DT_UINT64` with a signed type gives `DT_DOUBLE`.
    /// - `DT_FLOAT` stays `DT_FLOAT` beside integers of up to 32 bits, and becomes `DT_DOUBLE`
    ///   beside those of 64, though neither holds each of these integers exactly. `DT_DOUBLE`
    ///   stays beside every number.
    /// - `DT_STRING` and `DT_STRINGRES` give `DT_STRINGRES`.
    static bool getSmallestCommonDataType(eDataType a, eDataType b, eDataType& common) noexcept;

    /// The upper-case name ("INT32"), a static text; "!UNKNOWN!" for a number outside 0 to 15. The
    /// mixed-case name is Convert::toAString(eDataType).
    static char const* dataTypeToString(eDataType type) noexcept;
    /// The same name as wide text.
    static wchar_t const* dataTypeToWString(eDataType type) noexcept;

    /// @name Lists of the groups
    /// The types of each group, in the order in which getDataTypeGroup() hands them out.
    /// @{

    static eDataType const ms_voidGroupDataTypes[1];     ///< `DT_VOID`
    static eDataType const ms_boolGroupDataTypes[1];     ///< `DT_BOOL`
    static eDataType const ms_numericGroupDataTypes[9];  ///< `DT_DOUBLE` before `DT_FLOAT`
    static eDataType const ms_stringGroupDataTypes[2];   ///< `DT_STRING`, `DT_STRINGRES`
    static eDataType const ms_tickGroupDataTypes[1];     ///< `DT_TICK`
    static eDataType const ms_idGroupDataTypes[1];       ///< `DT_ID`
    static eDataType const ms_binary16GroupDataTypes[1]; ///< `DT_BINARY16`
    /// @}

    /// The version record of this library; include <Halvora/version/KrVersion.h> to read it.
    static KrVersion const ms_Version;
};

} // namespace Halvora
