#pragma once

// Parts of CsvReader that know nothing of what it has read so far.

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

namespace Halvora::detail {

// The first separator, line end or quote of `data` from `at` on, or `end`.
inline std::size_t findCsvSpecial(char const* data, std::size_t at, std::size_t end,
                                  char separator) noexcept {
#if defined(__SSE2__)
    auto const load = [](char const* from) {
        return _mm_loadu_si128(reinterpret_cast<__m128i const*>(from));
    };
    for (; end - at >= 16; at += 16) {
        __m128i const bytes = load(data + at);
        __m128i const isLineEnd = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')),
                                               _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
        __m128i const isOther = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),
                                             _mm_cmpeq_epi8(bytes, _mm_set1_epi8(separator)));
        int const mask = _mm_movemask_epi8(_mm_or_si128(isLineEnd, isOther));
        if (mask != 0) {
            return at + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask)));
        }
    }
#endif
    while (at < end && data[at] != separator && data[at] != '"' && data[at] != '\n' &&
           data[at] != '\r') {
        ++at;
    }
    return at;
}

// Fields one after another into the elements that the vector already has.
class CsvFields {
public:
    explicit CsvFields(std::vector<std::string>& all)
        : m_all(all), m_next(all.data()), m_end(m_next + all.size()) {}

    std::string& next() {
        if (m_next == m_end) {
            m_all.emplace_back();
            m_end = m_all.data() + m_all.size();
            m_next = m_end - 1;
        }
        return *m_next++;
    }
    void put(char const* text, std::size_t n) {
        std::string& field = next();
        if (n == field.size()) { // as in a column of one width
            std::memcpy(field.data(), text, n);
        } else {
            field.assign(text, n);
        }
    }
    void finish() { m_all.resize(static_cast<std::size_t>(m_next - m_all.data())); }

private:
    std::vector<std::string>& m_all;
    std::string* m_next;
    std::string* m_end;
};

} // namespace Halvora::detail
