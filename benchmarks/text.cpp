// Conversions between the encodings, splitting, the small tools, texts in objects and raw memory.

#include "Bench.h"

#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>
#include <Halvora/text/detail/Encoding.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>

#include <iconv.h>
#include <strings.h>
#include <tests/support/SlowSplit.h>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/strings/escaping.h>
#    include <absl/strings/numbers.h>
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

#ifdef HALV_LONG_RUNS
#    include <Halvora/text/detail/LongX86.h>
#endif

using namespace Halvora;
using bench::add;
using bench::addBoth;
using bench::addSame;
using bench::stopUnless;
using test::splitByStream;

namespace {

// Letters, with an accented one here and there: what all contenders can convert.
std::string narrowText(std::size_t n) {
    std::string text(n, 'a');
    for (std::size_t i = 0; i < n; i += 7) {
        text[i] = static_cast<char>(0xE9);
    }
    return text;
}

#ifdef HALV_LONG_RUNS
// The library's conversion of long texts in narrower registers than it takes where the processor
// has wider ones.
template <typename Out, typename In>
void addShorterSteps(std::string const& name, In const& in, Out const& expected) {
    auto const by = [&](char const* who, auto convert) {
        addSame(name, in.size(), who, expected,
                [in, convert, out = Out(in.size(), 'x')]() mutable -> Out& {
                    convert(out.data(), in.data(), in.size());
                    return out;
                });
    };
    if (__builtin_cpu_supports("avx2")) {
        by("16-byte steps", [](auto... run) { detail::convertBlocks(run...); });
    }
    if (sizeof expected[0] > sizeof in[0] && __builtin_cpu_supports("avx512bw")) {
        by("32-byte steps",
           [](auto... run) { detail::convertRunAvx2(run..., detail::replacement); });
    }
}
#endif

// Into a reused output, and by value. The floor of a new output: a string that is made from as much
// text, and written over. That of a longer output: as many bytes filled.
template <typename Out, typename In, typename Into, typename ByValue>
void addConversion(std::string const& name, In const& in, Into into, ByValue byValue) {
    std::size_t const n = in.size();
    std::size_t const bytes =
        n * (sizeof(typename In::value_type) + sizeof(typename Out::value_type));
    bench::addCopy(name, n, bytes);
    bench::addCopy(name + ", new", n, bytes);
    add(name, n, "ours", [in, into, out = Out()]() mutable { into(out, in); });
    add(name + ", new", n, "ours", [in, byValue] { benchmark::DoNotOptimize(byValue(in)); });
    add(name + ", new", n, "floor", [in, into, filled = Out(n, 'x')] {
        Out out(filled);
        into(out, in);
        benchmark::DoNotOptimize(out);
    });
    if constexpr (sizeof(typename Out::value_type) > sizeof(typename In::value_type)) {
        add(name, n, "floor", [out = Out(n, 'x')]() mutable {
            std::memset(out.data(), 'x', out.size() * sizeof(out[0]));
            benchmark::DoNotOptimize(out.data());
        });
    }
#ifdef HALV_LONG_RUNS
    if (n >= detail::longLength) {
        addShorterSteps<Out>(name, in, byValue(in));
    }
#endif
}

// The C library's converter, as a user without any of these libraries would call it, with a handle
// that stays open.
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
    addSame(name, in.size(), "iconv", expected,
            [convert, source = in, out = Out()]() mutable -> Out& {
                convert(source, out);
                return out;
            });
    addSame(name + ", new", in.size(), "iconv", expected, [convert, source = in]() mutable {
        Out out;
        convert(source, out);
        return out;
    });
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
    addIconv("narrow to 16-bit", narrow, units, "ISO-8859-1", "UCS-2LE");
    addIconv("16-bit to wide", units, wide, "UCS-2LE", "WCHAR_T");
    addIconv("wide to 16-bit", wide, units, "WCHAR_T", "UCS-2LE");
    addIconv("16-bit to narrow", units, narrow, "UCS-2LE", "ISO-8859-1");
    addIconv("wide to narrow", wide, narrow, "WCHAR_T", "ISO-8859-1");

