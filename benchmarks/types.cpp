// Identifiers as text.

#include "Bench.h"

#include <Halvora/text/Convert.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/ParseBinary16.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iomanip>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/strings/ascii.h>
#    include <absl/strings/escaping.h>
#endif
#ifdef HALVTYPES_WITH_BOOST
#    include <boost/uuid/string_generator.hpp>
#    include <boost/uuid/uuid_io.hpp>
#endif
#ifdef HALVTYPES_WITH_FMT
#    include <fmt/format.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QUuid>
#endif

using namespace Halvora;
using bench::add;
using bench::stopUnless;

namespace {

Binary16 const value(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
constexpr char grouped[] = "12345678-9abc-def0-0807-060504030201";
constexpr char hex[] = "0x0102030405060708DEF09ABC12345678";

std::string groupedByStream(Binary16 const& id) {
    std::ostringstream stream;
    stream << std::hex << std::setfill('0');
    for (int const at : {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15}) {
        if (at < 0) {
            stream << '-';
        } else {
            stream << std::setw(2) << static_cast<short>(id[static_cast<unsigned char>(at)]);
        }
    }
    return stream.str();
}

#ifdef HALVTYPES_WITH_BOOST
boost::uuids::uuid boostValue() {
    boost::uuids::uuid uuid;
    unsigned char const order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int i = 0; i < 16; ++i) {
        uuid.data[i] = value[order[i]];
    }
    return uuid;
}
#endif

template <typename ToText>
void addText(char const* name, char const* who, ToText toText) {
    bench::addSame(name, 36, who, grouped, toText);
}

void addGrouped() {
    constexpr char name[] = "identifier to grouped text";
    addText(name, "limit", [] {
        char const* text = grouped;
        benchmark::DoNotOptimize(text);
        return std::string(text, 36);
    });
    addText(name, "ours", [] { return Convert::toAString(value); });
    addText(name, "string stream", [] { return groupedByStream(value); });
#ifdef HALVTYPES_WITH_BOOST
    addText(name, "Boost.UUID", [uuid = boostValue()] { return boost::uuids::to_string(uuid); });
#endif
#ifdef HALVTYPES_WITH_QT
    addText(name, "QUuid",
            [quuid = QUuid(grouped)] { return quuid.toByteArray(QUuid::WithoutBraces); });
#endif
#ifdef HALVTYPES_WITH_FMT
    addText(name, "fmt", [] {
        unsigned char b[16];
        std::memcpy(b, &value, sizeof b);
        return fmt::format("{:02x}{:02x}{:02x}{:02x}-{:02x}{:02x}-{:02x}{:02x}-{:02x}{:02x}-"
                           "{:02x}{:02x}{:02x}{:02x}{:02x}{:02x}",
                           b[3], b[2], b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11],
                           b[12], b[13], b[14], b[15]);
    });
#endif
}

// To a stream that is rewound each time.
template <typename Stream, typename Write>
void addWrite(char const* name, char const* who, Write write, std::string const& expected = hex) {
    auto const stream = std::make_shared<Stream>();
    write(*stream);
    auto const text = stream->str();
    stopUnless(std::equal(text.begin(), text.end(), expected.begin(), expected.end()), who);
    add(name, 34, who, [stream, write] {
        stream->seekp(0);
        write(*stream);
    });
}

void addWrites() {
    constexpr char narrow[] = "identifier to a stream";
    constexpr char wide[] = "identifier to a wide stream";
    addWrite<std::ostringstream>(narrow, "limit", [](auto& stream) { stream.write(hex, 34); });
    addWrite<std::ostringstream>(narrow, "ours", [](auto& stream) { value.write(stream); });
    addWrite<std::ostringstream>(narrow, "string stream", [](auto& stream) {
        stream << "0x" << std::hex << std::uppercase << std::setfill('0');
        for (int i = 15; i >= 0; --i) {
            stream << std::setw(2) << static_cast<int>(value[static_cast<unsigned char>(i)]);
        }
    });
#ifdef HALVTYPES_WITH_ABSEIL
    std::string bytes;
    for (int i = 15; i >= 0; --i) {
        bytes += static_cast<char>(value[static_cast<unsigned char>(i)]);
    }
    addWrite<std::ostringstream>(narrow, "abseil", [bytes](auto& stream) {
        std::string digits = absl::BytesToHexString(bytes);
        absl::AsciiStrToUpper(&digits);
        stream << "0x" << digits;
    });
    addWrite<std::ostringstream>(
        narrow, "abseil, lower case",
        [bytes](auto& stream) { stream << "0x" << absl::BytesToHexString(bytes); },
        absl::AsciiStrToLower(hex));
#endif
    addWrite<std::wostringstream>(wide, "limit",
                                  [text = Convert::toWString(std::string(hex))](auto& stream) {
                                      stream.write(text.data(), 34);
                                  });
    addWrite<std::wostringstream>(wide, "ours", [](auto& stream) { value.write(stream); });
    addWrite<std::wostringstream>(wide, "string stream", [](auto& stream) {
        stream << L"0x" << std::hex << std::uppercase << std::setfill(L'0');
        for (int i = 15; i >= 0; --i) {
            stream << std::setw(2) << static_cast<int>(value[static_cast<unsigned char>(i)]);
        }
    });
}

