#include "Shown.h"

#include <tests/support/Load.h>

namespace Halvora::test {
namespace {

TEST(HLVErrorException, copiesItsErrorDeeplyAndMovesIt) {
    HLVErrorException source(chainOfThree().extractError(), "");
    HLVError const* const error = source.error();
    source.addTrace("Beta");
    source.addTrace(source.trace());
    HLVErrorException const copy(source);
    HLVErrorException const moved(std::move(source));
    EXPECT_TRUE(moved.error() == error && copy.error() != error);
    for (auto const* each : {&moved, &copy}) {
        EXPECT_EQ(text(chainOfThree()), text(each->error()));
        EXPECT_STREQ("Error -5", each->what());
        EXPECT_EQ(" -> Beta ->  -> Beta", each->trace());
    }
    EXPECT_STREQ("Error 0", HLVErrorException(nullptr, "").what());
    EXPECT_STREQ("Error -4", HLVErrorException(HLVError::create(-4), "").what());
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
    } catch (Exception& e) {
        EXPECT_EQ(&e, &(e = Exception(4, "other", "other")));
        for (Exception const& each : {e, Exception(e)}) {
            EXPECT_STREQ("message", each.what());
            EXPECT_TRUE(each.code() == 3 && each.trace() == "made -> library");
        }
    }
    dlclose(library);
}

} // namespace
} // namespace Halvora::test
