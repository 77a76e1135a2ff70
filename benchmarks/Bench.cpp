#include "Bench.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>

std::size_t bench::allocations() {
    static auto const* const count =
        static_cast<std::size_t const*>(dlsym(RTLD_DEFAULT, "halvtypes_allocations"));
    return count != nullptr ? *count : 0;
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
