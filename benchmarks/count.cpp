// Preloaded: takes the place of the C library's allocations for the whole process and counts them
// and the bytes that they hand out. Of a block that grows where it is, only the growth counts.

#include <cstddef>

#include <malloc.h>

extern "C" {
std::size_t halvtypes_allocations = 0;
std::size_t halvtypes_allocated_bytes = 0;

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {

void* counted(void* block, std::size_t known = 0) {
    std::size_t const size = malloc_usable_size(block);
    ++halvtypes_allocations;
    halvtypes_allocated_bytes += size > known ? size - known : 0;
    return block;
}

} // namespace

extern "C" {
void* malloc(std::size_t size) {
    return counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    std::size_t const old = malloc_usable_size(block);
    void* const resized = __libc_realloc(block, size);
    return counted(resized, resized == block ? old : 0);
}
}
