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
              !std::is_copy_constructible_v<List> && !std::is_constructible_v<List, List&> &&
              std::is_nothrow_move_constructible_v<List> &&
              std::is_nothrow_move_assignable_v<List> &&
              std::is_nothrow_default_constructible_v<List::iterator> &&
              std::is_nothrow_default_constructible_v<List::const_iterator>);
#if defined(__cpp_lib_ranges)
static_assert(std::ranges::bidirectional_range<List> &&
              std::ranges::bidirectional_range<List const> &&
              std::sentinel_for<List::iterator, List::const_iterator>);
#endif

std::vector<int> codesOf(List const& list) {
    std::vector<int> codes;
    for (HLVError const* error : list) {
        codes.push_back(error->getCode());
    }
    return codes;
}

TEST(List, takesErrorsAndWarningsAndAnswersWhetherItGotAnError) {
    struct {
        int code;
        bool isError;
        std::vector<int> codes;
        int errors, warnings;
    } const rows[] = {
        {-1, true,  {-1},           1, 0},
        {2,  false, {-1, 2},        1, 1},
        {0,  false, {-1, 2},        1, 1}, // not taken
        {-3, true,  {-1, 2, -3},    2, 1},
        {4,  false, {-1, 2, -3, 4}, 2, 2},
    };
    List byAdd, byOperator;
    EXPECT_FALSE(byAdd.add(nullptr) || (byOperator += static_cast<HLVError*>(nullptr)));
    for (auto const& row : rows) {
        auto error = HLVError::create(row.code);
        EXPECT_EQ(row.isError, byAdd.add(error.get())) << row.code;
        static_cast<void>(row.code != 0 ? error.release() : nullptr);
        EXPECT_EQ(row.isError, byOperator += HLVError::create(row.code)) << row.code;
        EXPECT_EQ(row.codes, codesOf(byOperator));
        EXPECT_EQ(row.codes, codesOf(byAdd));
        EXPECT_EQ(row.errors, byAdd.getErrorCount());
        EXPECT_EQ(row.warnings, byAdd.getWarningCount());
    }
    EXPECT_EQ(-1, byAdd.getFirstError()->getCode());
    EXPECT_EQ(-3, byAdd.getLastError()->getCode());
}

List listOfThree() {
    List list = HLVError::create(-1);
    list.add(HLVError::create(2));
    list += HLVError::create(-3);
    return list;
}

TEST(List, changesAtAPosition) {
    struct {
        char const* name;
        void (*act)(List& list, List::iterator& second);
        std::vector<int> codes;
    } const rows[] = {
        {"remove",                   [](List& l, List::iterator& at) { l.remove(at); },                       {-1, -3}   },
        {"replace",
         [](List& l,                             List::iterator& at) { l.replace(at, new HLVError(5)); },
         {-1, 5, -3}                                                                                                     },
        {"replace by nothing",
         [](List& l,                             List::iterator& at) { l.replace(at, nullptr); },
         {-1, -3}                                                                                                        },
        {"replace by code 0",
         [](List& l,                             List::iterator& at) { l.replace(at, HLVError::create(0)); },
         {-1, -3}                                                                                                        },
        {"replace by itself",        [](List& l, List::iterator& at) { l.replace(at, *at); },                 {-1, 2, -3}},
        {"extract",
         [](List& l,                             List::iterator& at) {
             Holder holder = new HLVError(9);
             l.extract(at, holder);
             EXPECT_EQ(L"Error 2", text(holder));
         },                                                                               {-1, -3}   },
        {"at the end, nothing",
         [](List& l,                             List::iterator& at) {
             l.remove(at = l.end());
             auto error = HLVError::create(5);
             l.replace(at, std::move(error));
             l.replace(at, error.get());
         },                                                                               {-1, 2, -3}},
        {"in another list, nothing",
         [](List& l,                             List::iterator& at) {
             List other = HLVError::create(7);
             l.remove(at = other.begin());
         },                                                                               {-1, 2, -3}},
    };
    for (auto const& row : rows) {
        List list = listOfThree();
        List::iterator second = ++list.begin();
        row.act(list, second);
        EXPECT_EQ(row.codes, codesOf(list)) << row.name;
    }
}

TEST(List, isEmptyAndOfUseWhenMovedFrom) {
    List list = listOfThree();
    List::iterator const first = list.begin();
    List other = std::move(list);
    EXPECT_TRUE(first == other.begin() && first.begin());
    EXPECT_TRUE(list.begin() == list.end() && list.begin().end() && list.begin().begin());
    EXPECT_EQ(0, list.getCount() + list.getErrorCount() + list.getWarningCount());
    EXPECT_TRUE(list.getFirstError() == nullptr && list.getLastError() == nullptr);
    List third = std::move(list);
    auto nowhere = third.begin();
    third.remove(nowhere);
    third.clear();
    EXPECT_TRUE(!third.add(list) && other.add(third) == false && third.add(other));
    EXPECT_EQ((std::vector<int>{-1, 2, -3}), codesOf(third));
    EXPECT_TRUE(list.add(HLVError::create(-4)));
    EXPECT_EQ(1, list.getCount());
}

