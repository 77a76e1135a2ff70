#pragma once

#undef NDEBUG // the checks are what a fuzzer is for

#include <algorithm>
#include <cassert>
#include <fuzzer/FuzzedDataProvider.h>
#include <sstream>
#include <string>
#include <vector>

// The input of one run: texts come from its front, numbers from its end, zeros once it is used up.
using Bytes = FuzzedDataProvider;

// What a fuzzer is: it asserts.
void run(Bytes& bytes);

// For more runs a second, little of what was freed is kept, and a block knows only its last caller:
// ASAN_OPTIONS=malloc_context_size=30 shows them all.
extern "C" char const* __asan_default_options() {
    return "quarantine_size_mb=8:malloc_context_size=1";
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Bytes bytes(data, size);
    run(bytes);
    return 0;
}
