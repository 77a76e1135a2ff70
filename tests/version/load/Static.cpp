#include <Halvora/Halvora.h>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <iterator>

using namespace Halvora;

// What registered itself for its end, in this order.
static void const* up[100];
static std::size_t count = 0;

// Takes the place of the C library's own for the whole program.
extern "C" int __cxa_atexit(void (*end)(void*), void* object, void* library) {
    static auto* const real =
        reinterpret_cast<int (*)(void (*)(void*), void*, void*)>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    if (count < std::size(up)) {
        up[count++] = object;
    }
    return real(end, object, library);
}
#if defined(__ARM_EABI__)
extern "C" int __aeabi_atexit(void* object, void (*end)(void*), void* library) {
    return __cxa_atexit(end, object, library);
}
#endif

static std::string const own(Convert::ms_strTrim + " and room that the heap has to give");

TEST(StartStop, theStaticsComeUpInOrderAndBeforeThoseOfTheProgram) {
    void const* const order[] = {&HalvTypes::ms_Version, &Convert::ms_strTrim,
                                 &Convert::ms_wstrTrim, &ResString::EMPTY, &own};
    std::size_t next = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (next < std::size(order) && up[i] == order[next]) {
            ++next;
        }
    }
    EXPECT_EQ(std::size(order), next) << "number " << next << " comes too early, or never";
}
