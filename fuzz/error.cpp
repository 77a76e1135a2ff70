#include <tests/support/ErrorProgram.h>

#include "Bytes.h"

#include <iostream>

// Errors in holders and lists beside their model: see ErrorProgram.
void run(Bytes& bytes) {
    Halvora::test::ErrorProgram program(
        [&bytes](int n) { return bytes.ConsumeIntegralInRange(0, n - 1); }, [](long) {});
    for (int left = 24; left > 0 && bytes.remaining_bytes() != 0; --left) {
        std::string const fault = program.step();
        if (!fault.empty()) {
            std::cerr << fault << '\n';
            std::abort();
        }
    }
}
