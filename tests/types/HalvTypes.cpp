#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/ParseBinary16.h>
#include <Halvora/types/Round.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace Halvora;

namespace {

template <typename T, typename = void>
constexpr bool hasInstances = false;
template <typename T>
constexpr bool hasInstances<T, decltype(void(T{}))> = true;
static_assert(!hasInstances<HalvTypes> && !hasInstances<Round> && hasInstances<Binary16>);

static_assert(ERR_OUT_OF_RANGE == -1004996 && ERR_WRONG_TYPE == -1004997 &&
              ERR_NULL_POINTER == -1004999 && PARSE_BAD_CHARACTER == 1 && PARSE_TOO_SHORT == 2 &&
              PARSE_TOO_LONG == 3);

constexpr char digits[] = "0123456789ABCDEF"; // a type or group by its number

// In the order of the numbers, one more for all other numbers.
std::string const names[] = {"VOID",   "BOOL",   "BYTE",     "INT16",     "INT32",    "INT64",
                             "UINT16", "UINT32", "UINT64",   "FLOAT",     "DOUBLE",   "STRING",
                             "TICK",   "ID",     "BINARY16", "STRINGRES", "!UNKNOWN!"};
char const groupOfType[] = "01222222222345630";
char const* const typesOfGroup[] = {"0", "1", "2345678A9", "BF", "C", "D", "E"};
char const widestOfGroup[] = "01AFCDE";

TEST(HalvTypes, everyNumberHasItsNamesItsGroupAndItsList) {
    for (int number = -2; number < 19; ++number) {
        SCOPED_TRACE(number);
        int const row = number < 0 || number > 15 ? 16 : number;
        int const known = number < 0 || number > 6 ? 0 : number;
        auto const type = static_cast<eDataType>(number);
        EXPECT_EQ(names[row], HalvTypes::dataTypeToString(type));
        EXPECT_EQ(std::wstring(names[row].begin(), names[row].end()),
                  HalvTypes::dataTypeToWString(type));
        EXPECT_EQ(groupOfType[row], digits[HalvTypes::getDataTypeGroup(type)]);

        auto const group = static_cast<eDataTypeGroup>(number);
        eDataType const* list = nullptr;
        int count = -1;
        HalvTypes::getDataTypeGroup(group, list, count);
        std::string members;
        std::for_each(list, list + count, [&](eDataType member) { members += digits[member]; });
        EXPECT_EQ(typesOfGroup[known], members);
        EXPECT_EQ(widestOfGroup[known], digits[HalvTypes::getMaxDataType(group)]);
    }
}

TEST(HalvTypes, theSmallestCommonTypeHoldsBothTypes) {
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
