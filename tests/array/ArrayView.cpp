#include <Halvora/array/ArrayView.h>

#include <gtest/gtest.h>

using namespace Halvora;

#if defined(__cpp_lib_ranges)
static_assert(std::ranges::view<ArrayView<int>> && std::ranges::borrowed_range<ArrayView<int>> &&
              std::ranges::contiguous_range<ArrayView<int>>);
#endif

// A view must not outlive its array.
constexpr auto view = [](auto&& a) -> decltype(void(viewOf<int>(std::forward<decltype(a)>(a)))) {};
static_assert(std::is_invocable_v<decltype(view), HLVArray const&> &&
              !std::is_invocable_v<decltype(view), HLVArray const>);

TEST(ArrayView, showsTheElementsOrNothing) {
    HLVArray const numbers({1, 2, 3}), ticks(HLVArray::createTick(5)), none(DT_INT32);
    auto const ints = viewOf<int>(numbers);
    EXPECT_TRUE(ints.data() == numbers.getData() && ints.end() == ints.begin() + 3 && ints[2] == 3);
    EXPECT_TRUE(viewOf<unsigned int>(numbers).empty() && viewOf<bool>(numbers).empty());
    EXPECT_TRUE(viewOf<long long>(ticks).empty() && viewOf<unsigned long long>(ticks)[0] == 5);
    EXPECT_TRUE(viewOf<int>(none).empty() && viewOf<int>(none).data() == nullptr);
}

#if defined(_GLIBCXX_ASSERTIONS) && defined(__GLIBCXX__)
TEST(ArrayViewDeathTest, anIndexBehindTheEndIsAnAssertion) {
    HLVArray const array({1, 2, 3});
    EXPECT_DEATH(static_cast<void>(viewOf<int>(array)[3]), "index < m_size");
}
#endif
