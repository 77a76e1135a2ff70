#include "HexDump.h"

#include <algorithm>
#include <charconv>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/Convert.h>

#include "Errors.h"

using namespace Halvora;

namespace {

constexpr std::size_t maxLine = 0x10000;
constexpr std::string_view digits = "0123456789abcdefABCDEF";

// As the last column shows them, without blanks around.
std::string textOf(std::string_view bytes) {
    std::string text(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '.');
    Convert::trim(text, " ");
    return text;
}

} // namespace

Block HexDump::read() {
    std::string_view line;
    for (;;) {
        if (Block block = repeated(); !block.bytes.empty()) {
            return block;
        }
        if (!m_next.bytes.empty()) {
            m_last = std::move(m_next);
            m_next = {};
            m_end = m_last.offset + m_last.bytes.size();
            return m_last;
        }
        if (!readLine(line)) {
            return {};
        }
        takeLine(line);
    }
}

bool HexDump::readLine(std::string_view& line) {
    std::size_t end = 0;
    while ((end = m_text.find('\n', m_at)) == std::string::npos) {
        m_text.erase(0, m_at);
        m_at = 0;
        Block const block = m_text.size() <= maxLine ? m_source->read() : Block();
        if (block.bytes.empty() && m_text.empty()) {
            if (m_isRepeating) {
                refuse("nothing tells up to where * repeats");
            }
            return false;
        }
        m_text += block.bytes.empty() ? "\n" : block.bytes;
    }
    line = std::string_view(m_text).substr(m_at, end - m_at);
    m_at = end + 1;
    ++m_lines;
    if (line.size() > maxLine) {
        refuse("a line without end");
    }
    return true;
}

void HexDump::takeLine(std::string_view line) {
    line = line.substr(0, line.size() - (!line.empty() && line.back() == '\r' ? 1 : 0));
    if (line == "*" && m_end != m_last.offset) {
        m_isRepeating = true;
    } else if (!line.empty()) {
        std::size_t const length = std::min(line.find_first_not_of(digits), line.size());
        std::string_view const rest = line.substr(length);
        bool const isXxd = rest.substr(0, 2) == ": ";
        if (length == 0 || length > 16 || (!isXxd && !rest.empty() && rest[0] != ' ')) {
            refuse("a line that begins with no address");
        }
        takePlace(line.substr(0, length), isXxd, rest.empty());
        isXxd ? takeGroups(rest.substr(2)) : takeBytes(rest);
    }
}

// xxd may leave out bytes, od does not: its addresses tell whether they are read right.
void HexDump::takePlace(std::string_view address, bool isXxd, bool isEnd) {
    std::uint64_t offset = 0;
    std::from_chars(address.data(), address.data() + address.size(), offset, 16);
    bool const isFirst = m_end == 0 && !isEnd;
    std::uint64_t const length = m_last.bytes.size();
    bool const fits = isXxd || isFirst || m_isRepeating ? offset >= m_end : offset == m_end;
    bool const isOfOd = !isXxd && address.size() == 7 && address[0] == '0';
    if (isOfOd || !fits || (m_isRepeating && (offset - m_end) % length != 0)) {
        refuse("an address out of order, or not hexadecimal");
    }
    if (offset > INT64_MAX) {
        refuse("an address beyond what files can have");
    }
    m_repeatsEnd = m_isRepeating ? offset : m_end;
    m_isRepeating = false;
    m_next.offset = offset;
}

// A text in the last column has to say the same.
void HexDump::takeGroups(std::string_view rest) {
    std::string_view const groups = rest.substr(0, rest.find("  "));
    for (std::size_t i = 0; i < groups.size(); i += groups[i] == ' ' ? 1 : 2) {
        if (groups[i] != ' ') {
            takeByte(groups.substr(i, 2));
        }
    }
    std::string text(rest.substr(groups.size()));
    Convert::trim(text, " ");
    if (!text.empty() && text != textOf(m_next.bytes)) {
        refuse("bytes that differ from the text behind them: their order was changed");
    }
}

void HexDump::takeBytes(std::string_view rest) {
    rest = rest.substr(0, rest.find_first_of(">|"));
    for (std::size_t at = 0; (at = rest.find_first_not_of(' ', at)) != std::string_view::npos;) {
        std::string_view const byte = rest.substr(at, rest.find(' ', at) - at);
        takeByte(byte);
        at += byte.size();
    }
}

void HexDump::takeByte(std::string_view byte) {
    if (byte.size() != 2 || byte.find_first_not_of(digits) != std::string_view::npos) {
        refuse("not bytes of two hexadecimal digits each");
    }
    m_next.bytes += static_cast<char>(Convert::toByte(byte[0], byte[1]));
}

// What is left of the repeated lines, a piece at a time, as far as it is wanted.
Block HexDump::repeated() {
    if (m_end >= m_repeatsEnd) {
        return {};
    }
    m_end = std::min(std::max(m_end, m_wanted), m_repeatsEnd);
    std::string const& line = m_last.bytes;
    Block block{m_end,
                line.substr(static_cast<std::size_t>((m_end - m_last.offset) % line.size()))};
    auto const size = std::min<std::uint64_t>(m_repeatsEnd - m_end, 0x10000);
    while (block.bytes.size() < size) {
        block.bytes += line;
    }
    block.bytes.resize(static_cast<std::size_t>(size));
    m_end += size;
    return block;
}

void HexDump::refuse(char const* reason) const {
    throw HLVErrorException(HLVError::create(badDump, m_lines, reason), "");
}
