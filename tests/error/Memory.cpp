#include "Shown.h"

namespace Halvora::test {
namespace {

struct Scene {
    Holder holder = chainOfThree();
    List list = HLVError::create(-3);
    List movedFrom, movedTo = std::move(movedFrom);
    List::iterator position = list.begin();
    HLVErrorException thrown{chainOfThree().extractError(), std::string(50, 't')};
    Exception exception{5, thrown.trace(), thrown.trace()};
    std::unique_ptr<HLVError> error = HLVError::create(-9);
    std::unique_ptr<Param> a{new Param(1)}, b{new Param(L"a long wide text")}, c{new Param(3)};

    std::wstring state() const {
        return text(holder) + text(*position) + text(list.getFirstError()) + text(error.get()) +
               text(Param(thrown.trace() + exception.trace())) + text(Param(list.getCount()));
    }
};

// Each of at least so many failing allocations changes and leaks nothing.
template <typename Act>
void fails(char const* name, int atLeast, Act act) {
    SCOPED_TRACE(name);
    std::wstring const before = Scene().state();
    auto const check = [&](Scene const& scene) { EXPECT_EQ(before, scene.state()); };
    EXPECT_LE(atLeast, failEachAllocation([] { return Scene(); }, act, check));
}

TEST(Memory, failedAllocationsOfErrorsChangeAndLeakNothing) {
    fails("copy", 8, [](Scene& s) { s.holder.copy(s.holder); });
    fails("prependError", 1,
          [](Scene& s) { s.holder.prependError(-8, s.a.release(), s.b.release(), s.c.release()); });
    fails("prepend", 6, [](Scene& s) {
        s.holder.prepend(-8, s.b->getDataString(), std::string_view("another long text"), 3);
    });
    fails("params", 5, [](Scene& s) {
        std::wstring const& wide = s.b->getDataString();
        std::string const narrow(wide.begin(), wide.end());
        Param const all[] = {Param(narrow), Param(narrow.c_str()), Param(std::wstring_view(wide)),
                             Param(wide),   Param(wide.c_str()),   Param(HLVString(9, 'x'))};
        Param const copy{Param(ResString(wide))};
        std::string out;
        all[0].getValue(out);
    });
    fails("throwable", 1, [](Scene& s) { HLVErrorException e(nullptr, s.thrown.trace()); });
    fails("copy of throwable", 9, [](Scene& s) { HLVErrorException copy(s.thrown); });
    fails("thrown trace", 1, [](Scene& s) { s.thrown.addTrace("b"); });
    fails("plain trace", 1, [](Scene& s) { s.exception.addTrace("b"); });
    fails("plain", 4, [](Scene& s) {
        Exception const made(1, s.thrown.trace(), s.thrown.trace());
        Exception const copy(made);
    });
    fails("error of exception", 2, [](Scene& s) { HLVError error(s.thrown); });
}

TEST(Memory, failedAllocationsOfListsChangeAndLeakNothing) {
    fails("of error", 2, [](Scene& s) { List const list(std::move(s.error)); });
    fails("of holder", 2, [](Scene& s) { List const list(s.holder); });
    fails("add error", 2, [](Scene& s) { s.movedFrom.add(std::move(s.error)); });
    fails("replace", 1, [](Scene& s) { s.list.replace(s.position, s.holder); });
    fails("replace", 1, [](Scene& s) { s.list.replace(s.position, std::move(s.error)); });
    fails("position", 1, [](Scene& s) { s.position = s.list.end(); });
    fails("positions", 8, [](Scene& s) {
        List::iterator other = s.list.begin();
        other++, other--;
        List::const_iterator constant(other), copy(constant);
        copy = s.list.end();
        copy++, copy--;
    });
}

TEST(Memory, failedAllocationsOfReportsLeakNothing) {
    Holder const error = HLVError::create(-30, "M\xFCnchen", ResString(L"x"), Binary16());
    auto const report = [&](int) {
        std::ostringstream stream; // swallows the exception
        writeJson(stream, *error.getError());
        describe(stream, *error.getError(), *ResString::getMainTranslator());
        stream ? void() : throw std::bad_alloc();
    };
    EXPECT_LE(10, failEachAllocation([] { return 0; }, report, [](int) {}));
}

} // namespace
} // namespace Halvora::test
