#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "Source.h"

// The bytes of a source, read once from front to back. Only what is still of use is kept, so it may
// be larger than memory.
class Input {
public:
    explicit Input(std::unique_ptr<Source> source) : m_source(std::move(source)) {}

    // The bytes from `offset` on: `size` of them, fewer only where the input ends or leaves out
    // some. No offset may be smaller than the one before. Valid until the next call.
    std::string_view at(std::uint64_t offset, std::size_t size);

    // Where it goes on behind the bytes left out at which the last call stopped; 0: it ends there.
    std::uint64_t next() const { return m_next.bytes.empty() ? 0 : m_next.offset; }

private:
    void drop(std::uint64_t offset);
    bool append(); // false at the end and in front of bytes left out
    std::uint64_t end() const { return m_start + (m_window.size() - m_first); }

    std::unique_ptr<Source> m_source;
    std::string m_window;
    std::size_t m_first = 0;   // the window's first byte that is still of use
    std::uint64_t m_start = 0; // its offset
    Block m_next;              // read already
};
