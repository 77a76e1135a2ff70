#include "Bench.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

std::size_t bench::allocations = 0;

void bench::stopUnless(bool isSame, std::string const& who) {
    if (!isSame) {
        std::fprintf(stderr, "%s gives another result\n", who.c_str());
        std::exit(1);
    }
}

void bench::addCopy(std::string const& name, std::size_t size, std::size_t bytes) {
    std::vector<char> const from(bytes, 'x');
    std::vector<char> to(bytes);
    add(name, size, "limit", [from, to]() mutable {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::DoNotOptimize(to.data());
    });
}

// In the place of the C library's own, so that every contender's allocations are counted.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
    ++bench::allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    ++bench::allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    ++bench::allocations;
    return __libc_realloc(block, size);
}
}
