#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

// What exact storage costs at least: a call of realloc whenever the allocator's block is full. The
// append itself is a call too.
template <typename T>
struct Exact {
    std::unique_ptr<T[], decltype(&std::free)> all{nullptr, std::free};
    std::size_t count = 0;
    std::size_t room = 0;

    [[gnu::noinline]] void append(T value) { store(value); }

protected:
    void store(T value) {
        if (count == room) {
            // The C library's blocks are multiples of two pointers less one pointer.
            std::size_t const unit = 2 * sizeof(void*), overhead = sizeof(void*);
            std::size_t const size = (count + 1) * sizeof(T) + overhead;
            room = ((size + unit - 1) / unit * unit - overhead) / sizeof(T);
            all.reset(static_cast<T*>(std::realloc(all.release(), room * sizeof(T))));
        }
        all[count++] = value;
    }
};

// The same in a library of its own, as ours is: begun, appended to and ended by calls into it.
template <typename T>
struct ExactInLibrary : Exact<T> {
    ExactInLibrary();
    ExactInLibrary(ExactInLibrary&&) = default;
    ~ExactInLibrary();
    void append(T value);
};
