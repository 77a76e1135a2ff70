// Identifiers as text.

#include "Bench.h"

#include <Halvora/text/Convert.h>
#include <Halvora/types/Binary16.h>

#include <cstring>
#include <iomanip>
#include <memory>
#include <sstream>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/strings/escaping.h>
#endif
#ifdef HALVTYPES_WITH_BOOST
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

// Registers a contender that turns a 16-byte value into text, once its text is right.
template <typename ToText>
void addText(char const* name, char const* who, std::string const& expected, ToText toText) {
    stopUnless(std::string(toText()) == expected, who);
    add(name, 36, who, [toText] { benchmark::DoNotOptimize(toText()); });
}

void addGrouped() {
    constexpr char name[] = "identifier to grouped text";
    addText(name, "limit", grouped, [] {
        char const* text = grouped;
        benchmark::DoNotOptimize(text);
        return std::string(text, 36);
    });
    addText(name, "ours", grouped, [] { return Convert::toAString(value); });
    addText(name, "string stream", grouped, [] { return groupedByStream(value); });
#ifdef HALVTYPES_WITH_BOOST
    boost::uuids::uuid uuid;
    unsigned char const order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int i = 0; i < 16; ++i) {
        uuid.data[i] = value[order[i]];
    }
    addText(name, "Boost.UUID", grouped, [uuid] { return boost::uuids::to_string(uuid); });
#endif
#ifdef HALVTYPES_WITH_QT
    QUuid const quuid(grouped);
    auto const toText = [quuid] { return quuid.toByteArray(QUuid::WithoutBraces); };
    stopUnless(toText() == grouped, "QUuid");
    add(name, 36, "QUuid", [toText] { benchmark::DoNotOptimize(toText()); });
#endif
#ifdef HALVTYPES_WITH_FMT
    addText(name, "fmt", grouped, [] {
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
void addWrite(char const* name, char const* who, Write write) {
    Stream check;
    write(check);
    stopUnless(check.str().size() == 34, who);
    auto const stream = std::make_shared<Stream>();
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
        stream << "0x" << absl::BytesToHexString(bytes);
    });
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
    Binary16 read;
    stopUnless(read.read(rewind()) && read == value, "ours");
    add(name, 34, "ours", [rewind] {
        Binary16 id;
        id.read(rewind());
        benchmark::DoNotOptimize(id);
    });
    add(name, 34, "limit", [rewind] {
        char text[34];
        rewind().read(text, sizeof text);
        benchmark::DoNotOptimize(text);
    });
    add(name, 34, "string stream", [rewind] {
        std::istream& in = rewind();
        in.ignore(2);
        Binary16 id;
        for (int i = 15; i >= 0; --i) {
            char high = 0;
            char low = 0;
            in >> high >> low;
            id.set(static_cast<unsigned char>(i), Convert::toByte(high, low));
        }
        benchmark::DoNotOptimize(id);
    });
}

} // namespace

int main(int argc, char** argv) {
    addGrouped();
    addWrites();
    addReads();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
