#include "Memory.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> live{0};
std::atomic<long> made{0};
std::atomic<long> untilFailure{0};

bool failsNow() {
    ++made;
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

void failAllocation(long n) {
    untilFailure = n;
}

} // namespace Halvora::test

void* operator new(std::size_t size) {
    void* const block = failsNow() ? nullptr : std::malloc(size != 0 ? size : 1);
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

#if defined(__has_feature)
#    if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#        define HALVTYPES_SANITIZED
#    endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#    define HALVTYPES_SANITIZED
#endif

#if defined(__GLIBC__) && !defined(HALVTYPES_SANITIZED)
extern "C" {
void* __libc_realloc(void* block, std::size_t size);

// Takes the place of the C library's own for the whole program, shared libraries included.
void* realloc(void* block, std::size_t size) noexcept {
    return failsNow() ? nullptr : __libc_realloc(block, size);
}
}
#endif
