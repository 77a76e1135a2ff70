#include "Shown.h"

#include <tests/support/ErrorProgram.h>

#include <random>

#if __cplusplus >= 202002L
#    include <ranges>
#endif

namespace Halvora::test {
namespace {

static_assert(std::is_convertible_v<HLVError*, List> && std::is_convertible_v<Holder&, List> &&
              std::is_convertible_v<std::unique_ptr<HLVError>, List> &&
              !std::is_constructible_v<List, List&> && std::is_nothrow_move_constructible_v<List> &&
              std::is_nothrow_move_assignable_v<List>);
#if defined(__cpp_lib_ranges)
static_assert(std::ranges::bidirectional_range<List> &&
              std::ranges::bidirectional_range<List const>);
#endif

List listOf(std::initializer_list<int> codes) {
    List list;
    for (int const code : codes) {
        EXPECT_EQ(code < 0, list.add(HLVError::create(code))) << code;
    }
    return list;
}

TEST(List, takesErrorsAndWarningsAndChangesAtAPosition) {
    using Position = List::iterator;
    struct {
        char const* name;
        void (*act)(List& list, Position& second);
        std::vector<int> codes;
    } const rows[] = {
        {"nothing",     [](List&,   Position&) {},                                           {-1, 2, -3}    },
        {"add",         [](List& l, Position&) { EXPECT_TRUE(l += new HLVError(-4)); },      {-1, 2, -3, -4}},
        {"a warning",
         [](List& l,                Position&) { EXPECT_FALSE(l += new HLVError(4)); },
         {-1, 2, -3, 4}                                                                                     },
        {"add null",    [](List& l, Position&) { EXPECT_FALSE(l.add(nullptr)); },            {-1, 2, -3}    },
        {"add itself",  [](List& l, Position&) { EXPECT_FALSE(l.add(l)); },                  {-1, 2, -3}    },
        {"make of one", [](List& l, Position&) { l = List(new HLVError(-4)); },              {-4}           },
        {"remove",      [](List& l, Position& at) { l.remove(at); },                         {-1, -3}       },
        {"replace",     [](List& l, Position& at) { l.replace(at, new HLVError(5)); },       {-1, 5, -3}    },
        {"by null",     [](List& l, Position& at) { l.replace(at, nullptr); },               {-1, -3}       },
        {"by itself",   [](List& l, Position& at) { l.replace(at, *at); },                   {-1, 2, -3}    },
        {"at the end",  [](List& l, Position& at) { l.remove(at = l.end()); },               {-1, 2, -3}    },
        {"elsewhere",
         [](List& l,                Position&) { l.remove(*std::make_unique<Position>()); },
         {-1, 2, -3}                                                                                        },
    };
    for (auto const& row : rows) {
        List list = listOf({-1, 2, 0, -3}); // 0 is not taken
        Position second = ++list.begin();
        row.act(list, second);
        std::vector<int> codes;
        for (HLVError const* error : list) {
            codes.push_back(error->getCode());
        }
        EXPECT_EQ(row.codes, codes) << row.name;
    }
}

// In a list of the codes 1 and 2: a step, what it gives, and where the position then stands.
#define STEP(step, gives, then)                        \
    {                                                  \
        Position at = from;                            \
        EXPECT_EQ(gives, where(step)) << #step;        \
        EXPECT_EQ(then, where(at)) << #step;           \
        EXPECT_TRUE(at != from) << #step << " stays."; \
        from = at;                                     \
    }
template <typename Position>
void expectRing(Position const first, Position nowhere) {
    auto const where = [](Position const& at) {
        std::string const entry = *at == nullptr ? "no entry" : std::to_string((*at)->getCode());
        return entry + (at.begin() ? ", the begin" : "") + (at.end() ? ", the end" : "");
    };
    std::string const begin = "1, the begin", second = "2", end = "no entry, the end";
    Position from = first;
    STEP(at++, begin, second);
    STEP(at++, second, end);
    STEP(++at, begin, begin);
    STEP(at--, begin, end);
    STEP(at--, end, second);
    STEP(--at, begin, begin);
    EXPECT_TRUE(from == first);
    EXPECT_EQ("no entry, the begin, the end", where(++nowhere));
    EXPECT_EQ("no entry, the begin, the end", where(--nowhere));
    auto const& same = from = nowhere;
    from = same;
    EXPECT_TRUE(from == nowhere && from == Position() && from != first);
}

TEST(List, positionsFormARingAndAreComparedAcrossListsAndKinds) {
    List list = listOf({1, 2}), other;
    expectRing<List::iterator>(list.begin(), {});
    expectRing<List::const_iterator>(list.begin(), List::iterator());
    List::iterator position = list.end();
    List::const_iterator constant = list.begin();
    EXPECT_TRUE(position != constant && constant != position && position != other.end());
    constant = position;
    EXPECT_TRUE(position == constant && constant == position && constant != other.end());
    List const moved = std::move(list); // whose positions stay good
    EXPECT_TRUE(position == moved.end() && list.end() == List::iterator());
}

TEST(List, randomProgramsKeepToTheirModelAndFreeEverythingOnce) {
    std::mt19937 dice;
    long const before = liveBlocks();
    {
        ErrorProgram program([&](int n) { return static_cast<int>(dice() % unsigned(n)); },
                             failAllocation);
        for (int step = 0; step < 10'000; ++step) {
            std::string const fault = program.step();
            ASSERT_TRUE(fault.empty()) << "in step " << step << '\n' << fault;
        }
    }
    EXPECT_EQ(before, liveBlocks());
}

} // namespace
} // namespace Halvora::test
