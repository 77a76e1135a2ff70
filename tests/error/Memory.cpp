#include "Shown.h"

namespace Halvora::test {
namespace {

struct Scene {
    HLVErrorException thrown{chainOfThree().extractError(), std::string(50, 't')};
    Exception exception{5, thrown.trace(), thrown.trace()};
    std::unique_ptr<HLVError> error = HLVError::create(-9);
    Holder holder = chainOfThree();
    Param const wide{L"a long wide text"};

    std::wstring state() const {
        return text(error.get()) + text(holder) + text(Param(thrown.trace() + exception.trace()));
    }
};

// Acts, and how many allocations they make at least.
struct {
    char const* name;
    int atLeast;
    void (*act)(Scene& s);
} const acts[] = {
    {"params",             5,
     [](Scene& s) {
         std::wstring const& wide = s.wide.getDataString();
         std::string const narrow(wide.begin(), wide.end());
         Param const all[] = {Param(narrow), Param(narrow.c_str()), Param(std::wstring_view(wide)),
                              Param(wide),   Param(wide.c_str()),   Param(HLVString(9, 'x'))};
         Param const copy{Param(ResString(wide))};
         std::string out;
         all[0].getValue(out);
     }                                                                                         },
    {"throwable",          1,  [](Scene& s) { HLVErrorException e(nullptr, s.thrown.trace()); }},
    {"copy of throwable",  9,  [](Scene& s) { HLVErrorException copy(s.thrown); }              },
    {"thrown trace",       1,  [](Scene& s) { s.thrown.addTrace("b"); }                        },
    {"plain trace",        1,  [](Scene& s) { s.exception.addTrace("b"); }                     },
    {"plain",              4,
     [](Scene& s) {
         Exception const made(1, s.thrown.trace(), s.thrown.trace());
         Exception const copy(made);
     }                                                                                         },
    {"error of exception", 2,  [](Scene& s) { HLVError error(s.thrown); }                      },
    {"list of error",      2,  [](Scene& s) { List const list(std::move(s.error)); }           },
    {"list of holder",     2,  [](Scene& s) { List const list(s.holder); }                     },
    {"positions",          11,
     [](Scene&) {
         List list(HLVError::create(-3));
         List::iterator other = list.begin();
         other++, other--;
         List::const_iterator constant(other), copy(constant);
         copy = list.end();
         copy++, copy--;
     }                                                                                         },
    {"reports",            40,
     [](Scene& s) {
         Holder error = s.holder;
         error.prepend(-30, "M\xFCnchen", ResString(L"x"), Binary16());
         std::ostringstream stream; // swallows the exception
         writeJson(stream, *error.getError());
         describe(stream, *error.getError(), *ResString::getMainTranslator());
         stream ? void() : throw std::bad_alloc();
     }                                                                                         },
};

TEST(Memory, failedAllocationsOfErrorsChangeAndLeakNothing) {
    std::wstring const before = Scene().state();
    auto const check = [&](Scene const& scene) { EXPECT_EQ(before, scene.state()); };
    for (auto const& [name, atLeast, act] : acts) {
        SCOPED_TRACE(name);
        EXPECT_LE(atLeast, failEachAllocation([] { return Scene(); }, act, check));
    }
}

} // namespace
} // namespace Halvora::test
