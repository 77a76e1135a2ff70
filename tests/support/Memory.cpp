#include "Memory.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> live{0};
std::atomic<long> made{0};
std::atomic<long> untilFailure{0};
std::atomic<std::size_t> largest{0};

bool failsNow(std::size_t size) {
    ++made;
    if (size > largest.load(std::memory_order_relaxed)) {
        largest = size;
    }
    return untilFailure.load(std::memory_order_relaxed) > 0 && --untilFailure == 0;
}

} // namespace

namespace Halvora::test {

long liveBlocks() {
    return live;
}

long allocations() {
    return made;
}

std::size_t takeLargestAllocation() {
    return largest.exchange(0);
}

void failAllocation(long n) {
    untilFailure = n;
}

} // namespace Halvora::test

void* operator new(std::size_t size) {
    void* const block = failsNow(size) ? nullptr : std::malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++live;
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) {
        --live;
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

#if !defined(__has_feature) // clang says by it what GCC defines
#    define __has_feature(name) 0
#endif
#if __has_feature(address_sanitizer) || defined(__SANITIZE_ADDRESS__)
#    define HALVTYPES_REALLOC __interceptor_realloc
#else
#    define HALVTYPES_REALLOC __libc_realloc
#endif

// The thread sanitizer's own is needed before any other works.
#if defined(__GLIBC__) && !__has_feature(thread_sanitizer) && !defined(__SANITIZE_THREAD__)
extern "C" {
void* HALVTYPES_REALLOC(void* block, std::size_t size);

// Takes the place of the C library's own for the whole program, shared libraries included.
void* realloc(void* block, std::size_t size) noexcept {
    return failsNow(size) ? nullptr : HALVTYPES_REALLOC(block, size);
}
}
#endif

#if defined(_WIN32)
#    include <windows.h>

// The library calls the DLL of the standard library, which calls the C library. Each takes what its
// own table of imports says.
namespace {

void* countedMalloc(std::size_t size) {
    void* const block = failsNow(size) ? nullptr : std::malloc(size);
    live += block != nullptr ? 1 : 0;
    return block;
}

void* countedRealloc(void* block, std::size_t size) {
    return failsNow(size) ? nullptr : std::realloc(block, size);
}

void redirect(char const* module, char const* name, void* to) {
    auto* const base = reinterpret_cast<char*>(GetModuleHandleA(module));
    auto* const head = base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew;
    auto const& table = reinterpret_cast<IMAGE_NT_HEADERS*>(head)
                            ->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    auto* const imports = reinterpret_cast<void**>(base + table.VirtualAddress);
    DWORD old;
    VirtualProtect(imports, table.Size, PAGE_READWRITE, &old);
    std::replace(imports, imports + table.Size / sizeof *imports,
                 reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name)), to);
}

bool const redirected = [] {
    void (*const countedFree)(void*) = operator delete;
    redirect("libstdc++-6.dll", "malloc", reinterpret_cast<void*>(countedMalloc));
    redirect("libstdc++-6.dll", "free", reinterpret_cast<void*>(countedFree));
    redirect("HalvTypes.dll", "realloc", reinterpret_cast<void*>(countedRealloc));
    return true;
}();

} // namespace
#endif
