#pragma once

// Measures operations in numbers that are the same on every run. Writes a row for each: its name,
// the elements it works on, the heap blocks it asks for, the stack it needs in bytes. Around one
// and two repetitions of it stands a call of the system, by which script/target divides the
// instructions that the emulator has counted. For one source of a program.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <pthread.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

static long blocks = 0;        // asked for until now
static bool isCounted = false; // when the emulator counts, stacks are not measured: that takes long

// In place of the C library's own, for the whole program.
extern "C" void* __libc_malloc(std::size_t size) noexcept;
extern "C" void* __libc_realloc(void* block, std::size_t size) noexcept;
extern "C" void* malloc(std::size_t size) noexcept {
    ++blocks;
    return __libc_malloc(size);
}
extern "C" void* realloc(void* block, std::size_t size) noexcept {
    ++blocks;
    return __libc_realloc(block, size);
}

using Operation = std::function<void()>;

inline void mark() {
    syscall(SYS_getppid);
}

// On a stack of its own, which is painted before.
inline long stackOf(Operation const& operation) {
    static unsigned char stack[1 << 18] __attribute__((aligned(4096)));
    std::memset(stack, 0xA5, sizeof stack);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, sizeof stack);
    pthread_t thread;
    auto const run = [](void* it) -> void* {
        (*static_cast<Operation const*>(it))();
        return nullptr;
    };
    pthread_create(&thread, &attributes, run, const_cast<Operation*>(&operation));
    pthread_join(thread, nullptr);
    long unused = 0;
    while (stack[unused] == 0xA5) {
        ++unused;
    }
    return static_cast<long>(sizeof stack) - unused;
}

inline void measure(char const* name, std::size_t size, Operation const& operation) {
    static long const ofThread = (stackOf([] {}), stackOf([] {})); // the first also links
    operation();                                                   // what is reused grows now
    long const before = blocks;
    operation();
    long const taken = blocks - before;
    mark();
    operation();
    mark();
    operation();
    operation();
    mark();
    long const stack = isCounted ? 0 : stackOf(operation) - ofThread;
    std::printf("%s;%zu;%ld;%ld\n", name, size, taken, stack < 0 ? 0 : stack);
}

inline std::string textOf(std::size_t size, std::string const& piece) {
    std::string text;
    while (text.size() < size) {
        text += piece;
    }
    return text.erase(size);
}
