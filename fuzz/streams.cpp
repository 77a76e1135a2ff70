#include <Halvora/Halvora.h>

#include "Bytes.h"

#include <tuple>

using namespace Halvora;

namespace {

using ios = std::ios_base;

struct Setting {
    std::size_t room;
    bool throws;
    ios::iostate exceptions;
    std::streamsize width;
};

// Where a stream ends: with no room left it refuses the next character, or throws.
template <typename Char>
struct Sink : std::basic_streambuf<Char> {
    using typename std::basic_streambuf<Char>::int_type;
    explicit Sink(Setting const& of) : setting(of) {}
    int_type overflow(int_type c) override {
        using Traits = std::char_traits<Char>;
        return taken.size() < setting.room ? (taken += Traits::to_char_type(c), c)
               : setting.throws            ? throw 1
                                           : Traits::eof();
    }
    Setting const& setting;
    std::basic_string<Char> taken;
};

// What becomes of an output: what is taken, the stream's state and width, and what is thrown.
template <typename Char, typename Write>
auto outcomeOf(Setting const& setting, Write write) {
    Sink<Char> sink(setting);
    std::basic_ostream<Char> stream(&sink);
    stream.exceptions(setting.exceptions);
    stream.width(setting.width);
    char thrown = '-';
    try {
        write(stream);
    } catch (int) {
        thrown = '1';
    } catch (ios::failure const&) {
        thrown = 'f';
    }
    return std::tuple(sink.taken, stream.rdstate(), stream.width(), thrown);
}

// All that is written where there is room.
template <typename Char, typename Write>
auto wholeOf(std::streamsize width, Write write) {
    return std::get<0>(outcomeOf<Char>({~std::size_t{0}, false, ios::goodbit, width}, write));
}

// Whatever is written: a prefix of the whole, and an exception only where it was asked for.
template <typename Char, typename Write>
void expectPrefix(Setting const& setting, Write write) {
    auto const whole = wholeOf<Char>(setting.width, write);
    auto const [taken, state, width, thrown] = outcomeOf<Char>(setting, write);
    bool const fits = setting.room >= whole.size();
    assert(taken == whole.substr(0, setting.room) && fits == (state == ios::goodbit));
    assert(thrown == '-' || (!fits && setting.exceptions != ios::goodbit));
}

template <typename Char>
void writeSome(Bytes& bytes, Setting const& setting) {
    Binary16 const id(bytes.ConsumeIntegral<int>());
    HLVError error(-7, new HLVError::Param(id), new HLVError::Param(bytes.ConsumeIntegral<int>()),
                   new HLVError::Param(bytes.ConsumeRandomLengthString(40)));
    ResString2 const text(id, bytes.ConsumeRandomLengthString(40));
    int const which = bytes.ConsumeIntegralInRange(0, 6);
    expectPrefix<Char>(setting, [&](auto& stream) {
        switch (which) {
        case 0: return void(id.write(stream));
        case 1: return void(stream << error);
        case 2: return void(stream << HLVError::Holder(new HLVError(error)));
        case 3: return void(stream << HLVError::Holder());
        case 4: return void(text.getText(stream));
        case 5: return void(stream << HalvTypes::ms_Version);
        default: describe(stream, error, ResString::DummyTranslator());
        }
    });
}

// One insertion a character, to the stream's last bit.
template <typename Char, typename Write>
void expectInsertions(Setting const& setting, Write write) {
    auto const expected = outcomeOf<Char>(setting, [&](auto& stream) {
        for (Char const c : wholeOf<Char>(0, write)) {
            stream << c;
        }
    });
    assert(expected == outcomeOf<Char>(setting, write));
}

void writeCharacters(Bytes& bytes, Setting const& setting) {
    Binary16 const id(bytes.ConsumeIntegral<int>());
    expectInsertions<char>(setting, [&](auto& stream) { id.write(stream); });
    ResString const text(id, Convert::toWString(bytes.ConsumeRandomLengthString(150)));
    expectInsertions<wchar_t>(setting, [&](auto& stream) { text.toWStr(stream); });
}

} // namespace

// Streams that fail or throw half-way.
void run(Bytes& bytes) {
    Setting setting{};
    setting.room = bytes.ConsumeIntegralInRange<std::size_t>(0, 200);
    setting.throws = bytes.ConsumeBool();
    for (auto const bit : {ios::badbit, ios::failbit}) {
        setting.exceptions |= bytes.ConsumeBool() ? bit : ios::goodbit;
    }
    setting.width = bytes.ConsumeIntegralInRange(0, 50);
    switch (bytes.ConsumeIntegralInRange(0, 2)) {
    case 0: return writeSome<char>(bytes, setting);
    case 1: return writeSome<wchar_t>(bytes, setting);
    default: return writeCharacters(bytes, setting);
    }
}
