#pragma once

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <new>

#if defined(_WIN32)
#    include <fcntl.h>
#    include <io.h>
#endif

// The ends that programs share: from its making on, where memory runs out or what was printed
// cannot be written, the program says so and ends with the status given. On Windows it also reads
// and writes bytes as they are, line ends included.
class Endings {
public:
    // A stream swallows the exception of a failed allocation and goes on with a text that was cut.
    // The handler is called before anything is thrown.
    explicit Endings(int status) {
        ms_status = status;
#if defined(_WIN32)
        for (int const stream : {0, 1, 2}) {
            _setmode(stream, _O_BINARY);
        }
#endif
        std::set_new_handler([] { end(ms_noMemory); });
    }

    ~Endings() {
        if (!std::cout.flush()) {
            end(ms_noOutput);
        }
    }

    Endings(Endings const&) = delete;
    Endings& operator=(Endings const&) = delete;

    // Other sentences, literals with their line ends.
    static void say(char const* noMemory, char const* noOutput) {
        ms_noMemory = noMemory;
        ms_noOutput = noOutput;
    }

private:
    [[noreturn]] static void end(char const* sentence) {
        std::fputs(sentence, stderr);
        std::_Exit(ms_status);
    }

    inline static int ms_status = 0;
    inline static char const* ms_noMemory = "There is not enough memory.\n";
    inline static char const* ms_noOutput = "Standard output cannot be written.\n";
};
