#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// A file or standard input, read once from front to back. Only what is still of use is kept, so it
// may be larger than memory. What the system refuses is thrown as a
// HLVErrorException, in the words of the system.
class Input {
public:
    explicit Input(std::string const& path); // "-" is standard input
    Input(Input const&) = delete;
    ~Input();

    // The bytes from `offset` on: `size` of them, fewer only where the input ends. No offset may be
    // smaller than the one before. Valid until the next call.
    std::string_view at(std::uint64_t offset, std::size_t size);

private:
    bool readBlock(); // false at the end

    int const m_file;
    std::string m_window;
    std::uint64_t m_start = 0; // the offset of the window's first byte
};
