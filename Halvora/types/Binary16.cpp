#include <Halvora/types/Binary16.h>

#include <algorithm>
#include <istream>
#include <locale>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include <Halvora/types/detail/Hex.h>

namespace Halvora {

// Constant-initialised: other statics, of the library or of its users, may rely on them.
Binary16 const Binary16::MIN(0, 0, 0, 0);
Binary16 const Binary16::MAX(~0u, 0xFFFF, 0xFFFF, ~0ull);
Binary16 const Binary16::EMPTY(0, 0, 0, 0);

namespace {

constexpr std::size_t digitCount = 32;
constexpr std::size_t textLength = 2 + digitCount;

void putDigits(char* out, unsigned char const* bytes) noexcept {
    std::uint32_t words[4];
    std::memcpy(words, bytes, sizeof words);
    for (int i = 3; i >= 0; --i) {
        out = detail::putHex8(out, words[i], detail::upperCaseLetters);
    }
}

// Removes what formatted extractions of single characters would skip.
char* removeSpace(std::istream const& stream, char* begin, char* end) {
    if ((stream.flags() & std::ios_base::skipws) == 0) {
        return end;
    }
    std::locale const locale = stream.getloc();
    auto const& characters = std::use_facet<std::ctype<char>>(locale);
    return std::remove_if(begin, end,
                          [&](char c) { return characters.is(std::ctype_base::space, c); });
}

// Answers whether the stream held all digits. What is still missing is read at once, since no fewer
// characters can follow; of what white space takes up in it, the same is missing again.
bool readDigits(std::istream& stream, unsigned char* bytes) {
    char digits[digitCount];
    char* const all = digits + digitCount;
    char* end = digits;
    bool isComplete = true;
    while (end != all && isComplete) {
        std::streamsize const wanted = all - end;
        std::streamsize const got = stream.rdbuf()->sgetn(end, wanted);
        isComplete = got == wanted;
        end = removeSpace(stream, end, end + got);
    }
    for (int i = 0; i < (end - digits) / 2; ++i) {
        bytes[15 - i] = detail::hexByte(static_cast<unsigned char>(digits[2 * i]),
                                        static_cast<unsigned char>(digits[2 * i + 1]));
    }
    return isComplete;
}

// As the standard's own extractions do with an exception of the stream's buffer: badbit is set, and
// the exception goes on only if the stream's user asked for that.
bool readDigitsOrSetBad(std::istream& stream, unsigned char* bytes) {
    try {
        return readDigits(stream, bytes);
    } catch (...) {
        try {
            stream.setstate(std::ios_base::badbit);
        } catch (std::ios_base::failure const&) {
            // The buffer's own exception goes on in its place.
        }
        if ((stream.exceptions() & std::ios_base::badbit) != 0) {
            throw;
        }
        return true;
    }
}

// A field width is spent on the first insertion, which is `padded` characters long.
template <typename Char>
std::basic_ostream<Char>& insert(std::basic_ostream<Char>& stream, Char const (&text)[textLength],
                                 std::size_t padded) {
    std::size_t written = 0;
    if (stream.width() != 0) {
        stream << std::basic_string_view<Char>(text, padded);
        written = padded;
    }
    return stream.write(text + written, static_cast<std::streamsize>(textLength - written));
}

} // namespace

Binary16::Binary16(void const* data, unsigned int length) noexcept {
    if (data != nullptr) {
        std::memcpy(m_bytes, data, std::min<std::size_t>(length, sizeof m_bytes));
    }
}

Binary16& Binary16::operator=(unsigned char const* bytes) noexcept {
    if (bytes == nullptr) {
        std::memset(m_bytes, 0, sizeof m_bytes);
    } else {
        std::memmove(m_bytes, bytes, sizeof m_bytes);
    }
    return *this;
}

int Binary16::set(unsigned char index, unsigned char value) noexcept {
    if (index >= sizeof m_bytes) {
        return ERR_OUT_OF_RANGE;
    }
    m_bytes[index] = value;
    return 0;
}

unsigned char Binary16::operator[](unsigned char index) const {
    if (index >= sizeof m_bytes) {
        throw std::out_of_range("out_of_range");
    }
    return m_bytes[index];
}

std::ostream& Binary16::write(std::ostream& stream) const {
    char text[textLength] = {'0', 'x'};
    putDigits(text + 2, m_bytes);
    return insert(stream, text, 1);
}

std::wostream& Binary16::write(std::wostream& stream) const {
    char digits[digitCount];
    putDigits(digits, m_bytes);
    wchar_t text[textLength] = {L'0', L'x'};
    std::locale const locale = stream.getloc();
    std::use_facet<std::ctype<wchar_t>>(locale).widen(digits, digits + digitCount, text + 2);
    return insert(stream, text, 2);
}

std::istream& Binary16::read(std::istream& stream) {
    *this = Binary16();
    stream.ignore(2);
    std::istream::sentry const ready(stream, true);
    if (ready && !readDigitsOrSetBad(stream, m_bytes)) {
        stream.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    }
    return stream;
}

} // namespace Halvora
