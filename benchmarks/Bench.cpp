#include "Bench.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>

bench::Memory bench::memory() {
    static auto const* const allocations =
        static_cast<std::size_t const*>(dlsym(RTLD_DEFAULT, "halvtypes_allocations"));
    static auto const* const bytes =
        static_cast<std::size_t const*>(dlsym(RTLD_DEFAULT, "halvtypes_allocated_bytes"));
    return bytes != nullptr ? Memory{*allocations, *bytes} : Memory();
}

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
