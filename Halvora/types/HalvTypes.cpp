#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/HalvTypes.h>

#include <iterator>

namespace Halvora {

namespace {

constexpr int typeCount = DT_STRINGRES + 1;
constexpr int groupCount = DTG_BINARY16 + 1;

// In bytes, since an enumerator takes four.
constexpr unsigned char groupOfType[] = {
    DTG_VOID,    DTG_BOOL,    DTG_NUMERIC,  DTG_NUMERIC, DTG_NUMERIC, DTG_NUMERIC,
    DTG_NUMERIC, DTG_NUMERIC, DTG_NUMERIC,  DTG_NUMERIC, DTG_NUMERIC, DTG_STRING,
    DTG_TICK,    DTG_ID,      DTG_BINARY16, DTG_STRING,
};
static_assert(std::size(groupOfType) == typeCount);

constexpr eDataType widestOfGroup[] = {
    DT_VOID, DT_BOOL, DT_DOUBLE, DT_STRINGRES, DT_TICK, DT_ID, DT_BINARY16,
};
static_assert(std::size(widestOfGroup) == groupCount);

// Arrays of characters instead of pointers: nothing to relocate when the library is loaded. The
// last row answers every other number.
constexpr char narrowNames[][10] = {
    "VOID",  "BOOL",   "BYTE",   "INT16", "INT32", "INT64",    "UINT16",    "UINT32",    "UINT64",
    "FLOAT", "DOUBLE", "STRING", "TICK",  "ID",    "BINARY16", "STRINGRES", "!UNKNOWN!",
};
constexpr wchar_t wideNames[][10] = {
    L"VOID",   L"BOOL",   L"BYTE",     L"INT16",     L"INT32",     L"INT64",
    L"UINT16", L"UINT32", L"UINT64",   L"FLOAT",     L"DOUBLE",    L"STRING",
    L"TICK",   L"ID",     L"BINARY16", L"STRINGRES", L"!UNKNOWN!",
};
static_assert(std::size(narrowNames) == typeCount + 1 && std::size(wideNames) == typeCount + 1);

constexpr int nameRow(eDataType type) {
    return isDataType(type) ? type : typeCount;
}

// Rows and columns: DT_BYTE to DT_DOUBLE. F and D are the floating types, I and U the signed and
// unsigned integers of the given width.
constexpr eDataType U8 = DT_BYTE, I16 = DT_INT16, I32 = DT_INT32, I64 = DT_INT64, U16 = DT_UINT16,
                    U32 = DT_UINT32, U64 = DT_UINT64, F = DT_FLOAT, D = DT_DOUBLE;
constexpr unsigned char commonNumeric[9][9] = {
    {U8,  I16, I32, I64, U16, U32, U64, F, D},
    {I16, I16, I32, I64, I32, I64, D,   F, D},
    {I32, I32, I32, I64, I32, I64, D,   F, D},
    {I64, I64, I64, I64, I64, I64, D,   D, D},
    {U16, I32, I32, I64, U16, U32, U64, F, D},
    {U32, I64, I64, I64, U32, U32, U64, F, D},
    {U64, D,   D,   D,   U64, U64, U64, D, D},
    {F,   F,   F,   D,   F,   F,   D,   F, D},
    {D,   D,   D,   D,   D,   D,   D,   D, D},
};

constexpr bool isOfGroup(int type, eDataTypeGroup group) {
    return groupOfType[type] == group;
}

// `DT_VOID` when there is none.
constexpr int commonOfDifferent(int a, int b) {
    if (a == DT_VOID || b == DT_VOID) {
        return a + b;
    }
    if (isOfGroup(a, DTG_NUMERIC) && isOfGroup(b, DTG_NUMERIC)) {
        return commonNumeric[a - DT_BYTE][b - DT_BYTE];
    }
    return isOfGroup(a, DTG_STRING) && isOfGroup(b, DTG_STRING) ? DT_STRINGRES : DT_VOID;
}

// The answer for each two types in a byte: the common type, and whether there is one.
struct CommonTypes {
    static constexpr int isCommon = 0x10;
    unsigned char pairs[typeCount * typeCount] = {};