// One place of both kinds of iterator.
template <typename Iterator>
void walkTheRing(Iterator position, std::vector<int> const& codes) {
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = 0; i <= codes.size(); ++i, ++position) {
            EXPECT_EQ(i == 0, position.begin());
            EXPECT_EQ(i == codes.size(), position.end());
            EXPECT_EQ(i == codes.size() ? 0 : codes[i], *position ? (*position)->getCode() : 0);
        }
    }
    EXPECT_TRUE((--position).end() && (position--).end() &&
                (*position++)->getCode() == codes.back());
}

TEST(List, positionsFormARingThroughTheEnd) {
    List list = listOfThree();
    walkTheRing(list.begin(), {-1, 2, -3});
    walkTheRing(std::as_const(list).begin(), {-1, 2, -3});
    List::iterator nowhere;
    List::const_iterator constant = nowhere;
    EXPECT_TRUE(++nowhere == --constant && nowhere.begin() && constant.end());
    EXPECT_TRUE(*nowhere == nullptr && nowhere != list.end() && constant != list.end());
    nowhere = list.begin();
    EXPECT_TRUE(nowhere != constant && (constant = nowhere) == nowhere);
}

TEST(List, positionsAreComparedAcrossListsAndKinds) {
    List list = HLVError::create(-1), other;
    List::iterator position = other.begin();
    List::const_iterator constant = position;
    constant = position = list.begin();
    EXPECT_TRUE(position == constant && constant == position && position == list.begin());
    EXPECT_FALSE(position != constant || constant != position || position != list.begin());
    auto const& self = constant = ++position;
    auto const& same = position;
    constant = self;
    position = same;
    EXPECT_TRUE(constant == position && list.begin() != constant && constant != list.begin());
    EXPECT_TRUE(position != other.end() && constant != other.end());
    EXPECT_TRUE(constant != List::const_iterator(other.end()));
}

TEST(List, randomProgramsKeepToTheirModelAndFreeEverythingOnce) {
    std::mt19937 dice; // NOLINT: the same program each time
    long const before = liveBlocks();
    {
        ErrorProgram program([&](int n) { return static_cast<int>(dice() % unsigned(n)); });
        for (int step = 0; step < 10'000; ++step) {
            std::string const fault = program.step();
            ASSERT_EQ("", fault) << "in step " << step;
        }
    }
    EXPECT_EQ(before, liveBlocks());
}

TEST(List, failedAllocationsChangeAndLeakNothing) {
    struct Scene {
        Holder holder = chainOfFour();
        std::unique_ptr<HLVError> error = HLVError::create(-3);
        List list = listOfThree();
        List::iterator position = list.begin();
    };
    auto const fails = [](char const* name, int count, auto act) {
        failsCleanly<Scene>(name, count, act, [](Scene const& s) {
            return text(s.holder) + text(s.error.get()) + text(*s.position) +
                   text(Param(s.list.getCount()));
        });
    };
    fails("of holder", 2, [](Scene& s) { List const list(s.holder); });
    fails("of error", 2, [](Scene& s) { List const list(std::move(s.error)); });
    fails("add holder", 1, [](Scene& s) { s.list.add(s.holder); });
    fails("add error", 1, [](Scene& s) { s.list.add(std::move(s.error)); });
    fails("replace", 1, [](Scene& s) { s.list.replace(s.position, s.holder); });
    fails("replace", 1, [](Scene& s) { s.list.replace(s.position, std::move(s.error)); });
    fails("position", 2, [](Scene& s) { s.position = s.list.end(); });
    fails("positions", 12, [](Scene& s) {
        List::iterator other = s.list.begin();
        other++, other--;
        List::const_iterator constant(other), copy(constant);
        constant = std::as_const(s.list).begin();
        copy = s.list.end();
        copy++, copy--;
    });
}

TEST(List, addsAgainAfterAMoveWhenMemoryIsBack) {
    struct Moved {
        List list = listOfThree();
        List other = std::move(list);
        std::unique_ptr<HLVError> error = HLVError::create(-1);
    };
    failsCleanly<Moved>(
        "add", 2, [](Moved& m) { m.list.add(std::move(m.error)); },
        [](Moved const& m) { return m.list.getCount() + m.error->getCode(); });
}

} // namespace
} // namespace Halvora::test
