#include "Shown.h"

#include <dlfcn.h>

namespace Halvora::test {
namespace {

static_assert(std::is_nothrow_move_constructible_v<HLVErrorException> &&
              !std::is_copy_assignable_v<HLVErrorException>);

TEST(HLVErrorException, saysItsCodeWhateverIsAddedToTheTrace) {
    HLVErrorException e(HLVError::create(-42, 7), "A");
    e.addTrace("B");
    e.addTrace(e.trace());
    EXPECT_EQ("A -> B -> A -> B", e.trace());
    EXPECT_STREQ("Error -42", e.what());
    EXPECT_STREQ("Error 0", HLVErrorException(nullptr, "").what());
}

TEST(HLVErrorException, copiesItsErrorDeeplyAndMovesIt) {
    Holder holder = chainOfFour();
    std::wstring const chain = text(holder);
    HLVErrorException source(holder.extractError(), "trace");
    HLVError const* const error = source.error();
    HLVErrorException const copy(source);
    HLVErrorException const moved(std::move(source));
    EXPECT_TRUE(moved.error() == error && copy.error() != error);
    for (auto const* each : {&moved, &copy}) {
        EXPECT_EQ(chain, text(each->error()));
        EXPECT_STREQ("Error -5", each->what());
        EXPECT_EQ("trace", each->trace());
    }
}

TEST(Exception, keepsWhatItWasMadeWith) {
    Exception e(3, "message", "");
    e.addTrace("B");
    EXPECT_EQ(&e, &(e = Exception(4, "other", "other")));
    for (Exception const& each : {e, Exception(e)}) {
        EXPECT_STREQ("message", each.what());
        EXPECT_TRUE(each.code() == 3 && each.trace() == " -> B");
    }
}

TEST(Exceptions, crossTheBoundaryOfALibrary) {
    void* const library = dlopen(HALVTYPES_ERROR_LAYER, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, library) << dlerror();
    auto const layer = reinterpret_cast<void (*)(void (*)())>(dlsym(library, "layer"));
    try {
        layer(nullptr);
        ADD_FAILURE();
    } catch (std::exception const& e) {
        EXPECT_STREQ("Error -42", e.what());
        EXPECT_THROW(throw, HLVErrorException);
    }
    try {
        layer([] { throw Exception(3, "message", "made"); });
        ADD_FAILURE();
    } catch (Exception const& e) {
        EXPECT_EQ("made -> library", e.trace());
    }
    dlclose(library);
}

TEST(Exceptions, failedAllocationsChangeAndLeakNothing) {
    struct Scene {
        std::unique_ptr<HLVError> error = HLVError::create(-9);
        HLVErrorException thrown{chainOfFour().extractError(), std::string(50, 't')};
        Exception exception{5, thrown.trace(), thrown.trace()};
    };
    auto const fails = [](char const* name, int count, auto act) {
        failsCleanly<Scene>(name, count, act,
                            [](Scene const& s) { return s.thrown.trace() + s.exception.trace(); });
    };
    fails("of none", 2, [](Scene& s) { HLVErrorException e(nullptr, s.thrown.trace()); });
    fails("of error", 1, [](Scene& s) {
        HLVErrorException e(std::move(s.error), s.thrown.trace()); // is its own even if that fails
    });
    fails("copy", 12, [](Scene& s) { HLVErrorException copy(s.thrown); });
    fails("trace", 1, [](Scene& s) { s.thrown.addTrace("b"); });
    fails("plain", 4, [](Scene& s) {
        Exception const made(1, s.thrown.trace(), s.thrown.trace());
        Exception const copy(made);
    });
    fails("plain trace", 1, [](Scene& s) { s.exception.addTrace("b"); });
    fails("error of exception", 2, [](Scene& s) { HLVError error(s.thrown); });
}

} // namespace
} // namespace Halvora::test
