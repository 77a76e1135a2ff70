#include <dlfcn.h>

#include <gtest/gtest.h>

#include <regex>

#include <tests/support/Memory.h>

using namespace Halvora::test;

namespace {

// What registers itself for its end while the library is loaded, in this order. The library's calls
// at its end go through this record.
using End = void (*)(void*);
std::pair<End, void*> up[20];
std::size_t count = 0;
bool loading = false;
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
    if (!loading) {
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

TEST(StartStop, theStaticsComeUpInOrderGoDownInReverseAndLeaveOnlyTheDefaultTranslator) {
    std::regex const order(".*9HalvTypes10ms_VersionE.*7Convert10ms_strTrim.*11ms_wstrTrim.*"
                           "9ResString5EMPTYE.*14ms_strLanguage.*");
    long const before = liveBlocks();
    for (int round = 0; round < 10; ++round) {
        loading = true;
        void* const library = dlopen(HALVTYPES_LIBRARY, RTLD_NOW);
        loading = false;
        EXPECT_EQ(allocationsBefore + 1, allocations()); // the translator comes last
        ASSERT_NE(nullptr, library) << dlerror();
        std::string names;
        for (std::size_t i = 0; i < count; ++i) {
            Dl_info symbol = {};
            names += dladdr(up[i].second, &symbol) != 0 ? symbol.dli_sname : "?";
        }
        EXPECT_TRUE(count == 5 && std::regex_match(names, order)) << names;
        void* const translator =
            *static_cast<void**>(dlsym(library, "_ZN7Halvora9ResString18ms_pMainTranslatorE"));
        EXPECT_EQ(0, dlclose(library));
        ASSERT_EQ(nullptr, dlopen(HALVTYPES_LIBRARY, RTLD_NOW | RTLD_NOLOAD)) << "not unloaded";
        EXPECT_EQ(0u, count);
        ::operator delete(translator); // the library never does
    }
    EXPECT_EQ(before, liveBlocks());
}
