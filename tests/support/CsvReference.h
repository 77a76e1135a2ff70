#pragma once

#include <Halvora/text/CsvReader.h>

#include <algorithm>
#include <istream>
#include <string>
#include <vector>

namespace Halvora::test {

// Gives a text a few bytes at a time; 0: one, without a buffer. It may break in the middle.
struct PieceStream : private std::streambuf, std::istream {
    PieceStream(std::string const& text, std::size_t length,
                std::size_t breaksAt = std::string::npos)
        : std::istream(static_cast<std::streambuf*>(this)),
          m_text(text),
          m_length(length),
          m_breaksAt(breaksAt) {}

protected:
    int underflow() override {
        if (m_at >= m_breaksAt) {
            throw 1;
        }
        std::size_t const length = m_length == 0 ? 0 : std::min(m_length, m_breaksAt - m_at);
        char* const at = m_text.data() + m_at;
        char* const last =
            m_text.data() + std::min(m_text.size(), m_at + std::max<std::size_t>(length, 1));
        if (at == last) {
            return traits_type::eof();
        }
        if (length != 0) {
            setg(at, at, last);
            m_at += static_cast<std::size_t>(last - at);
        }
        return traits_type::to_int_type(*at);
    }
    int uflow() override {
        int const c = underflow();
        m_length == 0 ? static_cast<void>(++m_at) : gbump(c != traits_type::eof());
        return c;
    }

private:
    using traits_type = std::streambuf::traits_type;
    std::string m_text;
    std::size_t m_length;
    std::size_t m_breaksAt;
    std::size_t m_at = 0;
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

// The rules, one byte after the other.
inline std::string slowCsv(std::string text, char separator, std::size_t limit) {
    text.erase(0, text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0);
    std::string events;
    auto const isLineEnd = [&text](std::size_t at) { return text[at] == '\n' || text[at] == '\r'; };
    auto const lengthOf = [&text](std::size_t at) { return text.compare(at, 2, "\r\n") ? 1u : 2u; };
    auto const lineOf = [&](std::size_t to, std::size_t& begin) {
        std::uint64_t line = 1;
        for (std::size_t at = begin = 0; at < to; at += isLineEnd(at) ? lengthOf(at) : 1) {
            line += isLineEnd(at);
            begin = isLineEnd(at) ? at + lengthOf(at) : begin;
        }
        return line;
    };
    for (std::size_t first = 0, column, none; first < text.size(); first += lengthOf(first)) {
        if (isLineEnd(first)) {
            continue;
        }
        std::vector<std::string> fields(1);
        enum { start, plain, quoted, closed } state = start;
        std::size_t at = first, opening = first, last = 0;
        int kind = -1;
        for (; kind < 0; ++at) {
            bool const isTooLong = at - first > limit;
            if (at == text.size() || isTooLong) {
                bool const isOpen = state == quoted || (state == closed && isTooLong);
                kind = isOpen ? 1 : isTooLong ? 2 : 9;
                last = isOpen ? opening : isTooLong ? at - 1 : at;
            } else if (state == quoted) {
                text[at] == '"' ? state = closed : state;
                fields.back().append(text[at] == '"' ? 0 : 1, text[at]);
            } else if (isLineEnd(at)) {
                kind = 9;
                last = at;
            } else if (text[at] == '"' && state == plain) {
                kind = 0;
                last = at;
            } else if (text[at] == '"') {
                fields.back().append(state == closed ? 1 : 0, '"');
                opening = state == closed ? opening : at;
                state = quoted;
            } else if (text[at] == separator) {
                fields.emplace_back();
                state = start;
            } else if (state == closed) {
                kind = lineOf(opening, none) == lineOf(at, none) ? 0 : 1;
                last = kind == 0 ? at - 1 : opening;
            } else {
                fields.back() += text[at];
                state = plain;
            }
        }
        auto const line = lineOf(first, none);
        auto const faultLine = lineOf(last, column);
        auto const count = faultLine - line + 1;
        events += kind == 9 ? eventOf(line, count, fields)
                            : eventOf({static_cast<CsvReader::FaultKind>(kind), faultLine,
                                       last - column + 1, line, count});
        for (first = last; first < text.size() && !isLineEnd(first);) {
            ++first;
        }
    }
    return events;
}

inline std::string eventsOf(CsvReader& reader) {
    std::string events;
    reader.onFault([&events](CsvReader::Fault const& fault) { events += eventOf(fault); });
    for (std::vector<std::string> fields(3, "x"); reader.next(fields);) {
        events += eventOf(reader.line(), reader.lineCount(), fields);
    }
    auto const& counts = reader.counts();
    bool const addsUp = counts.lines == counts.recordLines + counts.faultLines + counts.blankLines;
    return events + (addsUp ? "" : "the counts do not add up");
}

// Of a text (no length), or of a stream that gives so many bytes at a time.
inline std::string eventsOf(std::string const& text, char separator, std::size_t limit,
                            std::size_t length = std::string::npos) {
    PieceStream stream(text, length);
    CsvReader ofText(std::string_view(text), separator), ofStream(stream, separator);
    CsvReader& reader = length == std::string::npos ? ofText : ofStream;
    reader.setMaxRecordLength(limit);
    return eventsOf(reader);
}

} // namespace Halvora::test
