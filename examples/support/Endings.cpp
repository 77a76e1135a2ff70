// The ends that all examples share: where memory runs out, or what was printed cannot be written, a
// program says so and ends with status 2.

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>

namespace {

[[noreturn]] void end(char const* sentence) {
    std::fputs(sentence, stderr);
    std::_Exit(2);
}

// A stream swallows the exception of a failed allocation and goes on with a text that was cut. The
// handler is called before anything is thrown.
struct Endings {
    Endings() {
        std::set_new_handler([] { end("There is not enough memory.\n"); });
    }
    ~Endings() {
        if (!std::cout.flush()) {
            end("Standard output cannot be written.\n");
        }
    }
};

Endings const endings; // made before `main`, destroyed when it has ended

} // namespace
