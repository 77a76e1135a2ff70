#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

// Each measurement is named "<operation>/<size>/<who>", who being "ours", "limit" (the bytes moved
// by memcpy, one string built, a bare scan: what the machine cannot do without) or a contender,
// which has to give the same result before it is timed.
namespace bench {

inline constexpr std::size_t sizes[] = {16, 256, 4096, 65536};

// Allocations of the whole process so far; 0 but under the preloaded counter, which costs time and
// so is left out when time is measured.
std::size_t allocations();

void stopUnless(bool isSame, std::string const& who);

// Times `operation` and counts its allocations once it is warm.
template <typename Operation>
void add(std::string const& name, std::size_t size, std::string const& who, Operation operation) {
    auto const run = [operation](benchmark::State& state) mutable {
        operation();
        std::size_t const before = allocations();
        operation();
        state.counters["allocations"] = static_cast<double>(allocations() - before);
        for (auto _ : state) {
            operation();
            benchmark::ClobberMemory();
        }
    };
    benchmark::RegisterBenchmark((name + '/' + std::to_string(size) + '/' + who).c_str(), run);
}

// The limit of moving bytes.
void addCopy(std::string const& name, std::size_t size, std::size_t bytes);

} // namespace bench
