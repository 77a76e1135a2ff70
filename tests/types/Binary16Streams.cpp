// Binary16 in streams that pad, translate, fail or throw: as if each character went by itself.

#include <Halvora/types/Binary16.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <iterator>
#include <locale>
#include <random>
#include <sstream>

using namespace Halvora;

namespace {

using Byte = unsigned char;

// Has wide digits of its own, for single characters only.
struct Circled : std::ctype<wchar_t> {
    wchar_t do_widen(char c) const override { return static_cast<wchar_t>(0x2400 + c); }
};

// Takes so many characters, then refuses them or throws.
template <typename Char>
struct Sink : std::basic_streambuf<Char> {
    using typename std::basic_streambuf<Char>::int_type;
    int room = 0;
    bool throws = false, flushes = true;
    std::basic_ostringstream<Char> taken;

    int_type overflow(int_type c) override {
        if (room-- > 0) {
            taken.put(static_cast<Char>(c));
            return c;
        }
        return throws ? throw room : std::char_traits<Char>::eof();
    }
    int sync() override { return flushes ? 0 : -1; }
};

template <typename Stream>
void writeSlowly(Stream& stream, Binary16 const& value) {
    if constexpr (std::is_same_v<Stream, std::ostream>) {
        stream << '0' << 'x';
    } else {
        stream << L"0x";
    }
    for (int i = 31; i >= 0; --i) {
        stream << "0123456789ABCDEF"[value[static_cast<Byte>(i / 2)] >> i % 2 * 4 & 15];
    }
}

// Runs the action, answers how it ended.
template <typename Action>
char const* endOf(Action action) {
    try {
        action();
        return "state ";
    } catch (std::ios::failure const&) {
        return "failure, state ";
    } catch (int) {
        return "thrown, state ";
    }
}

// A stream and its sink, as the bits of a number say.
struct Setting {
    unsigned int room, bits, width;
    bool operator()(unsigned int bit) const { return (bits >> bit & 1) != 0; }
};

template <typename Char>
std::basic_string<Char> outcomeOf(Binary16 const& value, Setting const& is, bool slowly) {
    Sink<Char> sink;
    std::basic_ostream<Char> stream(&sink);
    sink.room = static_cast<int>(is.room);
    sink.throws = is(0);
    sink.flushes = !is(1) || is.room < 34; // fails in one way, not in two
    stream << (is(1) ? std::unitbuf : std::nounitbuf) << (is(2) ? std::left : std::right)
           << std::setfill(Char('*')) << std::setw(static_cast<int>(is.width));
    stream.imbue(is(3) ? std::locale(std::locale(), new Circled) : std::locale());
    std::basic_ostringstream<Char> outcome;
    auto const mask = static_cast<std::ios::iostate>(is.bits >> 4 & 7);
    outcome << endOf([&] {
        stream.exceptions(is(1) ? mask & ~std::ios::badbit : mask); // a failed flush must not throw
        slowly ? writeSlowly(stream, value) : void(value.write(stream));
    });
    outcome << stream.rdstate() << " width " << stream.width() << ' ';
    return outcome.str() + (is(1) ? std::basic_string<Char>() : sink.taken.str());
}

TEST(Binary16, isWrittenAsInsertionsOfItsCharacters) {
    Binary16 const value(0x0189ABEF, 0xCD23, 0x4567, 0x0102030405060708);
    for (unsigned int room = 0; room < 40; ++room) {
        for (unsigned int bits = 0; bits < 128; ++bits) {
            Setting const is = {room, bits, bits % 3 == 0 ? 0 : room % 5};
            SCOPED_TRACE(::testing::Message()
                         << room << " characters, settings " << bits << ", width " << is.width);
            EXPECT_EQ(outcomeOf<char>(value, is, true), outcomeOf<char>(value, is, false));
            EXPECT_EQ(outcomeOf<wchar_t>(value, is, true), outcomeOf<wchar_t>(value, is, false));
        }
    }
}

// Formatted extractions, one a character.
std::istream& readSlowly(std::istream& stream, Binary16& value) {
    auto const valueOf = [](char digit) {
        std::size_t const at = std::string("0123456789:;<=>?ABCDEFabcdef").find(digit);
        return at < 16 ? at : at < 22 ? at - 6 : at < 28 ? at - 12 : 0;
    };
    value = Binary16();
    char high = 0, low = 0;
    stream.ignore(2);
    for (int i = 15; i >= 0; --i) {
        if (stream >> high >> low) {
            value.set(static_cast<Byte>(i), static_cast<Byte>(valueOf(high) * 16 + valueOf(low)));
        }
    }
    return stream;
}

// Ends or throws behind its text, of which it shows a few characters at a time.
struct Source : std::streambuf {
    Source(std::string const& given, unsigned int shown, bool throwsBehind)
        : text(given), step(shown), throws(throwsBehind) {}
    std::string text;
    std::size_t step, at = 0;
    bool throws;

