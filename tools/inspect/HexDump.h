#pragma once

#include <memory>
#include <string_view>

#include "Source.h"

// A hexadecimal dump as text: the bytes that `xxd` or `od -A x -t x1` was given, at the addresses
// that stand in front of them:
//
//     xxd := address ": " (byte byte? ...)(" " byte ...)* ("  " text)?
//     od  := address (" " byte)* (" >" text | " |" text)?
//
// A line "*" repeats the one before up to the next address. Anything else is refused, and where
// they can be told from these, other bases and swapped bytes.
class HexDump : public Source {
public:
    explicit HexDump(std::unique_ptr<Source> text) : m_source(std::move(text)) {}

    Block read() override;
    void skipTo(std::uint64_t offset) override { m_wanted = offset; } // passes by repeated lines

private:
    bool readLine(std::string_view& line); // false at the end
    void takeLine(std::string_view line);
    void takePlace(std::string_view address, bool isXxd, bool isEnd);
    void takeGroups(std::string_view rest);
    void takeBytes(std::string_view rest);
    void takeByte(std::string_view byte);
    Block repeated();
    [[noreturn]] void refuse(char const* reason) const;

    std::unique_ptr<Source> m_source;
    std::string m_text;   // what was read of it
    std::size_t m_at = 0; // what of that was taken
    std::uint64_t m_lines = 0;
    Block m_next;                   // of the line taken last, when it was not given yet
    Block m_last;                   // of the line given last
    std::uint64_t m_end = 0;        // of what was given
    std::uint64_t m_repeatsEnd = 0; // up to there m_last goes on
    std::uint64_t m_wanted = 0;
    bool m_isRepeating = false; // up to an address that is still to come
};
