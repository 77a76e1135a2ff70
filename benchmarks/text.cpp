// Conversions between the encodings, splitting, texts in raw memory.

#include "Bench.h"

#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>

#include <iconv.h>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/strings/str_split.h>
#endif
#ifdef HALVTYPES_WITH_BOOST
#    include <boost/algorithm/string.hpp>
#endif
#ifdef HALVTYPES_WITH_ICU
#    include <unicode/unistr.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QString>
#    include <QStringList>
#endif

using namespace Halvora;
using bench::add;
using bench::stopUnless;

namespace {

// Letters, with an accented one here and there: what all contenders can convert.
std::string narrowText(std::size_t n) {
    std::string text(n, 'a');
    for (std::size_t i = 0; i < n; i += 7) {
        text[i] = static_cast<char>(0xE9);
    }
    return text;
}

// Into a reused output, and by value.
template <typename Out, typename In, typename Into, typename ByValue>
void addConversion(std::string const& name, In const& in, Into into, ByValue byValue) {
    std::size_t const n = in.size();
    std::size_t const bytes =
        n * (sizeof(typename In::value_type) + sizeof(typename Out::value_type));
    bench::addCopy(name, n, bytes);
    bench::addCopy(name + ", new", n, bytes);
    add(name, n, "ours", [in, into, out = Out()]() mutable { into(out, in); });
    add(name + ", new", n, "ours", [in, byValue] { benchmark::DoNotOptimize(byValue(in)); });
}

// The C library's converter, as a user without any of these libraries would call it.
template <typename Out, typename In>
void addIconv(std::string const& name, In const& in, Out const& expected, char const* from,
              char const* to) {
    auto const handle = std::shared_ptr<void>(iconv_open(to, from), iconv_close);
    auto const convert = [handle, n = in.size()](In& source, Out& out) {
        out.resize(n);
        auto* read = reinterpret_cast<char*>(source.data());
        auto* write = reinterpret_cast<char*>(out.data());
        std::size_t left = n * sizeof(source[0]);
        std::size_t room = n * sizeof(out[0]);
        iconv(handle.get(), &read, &left, &write, &room);
    };
    In source(in);
    Out out;
    convert(source, out);
    stopUnless(out == expected, name + " by iconv");
    add(name, in.size(), "iconv", [convert, source, out]() mutable { convert(source, out); });
}

#if defined(HALVTYPES_WITH_QT) || defined(HALVTYPES_WITH_ICU)
template <typename Make>
void addNew(std::string const& name, std::size_t n, char const* who, bool isSame, Make make) {
    stopUnless(isSame, name + " by " + who);
    add(name + ", new", n, who, [make] { benchmark::DoNotOptimize(make()); });
}
#endif

void addConversions(std::size_t n) {
    std::string const narrow = narrowText(n);
    std::wstring const wide = Convert::toWString(narrow);
    HLVString units;
    Convert::toHLVString(units, narrow);

    addConversion<std::wstring>(
        "narrow to wide", narrow, [](auto& out, auto& in) { Convert::toWString(out, in); },
        [](auto& in) { return Convert::toWString(in); });
    addConversion<HLVString>(
        "narrow to 16-bit", narrow, [](auto& out, auto& in) { Convert::toHLVString(out, in); },
        [](auto& in) {
            HLVString out;
            Convert::toHLVString(out, in);
            return out;
        });
    addConversion<std::wstring>(
        "16-bit to wide", units, [](auto& out, auto& in) { Convert::toWString(out, in); },
        [](auto& in) { return Convert::toWString(in); });
    addConversion<HLVString>(
        "wide to 16-bit", wide, [](auto& out, auto& in) { Convert::toHLVString(out, in); },
        [](auto& in) {
            HLVString out;
            Convert::toHLVString(out, in);
            return out;
        });
    auto const narrowed = [](auto& out, auto& in) {
        Convert::toAString(out, static_cast<unsigned int>(in.size()), in.data());
    };
    addConversion<std::string>("16-bit to narrow", units, narrowed,
                               [](auto& in) { return Convert::toAString(in); });
    addConversion<std::string>("wide to narrow", wide, narrowed,
                               [](auto& in) { return Convert::toAString(in); });

    addIconv("narrow to wide", narrow, wide, "ISO-8859-1", "WCHAR_T");
    addIconv("16-bit to wide", units, wide, "UCS-2LE", "WCHAR_T");
    addIconv("wide to 16-bit", wide, units, "WCHAR_T", "UCS-2LE");
    addIconv("16-bit to narrow", units, narrow, "UCS-2LE", "ISO-8859-1");
    addIconv("wide to narrow", wide, narrow, "WCHAR_T", "ISO-8859-1");

    auto const length = static_cast<int>(n);
#ifdef HALVTYPES_WITH_QT
    auto const latin1 = [narrow, length] { return QString::fromLatin1(narrow.data(), length); };
    QString const text = latin1();
    addNew("narrow to 16-bit", n, "Qt", std::memcmp(text.constData(), units.data(), 2 * n) == 0,
           latin1);
    addNew("16-bit to narrow", n, "Qt", text.toLatin1().toStdString() == narrow,
           [text] { return text.toLatin1(); });
    addNew("16-bit to wide", n, "Qt", text.toStdWString() == wide,
           [text] { return text.toStdWString(); });
    addNew("wide to 16-bit", n, "Qt", QString::fromStdWString(wide) == text,
           [wide] { return QString::fromStdWString(wide); });
    addNew("wide to narrow", n, "Qt",
           QString::fromStdWString(wide).toLatin1().toStdString() == narrow,
           [wide] { return QString::fromStdWString(wide).toLatin1(); });
#endif
#ifdef HALVTYPES_WITH_ICU
    auto const fromWide = [wide, length] {
        return icu::UnicodeString::fromUTF32(reinterpret_cast<UChar32 const*>(wide.data()), length);
    };
    auto const fromNarrow = [narrow, length] {
        return icu::UnicodeString(narrow.data(), length, "ISO-8859-1");
    };
    icu::UnicodeString const unicode = fromWide();
    bool const isSame = std::memcmp(unicode.getBuffer(), units.data(), 2 * n) == 0;
    addNew("wide to 16-bit", n, "ICU", isSame, fromWide);
    addNew("narrow to 16-bit", n, "ICU", unicode == fromNarrow(), fromNarrow);
    auto const toNarrow = [unicode, length] {
        std::string out(static_cast<std::size_t>(length), '\0');
        unicode.extract(0, length, out.data(), static_cast<std::uint32_t>(length), "ISO-8859-1");
        return out;
    };
    addNew("16-bit to narrow", n, "ICU", toNarrow() == narrow, toNarrow);
#endif
}

template <typename Text>
std::vector<Text>& splitByStream(Text const& text, typename Text::value_type separator,
                                 std::vector<Text>& fields) {
    fields.clear();
    std::basic_istringstream<typename Text::value_type> stream(text);
    for (Text field; std::getline(stream, field, separator);) {
        fields.push_back(field);
    }
    return fields;
}

// The quoted rules, spelled with streams.
template <typename Text>
std::vector<Text>& splitQuotedByStream(Text const& text, typename Text::value_type separator,
                                       std::vector<Text>& fields) {
    fields.clear();
    std::basic_istringstream<typename Text::value_type> stream(text);
    for (Text item; std::getline(stream, item, separator);) {
        bool const opens = !item.empty() && item.front() == '"';
        if (opens && item.back() != '"') {
            Text rest;
            if (std::getline(stream, rest, typename Text::value_type('"'))) {
                fields.push_back(item.substr(1) + separator + rest);
                if (stream &&
                    stream.peek() ==
                        std::char_traits<typename Text::value_type>::to_int_type(separator)) {
                    stream.ignore();
                }
            }
        } else {
            fields.push_back(opens && item.size() > 1 ? item.substr(1, item.size() - 2) : item);
        }
    }
    return fields;
}

template <typename Lines, typename Split>
void addSplit(std::string const& name, char const* who, Lines lines, Split split) {
    add(name, lines->size(), who, [lines, split] {
        std::size_t count = 0;
        for (auto const& line : *lines) {
            count += split(line);
        }
        benchmark::DoNotOptimize(count);
    });
}

template <typename Text>
void addSplits(std::string const& suffix, std::shared_ptr<std::vector<Text>> lines) {
    using Char = typename Text::value_type;
    auto const fields = std::make_shared<std::vector<Text>>();
    auto const other = std::make_shared<std::vector<Text>>();
    for (Text const& line : *lines) {
        stopUnless(Convert::split(line, Char(','), *fields) ==
                       splitByStream(line, Char(','), *other),
                   "split by string stream");
        stopUnless(Convert::splitQuoted(line, Char(','), *fields) ==
                       splitQuotedByStream(line, Char(','), *other),
                   "splitQuoted by string stream");
    }
    auto const scan = [](Text const& line) {
        std::size_t count = 0;
        auto const* const end = line.data() + line.size();
        for (auto const* at = line.data();
             (at = std::char_traits<Char>::find(at, static_cast<std::size_t>(end - at), ','));
             ++at) {
            ++count;
        }
        return count;
    };
    std::string const plain = "split" + suffix;
    std::string const quoted = "splitQuoted" + suffix;
    addSplit(plain, "limit", lines, scan);
    addSplit(quoted, "limit", lines, scan);
    addSplit(plain, "ours", lines, [fields](Text const& line) {
        return Convert::split(line, Char(','), *fields).size();
    });
    addSplit(quoted, "ours", lines, [fields](Text const& line) {
        return Convert::splitQuoted(line, Char(','), *fields).size();
    });
    addSplit(plain, "string stream", lines,
             [other](Text const& line) { return splitByStream(line, Char(','), *other).size(); });
    addSplit(quoted, "string stream", lines, [other](Text const& line) {
        return splitQuotedByStream(line, Char(','), *other).size();
    });
}

void addSplits() {
    auto const lines = std::make_shared<std::vector<std::string>>();
    auto const wide = std::make_shared<std::vector<std::wstring>>();
    std::ifstream file("/usr/share/ieee-data/oui.csv");
    for (std::string line; std::getline(file, line);) {
        lines->push_back(line);
        wide->push_back(Convert::toWString(line));
    }
    if (lines->empty()) {
        return;
    }
    addSplits("", lines);
    addSplits(", wide", wide);
#ifdef HALVTYPES_WITH_ABSEIL
    addSplit("split", "abseil strings", lines, [](std::string const& line) {
        std::vector<std::string> const fields = absl::StrSplit(line, ',');
        return fields.size();
    });
    addSplit("split", "abseil views", lines, [](std::string const& line) {
        std::vector<absl::string_view> const fields = absl::StrSplit(line, ',');
        return fields.size();
    });
#endif
#ifdef HALVTYPES_WITH_BOOST
    addSplit("split", "boost::split", lines,
             [fields = std::make_shared<std::vector<std::string>>()](std::string const& line) {
                 boost::split(*fields, line, [](char c) { return c == ','; });
                 return fields->size();
             });
#endif
#ifdef HALVTYPES_WITH_QT
    auto const texts = std::make_shared<std::vector<QString>>();
    for (std::string const& line : *lines) {
        texts->push_back(QString::fromLatin1(line.data(), static_cast<int>(line.size())));
    }
    addSplit("split, wide", "QString::split", texts, [](QString const& line) {
        return static_cast<std::size_t>(line.split(QLatin1Char(',')).size());
    });
#endif
}

void addRawMemory() {
    ResString const text(Binary16(7), std::wstring(100, L'x'));
    bench::addCopy("resource string to a slot", 128, 274);
    add("resource string to a slot", 128, "ours", [text] {
        char slot[275];
        ResString::set(&text, 128, slot + 1);
        benchmark::DoNotOptimize(slot);
    });
    bench::addCopy("raw text to a slot", 512, 512 * 6);
    add("raw text to a slot", 512, "ours", [wide = std::wstring(400, L'x')] {
        char slot[1027];
        VarChar::set(wide.data(), 400, 512, slot + 1);
        benchmark::DoNotOptimize(slot);
    });
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t const n : bench::sizes) {
        addConversions(n);
    }
    addSplits();
    addRawMemory();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
