#include <Halvora/types/Binary16.h>

#include <algorithm>
#include <cstdint>
#include <cxxabi.h>
#include <istream>
#include <iterator>
#include <locale>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <typeinfo>

#include <Halvora/types/ParseBinary16.h>

namespace Halvora {

// Constant-initialised: other statics, of the library or of its users, may rely on them.
Binary16 const Binary16::MIN(0, 0, 0, 0);
Binary16 const Binary16::MAX(~0u, 0xFFFF, 0xFFFF, ~0ull);
Binary16 const Binary16::EMPTY(0, 0, 0, 0);

namespace {

constexpr unsigned char upperCaseLetters = 'A' - '9' - 1;
constexpr unsigned char lowerCaseLetters = 'a' - '9' - 1;
constexpr std::size_t digitCount = 32;
constexpr std::size_t textLength = Binary16::HEXADECIMAL_LENGTH;

struct Words {
    std::uint32_t at[4];

    explicit Words(void const* bytes) noexcept { std::memcpy(at, bytes, sizeof at); }
};

// The 8 digits of a number, most significant first: its nibbles are spread over the bytes of one
// 64-bit word and turned into digits all at once. `letters` is the gap between '9' and the letter
// that stands for 10.
std::uint64_t hex8(std::uint32_t number, unsigned char letters) noexcept {
    constexpr std::uint64_t each = 0x0101010101010101u;
    std::uint64_t nibbles = __builtin_bswap32(number);
    nibbles = (nibbles | (nibbles << 16)) & 0x0000FFFF0000FFFFu;
    nibbles = (nibbles | (nibbles << 8)) & 0x00FF00FF00FF00FFu;
    constexpr std::uint64_t low = 0x000F000F000F000Fu;
    nibbles = ((nibbles >> 4) & low) | ((nibbles & low) << 8);
    std::uint64_t const aboveNine = ((nibbles + each * 6) >> 4) & each;
    return nibbles + each * '0' + aboveNine * letters;
}

template <typename T>
void store(char* out, T value) noexcept {
    std::memcpy(out, &value, sizeof value);
}

void putDigits(char* out, unsigned char const* bytes) noexcept {
    for (int i = 12; i >= 0; i -= 4, out += 8) {
        std::uint32_t word;
        std::memcpy(&word, bytes + i, sizeof word);
        store(out, hex8(word, upperCaseLetters));
    }
}

// Four words of the bytes in the order of a UUID (3 to 0, 5 4, 7 6, 8 to 15), the first byte of
// each being the most significant. The order is its own inverse.
Words uuidWords(void const* bytes) noexcept {
    Words words(bytes);
    words.at[1] = words.at[1] << 16 | words.at[1] >> 16;
    words.at[2] = __builtin_bswap32(words.at[2]);
    words.at[3] = __builtin_bswap32(words.at[3]);
    return words;
}

void swapUuidBytes(void* out, void const* bytes) noexcept {
    Words words = uuidWords(bytes);
    for (std::uint32_t& word : words.at) {
        word = __builtin_bswap32(word);
    }
    std::memcpy(out, words.at, sizeof words.at);
}

// Eight digits, with a dash before each half.
void putHalves(char* out, std::uint64_t digits) noexcept {
    out[0] = out[5] = '-';
    store(out + 1, static_cast<std::uint32_t>(digits));
    store(out + 6, static_cast<std::uint32_t>(digits >> 32));
}

// Digits go straight to their places, not by way of a buffer: what was stored in pieces is read
// slowly as a whole.
void putGrouped(char* out, unsigned char const* bytes) noexcept {
    Words const words = uuidWords(bytes);
    auto const digits = [&words](int i) { return hex8(words.at[i], lowerCaseLetters); };
    store(out, digits(0));
    putHalves(out + 8, digits(1));
    putHalves(out + 18, digits(2));
    store(out + 28, digits(3));
}

void putHexadecimal(char* out, unsigned char const* bytes) noexcept {
    out[0] = '0';
    out[1] = 'x';
    putDigits(out + 2, bytes);
}

// Writes one of the forms where there is room for it.
template <std::size_t Length, typename Put, typename Char>
std::size_t putText(Put put, Char* out, std::size_t capacity, unsigned char const* bytes) noexcept {
    if (out == nullptr || capacity < Length) {
        return 0;
    }
    if constexpr (sizeof(Char) == 1) {
        put(out, bytes);
    } else {
        char text[Length];
        put(text, bytes);
        std::copy(text, text + Length, out);
    }
    return Length;
}

// How many characters a stream's buffer holds: they can be taken without asking its source.
struct Held : std::streambuf {
    static std::streamsize in(std::streambuf const& buffer) {
        return (buffer.*&Held::egptr)() - (buffer.*&Held::gptr)();
    }
};

// Collects digits, and writes them to the value when reading ends, in whichever way: two a byte,
// the last byte first.
class DigitReader {
public:
    explicit DigitReader(unsigned char* bytes) : m_bytes(bytes) {}
    DigitReader(DigitReader const&) = delete;
    DigitReader& operator=(DigitReader const&) = delete;

