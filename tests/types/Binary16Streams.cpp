// Binary16 in streams that pad, translate, fail or throw: as if each character went by itself.

#include <gtest/gtest.h>

#include <iomanip>
#include <locale>
#include <random>
#include <sstream>

#include <tests/support/ReadReference.h>

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
    unsigned int room, shown;
    std::basic_string<Char> text;
    bool throws = false;

    explicit Pipe(unsigned int takes, unsigned int shows = 0, std::basic_string<Char> all = {})
        : room(takes), shown(shows), text(all) {}
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

// What a stream over the pipe has taken, and how the action ends. The bits say which states throw,
// whether the pipe does, and more of the stream's settings.
template <typename Char, typename Action>
auto outcome(Pipe<Char>&& pipe, unsigned int bits, Action action) {
    std::basic_iostream<Char> stream(&pipe);
    pipe.throws = (bits & 8) != 0;
    stream.imbue(
        std::locale(std::locale(), (bits & 16) != 0 ? new Circled : new std::ctype<wchar_t>));
    stream << ((bits & 32) != 0 ? std::left : std::right) << std::setfill(Char('*'))
           << std::setw(static_cast<int>(bits / 64 % 5));
    stream >> ((bits & 96) != 0 ? std::skipws : std::noskipws);
    std::string end;
    try {
        stream.exceptions(static_cast<std::ios::iostate>(bits & 7));
        action(stream);
    } catch (std::ios::failure const&) {
        end = "failure, ";
    } catch (int) {
        end = "thrown, ";
    }
    return std::make_tuple(pipe.text, pipe.taken(), end + std::to_string(stream.rdstate()));
}

template <typename Char>
void expectWriting(unsigned int room, unsigned int bits) {
    Binary16 const value(0x0189ABEF, 0xCD23, 0x4567, 0x0102030405060708);
    auto const slowly = [&value](std::basic_ostream<Char>& stream) {
        if constexpr (sizeof(Char) == 1) {
            stream << '0' << 'x';
        } else {
            stream << L"0x";
        }
        for (int i = 31; i >= 0; --i) {
            stream << "0123456789ABCDEF"[value[static_cast<Byte>(i / 2)] >> i % 2 * 4 & 15];
        }
    };
    auto const expected = outcome(Pipe<Char>(room), bits, slowly);
    EXPECT_EQ(expected, outcome(Pipe<Char>(room), bits, [&](auto& to) { value.write(to); }))
        << room << ' ' << bits;
}

TEST(Binary16, isWrittenAsInsertionsOfItsCharacters) {
    for (unsigned int room = 0; room < 40 && !HasFailure(); ++room) {
        for (unsigned int bits = 0; bits < 320; ++bits) {
            expectWriting<char>(room, bits);
            expectWriting<wchar_t>(room, bits);
        }
    }
}

TEST(Binary16, isReadAsFormattedExtractionsOfItsCharacters) {
    std::mt19937 random(3);
    for (int round = 0; round < 30000 && !HasFailure(); ++round) {
        std::string text(random() % 72, ' ');
        for (char& c : text) {
            c = random() % 9 == 0 ? static_cast<char>(random())
                                  : " \t\n\v\f\r0123456789:;<=>?ABCDEFabcdef/@G`g"[random() % 39];
        }
        auto const bits = static_cast<unsigned int>(random()), shown = 1 + bits / 512 % 40;
        Binary16 slow = Binary16::MAX, value = slow;
        EXPECT_EQ(
            outcome(Pipe<char>(0, shown, text), bits, [&](auto& s) { test::readSlowly(s, slow); }),
            outcome(Pipe<char>(0, shown, text), bits, [&](auto& s) { value.read(s); }))
            << text;
        EXPECT_EQ(slow, value) << text;
    }
}

} // namespace
