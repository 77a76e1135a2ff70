#pragma once

#include <istream>
#include <streambuf>
#include <string>
#include <string_view>

namespace Halvora::test {

// Gives a text a few bytes at a time; 0: one, without a buffer. It may break in the middle.
class PieceBuffer : public std::streambuf {
public:
    PieceBuffer(std::string_view text, std::size_t length, std::size_t breaksAt = std::string::npos)
        : m_text(text), m_length(length), m_breaksAt(breaksAt) {}

protected:
    int_type underflow() override {
        if (m_at >= m_breaksAt) {
            throw 1;
        }
        if (m_at == m_text.size()) {
            return traits_type::eof();
        }
        if (m_length == 0) {
            return traits_type::to_int_type(m_text[m_at]);
        }
        m_piece = m_text.substr(m_at, std::min(m_length, m_breaksAt - m_at));
        m_at += m_piece.size();
        setg(m_piece.data(), m_piece.data(), m_piece.data() + m_piece.size());
        return traits_type::to_int_type(m_piece[0]);
    }
    int_type uflow() override {
        int_type const c = underflow();
        if (c != traits_type::eof()) {
            m_length == 0 ? static_cast<void>(++m_at) : gbump(1);
        }
        return c;
    }

private:
    std::string m_text;
    std::string m_piece;
    std::size_t m_length;
    std::size_t m_breaksAt;
    std::size_t m_at = 0;
};

struct PieceStream : private PieceBuffer, std::istream {
    template <typename... Arguments>
    explicit PieceStream(Arguments... arguments)
        : PieceBuffer(arguments...), std::istream(static_cast<PieceBuffer*>(this)) {}
};

} // namespace Halvora::test