    ~DigitReader() {
        for (int i = 0; i < (m_end - m_digits) / 2; ++i) {
            m_bytes[15 - i] = detail::byteOfDigits(m_digits[2 * i], m_digits[2 * i + 1]);
        }
    }

    std::ptrdiff_t missing() const { return std::end(m_digits) - m_end; }

    void add(char digit) { *m_end++ = digit; }

    // Takes what the buffer holds, as extractions one by one would. Skipped white space leaves room
    // for more.
    void addHeld(std::istream const& stream) {
        std::streambuf& buffer = *stream.rdbuf();
        std::streamsize held = Held::in(buffer), taken = 1;
        while (taken > 0 && held > 0 && missing() > 0) {
            taken = buffer.sgetn(m_end, std::min<std::streamsize>(held, missing()));
            held -= taken;
            m_end = removeSpace(stream, m_end, m_end + taken);
        }
    }

private:
    static char* removeSpace(std::istream const& stream, char* begin, char* end) {
        if ((stream.flags() & std::ios_base::skipws) == 0) {
            return end;
        }
        std::locale const locale = stream.getloc();
        auto const& characters = std::use_facet<std::ctype<char>>(locale);
        return std::remove_if(begin, end,
                              [&](char c) { return characters.is(std::ctype_base::space, c); });
    }

