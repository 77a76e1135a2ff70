#pragma once

#include <Halvora/error/HLVError.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Throws a HLVErrorException. Takes ownership of `where`, which becomes parameter 0; the reason
// becomes parameter 1.
[[noreturn]] void refuse(int code, Halvora::HLVError::Param* where, std::string const& reason);

// A file or standard input, read once from front to back. Only what is still of use is kept, so it
// may be larger than memory. What the system refuses is thrown, under its negative error number.
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
