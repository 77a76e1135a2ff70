#include "Shown.h"

#include <tests/support/ErrorProgram.h>

namespace Halvora::test {
namespace {

// A vector that grows moves them.
static_assert(std::is_convertible_v<HLVError*, Holder> &&
              std::is_convertible_v<std::unique_ptr<HLVError>, Holder> &&
              !std::is_constructible_v<Holder, HLVError const*> &&
              !std::is_convertible_v<Holder, bool> &&
              std::is_nothrow_move_constructible_v<Holder> &&
              std::is_nothrow_move_assignable_v<Holder>);

TEST(Holder, passesItsErrorOnOrCopiesIt) {
    struct { // a holds -1 over 2, b holds -3
        char const* name;
        void (*act)(Holder& a, Holder& b);
        std::string ofA, ofB;
    } const rows[] = {
        {"move",           [](Holder& a, Holder& b) { a.move(b); },                    "",        " -1 2"},
        {"move to itself", [](Holder& a, Holder&) { a.move(a); },                      " -1 2",   " -3"  },
        {"move nothing",   [](Holder&,   Holder& b) { Holder().move(b); },             " -1 2",   ""     },
        {"copy",           [](Holder& a, Holder& b) { a.copy(b); },                    " -1 2",   " -1 2"},
        {"copy to itself", [](Holder& a, Holder&) { a.copy(a); },                      " -1 2",   " -3"  },
        {"copy nothing",   [](Holder&,   Holder& b) { Holder().copy(b); },             " -1 2",   ""     },
        {"set",            [](Holder& a, Holder& b) { a.setError(b.extractError()); }, " -3",     ""     },
        {"set its own",    [](Holder& a, Holder&) { a.setError(a.getError()); },       " -1 2",   " -3"  },
        {"set null",       [](Holder& a, Holder&) { a.setError(nullptr); },            "",        " -3"  },
        {"prepend",        [](Holder& a, Holder&) { a.prependError(4); },              " 4 -1 2", " -3"  },
        {"prepend none",   [](Holder& a, Holder& b) { a.move(b), a.prependError(4); }, " 4",      " -1 2"},
    };
    for (auto const& row : rows) {
        Holder a(new HLVError(2)), b(new HLVError(-3));
        a.prepend(-1);
        row.act(a, b);
        EXPECT_EQ(row.ofA, chainOf(a.getError()).codes) << row.name;
        EXPECT_EQ(row.ofB, chainOf(b.getError()).codes) << row.name;
        EXPECT_TRUE(!a || a.getError() != b.getError()) << row.name;
    }
}

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
