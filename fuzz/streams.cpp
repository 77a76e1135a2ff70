#include <Halvora/Halvora.h>

#include "Bytes.h"

using namespace Halvora;

namespace {

struct Broken {};

// Where a stream ends: after `room` characters it refuses the next ones, or throws.
template <typename Char>
class Sink : public std::basic_streambuf<Char> {
    using Base = std::basic_streambuf<Char>;

public:
    Sink(std::size_t room, bool throws) : m_room(room), m_throws(throws) {}
    std::basic_string<Char> const& taken() const { return m_taken; }

private:
    typename Base::int_type overflow(typename Base::int_type c) override {
        if (m_taken.size() == m_room) {
            return m_throws ? throw Broken() : Base::traits_type::eof();
        }
        m_taken += Base::traits_type::to_char_type(c);
        return c;
    }
    std::size_t m_room;
    bool m_throws;
    std::basic_string<Char> m_taken;
};

// What became of an output.
template <typename Char>
struct Outcome {
    std::basic_string<Char> taken;
    std::ios_base::iostate state = std::ios_base::goodbit;
    std::streamsize width = 0;
    char thrown = '-';
};

struct Setting {
    std::size_t room;
    bool throws;
    std::ios_base::iostate exceptions;
    std::streamsize width;
};

template <typename Char, typename Write>
Outcome<Char> outcomeOf(Setting const& setting, Write write) {
    Sink<Char> sink(setting.room, setting.throws);
    std::basic_ostream<Char> stream(&sink);
    stream.exceptions(setting.exceptions);
    stream.width(setting.width);
    Outcome<Char> outcome;
    try {
        write(stream);
    } catch (Broken const&) {
        outcome.thrown = 'b';
    } catch (std::ios_base::failure const&) {
        outcome.thrown = 'f';
    }
    outcome.taken = sink.taken();
    outcome.state = stream.rdstate();
    outcome.width = stream.width();
    return outcome;
}

// Whatever is written: a prefix of the whole, and an exception only where it was asked for.
template <typename Char, typename Write>
void expectPrefix(Setting const& setting, Write write) {
    std::basic_ostringstream<Char> whole;
    whole.width(setting.width);
    write(whole);
    auto const outcome = outcomeOf<Char>(setting, write);
    auto const length = std::min(setting.room, whole.str().size());
    assert(outcome.taken == whole.str().substr(0, length));
    bool const fits = length == whole.str().size();
    assert(fits ? outcome.state == std::ios_base::goodbit
                : outcome.state != std::ios_base::goodbit);
    assert(fits ? outcome.thrown == '-'
                : setting.exceptions != std::ios_base::goodbit || outcome.thrown == '-');
}

template <typename Char>
void writeSome(Bytes& bytes, Setting const& setting) {
    Binary16 const id(bytes.ConsumeIntegral<int>());
    HLVError error(-7, new HLVError::Param(id), new HLVError::Param(bytes.ConsumeIntegral<int>()),
                   new HLVError::Param(bytes.ConsumeRandomLengthString(40)));
    HLVError::Holder const holder(new HLVError(error));
    HLVError::Holder const none;
    ResString2 const text(id, bytes.ConsumeRandomLengthString(40));
    ResString::DummyTranslator const translator;
    switch (bytes.ConsumeIntegralInRange(0, 6)) {
    case 0: return expectPrefix<Char>(setting, [&](auto& stream) { id.write(stream); });
    case 1: return expectPrefix<Char>(setting, [&](auto& stream) { stream << error; });
    case 2: return expectPrefix<Char>(setting, [&](auto& stream) { stream << holder; });
    case 3: return expectPrefix<Char>(setting, [&](auto& stream) { stream << none; });
    case 4: return expectPrefix<Char>(setting, [&](auto& stream) { text.getText(stream); });
    case 5: return expectPrefix<Char>(setting, [](auto& s) { s << HalvTypes::ms_Version; });
    default: return expectPrefix<Char>(setting, [&](auto& s) { describe(s, error, translator); });
    }
}

// One insertion a character, to the stream's last bit.
template <typename Char, typename Write>
void expectInsertions(Setting const& setting, std::basic_string<Char> const& characters,
                      Write write) {
    auto const expected = outcomeOf<Char>(setting, [&](auto& stream) {
        for (Char const c : characters) {
            stream << c;
        }
    });
    auto const outcome = outcomeOf<Char>(setting, write);
    assert(outcome.taken == expected.taken && outcome.state == expected.state);
    assert(outcome.thrown == expected.thrown && outcome.width == expected.width);
}

void writeCharacters(Bytes& bytes, Setting const& setting) {
    Binary16 const id(bytes.ConsumeIntegral<int>());
    std::ostringstream hex;
    id.write(hex);
    expectInsertions(setting, hex.str(), [&](auto& stream) { id.write(stream); });
    ResString const text(id, Convert::toWString(bytes.ConsumeRandomLengthString(150)));
    expectInsertions(setting, text.wstr(), [&](auto& stream) { text.toWStr(stream); });
}

} // namespace

// Streams that fail or throw half-way.
void run(Bytes& bytes) {
    Setting setting{};
    setting.room = bytes.ConsumeIntegralInRange<std::size_t>(0, 200);
    setting.throws = bytes.ConsumeBool();
    for (auto const bit : {std::ios_base::badbit, std::ios_base::failbit}) {
        setting.exceptions |= bytes.ConsumeBool() ? bit : std::ios_base::goodbit;
    }
    setting.width = bytes.ConsumeIntegralInRange(0, 50);
    switch (bytes.ConsumeIntegralInRange(0, 2)) {
    case 0: return writeSome<char>(bytes, setting);
    case 1: return writeSome<wchar_t>(bytes, setting);
    default: return writeCharacters(bytes, setting);
    }
}
