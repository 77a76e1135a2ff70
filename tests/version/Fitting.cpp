// What the library offers to the language's newer means.

#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

using namespace Halvora;

TEST(Fitting, valuesAreHashedAndOrdered) {
    std::hash<KrVersion> const versions;
    EXPECT_EQ(versions(KrVersion(3, 0, 0, 39686)), versions(HalvTypes::ms_Version));
    EXPECT_NE(versions(KrVersion(3, 0)), versions(KrVersion(0, 3)));
#if defined(__cpp_lib_three_way_comparison)
    EXPECT_TRUE((Binary16(1) <=> Binary16(2)) < 0 && (Binary16(1) <=> Binary16(1)) == 0);
#endif
}

TEST(Fitting, listsAndArraysGoThroughTheAlgorithms) {
    HLVError::List list;
    for (int const code : {-1, 2, -3}) {
        list.add(new HLVError(code));
    }
    HLVError::List const& readOnly = list;
    EXPECT_EQ(2, std::count_if(list.begin(), list.end(), HLVError::isError));
    EXPECT_EQ(3, std::distance(readOnly.begin(), readOnly.end()));
    EXPECT_EQ(2, (*std::find_if(readOnly.begin(), readOnly.end(), HLVError::isWarning))->getCode());
    std::int64_t const values[] = {1, 1ll << 40};
    HLVArray const array(2, values);
    auto const view = viewOf<std::int64_t>(array);
    EXPECT_EQ(1 + (1ll << 40), std::accumulate(view.begin(), view.end(), std::int64_t()));
    HLVArray copy(DT_VOID);
    copy.init(2, DT_INT64);
    EXPECT_EQ(0, copy.setRangeInt64(0, 2, values));
    EXPECT_EQ(ERR_NULL_POINTER, copy.setRangeInt64(0, 2, nullptr));
    EXPECT_EQ(array, copy);
    unsigned short count = 0;
    std::int64_t const* stored = nullptr;
    EXPECT_EQ(0, copy.getInt64(count, stored));
    EXPECT_EQ(values[1], stored[1]);
    std::uint64_t const ticks[] = {5, 6};
    std::uint64_t const* storedTicks = nullptr;
    EXPECT_EQ(ERR_WRONG_TYPE, copy.getTick(count, storedTicks));
    EXPECT_EQ(nullptr, storedTicks);
    HLVArray ticking = HLVArray::createTick(2, ticks);
    EXPECT_EQ(0, ticking.setRangeTick(1, 1, ticks));
    EXPECT_EQ(0, ticking.getTick(count, storedTicks));
    EXPECT_EQ(5u, storedTicks[1]);
    HLVArray numbers(2, ticks);
    EXPECT_EQ(0, numbers.setRangeUInt64(1, 1, ticks));
    EXPECT_EQ(0, numbers.getUInt64(count, storedTicks));
    EXPECT_EQ(5u, storedTicks[1]);
    EXPECT_EQ(DT_INT64, HLVError::Param(values[0]).getDataType());
    EXPECT_TRUE(viewOf<int>(array).empty());
}

#if defined(__cpp_lib_format)
TEST(Fitting, formatWritesWhatAStreamDoes) {
    HLVError const error(-5, new HLVError::Param(7));
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    EXPECT_EQ("Error -5\n  P1: 7|    7|3.0.0.39686 (release-dev)",
              std::format("{}|{:>5}|{}", error, *error.getParam0(), HalvTypes::ms_Version));
    EXPECT_EQ("0x0102030405060708DEF09ABC12345678 12345678-9abc-def0-0807-060504030201",
              std::format("{} {:g}", id, id));
    EXPECT_EQ(L"12345678-9abc-def0-0807-060504030201 7",
              std::format(L"{:g} {}", id, *error.getParam0()));
    EXPECT_THROW(static_cast<void>(std::vformat("{:q}", std::make_format_args(id))),
                 std::format_error);
}
#endif
