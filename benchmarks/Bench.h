#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// Each measurement is named "<operation>/<size>/<who>", who being "ours", "limit" (the bytes moved
// by memcpy, one string built, a bare scan: a plain way to do the least) or a contender.
// What gives a result has to give the same one as ours before it is timed.
namespace bench {

inline constexpr std::size_t sizes[] = {16, 256, 4096, 65536};

// What the whole process was given so far: blocks, and their bytes as far as they are new. Nothing
// but under the preloaded counter, which costs time and so is left out when time is measured.
struct Memory {
    std::size_t allocations = 0;
    std::size_t bytes = 0;
};
Memory memory();

void stopUnless(bool isSame, std::string const& who);

// Times `operation` and counts what it allocates once it is warm.
template <typename Operation>
void add(std::string const& name, std::size_t size, std::string const& who, Operation operation) {
    auto const run = [operation](benchmark::State& state) mutable {
        operation();
        Memory const before = memory();
        operation();
        Memory const after = memory();
        state.counters["allocations"] = static_cast<double>(after.allocations - before.allocations);
        state.counters["bytes"] = static_cast<double>(after.bytes - before.bytes);
        for (auto _ : state) {
            operation();
            benchmark::ClobberMemory();
        }
    };
    benchmark::RegisterBenchmark((name + '/' + std::to_string(size) + '/' + who).c_str(), run);
}

// Times an operation that returns its result, once that is as expected.
template <typename Expected, typename Operation>
void addSame(std::string const& name, std::size_t size, std::string const& who,
             Expected const& expected, Operation operation) {
    stopUnless(operation() == expected, name + " by " + who);
    add(name, size, who, [operation]() mutable { benchmark::DoNotOptimize(operation()); });
}

// Times what writes to a buffer that stays, once its text is right.
template <typename IsRight, typename Print>
void addPrint(std::string const& name, std::size_t size, std::string const& who, IsRight isRight,
              Print print) {
    auto const stream = std::make_shared<std::ostringstream>();
    print(*stream);
    stopUnless(isRight(stream->str()), name + " by " + who);
    add(name, size, who, [stream, print] {
        stream->seekp(0);
        print(*stream);
    });
}

// Ours and the limit.
template <typename Expected, typename Ours, typename Limit>
void addBoth(std::string const& name, std::size_t size, Expected const& expected, Ours ours,
             Limit limit) {
    addSame(name, size, "ours", expected, ours);
    addSame(name, size, "limit", expected, limit);
}

// The limit of moving bytes.
void addCopy(std::string const& name, std::size_t size, std::size_t bytes);

} // namespace bench
