#pragma once

#include <cstdint>
#include <string>

// Bytes, and the offset of the first one.
struct Block {
    std::uint64_t offset = 0;
    std::string bytes;
};

// Gives the bytes of an input once, from front to back. What fails is thrown as a
// HLVErrorException.
class Source {
public:
    Source() = default;
    Source(Source const&) = delete;
    virtual ~Source() = default;

    // The next bytes, none at the end. No block begins before the end of the one before.
    virtual Block read() = 0;

    // Bytes in front of the offset are not wanted any more; they may come nevertheless.
    virtual void skipTo(std::uint64_t offset) = 0;
};

// A file or standard input.
class File : public Source {
public:
    explicit File(std::string const& path); // "-" is standard input
    ~File() override;

    Block read() override;
    void skipTo(std::uint64_t offset) override; // takes no time where the system can seek

private:
    int const m_file;
    std::int64_t m_start = -1; // where it stood in the file; below 0 where nobody can seek
    std::uint64_t m_offset = 0;
};
