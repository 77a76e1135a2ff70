// Preloaded: takes the place of the C library's allocations for the whole process and counts them.

#include <cstddef>

extern "C" {
std::size_t halvtypes_allocations = 0;

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
    ++halvtypes_allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    ++halvtypes_allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    ++halvtypes_allocations;
    return __libc_realloc(block, size);
}
}
