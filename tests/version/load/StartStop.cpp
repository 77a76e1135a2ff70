#include <dlfcn.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include <tests/support/Memory.h>
#if !defined(HALVTYPES_LIBRARY)
#    include <Halvora/Halvora.h>
using namespace Halvora;
#endif

using namespace Halvora::test;

namespace {

// What registers itself for its end while the library is loaded, or with the program that it is
// linked into, in this order. The calls at their end go through this record.
using End = void (*)(void*);
std::pair<End, void*> up[100];
std::size_t count = 0;
#if defined(HALVTYPES_LIBRARY)
bool loading = false;
#else
bool loading = true;
#endif
long allocationsBefore = 0; // the last registration

void takeDown(void* entry) {
    auto const& [end, object] = up[--count];
    EXPECT_EQ(&up[count], entry);
    end(object);
}

} // namespace

// Take the place of the C library's own for the whole program, shared libraries included.
extern "C" int __cxa_atexit(End end, void* object, void* library) {
    static auto* const real =
        reinterpret_cast<int (*)(End, void*, void*)>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    if (!loading || count == std::size(up)) {
        return real(end, object, library);
    }
    allocationsBefore = allocations();
    up[count] = {end, object};
    return real(takeDown, &up[count++], library);
}
#if defined(__ARM_EABI__)
extern "C" int __aeabi_atexit(void* object, End end, void* library) {
    return __cxa_atexit(end, object, library);
}
#endif

#if defined(HALVTYPES_LIBRARY)
TEST(StartStop, theStaticsComeUpInOrderGoDownInReverseAndLeaveOnlyTheDefaultTranslator) {
    char const* const order[] = {"HalvTypes10ms_Version", "Convert10ms_strTrim",
                                 "Convert11ms_wstrTrim", "ResString5EMPTY", "ms_strLanguage"};
    long const before = liveBlocks();
    for (int round = 0; round < 10; ++round) {
        loading = true;
        void* const library = dlopen(HALVTYPES_LIBRARY, RTLD_NOW);
        loading = false;
        EXPECT_EQ(allocationsBefore + 1, allocations()); // the translator comes last
        ASSERT_NE(nullptr, library) << dlerror();
        // A compiler may see that the end of a short text has nothing to do: libc++'s go unnoticed.
#    if defined(__GLIBCXX__)
        ASSERT_EQ(std::size(order), count);
#    endif
        char const* const* expected = order;
        for (std::size_t i = 0; i < count; ++i) {
            Dl_info symbol = {};
            dladdr(up[i].second, &symbol);
            expected = std::find_if(expected, std::end(order), [&symbol](char const* name) {
                return std::strstr(symbol.dli_sname, name) != nullptr;
            });
            ASSERT_NE(std::end(order), expected++) << symbol.dli_sname;
        }
        void* const translator =
            *static_cast<void**>(dlsym(library, "_ZN7Halvora9ResString18ms_pMainTranslatorE"));
        EXPECT_EQ(0, dlclose(library));
        ASSERT_EQ(nullptr, dlopen(HALVTYPES_LIBRARY, RTLD_NOW | RTLD_NOLOAD)) << "not unloaded";
        EXPECT_EQ(0u, count);
        ::operator delete(translator); // the library never does
    }
    EXPECT_EQ(before, liveBlocks());
}

TEST(StartStop, aLackOfMemoryEndsTheProcessWithASentence) {
    auto const load = [](long failing) {
        failAllocation(failing);
        dlopen(HALVTYPES_LIBRARY, RTLD_NOW);
        std::_Exit(0);
    };
    bool isLoaded = false;
    auto const isEnd = [&isLoaded](int status) {
        isLoaded = testing::ExitedWithCode(0)(status);
        return isLoaded || testing::ExitedWithCode(127)(status);
    };
    long failing = 0;
    char const* const sentence =
        "^(libHalvTypes.so.3: There is not enough memory to load the library.\n)?$";
    while (!isLoaded && ++failing < 20) {
        EXPECT_EXIT(load(failing), isEnd, sentence);
    }
    EXPECT_GT(failing, 3); // two texts and the default translator at least
    EXPECT_TRUE(isLoaded);
}
#else
static std::string const own(Convert::ms_strTrim + " and room that the heap has to give");

TEST(StartStop, theStaticsComeUpInOrderAndBeforeThoseOfTheProgram) {
    void const* const order[] = {&HalvTypes::ms_Version, &Convert::ms_strTrim,
                                 &Convert::ms_wstrTrim, &ResString::EMPTY, &own};
    std::size_t next = 0;
    for (std::size_t i = 0; i < count && next < std::size(order); ++i) {
        next += up[i].second == order[next];
    }
    EXPECT_EQ(std::size(order), next) << "number " << next << " comes too early, or never";
}
#endif