    unsigned char* m_bytes;
    char m_digits[digitCount] = {};
    char* m_end = m_digits;
};

template <typename Char>
std::basic_ostream<Char>& insertText(std::basic_ostream<Char>& stream, Binary16 const& value) {
    Char text[textLength];
    return stream << std::basic_string_view<Char>(text, value.toHexadecimal(text, textLength));
}

// For a handler: what the standard's insertions do when the stream's buffer throws. Sets badbit,
// and lets the exception go on if the stream is set to throw then.
template <typename Char>
void setBadOrRethrow(std::basic_ostream<Char>& stream) {
    try {
        stream.setstate(std::ios_base::badbit);
    } catch (std::ios_base::failure const&) {
        // The buffer's own exception goes on in its place.
    }
    if ((stream.exceptions() & std::ios_base::badbit) != 0) {
        throw;
    }
}

// The state that one failed insertion leaves.
constexpr std::ios_base::iostate failedInsertion =
#if defined(_LIBCPP_VERSION)
    std::ios_base::failbit |
#endif
    std::ios_base::badbit;

// True when the last character failed, and no other did.
template <typename Char>
bool putAll(std::basic_ostream<Char>& stream, Char const* text, std::size_t length) {
    typename std::basic_ostream<Char>::sentry const ready(stream);
    if (!ready) {
        return false;
    }
    auto const count = static_cast<std::streamsize>(length - 1);
    bool isLast = false;
    try {
        isLast = stream.rdbuf()->sputn(text, count) == count;
        if (isLast && stream.rdbuf()->sputc(text[count]) != std::char_traits<Char>::eof()) {
            return false;
        }
        stream.setstate(failedInsertion);
#if defined(__GLIBCXX__)
    } catch (__cxxabiv1::__forced_unwind const&) {
        throw; // the thread is cancelled
#endif
    } catch (...) {
        setBadOrRethrow(stream);
    }
    return isLast;
}

// As an insertion for each character, but quicker. A field width pads the first one only, which has
// `padded` characters. When one fails, the next, which finds the stream failed, may set more bits.
template <typename Char>
std::basic_ostream<Char>& insert(std::basic_ostream<Char>& stream, Char const (&text)[textLength],
                                 std::size_t padded) {
    std::size_t const begin = stream.width() == 0 ? 0 : padded;
    if (begin != 0) {
        stream << std::basic_string_view<Char>(text, begin);
    }
    bool const lastFailed = putAll(stream, text + begin, textLength - begin);
    if (stream.bad() && !lastFailed) {
        stream << text[0]; // finds the failed stream
    }
    return stream;
}

// True when widening a range is widening each character, as the standard's own facets promise.
bool widensAlike(std::ctype<wchar_t> const& facet) {
    return typeid(facet) == typeid(std::ctype<wchar_t>) ||
           typeid(facet) == typeid(std::ctype_byname<wchar_t>);
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

Binary16 Binary16::fromUuidBytes(void const* bytes) noexcept {
    Binary16 value(bytes, sizeof value.m_bytes);
    swapUuidBytes(value.m_bytes, value.m_bytes);
    return value;
}

void Binary16::toUuidBytes(void* bytes) const noexcept {
    if (bytes != nullptr) {
        swapUuidBytes(bytes, m_bytes);
    }
}

std::size_t Binary16::toHexadecimal(char* out, std::size_t capacity) const noexcept {
    return putText<HEXADECIMAL_LENGTH>(putHexadecimal, out, capacity, m_bytes);
}

std::size_t Binary16::toHexadecimal(wchar_t* out, std::size_t capacity) const noexcept {
    return putText<HEXADECIMAL_LENGTH>(putHexadecimal, out, capacity, m_bytes);
}

std::size_t Binary16::toGrouped(char* out, std::size_t capacity) const noexcept {
    return putText<GROUPED_LENGTH>(putGrouped, out, capacity, m_bytes);
}

std::size_t Binary16::toGrouped(wchar_t* out, std::size_t capacity) const noexcept {
    return putText<GROUPED_LENGTH>(putGrouped, out, capacity, m_bytes);
}

std::ostream& operator<<(detail::LastChoice<std::ostream> stream,
                         detail::LastChoice<Binary16 const> value) {
    return insertText(stream.chosen, value.chosen);
}

std::wostream& operator<<(detail::LastChoice<std::wostream> stream,
                          detail::LastChoice<Binary16 const> value) {
    return insertText(stream.chosen, value.chosen);
}

std::ostream& Binary16::write(std::ostream& stream) const {
    char text[textLength];
    putHexadecimal(text, m_bytes);
    return insert(stream, text, 1);
}

std::wostream& Binary16::write(std::wostream& stream) const {
    char digits[digitCount];
    putDigits(digits, m_bytes);
    std::locale const locale = stream.getloc();
    auto const& facet = std::use_facet<std::ctype<wchar_t>>(locale);
    if (widensAlike(facet)) {
        wchar_t text[textLength] = {L'0', L'x'};
        facet.widen(digits, digits + digitCount, text + 2);
        return insert(stream, text, 2);
    }
    stream << L"0x";
    for (char const digit : digits) {
        stream << digit;
    }
    return stream;
}

// An empty buffer is refilled by the standard's own extraction, which also decides what an end or
// an exception does to the stream.
std::istream& Binary16::read(std::istream& stream) {
    *this = Binary16();
    stream.ignore(2);
    std::istream::sentry const flushed(stream, true); // what the stream is tied to
    DigitReader digits(m_bytes);
    while (stream && digits.missing() > 0) {
        digits.addHeld(stream);
        char c = 0;
        if (digits.missing() > 0 && stream >> c) {
            digits.add(c);
        } else if (digits.missing() > 1) {
            stream >> c; // finds the failed stream, as each extraction behind would
        }
    }
    return stream;
}

} // namespace Halvora