    int_type underflow() override {
        if (at >= text.size()) {
            return throws ? throw 1 : traits_type::eof();
        }
        std::size_t const shown = std::min(step, text.size() - at);
        setg(&text[at], &text[at], &text[at] + shown);
        at += shown;
        return traits_type::to_int_type(*gptr());
    }
};

std::string readOutcome(std::string const& text, unsigned int bits, bool slowly) {
    Source source(text, 1 + bits % 40, (bits >> 6 & 1) != 0);
    std::istream stream(&source);
    stream >> ((bits >> 7 & 3) == 0 ? std::noskipws : std::skipws);
    Binary16 value = Binary16::MAX;
    std::ostringstream outcome;
    outcome << endOf([&] {
        stream.exceptions(static_cast<std::ios::iostate>(bits >> 9 & 7));
        slowly ? readSlowly(stream, value) : value.read(stream);
    });
    outcome << stream.rdstate() << ' ' << value;
    stream.exceptions(std::ios::goodbit);
    source.throws = false;
    stream.clear();
    return outcome.str() + " left " + std::string(std::istreambuf_iterator<char>(stream), {});
}

TEST(Binary16, isReadAsFormattedExtractionsOfItsCharacters) {
    std::mt19937 random(3);
    for (int round = 0; round < 30000; ++round) {
        std::string text(random() % 72, ' ');
        for (char& c : text) {
            c = random() % 9 == 0 ? static_cast<char>(random())
                                  : " \t\n\v\f\r0123456789:;<=>?ABCDEFabcdef/@G`g"[random() % 39];
        }
        auto const bits = static_cast<unsigned int>(random());
        EXPECT_EQ(readOutcome(text, bits, true), readOutcome(text, bits, false)) << text;
    }
}

// Operators that a program had before there was one of ours; those of a Log take everything.
struct Derived : Binary16 {
    using Binary16::Binary16;
    operator int() const { return 5; }
};
struct Log : std::ostringstream {
    template <typename T>
    Log& operator<<(T const&) {
        return *this;
    }
};
struct Any {
    template <typename T>
    Any(T const&) {}
};
struct OtherStream : std::ostringstream {};
int operator<<(OtherStream&, Any const&) {
    return 7;
}

TEST(Binary16, isInsertedWhereNoOtherOperatorIs) {
    std::ostringstream stream;
    Log log;
    OtherStream other;
    static_assert(std::is_same_v<Log&, decltype(log << Binary16())>);
    EXPECT_EQ(7, other << Binary16());
    stream << Derived(1);
    EXPECT_EQ("5", stream.str());
    stream.str({});
    (std::ostringstream() << Binary16()).flush(); // a temporary stream too
    std::fill_n(std::ostream_iterator<Binary16>(stream, ","), 1, Binary16(1));
    EXPECT_EQ("0x00000000000000000000000000000001,", stream.str());
}

} // namespace
