#pragma once

#include <Halvora/text/CsvReader.h>

#include <algorithm>
#include <istream>
#include <string>
#include <vector>

namespace Halvora::test {

// Gives a text a few bytes at a time; 0: one, without a buffer. It may break in the middle.
struct PieceStream : private std::streambuf, std::istream {
    PieceStream(std::string text, std::size_t length, std::size_t breaksAt = std::string::npos)
        : std::istream(static_cast<std::streambuf*>(this)),
          m_text(text),
          m_length(length),
          m_breaksAt(breaksAt) {}

protected:
    int underflow() override {
        if (m_at >= m_breaksAt) {
            throw 1;
        }
        auto const length = std::min({m_length, m_breaksAt - m_at, m_text.size() - m_at});
        char* const at = m_text.data() + m_at;
        setg(at, at, at + length);
        m_at += length;
        return at == m_text.data() + m_text.size() ? std::char_traits<char>::eof() : *at & 0xFF;
    }
    int uflow() override {
        int const c = underflow();
        m_length == 0 ? static_cast<void>(++m_at) : gbump(c >= 0);
        return c;
    }

private:
    std::string m_text;
    std::size_t m_length, m_breaksAt, m_at = 0;
};

// One line for each record, "<line>+<lines>: <field>|<field>", and for each fault,
// "<line>+<lines>: <kind> at <line>:<column>".
inline std::string eventOf(std::uint64_t line, std::uint64_t count,
                           std::vector<std::string> const& fields) {
    std::string text = std::to_string(line) + '+' + std::to_string(count) + ": " + fields[0];
    for (std::size_t i = 1; i < fields.size(); ++i) {
        text += '|' + fields[i];
    }
    return text + '\n';
}
inline std::string eventOf(CsvReader::Fault const& fault) {
    return eventOf(fault.firstLine, fault.lineCount,
                   {std::to_string(static_cast<int>(fault.kind)) + " at " +
                    std::to_string(fault.line) + ':' + std::to_string(fault.column)});
}

inline std::string eventsOf(CsvReader& reader) {
    std::string events;
    reader.onFault([&events](CsvReader::Fault const& fault) { events += eventOf(fault); });
    std::vector<std::string> fields(3, "x");
    while (reader.next(fields)) {
        events += eventOf(reader.line(), reader.lineCount(), fields);
    }
    events += fields.empty() ? "" : "fields behind the end";
    auto const& counts = reader.counts();
    if (counts.lines != counts.recordLines + counts.faultLines + counts.blankLines) {
        events += std::to_string(counts.lines) +
                  " lines are not those of records, faults and no text: " +
                  std::to_string(counts.recordLines) + ", " + std::to_string(counts.faultLines) +
                  ", " + std::to_string(counts.blankLines);
    }
    return events;
}

// Of a text (no length), or of a stream that gives so many bytes at a time.
inline std::string eventsOf(std::string const& text, char separator, std::size_t limit,
                            std::size_t length = std::string::npos) {
    PieceStream stream(text, length);
    std::vector<char> const bytes(text.begin(), text.end()); // a sanitizer sees their end
    CsvReader ofText(std::string_view(bytes.data(), bytes.size()), separator);
    CsvReader ofStream(stream, separator);
    CsvReader& reader = length == std::string::npos ? ofText : ofStream;
    reader.setMaxRecordLength(limit);
    return eventsOf(reader);
}

} // namespace Halvora::test
