// Binary16 in streams that pad, translate, fail or throw: as if each character went by itself.

#include <Halvora/text/Convert.h>

#include <gtest/gtest.h>

#include <iomanip>
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

// Takes so many characters, or shows its text a few at a time, then ends or throws.
template <typename Char>
struct Pipe : std::basic_streambuf<Char> {
    using Traits = std::char_traits<Char>;
    using typename std::basic_streambuf<Char>::int_type;
    std::basic_string<Char> text;
    unsigned int room = 0, shown = 0;
    bool throws = false;

    int_type overflow(int_type c) override {
        return room == 0 ? end() : (--room, text += Traits::to_char_type(c), c);
    }
    int_type underflow() override {
        std::size_t const at = taken();
        if (at == text.size()) {
            return end();
        }
        this->setg(&text[at], &text[at],
                   &text[at] + std::min<std::size_t>(shown, text.size() - at));
        return Traits::to_int_type(text[at]);
    }
    std::size_t taken() const {
        return this->gptr() == nullptr ? 0 : std::size_t(this->gptr() - text.data());
    }
    int_type end() const { return throws ? throw 1 : Traits::eof(); }
};

// How the action ends, and the state it leaves; `bits` say which states throw.
template <typename Stream, typename Action>
std::string endOf(Stream& stream, unsigned int bits, Action action) {
    std::string end;
    try {
        stream.exceptions(static_cast<std::ios::iostate>(bits & 7));
        action();
    } catch (std::ios::failure const&) {
        end = "failure, ";
    } catch (int) {
        end = "thrown, ";
    }
    return end + "state " + std::to_string(stream.rdstate());
}

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

template <typename Char>
auto written(unsigned int room, unsigned int bits, bool slowly) {
    Binary16 const value(0x0189ABEF, 0xCD23, 0x4567, 0x0102030405060708);
    Pipe<Char> pipe;
    pipe.room = room;
    pipe.throws = (bits & 8) != 0;
    std::basic_ostream<Char> stream(&pipe);
    stream.imbue(
        std::locale(std::locale(), (bits & 16) != 0 ? new Circled : new std::ctype<wchar_t>));
    stream << (room % 2 == 0 ? std::left : std::right) << std::setfill(Char('*'))
           << std::setw(static_cast<int>(bits / 32));
    std::string const end = endOf(
        stream, bits, [&] { slowly ? writeSlowly(stream, value) : void(value.write(stream)); });
    return std::make_pair(pipe.text, end);
}

TEST(Binary16, isWrittenAsInsertionsOfItsCharacters) {
    for (unsigned int room = 0; room < 40; ++room) {
        for (unsigned int bits = 0; bits < 160; ++bits) {
            EXPECT_EQ(written<char>(room, bits, true), written<char>(room, bits, false))
                << room << ' ' << bits;
            EXPECT_EQ(written<wchar_t>(room, bits, true), written<wchar_t>(room, bits, false))
                << room << ' ' << bits;
        }
    }
}

void readSlowly(std::istream& stream, Binary16& value) {
    value = Binary16();
    char high = 0, low = 0;
    stream.ignore(2);
    for (int i = 15; i >= 0; --i) {
        if (stream >> high >> low) {
            value.set(static_cast<Byte>(i), Convert::toByte(high, low));
        }
    }
}

std::string read(std::string const& text, unsigned int bits, bool slowly) {
    Pipe<char> pipe;
    pipe.text = text;
    pipe.shown = 1 + bits / 64 % 40;
    pipe.throws = (bits & 8) != 0;
    std::istream stream(&pipe);
    stream >> ((bits & 48) == 0 ? std::noskipws : std::skipws);
    Binary16 value = Binary16::MAX;
    std::string const end =
        endOf(stream, bits, [&] { slowly ? readSlowly(stream, value) : void(value.read(stream)); });
    std::ostringstream outcome;
    outcome << value << ' ' << end << ", taken " << pipe.taken();
    return outcome.str();
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
        EXPECT_EQ(read(text, bits, true), read(text, bits, false)) << text;
    }
}

// An operator of the program goes before ours.
struct Number : Binary16 {
    operator int() const { return 5; }
};

TEST(Binary16, isInsertedWhereNoOtherOperatorIs) {
    std::ostringstream stream;
    stream << Number() << ' ' << (std::ostringstream() << Binary16()).good();
    EXPECT_EQ("5 1", stream.str());
}

} // namespace
