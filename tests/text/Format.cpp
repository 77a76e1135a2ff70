#include <Halvora/Format.h>
#include <Halvora/Halvora.h>

#include <tests/text/Text.h>

#if __has_include(<fmt/ostream.h>)
#    define FMT_HEADER_ONLY
#    include <fmt/ostream.h>
#endif

using namespace Halvora;
using Halvora::test::refusal;

#if defined(__cpp_lib_format)
TEST(Format, textsTypesAndHoldersInBothWidths) {
    ResString const text(L"\u00E9\u20AC");
    ResString2 const text2(Binary16(1), L"ab");
    VarChar const raw(L"xyz");
    HLVError::Holder const holder(new HLVError(-5));
    EXPECT_EQ("\xE9 | ab|xyz--|INT32|!UNKNOWN!|Error -5|<NONE>",
              std::format("{}|{:>3}|{:-<5}|{}|{}|{}|{}", text, text2, raw, DT_INT32,
                          static_cast<eDataType>(99), holder, HLVError::Holder()));
    EXPECT_EQ(L"\u00E9\u20AC| ab|xyz--|INT32|  Error -5",
              std::format(L"{}|{:>3}|{:-<5}|{}|{:>10}", text, text2, raw, DT_INT32, holder));
}

TEST(Format, othersAsAStreamWritesThem) {
    HLVError const error(-5, new HLVError::Param(7));
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    EXPECT_EQ("Error -5\n  P1: 7|    7|3.0.0.39686 (release-dev)",
              std::format("{}|{:>5}|{}", error, *error.getParam0(), HalvTypes::ms_Version));
    EXPECT_EQ("0x0102030405060708DEF09ABC12345678 12345678-9abc-def0-0807-060504030201",
              std::format("{} {:g}", id, id));
    EXPECT_EQ(L"12345678-9abc-def0-0807-060504030201 7",
              std::format(L"{:g} {}", id, *error.getParam0()));
    EXPECT_EQ("Binary16 takes {} or {:g}", refusal<std::format_error>([&id] {
                  return std::vformat("{:q}", std::make_format_args(id));
              }));
}
#endif

#if defined(FMT_VERSION) && FMT_VERSION >= 90000
TEST(Format, fmtTakesWhatStreams) {
    HLVError::Holder const holder(new HLVError(-5));
    EXPECT_EQ("[  Error -5]", fmt::format("[{:>10}]", fmt::streamed(holder)));
    EXPECT_EQ("0x" + std::string(31, '0') + '1', fmt::format("{}", fmt::streamed(Binary16(1))));
}
#endif
