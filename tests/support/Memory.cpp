#include "Memory.h"

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
