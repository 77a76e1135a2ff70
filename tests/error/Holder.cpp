#include "Shown.h"

#include <vector>

namespace Halvora::test {
namespace {

static_assert(std::is_convertible_v<HLVError*, Holder> &&
              std::is_convertible_v<std::unique_ptr<HLVError>, Holder> &&
              !std::is_constructible_v<Holder, HLVError const*> &&
              !std::is_convertible_v<Holder, bool> &&
              std::is_nothrow_move_constructible_v<Holder> &&
              std::is_nothrow_move_assignable_v<Holder> && std::is_nothrow_swappable_v<Holder>);

bool isThatOf(Holder const& holder, HLVError const* error) {
    return holder.getError() == error;
}

TEST(Holder, ownsOneErrorOrNone) {
    auto* const error = new HLVError(-1);
    Holder a = error, b;
    EXPECT_TRUE(a && !b && isThatOf(a, error));
    a.setError(error); // is held already
    a.move(a);
    EXPECT_TRUE(isThatOf(a, error));
    a.move(b);
    EXPECT_TRUE(isThatOf(b, error) && !a);
    b.copy(a);
    EXPECT_EQ(text(b), text(a));
    EXPECT_NE(b.getError(), a.getError());
    std::unique_ptr<HLVError> const own(b.extractError());
    EXPECT_TRUE(own.get() == error && !b);
}

TEST(Holder, wrapsWhatItHolds) {
    Holder holder;
    holder.prepend(0);
    HLVError const* const first = holder.getError();
    holder.prependError(-10, new Param(1));
    EXPECT_EQ(first, holder.getError()->getPrecedingError());
    holder.prepend(5, *holder.getError()->getParam0(), std::wstring_view(L"of its own error"));
    EXPECT_EQ(first, holder.getError()->getBaseError());
    EXPECT_EQ(nullptr, first->getPrecedingError());
    EXPECT_EQ(L"Error 5\n  P1: 1\n  P2: of its own error\n" + std::wstring(51, L'-') +
                  L"\nError -10\n  P1: 1\n" + std::wstring(51, L'-') + L"\nError 0",
              text(holder));
}

template <typename Act>
long cost(Act act) {
    long const before = allocations();
    act();
    return allocations() - before;
}

TEST(Holder, movesWithoutAnyAllocation) {
    Holder target = chainOfFour();
    long const ofChain = cost([] { Holder const made = chainOfFour(); });
    EXPECT_EQ(ofChain, cost([&] { target = chainOfFour(); }));
    HLVError const* const error = target.getError();
    EXPECT_EQ(0, cost([&] {
                  Holder moved(std::move(target));
                  std::swap(moved, target);
                  Holder& self = target;
                  target = std::move(self);
              }));
    EXPECT_TRUE(isThatOf(target, error));
}

TEST(Holder, aGrowingVectorCopiesNoChain) {
    std::vector<Holder> holders;
    for (int i = 0; i < 50; ++i) {
        holders.push_back(chainOfFour());
    }
    HLVError const* const first = holders.front().getError();
    EXPECT_EQ(1, cost([&] { holders.reserve(2 * holders.capacity()); }));
    EXPECT_TRUE(isThatOf(holders.front(), first));
}

TEST(Holder, failedAllocationsChangeAndLeakNothing) {
    struct Scene {
        Holder holder = chainOfFour();
        std::unique_ptr<Param> a{new Param(1)}, b{new Param(L"long enough")}, c{new Param(3)};
    };
    auto const state = [](Scene const& scene) { return text(scene.holder); };
    auto const fails = [&](char const* name, int count, auto act) {
        failsCleanly<Scene>(name, count, act, state);
    };
    fails("copy", 11, [](Scene& s) { s.holder.copy(s.holder); });
    fails("assign", 11, [](Scene& s) { s.holder = static_cast<Holder const&>(s.holder); });
    fails("prepend", 5, [](Scene& s) { s.holder.prepend(-8, L"long text", "another one", 3); });
    fails("prependError", 1,
          [](Scene& s) { s.holder.prependError(-8, s.a.release(), s.b.release(), s.c.release()); });
}

} // namespace
} // namespace Halvora::test