void addReads() {
    constexpr char name[] = "identifier from a stream";
    auto const stream = std::make_shared<std::istringstream>(std::string(hex) + ' ');
    auto const rewind = [stream]() -> std::istream& {
        stream->clear();
        stream->seekg(0);
        return *stream;
    };
    bench::addSame(name, 34, "ours", value, [rewind] {
        Binary16 id;
        id.read(rewind());
        return id;
    });
    bench::addSame(name, 34, "limit", std::string_view(hex),
                   [rewind, text = std::string(34, ' ')]() mutable -> std::string_view {
                       rewind().read(text.data(), 34);
                       return text;
                   });
    bench::addSame(name, 34, "string stream", value, [rewind] {
        std::istream& in = rewind();
        in.ignore(2);
        Binary16 id;
        for (int i = 15; i >= 0; --i) {
            char high = 0;
            char low = 0;
            in >> high >> low;
            id.set(static_cast<unsigned char>(i), Convert::toByte(high, low));
        }
        return id;
    });
}

// What the characters of the grouped form are worth, unchecked: a look-up for each.
Binary16 valueUnchecked(std::string_view text) {
    static auto const worth = [] {
        std::array<unsigned char, 256> table{};
        for (unsigned char i = 0; i < 16; ++i) {
            table[static_cast<unsigned char>("0123456789abcdef"[i])] = i;
        }
        return table;
    }();
    Binary16 id;
    auto const* byte = reinterpret_cast<unsigned char const*>(text.data());
    for (int const at : {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15}) {
        if (at < 0) {
            ++byte;
            continue;
        }
        id.set(static_cast<unsigned char>(at),
               static_cast<unsigned char>(worth[byte[0]] << 4 | worth[byte[1]]));
        byte += 2;
    }
    return id;
}

// 256 identifiers as texts, whose digits no processor foresees.
std::vector<std::string> manyTexts() {
    std::mt19937_64 random(7);
    std::vector<std::string> texts(256);
    for (std::string& text : texts) {
        std::uint64_t const parts[] = {random(), random()};
        text = Convert::toAString(Binary16(parts, sizeof parts));
    }
    return texts;
}

// Reads one text after another, once each is shown as it was.
template <typename Texts, typename Parse, typename Show>
void addParse(char const* name, char const* who, Texts const& texts, Parse parse, Show show) {
    for (auto const& text : texts) {
        stopUnless(show(parse(text)) == text, std::string(name) + " by " + who);
    }
    add(name, texts[0].size(), who, [texts, parse, i = std::size_t(0)]() mutable {
        benchmark::DoNotOptimize(parse(texts[i++ % texts.size()]));
    });
}

void addParses() {
    constexpr char name[] = "identifier from grouped text, checked";
    auto const texts = manyTexts();
    auto const ours = [](auto const& text) {
        Binary16 id;
        return parseBinary16(text, id) ? id : Binary16::MAX;
    };
    auto const show = [](Binary16 const& id) { return Convert::toAString(id); };
    addParse(name, "ours", texts, ours, show);
    addParse(name, "limit", texts, valueUnchecked, show);
#ifdef HALVTYPES_WITH_BOOST
    addParse(name, "Boost.UUID", texts, boost::uuids::string_generator(),
             [](boost::uuids::uuid const& id) { return boost::uuids::to_string(id); });
#endif
#ifdef HALVTYPES_WITH_QT
    addParse(
        name, "QUuid", texts,
        [](std::string const& text) {
            return QUuid::fromString(QLatin1String(text.data(), int(text.size())));
        },
        [](QUuid const& id) { return id.toString(QUuid::WithoutBraces).toStdString(); });
#endif
    std::vector<std::wstring> wide;
    for (std::string const& text : texts) {
        wide.push_back(Convert::toWString(text));
    }
    addParse("identifier from wide grouped text, checked", "ours", wide, ours,
             [](Binary16 const& id) { return Convert::toWString(id); });
}

} // namespace

int main(int argc, char** argv) {
    addGrouped();
    addWrites();
    addReads();
    addParses();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
