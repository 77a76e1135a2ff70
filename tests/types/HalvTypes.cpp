#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/Round.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace Halvora;

template <typename T, typename = void>
constexpr bool hasInstances = false;
template <typename T>
constexpr bool hasInstances<T, decltype(void(T{}))> = true;
static_assert(!hasInstances<HalvTypes> && !hasInstances<Round> && hasInstances<Binary16>);

namespace {

struct {
    eDataType type;
    std::string name;
    eDataTypeGroup group;
} const rows[] = {
    {DT_VOID,       "VOID",      DTG_VOID    },
    {DT_BOOL,       "BOOL",      DTG_BOOL    },
    {DT_BYTE,       "BYTE",      DTG_NUMERIC },
    {DT_INT16,      "INT16",     DTG_NUMERIC },
    {DT_INT32,      "INT32",     DTG_NUMERIC },
    {DT_INT64,      "INT64",     DTG_NUMERIC },
    {DT_UINT16,     "UINT16",    DTG_NUMERIC },
    {DT_UINT32,     "UINT32",    DTG_NUMERIC },
    {DT_UINT64,     "UINT64",    DTG_NUMERIC },
    {DT_FLOAT,      "FLOAT",     DTG_NUMERIC },
    {DT_DOUBLE,     "DOUBLE",    DTG_NUMERIC },
    {DT_STRING,     "STRING",    DTG_STRING  },
    {DT_TICK,       "TICK",      DTG_TICK    },
    {DT_ID,         "ID",        DTG_ID      },
    {DT_BINARY16,   "BINARY16",  DTG_BINARY16},
    {DT_STRINGRES,  "STRINGRES", DTG_STRING  },
    {eDataType(16), "!UNKNOWN!", DTG_VOID    },
    {eDataType(-1), "!UNKNOWN!", DTG_VOID    },
};

TEST(HalvTypes, everyTypeHasItsNumberItsNameAndItsGroup) {
    int number = 0;
    for (auto const& row : rows) {
        EXPECT_EQ(number <= 16 ? number : -1, row.type);
        EXPECT_EQ(row.name, HalvTypes::dataTypeToString(row.type));
        EXPECT_EQ(std::wstring(row.name.begin(), row.name.end()),
                  HalvTypes::dataTypeToWString(row.type));
        EXPECT_EQ(row.group, HalvTypes::getDataTypeGroup(row.type)) << row.name;
        ++number;
    }
}

TEST(HalvTypes, everyGroupHasItsListAndItsWidestType) {
    using Types = std::vector<eDataType>;
    Types const numeric = {DT_BYTE,   DT_INT16,  DT_INT32,  DT_INT64, DT_UINT16,
                           DT_UINT32, DT_UINT64, DT_DOUBLE, DT_FLOAT};
    Types const lists[] = {
        {DT_VOID  },
        {DT_BOOL  },
        numeric,      {DT_STRING, DT_STRINGRES},
        {DT_TICK        },
        {DT_ID},
        {DT_BINARY16        }
    };
    eDataType const widest[] = {DT_VOID, DT_BOOL, DT_DOUBLE,  DT_STRINGRES,
                                DT_TICK, DT_ID,   DT_BINARY16};
    for (int number = -2; number < 10; ++number) {
        auto const group = static_cast<eDataTypeGroup>(number);
        eDataType const* list = nullptr;
        int count = -1;
        HalvTypes::getDataTypeGroup(group, list, count);
        int const row = number < 0 || number > 6 ? 0 : number;
        EXPECT_EQ(lists[row], Types(list, list + count)) << number;
        EXPECT_EQ(widest[row], HalvTypes::getMaxDataType(group)) << number;
    }
}

TEST(HalvTypes, theSmallestCommonTypeHoldsBothTypes) {
    struct {
        eDataType a, b;
        bool isCommon;
        eDataType common;
    } const pairs[] = {
        {DT_BOOL,       DT_VOID,   true,  DT_BOOL      },
        {DT_TICK,       DT_TICK,   true,  DT_TICK      },
        {DT_INT16,      DT_UINT16, true,  DT_INT32     },
        {DT_UINT64,     DT_INT16,  true,  DT_DOUBLE    },
        {DT_INT32,      DT_FLOAT,  true,  DT_FLOAT     },
        {DT_INT64,      DT_FLOAT,  true,  DT_DOUBLE    },
        {DT_STRINGRES,  DT_STRING, true,  DT_STRINGRES },
        {eDataType(16), DT_VOID,   true,  eDataType(16)},
        {DT_BOOL,       DT_BYTE,   false, DT_VOID      },
        {DT_TICK,       DT_UINT64, false, DT_VOID      },
        {eDataType(16), DT_BOOL,   false, DT_VOID      },
    };
    for (auto const& row : pairs) {
        eDataType common = DT_ID;
        EXPECT_EQ(row.isCommon, HalvTypes::getSmallestCommonDataType(row.a, row.b, common))
            << row.a << ' ' << row.b;
        EXPECT_EQ(row.common, common) << row.a << ' ' << row.b;
    }
}

// A type's number as one digit.
constexpr char digits[] = "0123456789ABCDEF";

TEST(HalvTypes, everyPairHasTheCommonTypeOfTheMatrix) {
    // Rows and columns: byte to double.
    char const* const numeric[] = {"23456789A", "334545A9A", "444545A9A", "555555AAA", "64456789A",
                                   "75557789A", "8AAA888AA", "999A99A9A", "AAAAAAAAA"};
    for (int a = -1; a <= 16; ++a) {
        for (int b = -1; b <= 16; ++b) {
            bool const areNumeric = std::min(a, b) > 1 && std::max(a, b) < 11;
            bool const areTexts = a * b == 11 * 15 && a + b == 11 + 15;
            bool const isCommon = a == b || a == 0 || b == 0 || areNumeric || areTexts;
            int const expected = a == b || b == 0 ? a : a == 0 ? b : areTexts ? 15 : 0;
            eDataType common = DT_TICK;
            EXPECT_EQ(isCommon,
                      HalvTypes::getSmallestCommonDataType(eDataType(a), eDataType(b), common));
            EXPECT_TRUE(areNumeric ? digits[common] == numeric[a - 2][b - 2] : common == expected)
                << a << ' ' << b << ' ' << common;
        }
    }
}

} // namespace