    constexpr CommonTypes() {
        for (int a = 0; a < typeCount; ++a) {
            for (int b = 0; b < typeCount; ++b) {
                int const common = a == b ? a : commonOfDifferent(a, b);
                bool const has = common != DT_VOID || a == b;
                pairs[a * typeCount + b] = static_cast<unsigned char>(has ? common | isCommon : 0);
            }
        }
    }
};
constexpr CommonTypes commonTypes;

[[gnu::noinline, gnu::cold]] bool commonWithUnknown(eDataType a, eDataType b,
                                                    eDataType& common) noexcept {
    common = a == b || b == DT_VOID ? a : a == DT_VOID ? b : DT_VOID;
    return common != DT_VOID;
}

} // namespace

eDataType const HalvTypes::ms_voidGroupDataTypes[1] = {DT_VOID};
eDataType const HalvTypes::ms_boolGroupDataTypes[1] = {DT_BOOL};
eDataType const HalvTypes::ms_numericGroupDataTypes[9] = {
    DT_BYTE, DT_INT16, DT_INT32, DT_INT64, DT_UINT16, DT_UINT32, DT_UINT64, DT_DOUBLE, DT_FLOAT,
};
eDataType const HalvTypes::ms_stringGroupDataTypes[2] = {DT_STRING, DT_STRINGRES};
eDataType const HalvTypes::ms_tickGroupDataTypes[1] = {DT_TICK};
eDataType const HalvTypes::ms_idGroupDataTypes[1] = {DT_ID};
eDataType const HalvTypes::ms_binary16GroupDataTypes[1] = {DT_BINARY16};

eDataTypeGroup HalvTypes::getDataTypeGroup(eDataType type) noexcept {
    return isDataType(type) ? static_cast<eDataTypeGroup>(groupOfType[type]) : DTG_VOID;
}

void HalvTypes::getDataTypeGroup(eDataTypeGroup group, eDataType const*& types,
                                 int& count) noexcept {
    auto const give = [&](auto const& list) {
        types = list;
        count = static_cast<int>(std::size(list));
    };
    switch (group) {
    case DTG_BOOL: return give(ms_boolGroupDataTypes);
    case DTG_NUMERIC: return give(ms_numericGroupDataTypes);
    case DTG_STRING: return give(ms_stringGroupDataTypes);
    case DTG_TICK: return give(ms_tickGroupDataTypes);
    case DTG_ID: return give(ms_idGroupDataTypes);
    case DTG_BINARY16: return give(ms_binary16GroupDataTypes);
    case DTG_VOID: break;
    }
    give(ms_voidGroupDataTypes);
}

eDataType HalvTypes::getMaxDataType(eDataTypeGroup group) noexcept {
    return group >= DTG_VOID && group <= DTG_BINARY16 ? widestOfGroup[group] : DT_VOID;
}

bool HalvTypes::getSmallestCommonDataType(eDataType a, eDataType b, eDataType& common) noexcept {
    auto const row = static_cast<unsigned int>(a), column = static_cast<unsigned int>(b);
    if ((row | column) >= typeCount) {
        return commonWithUnknown(a, b, common);
    }
    int const pair = commonTypes.pairs[row * typeCount + column];
    common = static_cast<eDataType>(pair % CommonTypes::isCommon);
    return pair >= CommonTypes::isCommon;
}

char const* HalvTypes::dataTypeToString(eDataType type) noexcept {
    return narrowNames[nameRow(type)];
}

wchar_t const* HalvTypes::dataTypeToWString(eDataType type) noexcept {
    return wideNames[nameRow(type)];
}

} // namespace Halvora
