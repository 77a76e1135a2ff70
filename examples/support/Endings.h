#pragma once

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>

// The ends that programs share: from its making on, where memory runs out or what was printed
// cannot be written, the program says so and ends with the status given.
class Endings {
public:
    // A stream swallows the exception of a failed allocation and goes on with a text that was cut.
    // The handler is called before anything is thrown.
    explicit Endings(int status) {
        ms_status = status;
        std::set_new_handler([] { end("There is not enough memory.\n"); });
    }

    ~Endings() {
        if (!std::cout.flush()) {
            end("Standard output cannot be written.\n");
        }
    }

    Endings(Endings const&) = delete;
    Endings& operator=(Endings const&) = delete;

private:
    [[noreturn]] static void end(char const* sentence) {
        std::fputs(sentence, stderr);
        std::_Exit(ms_status);
    }

    inline static int ms_status = 0;
};
