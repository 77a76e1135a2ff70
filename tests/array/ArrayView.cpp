#include <Halvora/array/ArrayView.h>

#include <gtest/gtest.h>

#include <numeric>

using namespace Halvora;

#if defined(__cpp_lib_ranges)
static_assert(std::ranges::view<ArrayView<int>> && std::ranges::borrowed_range<ArrayView<int>> &&
              std::ranges::contiguous_range<ArrayView<int>>);
#endif

// A view must not outlive its array.
template <typename Array, typename = void>
constexpr bool isViewed = false;
template <typename Array>
constexpr bool isViewed<Array, decltype(void(viewOf<int>(std::declval<Array>())))> = true;
static_assert(isViewed<HLVArray&> && isViewed<HLVArray const&>);
static_assert(!isViewed<HLVArray> && !isViewed<HLVArray const>);

TEST(ArrayView, showsTheArraysOwnElements) {
    HLVArray const array({1, 2, 3});
    auto const view = viewOf<int>(array);
    EXPECT_EQ(array.getData(), view.data());
    EXPECT_EQ(6, std::accumulate(view.begin(), view.end(), 0));
    EXPECT_TRUE(view.size() == 3 && !view.empty() && view[2] == 3);
}

TEST(ArrayView, isEmptyForAnotherType) {
    HLVArray const numbers({1, 2, 3}), ticks(HLVArray::createTick(5)), none(DT_INT32);
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
