// Writes what programs store and print, for a few thousand inputs. The bytes are the same on every
// machine and at every level of optimisation; Bytes.cmake holds them to one SHA-256. Wide texts
// stay below U+10000, where one element is one character also where wchar_t has 16 bits.
#include <Halvora/Halvora.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <sstream>

#include <tests/support/ArrayModel.h>

using namespace Halvora;

namespace {

std::ofstream file;

void putBytes(void const* data, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        int const byte = static_cast<unsigned char const*>(data)[i];
        file << std::hex << byte / 16 << byte % 16 << std::dec;
    }
}
template <typename Char, typename Traits>
void put(std::basic_string<Char, Traits> const& text) {
    for (Char const c : text) {
        auto const unit = static_cast<std::make_unsigned_t<Char>>(c);
        unit > ' ' && unit < '\x7F' ? file << static_cast<char>(unit) : file << '\\' << +unit;
    }
}
template <typename T>
void put(T const& value) {
    if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
        file << static_cast<long long>(value);
    } else if constexpr (std::is_floating_point_v<T> || std::is_same_v<T, Binary16>) {
        putBytes(&value, sizeof value);
    } else if constexpr (std::is_same_v<T, ResString> || std::is_same_v<T, VarChar>) {
        putBytes(&value, value.size());
    } else { // a row of values
        for (auto const& element : value) {
            put(element);
            file << ';';
        }
    }
}
template <typename... Parts>
void line(char const* what, Parts const&... parts) {
    file << what;
    ((file << ' ', put(parts)), ...);
    file << '\n';
}
// What an insertion writes, and whether the wide one writes the same.
template <typename T>
void insertions(T const& value) {
    std::ostringstream narrow;
    std::wostringstream wide;
    narrow << value << std::hex << value;
    wide << value << std::hex << value;
    line("text", narrow.str(), Convert::toWString(narrow.str()) == wide.str());
}

// Gives the same numbers everywhere, which distributions do not. No expression draws two, except
// between braces, which keep their order.
std::mt19937 random;

unsigned draw(std::size_t end) { // 0 to end - 1
    return static_cast<unsigned>(random() % end);
}
std::wstring anyText(std::size_t longest) {
    unsigned const length = draw(longest + 1), ends[] = {0x7E, 0xFF, 0xD7FF}, end = ends[draw(3)];
    std::wstring text(length, L' ');
    std::generate(text.begin(), text.end(), [&] { return static_cast<wchar_t>(1 + draw(end)); });
    return text;
}
std::string textOf(std::string const& characters) {
    std::string text(draw(30), ' ');
    std::generate(text.begin(), text.end(), [&] { return characters[draw(characters.size())]; });
    return text;
}
// Numbers of all magnitudes; of all NaNs one, for registers may change the others.
template <typename T>
T any() {
    if constexpr (std::is_same_v<T, Binary16>) {
        return Binary16{any<unsigned>(), any<unsigned short>(), any<unsigned short>(),
                        any<unsigned long long>()};
    } else if constexpr (std::is_same_v<T, ResString>) {
        return ResString{draw(2) == 0 ? Binary16() : any<Binary16>(), anyText(150)};
    } else if constexpr (std::is_same_v<T, std::wstring>) {
        return anyText(20);
    } else if constexpr (std::is_integral_v<T>) {
        unsigned long long const high = random(), whole = high << 32 | random();
        return static_cast<T>(whole >> draw(64));
    } else {
        T value;
        Binary16(any<unsigned long long>()).get(value);
        return std::isnan(value) ? std::numeric_limits<T>::quiet_NaN() : value;
    }
}

void writeRounding(double value, int digits) {
    auto const single = static_cast<float>(value);
    line("Round", value, digits, Round::convert(value), Round::convert(value, digits),
         Round::convert(single), Round::convert(single, digits), Round::round(value),
         Round::round(value, digits), Round::round(single), Round::round(single, digits));
}
void writeRoundings() {
    for (double const value : {0.0, 0.5, 1.005, 8388609.0, 2147483647.5, 3e38, 1e300, 1e-300,
                               5e-324, std::numeric_limits<double>::infinity(), std::nan("")}) {
        for (int const digits : {INT_MIN, -400, -323, -308, -210, -126, -23, -22, -1, 0, 1, 22, 23,
                                 126, 210, 308, 309, INT_MAX}) {
            writeRounding(value, digits);
            writeRounding(-value, digits);
        }
    }
    for (int i = 0; i < 2000; ++i) {
        double const half = any<int>() + 0.5, number = any<double>();
        writeRounding(half / (1 + draw(1000)), i % 25 - 12);
        writeRounding(number, static_cast<int>(draw(660)) - 330);
    }
}

