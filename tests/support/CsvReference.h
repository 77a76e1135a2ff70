#pragma once

#include <Halvora/text/CsvReader.h>

#include <string>
#include <string_view>
#include <vector>

namespace Halvora::test {

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
    return std::to_string(fault.firstLine) + '+' + std::to_string(fault.lineCount) + ": " +
           std::to_string(static_cast<int>(fault.kind)) + " at " + std::to_string(fault.line) +
           ':' + std::to_string(fault.column) + '\n';
}

// The rules, one byte after the other.
class SlowCsv {
public:
    SlowCsv(std::string_view text, char separator, std::size_t limit)
        : m_text(text.substr(text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0)),
          m_separator(separator),
          m_limit(limit) {}

    std::string events() {
        while (m_record < m_text.size()) {
            if (isLineEnd(m_record)) {
                m_record += lineEndLength(m_record);
                ++m_line;
            } else {
                readRecord();
            }
        }
        return m_events;
    }

private:
    bool isLineEnd(std::size_t at) const { return m_text[at] == '\n' || m_text[at] == '\r'; }
    std::size_t lineEndLength(std::size_t at) const {
        return m_text.substr(at, 2) == "\r\n" ? 2 : 1;
    }
    std::uint64_t linesBefore(std::size_t at) const {
        std::uint64_t lines = 0;
        for (std::size_t i = m_record; i < at; ++i) {
            lines += isLineEnd(i) && !(lineEndLength(i) == 2 && i + 1 < at);
        }
        return lines;
    }

    void readRecord() {
        std::vector<std::string> fields(1);
        std::size_t opening = 0;
        enum { start, plain, quoted, closed } state = start;
        for (std::size_t at = m_record;; ++at) {
            bool const isTooLong = at - m_record > m_limit;
            if (at == m_text.size() || isTooLong) {
                bool const isOpen = state == quoted || (state == closed && isTooLong);
                return isOpen      ? refuse(CsvReader::FaultKind::openQuote, opening, opening)
                       : isTooLong ? refuse(CsvReader::FaultKind::recordTooLong, at - 1, at - 1)
                                   : accept(fields, at);
            }
            char const c = m_text[at];
            if (state == quoted) {
                c == '"' ? static_cast<void>(state = closed) : fields.back().push_back(c);
            } else if (isLineEnd(at)) {
                return accept(fields, at);
            } else if (c == '"' && state == plain) {
                return refuse(CsvReader::FaultKind::strayQuote, at, at);
            } else if (c == '"') {
                state == closed ? fields.back().push_back(c) : static_cast<void>(opening = at);
                state = quoted;
            } else if (c == m_separator) {
                fields.emplace_back();
                state = start;
            } else if (state == closed) {
                bool const isSameLine = linesBefore(opening) == linesBefore(at);
                return isSameLine ? refuse(CsvReader::FaultKind::strayQuote, at - 1, opening)
                                  : refuse(CsvReader::FaultKind::openQuote, opening, opening);
            } else {
                fields.back().push_back(c);
                state = plain;
            }
        }
    }

    void accept(std::vector<std::string> const& fields, std::size_t at) {
        m_events += eventOf(m_line, linesBefore(at) + 1, fields);
        goOn(at);
    }
    void refuse(CsvReader::FaultKind kind, std::size_t at, std::size_t last) {
        std::size_t begin = at;
        while (begin > m_record && !isLineEnd(begin - 1)) {
            --begin;
        }
        m_events += eventOf(
            {kind, m_line + linesBefore(at), at - begin + 1, m_line, linesBefore(last) + 1});
        goOn(last);
    }
    void goOn(std::size_t at) { // behind the line end from `at` on
        while (at < m_text.size() && !isLineEnd(at)) {
            ++at;
        }
        m_line += linesBefore(at) + 1;
        m_record = at < m_text.size() ? at + lineEndLength(at) : at;
    }

    std::string_view m_text;
    char m_separator;
    std::size_t m_limit;
    std::size_t m_record = 0;
    std::uint64_t m_line = 1;
    std::string m_events;
};

// What the reader makes of a text or a stream.
inline std::string eventsOf(CsvReader& reader) {
    std::string events;
    reader.onFault([&events](CsvReader::Fault const& fault) { events += eventOf(fault); });
    for (std::vector<std::string> fields(3, "x"); reader.next(fields);) {
        events += eventOf(reader.line(), reader.lineCount(), fields);
    }
    return events;
}

} // namespace Halvora::test
