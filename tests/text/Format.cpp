#include <Halvora/Format.h>
#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#if __has_include(<fmt/ostream.h>)
#    define FMT_HEADER_ONLY
#    include <fmt/ostream.h>
#endif

using namespace Halvora;

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
#endif

#if defined(FMT_VERSION) && FMT_VERSION >= 90000
TEST(Format, fmtTakesWhatStreams) {
    HLVError::Holder const holder(new HLVError(-5));
    EXPECT_EQ("[  Error -5]", fmt::format("[{:>10}]", fmt::streamed(holder)));
    EXPECT_EQ("0x" + std::string(31, '0') + '1', fmt::format("{}", fmt::streamed(Binary16(1))));
}
#endif