void writeIdentifier(std::string const& before) {
    Binary16 const id = any<Binary16>();
    Binary16 parsed, uuid;
    id.toUuidBytes(uuid.m_bytes);
    std::string grouped = Convert::toAString(id);
    grouped[draw(50) % grouped.size()] = 'F';
    ParseResult const result = parseBinary16(grouped, parsed);
    line("Binary16", before, id, uuid, grouped, result.status, result.position, parsed);
    insertions(id);
    insertions(KrVersion{any<unsigned>(), any<unsigned>()});
}

void writeConversions() {
    for (int i = 0; i < 400; ++i) {
        std::wstring const wide = anyText(40);
        std::string const narrow = Convert::toAString(wide), raw = textOf("a\xC3\xA9\xE2\x82\xF0");
        std::string text = textOf("ab,\" \r\n\t\xE9"), utf8;
        std::vector<std::string> fields, quoted;
        HLVString units, decoded;
        Convert::toHLVString(units, wide);
        line("Convert", wide, narrow, Convert::toWString(narrow), units, Convert::toAString(units));
        line("split", text, Convert::split(text, ',', fields),
             Convert::splitQuoted(text, ',', quoted), Convert::toByte(raw.c_str()[0], 'a'));
        Utf8::fromWString(utf8, wide);
        Utf8Result const read = Utf8::toHLVString(decoded, raw);
        line("Utf8", utf8, raw, decoded, read.replaced, read.position);
        for (CsvReader reader(text); reader.next(fields);) {
            line("CsvReader", reader.line(), fields, reader.counts().faults);
        }
        Convert::trim(text, Convert::ms_strTrim);
        writeIdentifier(text);
    }
}

void writeDataTypes() {
    for (int i = 0; i < 256; ++i) {
        eDataType const a = eDataType(i / 16), b = eDataType(i % 16);
        eDataType common = DT_VOID;
        bool const has = HalvTypes::getSmallestCommonDataType(a, b, common);
        line("type", Convert::toAString(a), HalvTypes::getDataTypeGroup(a), b, has, common);
    }
}

// The forms in objects and in slots, and texts as the default translator shows them.
void writeTexts() {
    for (int i = 0; i < 300; ++i) {
        ResString const text = any<ResString>();
        VarChar const raw(anyText(600));
        std::wostringstream translated;
        ResString2(text).ToString(translated, ResString::DummyTranslator());
        line("texts", text, text.wstr(), translated.str(), raw, raw.wstr());
        std::string slot(500, '#');
        ResString::set(&text, draw(200), &slot[1]);
        line("packed", slot, ResString::size(&slot[1]));
        std::wstring const wide = anyText(20);
        VarChar::set(wide.c_str(), static_cast<unsigned>(wide.size()), draw(40), &slot[1]);
        line("raw", slot, VarChar::size(&slot[1]));
    }
}

template <typename Row, typename T = typename Row::Value>
void writeType(Row row) {
    for (int i = 0; i < 30; ++i) {
        T const values[] = {any<T>(), any<T>(), any<T>()};
        HLVArray array(row.type);
        array.init(static_cast<unsigned short>(draw(4)), row.type);
        int const added = array.add(row.create(3, values)), refused = array.addID(Binary16());
        int const removed = array.removeRange(1, static_cast<unsigned short>(draw(4)));
        std::ostringstream kind, json, described;
        kind << array;
        line("HLVArray", kind.str(), added, removed, refused, viewOf<T>(array));

        HLVError::Holder holder = HLVError::create(any<int>(), values[0], values[1]);
        holder.prepend(-i, Convert::toAString(anyText(9)), values[2], 0.1f);
        insertions(holder);
        writeJson(json, *holder.getError());
        describe(described, *holder.getError(), ResString::DummyTranslator());
        line("HLVError", holder.getError()->message(), json.str(), described.str());
    }
}

} // namespace

int main(int argc, char** argv) {
    file.open(argc == 2 ? argv[1] : "", std::ios::binary);
    writeRoundings();
    writeConversions();
    insertions(HalvTypes::ms_Version);
    writeDataTypes();
    writeTexts();
    test::forEachArrayRow([](auto row) { writeType(row); });
    file.close();
    return file ? 0 : 1;
}
