#include <Halvora/text/HLVString.h>

#include <gtest/gtest.h>

namespace Halvora::test {
namespace {

using Traits = HLVString::traits_type;
constexpr unsigned short a[] = {1, 0xFFFF, 0x100, 0xFF, 0}, b[] = {1, 0xFFFF, 0xFF, 0x100, 0};

static_assert(Traits::eq(7, 7) && !Traits::eq(7, 0x107));
static_assert(Traits::lt(0xFF, 0x100) && !Traits::lt(0x100, 0xFF) && !Traits::lt(7, 7));
static_assert(Traits::compare(a, b, 2) == 0 && Traits::compare(a, b, 3) > 0 &&
              Traits::compare(b, a, 4) < 0); // by the first that differs
static_assert(Traits::length(a) == 4 && Traits::length(a + 4) == 0);
static_assert(Traits::find(a, 4, 0xFF) == a + 3 && Traits::find(a, 3, 0xFF) == nullptr);
static_assert(Traits::eof() > 0xFFFF && Traits::not_eof(Traits::eof()) != Traits::eof() &&
              Traits::not_eof(0xFFFF) == 0xFFFF);
static_assert(Traits::to_int_type(0xFFFF) == 0xFFFF && Traits::to_char_type(0xFFFE) == 0xFFFE &&
              Traits::eq_int_type(7, 7) && !Traits::eq_int_type(0xFFFF, Traits::eof()));

TEST(HLVString, runsAreMovedAndFilled) {
    unsigned short run[] = {1, 2, 3, 4, 5, 6};
    HLVString const expected[] = {
        {1, 1, 2, 3, 4, 6},
        {1, 2, 3, 4, 4, 6},
        {9, 9, 3, 6, 4, 6}
    };
    EXPECT_EQ(run + 1, Traits::move(run + 1, run, 4)); // up, over itself
    EXPECT_EQ(expected[0], HLVString(run, 6));
    EXPECT_EQ(run + 1, Traits::move(run + 1, run + 2, 3)); // down
    EXPECT_EQ(expected[1], HLVString(run, 6));
    EXPECT_EQ(run, Traits::assign(run, 2, 9));
    EXPECT_EQ(run + 3, Traits::copy(run + 3, run + 5, 1));
    EXPECT_EQ(expected[2], HLVString(run, 6));
}

} // namespace
} // namespace Halvora::test
