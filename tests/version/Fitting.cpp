// The library beside what the language and its library have.

#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <cstdint>

using namespace Halvora;

TEST(Fitting, arraysTakeTheIntegersOfTheStandardLibrary) {
    std::int64_t const values[] = {1, 1ll << 40};
    HLVArray array(2, values);
    EXPECT_EQ(0, array.setRangeInt64(1, 1, values));
    unsigned short count = 0;
    std::int64_t const* stored = nullptr;
    EXPECT_EQ(0, array.getInt64(count, stored));
    EXPECT_EQ(1, stored[1]);
    EXPECT_EQ(2u, viewOf<std::int64_t>(array).size());
    std::uint64_t const tick = 5;
    EXPECT_EQ(HLVArray::createTick(1, &tick), HLVArray::createTick(tick));
    EXPECT_EQ(DT_INT64, HLVError::Param(values[0]).getDataType());
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