    [[maybe_unused]] auto const length = static_cast<int>(n);
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

// Fields of contenders as ours.
std::string const& fieldOf(std::string const& field) {
    return field;
}
std::wstring const& fieldOf(std::wstring const& field) {
    return field;
}
#ifdef HALVTYPES_WITH_ABSEIL
std::string fieldOf(absl::string_view field) {
    return std::string(field);
}
#endif
#ifdef HALVTYPES_WITH_QT
std::wstring fieldOf(QString const& field) {
    return field.toStdWString();
}
#endif

template <typename Text>
using Texts = std::shared_ptr<std::vector<Text>>;

// Times a splitter of lines, once all its fields are as expected. It may see one more, empty,
// behind a separator at the end of a line.
template <typename Line, typename Text, typename Split>
void addSplit(std::string const& name, std::size_t size, char const* who, Texts<Line> lines,
              std::vector<std::vector<Text>> const& expected, Split split) {
    for (std::size_t i = 0; i < lines->size(); ++i) {
        auto const& fields = split((*lines)[i]);
        std::vector<Text> same;
        std::transform(fields.begin(), fields.end(), std::back_inserter(same),
                       [](auto const& field) { return fieldOf(field); });
        if (same.size() == expected[i].size() + 1 && same.back().empty()) {
            same.pop_back();
        }
        stopUnless(same == expected[i], name + " by " + who);
    }
    add(name, size, who, [lines, split]() mutable {
        std::size_t count = 0;
        for (auto const& line : *lines) {
            count += static_cast<std::size_t>(split(line).size());
        }
        benchmark::DoNotOptimize(count);
    });
}

// Every separator found, nothing done about it.
template <typename Text>
void addScan(std::string const& name, std::size_t size, Texts<Text> lines) {
    using Char = typename Text::value_type;
    add(name, size, "limit", [lines] {
        std::size_t count = 0;
        for (Text const& line : *lines) {
            auto const* const end = line.data() + line.size();
            for (auto const* at = line.data();
                 (at = std::char_traits<Char>::find(at, static_cast<std::size_t>(end - at), ','));
                 ++at) {
                ++count;
            }
        }
        benchmark::DoNotOptimize(count);
    });
}

// Ours beside the stream forms. Gives the fields of `split`.
template <typename Text>
std::vector<std::vector<Text>> addSplits(std::string const& suffix, Texts<Text> lines) {
    using Fields = std::vector<Text>;
    using Char = typename Text::value_type;
    using Split = Fields& (*)(Text const&, Char, Fields&);
    struct {
        char const* name;
        Split ours, byStream;
    } const both[] = {
        {"splitQuoted", Convert::splitQuoted, splitByStream<true,  Text>},
        {"split",       Convert::split,       splitByStream<false, Text>}
    };
    std::vector<Fields> expected;
    for (auto const& [name, ours, byStream] : both) {
        expected.assign(lines->size(), {});
        for (std::size_t i = 0; i < lines->size(); ++i) {
            byStream((*lines)[i], Char(','), expected[i]);
        }
        auto const into = [](Split split) {
            return [split, fields = Fields()](Text const& line) mutable -> Fields& {
                return split(line, Char(','), fields);
            };
        };
        addScan(name + suffix, lines->size(), lines);
        addSplit(name + suffix, lines->size(), "ours", lines, expected, into(ours));
        addSplit(name + suffix, lines->size(), "string stream", lines, expected, into(byStream));
    }
    return expected;
}

void addRegistry() {
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
    [[maybe_unused]] std::size_t const n = lines->size();
    auto const fields = addSplits("", lines);
    auto const wideFields = addSplits(", wide", wide);
#ifdef HALVTYPES_WITH_ABSEIL
    addSplit("split", n, "abseil strings", lines, fields, [](std::string const& line) {
        return std::vector<std::string>(absl::StrSplit(line, ','));
    });
    addSplit("split", n, "abseil views", lines, fields, [](std::string const& line) {
        return std::vector<absl::string_view>(absl::StrSplit(line, ','));
    });
#endif
#ifdef HALVTYPES_WITH_BOOST
    using Fields = std::vector<std::string>;
    addSplit("split", n, "boost::split", lines, fields,
             [into = Fields()](std::string const& line) mutable -> Fields& {
                 return boost::split(into, line, [](char c) { return c == ','; });
             });
#endif
#ifdef HALVTYPES_WITH_QT
    auto const texts = std::make_shared<std::vector<QString>>();
    for (std::string const& line : *lines) {
        texts->push_back(QString::fromLatin1(line.data(), static_cast<int>(line.size())));
    }
    addSplit("split, wide", n, "QString::split", texts, wideFields,
             [](QString const& line) { return line.split(QLatin1Char(',')); });
#endif
}

// One line of n fields, into fields that are there and into new ones.
void addLongSplit(std::size_t n) {
    std::string line;
    for (std::size_t i = 0; i < n; ++i) {
        line += "a field with number " + std::to_string(i) + ',';
    }
    auto const lines = std::make_shared<std::vector<std::string>>(1, line);
    using Fields = std::vector<std::string>;
    std::vector<Fields> fields(1);
    splitByStream<false>(line, ',', fields[0]);
    auto const ours = [into = Fields()](std::string const& text) mutable -> Fields& {
        return Convert::split(text, ',', into);
    };
    auto const anew = [](std::string const& text) {
        Fields into;
        Convert::split(text, ',', into);
        return into;
    };
    addScan("split of one line", n, lines);
    addSplit("split of one line", n, "ours", lines, fields, ours);
    addScan("split of one line, new", n, lines);
    addSplit("split of one line, new", n, "ours", lines, fields, anew);
}

// A text, padded and trimmed again in place.
void addTrim(std::size_t n) {
    std::string const padded = "  " + std::string(n, 'x') + "\r\n";
    std::string const expected(n, 'x');
    auto const by = [&](char const* who, auto trim) {
        addSame("trim", n, who, expected,
                [padded, trim, text = std::string()]() mutable -> std::string& {
                    text = padded;
                    trim(text);
                    return text;
                });
    };
    by("ours", [](std::string& text) { Convert::trim(text, Convert::ms_strTrim); });
    by("limit", [n](std::string& text) {
        text.resize(n + 2);
        text.erase(0, 2);
    });
#ifdef HALVTYPES_WITH_BOOST
    by("boost::trim_if",
       [](std::string& text) { boost::trim_if(text, boost::is_any_of(" \t\r\n")); });
#endif
#ifdef HALVTYPES_WITH_ABSEIL
    by("abseil", [](std::string& text) { absl::StripAsciiWhitespace(&text); });
#endif
}

// All tokens of a text that is written anew each time.
void addTokens(std::size_t n) {
    std::string line("token");
    while (line.size() + 6 <= n) {
        line += ",token";
    }
    std::string cut(line);
    std::replace(cut.begin(), cut.end(), ',', '\0');
    auto const by = [&](char const* who, auto next) {
        addSame("token", n, who, cut, [line, next, text = std::string()]() mutable -> std::string& {
            text = line;
            char* rest = nullptr;
            for (char* at = next(text.data(), rest); at != nullptr; at = next(nullptr, rest)) {
                benchmark::DoNotOptimize(at);
            }
            return text;
        });
    };
    by("ours", [](char* text, char*& rest) { return Convert::token(text, ",", rest); });
    by("strtok_r", [](char* text, char*& rest) { return strtok_r(text, ",", &rest); });
    by("limit", [](char* text, char*& rest) {
        char* const at = std::strchr(text != nullptr ? text : rest, ',');
        if (at != nullptr) {
            *at = '\0';
            rest = at + 1;
        }
        return at;
    });
}

// 16 pairs of digits as bytes, and a word as a truth.
void addValues() {
    std::string const digits = "00112233445566778899aAbBcCdDeEfF";
    std::string const bytes("\0\x11\x22\x33\x44\x55\x66\x77\x88\x99\xaa\xbb\xcc\xdd\xee\xff", 16);
    auto const by = [&](char const* who, auto toByte) {
        addSame("toByte", 16, who, bytes,
                [digits, toByte, out = std::string(16, ' ')]() mutable -> std::string& {
                    for (std::size_t i = 0; i < 16; ++i) {
                        out[i] = static_cast<char>(toByte(digits.data() + 2 * i));
                    }
                    return out;
                });
    };
    by("ours", [](char const* at) { return Convert::toByte(at[0], at[1]); });
    by("std::from_chars", [](char const* at) {
        unsigned char byte = 0;
        std::from_chars(at, at + 2, byte, 16);
        return byte;
    });
    addSame("toBool", 1, "ours", true, [] { return Convert::toBool("True"); });
    addSame("toBool", 1, "limit", true, [] {
        std::string const text("True");
        return strncasecmp(text.c_str(), "true", 4) == 0;
    });
#ifdef HALVTYPES_WITH_ABSEIL
    addSame("toByte", 16, "abseil", bytes, [digits] { return absl::HexStringToBytes(digits); });
    addSame("toBool", 1, "abseil", true, [] {
        bool isTrue = false;
        return absl::SimpleAtob(std::string("True"), &isTrue) && isTrue;
    });
#endif
}

// Texts kept in objects, from wide text and back, and compared where only the last unit differs.
template <typename Object>
void addObjects(std::string const& kind, std::size_t n) {
    std::wstring const wide(n, L'x');
    Object const object(wide);
    Object const other(std::wstring(n - 1, L'x') + L'y');
    for (char const* const what : {"from wide", "to wide"}) {
        bench::addCopy(kind + ' ' + what, n, 6 * n);
    }
    addSame(kind + " from wide", n, "ours", object, [wide] { return Object(wide); });
    addSame(kind + " to wide", n, "ours", wide,
            [object, out = std::wstring()]() mutable -> std::wstring& {
                if constexpr (std::is_same_v<Object, VarChar>) {
                    object.wstr(out);
                } else {
                    object.toWStr(out);
                }
                return out;
            });
    addBoth(
        kind + " compared", n, false, [object, other] { return object == other; },
        [a = std::u16string(n, 'x'), b = std::u16string(n - 1, 'x') + u'y']() mutable {
            benchmark::DoNotOptimize(a.data());
            return std::memcmp(a.data(), b.data(), 2 * a.size()) == 0;
        });
#ifdef HALVTYPES_WITH_QT
    auto const text = QString::fromStdWString(wide);
    auto const otherText = QString::fromStdWString(std::wstring(n - 1, L'x') + L'y');
    addSame(kind + " from wide", n, "QString", text,
            [wide] { return QString::fromStdWString(wide); });
    addSame(kind + " to wide", n, "QString", wide,
            [text, out = std::wstring()]() mutable -> std::wstring& {
                out.resize(static_cast<std::size_t>(text.size()));
                text.toWCharArray(out.data());
                return out;
            });
    addSame(kind + " compared", n, "QString", false,
            [text, otherText] { return text == otherText; });
#endif
}

void addRawMemory() {
    ResString const text(Binary16(7), std::wstring(100, L'x'));
    bench::addCopy("resource string, c_str", 100, 600);
    addSame("resource string, c_str", 100, "ours", std::wstring(100, L'x'),
            [text] { return text.c_str(); });
#ifdef HALVTYPES_WITH_QT
    addSame("resource string, c_str", 100, "QString", std::wstring(100, L'x'),
            [string = QString(100, 'x')] { return string.toStdWString(); });
#endif
    auto const addSlot = [](char const* name, std::size_t capacity, std::size_t moved,
                            std::string const& expected, auto set) {
        bench::addCopy(name, capacity, moved);
        addSame(name, capacity, "ours", expected,
                [set, slot = std::string(expected.size(), 'x')]() mutable -> std::string& {
                    set(&slot[1]);
                    return slot;
                });
    };
    // A byte, then the slot at an odd address: length and units, behind the identifier of a
    // resource string.
    auto const slotOf = [](std::string const& id, std::size_t n, std::size_t fill, char filled) {
        std::string slot = 'x' + id + static_cast<char>(n) + static_cast<char>(n >> 8);
        for (std::size_t i = 0; i < n; ++i) {
            slot.append({'x', '\0'});
        }
        return slot.append(fill, filled);
    };
    std::string const id = '\7' + std::string(15, '\0');
    addSlot("resource string to a slot", 128, 274, slotOf(id, 100, 56, '\0'),
            [text](void* slot) { ResString::set(&text, 128, slot); });
    addSlot("raw text to a slot", 512, 400 * sizeof(wchar_t) + 1026, slotOf("", 400, 224, '\x30'),
            [wide = std::wstring(400, L'x')](void* slot) {
                VarChar::set(wide.data(), 400, 512, slot);
            });
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t const n : bench::sizes) {
        addConversions(n);
    }
    addRegistry();
    for (std::size_t const n : bench::sizes) {
        addLongSplit(n);
    }
    for (std::size_t const n : {16u, 256u}) {
        addTrim(n);
        addTokens(n);
    }
    addValues();
    for (std::size_t const n : {16u, 128u}) {
        addObjects<ResString>("resource string", n);
        addObjects<VarChar>("raw text", n);
    }
    addRawMemory();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
