#include "Shown.h"

namespace Halvora::test {
namespace {

// A vector that grows moves them.
static_assert(std::is_convertible_v<HLVError*, Holder> &&
              std::is_convertible_v<std::unique_ptr<HLVError>, Holder> &&
              !std::is_constructible_v<Holder, HLVError const*> &&
              !std::is_convertible_v<Holder, bool> &&
              std::is_nothrow_move_constructible_v<Holder> &&
              std::is_nothrow_move_assignable_v<Holder>);

template <typename Act>
long cost(Act act) {
    long const before = allocations();
    act();
    return allocations() - before;
}

TEST(Holder, aReturnedOneCostsItsOwnAllocationsOnly) {
    Holder target = chainOfThree();
    long const ofChain = cost([] { Holder const made = chainOfThree(); });
    EXPECT_EQ(ofChain, cost([&] { target = chainOfThree(); }));
    HLVError const* const error = target.getError();
    EXPECT_EQ(0, cost([&] {
                  Holder moved(std::move(target));
                  std::swap(moved, target);
                  Holder& self = target;
                  target = std::move(self);
              }));
    EXPECT_EQ(error, target.getError());
}

TEST(Holder, createAndPrependNeedTheAllocationsOfNew) {
    std::wstring const text(9, L'w');
    long const byNew = cost([&] {
        Holder const made(
            new HLVError(-1, new Param(Binary16()), new Param(true), new Param(text)));
    });
    EXPECT_EQ(byNew,
              cost([&] { Holder const made = HLVError::create(-1, Binary16(), true, text); }));
    EXPECT_EQ(byNew,
              cost([&] { Holder().prepend(-1, Binary16(), true, std::wstring_view(text)); }));
}

} // namespace
} // namespace Halvora::test
