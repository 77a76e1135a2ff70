#pragma once

#include <gtest/gtest.h>

#include <new>

namespace Halvora::test {

// The program's allocations: operator new and realloc (not under the thread sanitizer) are counted
// and can be made to fail.

long liveBlocks();                   // made by operator new and not deleted yet
long allocations();                  // operator new and realloc, since the program's start
std::size_t takeLargestAllocation(); // bytes asked for at once, at most, since the last call
void failAllocation(long n);         // the n-th one from now on fails, 1 being the next; 0: none

// Runs act(object) on a fresh object from setup(), with its first, second, ... allocation failing,
// until it no longer meets the failure. After each failure, check(object) looks at what is left,
// and nothing may have leaked. Answers the number of failures.
template <typename Setup, typename Act, typename Check>
int failEachAllocation(Setup setup, Act act, Check check) {
    for (int failures = 0;; ++failures) {
        long const before = liveBlocks();
        bool failed = false;
        {
            auto object = setup();
            failAllocation(failures + 1);
            try {
                act(object);
            } catch (std::bad_alloc const&) {
                failed = true;
            }
            failAllocation(0);
            if (failed) {
                check(object);
            }
        }
        EXPECT_EQ(before, liveBlocks()) << "leaked when allocation " << failures + 1 << " failed";
        if (!failed) {
            return failures;
        }
    }
}

} // namespace Halvora::test
