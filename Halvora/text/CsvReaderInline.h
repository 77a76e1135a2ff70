#ifndef HALVORA_TEXT_CSVREADERINLINE_H // the two headers include each other: no `#pragma once`
#define HALVORA_TEXT_CSVREADERINLINE_H

// The code of CsvReader, whose header includes this one.

#include <Halvora/text/CsvParts.h>
#include <Halvora/text/CsvReader.h>

#include <algorithm>
#include <cstring>

namespace Halvora {

inline char const* CsvReader::Fault::what() const noexcept {
    constexpr char const* texts[] = {
        "a quote where none may stand",
        "a quote that nothing closes",
        "a record beyond the longest allowed",
        "the stream failed",
    };
    return texts[static_cast<std::size_t>(kind)];
}

inline bool CsvReader::next(std::vector<std::string>& fields) {
    while (startRecord()) {
        if (readRecord(fields)) {
            return true;
        }
    }
    fields.clear();
    return false;
}

// The first separator, line end or quote from `at` on, or m_end.
inline std::size_t CsvReader::findSpecial(std::size_t at) const noexcept {
    return detail::findCsvSpecial(m_data, at, m_end, m_separator);
}

// The record begins at `record`. It may have the bytes at hand, at most one beyond the limit.
inline void CsvReader::moveTo(std::size_t record) noexcept {
    m_record = record;
    m_end = m_size - m_record <= m_maxLength ? m_size : m_record + m_maxLength + 1;
}

// Whether there is a byte at `at`, at most m_end, if need be after reading on.
inline bool CsvReader::has(std::size_t at) {
    return at < m_end || (isWithinLimit(at) && fill());
}

// Appends what the stream has at hand, waiting for one byte at least.
inline bool CsvReader::fill() {
    if (m_stream == nullptr || m_hasFailed || !m_stream->good()) {
        return false;
    }
    if (m_size == m_buffer.size()) {
        m_buffer.resize(std::max<std::size_t>(16384, 2 * m_size));
        m_data = m_buffer.data();
    }
    if (m_stream->peek() == std::istream::traits_type::eof()) {
        return false;
    }
    char* const to = m_buffer.data() + m_size;
    auto count = m_stream->readsome(to, static_cast<std::streamsize>(m_buffer.size() - m_size));
    if (count <= 0) { // there is no buffer behind the stream
        *to = static_cast<char>(m_stream->get());
        count = 1;
    }
    m_size += static_cast<std::size_t>(count);
    moveTo(m_record);
    return true;
}

// Forgets what was read, where that pays for the moving.
inline void CsvReader::dropFront() noexcept {
    if (m_record > m_buffer.size() / 2 && m_stream != nullptr) {
        m_size -= m_record;
        std::memmove(m_buffer.data(), m_buffer.data() + m_record, m_size);
        moveTo(0);
    }
}

// Whether the stream, of which there is no more, has not come to its end.
inline bool CsvReader::isFailed() const {
    return m_stream != nullptr && (m_stream->bad() || !m_stream->eof());
}

// The line of `at`, counted from 0 where the record begins, and where that line begins.
inline std::pair<std::uint64_t, std::size_t> CsvReader::lineOf(std::size_t at) const noexcept {
    std::uint64_t lines = 0;
    std::size_t begin = m_record;
    for (std::size_t i = m_record; i < at; ++i) {
        if (isLineEnd(i)) {
            bool const isSecondHalf = m_data[i] == '\n' && i > m_record && m_data[i - 1] == '\r';
            lines += isSecondHalf ? 0 : 1;
            begin = i + 1;
        }
    }
    return {lines, begin};
}

// Stands at a record's first byte, behind the blank lines before it. False at the end.
inline bool CsvReader::startRecord() {
    if (m_isRefused) {
        skipRefused();
    }
    if (!m_isStarted) {
        skipByteOrderMark();
    }
    for (dropFront(); has(m_record); passLineEnd()) {
        if (m_data[m_record] == '\n' && m_isBehindCr) {
            continue;
        }
        if (!isLineEnd(m_record)) {
            return true;
        }
        ++m_counts.blankLines;
        ++m_counts.lines;
    }
    if (isFailed() && !m_hasFailed) {
        m_hasFailed = true;
        report({FaultKind::streamFailed, m_counts.lines + 1, 1, m_counts.lines + 1, 0});
    }
    return false;
}

inline void CsvReader::skipByteOrderMark() {
    constexpr char mark[] = {'\xEF', '\xBB', '\xBF'};
    std::size_t count = 0;
    while (count < sizeof mark && (count < m_size || fill()) && m_data[count] == mark[count]) {
        ++count;
    }
    moveTo(count == sizeof mark ? count : 0);
    m_isStarted = true;
}

inline void CsvReader::passLineEnd() noexcept {
    std::size_t next = std::min(m_record + 1, m_size);
    m_isBehindCr = next != m_record && m_data[m_record] == '\r';
    if (m_isBehindCr && next != m_size) { // else the LF may be yet to come
        m_isBehindCr = false;
        next += m_data[next] == '\n' ? 1 : 0;
    }
    moveTo(next);
}

inline bool CsvReader::readRecord(std::vector<std::string>& fields) {
    m_hasInnerLines = false;
    detail::CsvFields out(fields);
    std::size_t at = m_record;
    for (;; ++at) {
        at = has(at) && m_data[at] == '"' ? takeQuoted(out, at) : takePlain(out, at);
        if (at == none) {
            return false;
        }
        if (at == m_end || isLineEnd(at)) {
            break;
        }
    }
    out.finish();
    accept(at);
    return true;
}

// This and the next give where the field ends: at a separator, a line end or the end of the text.
inline std::size_t CsvReader::takePlain(detail::CsvFields& out, std::size_t begin) {
    std::size_t at = begin;
    do {
        at = findSpecial(at);
    } while (at == m_end && has(at));
    if (at == m_end) {
        if (!isWithinLimit(at)) {
            return refuse(FaultKind::recordTooLong, at - 1, at - 1);
        }
        if (isFailed()) {
            return refuse(FaultKind::streamFailed, at, at);
        }
    } else if (m_data[at] == '"') {
        return refuse(FaultKind::strayQuote, at, at);
    }
    out.put(m_data + begin, at - begin);
    return at;
}

inline std::size_t CsvReader::takeQuoted(detail::CsvFields& out, std::size_t begin) {
    bool hasPairs = false;
    bool hasLines = false;
    std::size_t const closing = findClosing(begin + 1, hasPairs, hasLines);
    if (closing == none) {
        return refuseOpen(begin, m_end);
    }
    std::size_t const behind = closing + 1;
    if (behind == m_end) {
        if (!isWithinLimit(behind) || isFailed()) {
            return refuseOpen(begin, behind);
        }
    } else if (m_data[behind] != m_separator && !isLineEnd(behind)) {
        return hasLines ? refuse(FaultKind::openQuote, begin, begin)
                        : refuse(FaultKind::strayQuote, closing, closing);
    }
    m_hasInnerLines = m_hasInnerLines || hasLines;

    std::string_view rest(m_data + begin + 1, closing - begin - 1);
    std::string& field = out.next();
    if (!hasPairs) {
        field.assign(rest.data(), rest.size());
        return behind;
    }
    field.clear();
    for (auto pair = rest.find('"'); pair != std::string_view::npos; pair = rest.find('"')) {
        field.append(rest.data(), pair + 1);
        rest.remove_prefix(pair + 2);
    }
    field.append(rest.data(), rest.size());
    return behind;
}

// The quote that has no second one behind it; `none` if there is none in the record.
inline std::size_t CsvReader::findClosing(std::size_t at, bool& hasPairs, bool& hasLines) {
    for (;; ++at) {
        at = findSpecial(at);
        if (at == m_end) {
            if (!has(at)) {
                return none;
            }
            --at;
        } else if (isLineEnd(at)) {
            hasLines = true;
        } else if (m_data[at] == '"') {
            if (!has(at + 1) || m_data[at + 1] != '"') {
                return at;
            }
            hasPairs = true;
            ++at;
        }
    }
}

inline void CsvReader::accept(std::size_t end) noexcept {
    m_line = m_counts.lines + 1;
    m_lineCount = m_hasInnerLines ? lineOf(end).first + 1 : 1;
    ++m_counts.records;
    m_counts.recordLines += m_lineCount;
    m_counts.lines += m_lineCount;
    moveTo(end);
    passLineEnd();
}

// Refuses the record for what stands at `at`. The next one begins behind the line of `last`.
inline std::size_t CsvReader::refuse(FaultKind kind, std::size_t at, std::size_t last) noexcept {
    auto const [line, begin] = lineOf(at);
    std::uint64_t const first = m_counts.lines + 1;
    m_fault = {kind, first + line, at - begin + 1, first, lineOf(last).first + 1};
    m_isRefused = true;
    m_hasFailed = kind == FaultKind::streamFailed;
    moveTo(last);
    return none;
}

// Refuses the record of which the quote at `begin` is not closed before `end`.
inline std::size_t CsvReader::refuseOpen(std::size_t begin, std::size_t end) {
    return isWithinLimit(end) && isFailed() ? refuse(FaultKind::streamFailed, end, end)
                                            : refuse(FaultKind::openQuote, begin, begin);
}

inline void CsvReader::skipRefused() {
    while ((m_record < m_size || fill()) && !isLineEnd(m_record)) {
        moveTo(findSpecial(m_record + 1));
        dropFront();
    }
    passLineEnd();
    m_isRefused = false;
    report(m_fault);
}

inline void CsvReader::report(Fault const& fault) {
    ++m_counts.faults;
    m_counts.faultLines += fault.lineCount;
    m_counts.lines += fault.lineCount;
    if (m_handler) {
        m_handler(fault);
    }
}

} // namespace Halvora

#endif
