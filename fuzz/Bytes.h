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

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Bytes bytes(data, size);
    run(bytes);
    return 0;
}
