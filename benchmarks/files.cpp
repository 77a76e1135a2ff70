// What files and protocols bring: UTF-8, and records of CSV.

#include "Bench.h"

#include <Halvora/text/Convert.h>
#include <Halvora/text/CsvReader.h>
#include <Halvora/text/Utf8.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#ifdef HALVTYPES_WITH_GLIB
#    include <glib.h>
#endif
#ifdef HALVTYPES_WITH_ICU
#    include <unicode/unistr.h>
#    include <unicode/ustring.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QString>
#endif

using namespace Halvora;
using bench::addSame;

namespace {

struct {
    char const* name;
    std::wstring_view pattern;
} const samples[] = {
    {"ASCII",    L"Plain letters, and the odd digit: 42. "                              },
    {"European", L"Gr\u00F6\u00DFe, na\u00EFve, \u010De\u0161tina, \u041C\u0438\u0440. "},
    {"CJK",      L"\u6F22\u5B57\u304B\u306A\u4EA4\u3058\u308A\u6587\u3001"              },
};

// The same text in each encoding.
struct Texts {
    std::string utf8;
    std::wstring wide;
    HLVString units;
};

Texts textsOf(std::wstring_view pattern, std::size_t n) {
    Texts texts;
    while (texts.wide.size() < n) {
        texts.wide += pattern.substr(0, n - texts.wide.size());
    }
    Utf8::fromWString(texts.utf8, texts.wide);
    Utf8::toHLVString(texts.units, texts.utf8);
    return texts;
}

// Into a reused output and into a new one.
template <typename Out, typename In, typename Into>
void addOutputs(std::string const& name, std::size_t n, char const* who, Out const& expected,
                In const& in, Into into) {
    addSame(name, n, who, expected, [in, into, out = Out()]() mutable -> Out& {
        into(out, in);
        return out;
    });
    addSame(name + ", new", n, who, expected, [in, into] {
        Out out;
        into(out, in);
        return out;
    });
}

// Ours beside the bytes moved, beside Convert with as many characters of Latin-1, and beside the
// floor of a new output: a string that is filled before anyone may write into it, as all are.
template <typename Out, typename In, typename Ours, typename Plain>
void addConversion(std::string const& name, std::size_t n, Out const& expected, In const& in,
                   Ours ours, Plain plain) {
    std::size_t const bytes = in.size() * sizeof in[0] + expected.size() * sizeof expected[0];
    bench::addCopy(name, n, bytes);
    bench::addCopy(name + ", new", n, bytes);
    addOutputs(name, n, "ours", expected, in, ours);
    addOutputs(name, n, "Convert", Out(n, 'x'), In(n, 'x'), plain);
    addSame(name + ", new", n, "floor", expected, [in, expected, ours] {
        Out out(expected);
        ours(out, in);
        return out;
    });
}

// A contender's conversion into an object of its own, which `isSame` compares once.
template <typename Make, typename IsSame>
[[maybe_unused]] void addNew(std::string const& name, std::size_t n, char const* who, Make make,
                             IsSame isSame) {
    bench::stopUnless(isSame(make()), name + " by " + who);
    bench::add(name + ", new", n, who, [make] { benchmark::DoNotOptimize(make()); });
}

// Whether a text of another library holds these bytes.
template <typename Data, typename Text>
[[maybe_unused]] bool holds(Data const* data, Text const& text) {
    return std::memcmp(data, text.data(), text.size() * sizeof text[0]) == 0;
}

void addOurs(std::string const& sample, std::size_t n, Texts const& texts) {
    auto const& [utf8, wide, units] = texts;
    addConversion(
        "UTF-8 to wide" + sample, n, wide, utf8,
        [](auto& out, auto& in) { Utf8::toWString(out, in); },
        [](auto& out, auto& in) { Convert::toWString(out, in); });
    addConversion(
        "UTF-8 to 16-bit" + sample, n, units, utf8,
        [](auto& out, auto& in) { Utf8::toHLVString(out, in); },
        [](auto& out, auto& in) { Convert::toHLVString(out, in); });
    auto const narrow = [](auto& out, auto& in) {
        Convert::toAString(out, static_cast<unsigned int>(in.size()), in.data());
    };
    addConversion(
        "wide to UTF-8" + sample, n, utf8, wide,
        [](auto& out, auto& in) { Utf8::fromWString(out, in); }, narrow);
    addConversion(
        "16-bit to UTF-8" + sample, n, utf8, units,
        [](auto& out, auto& in) { Utf8::fromHLVString(out, in); }, narrow);
    bench::addBoth(
        "UTF-8 is valid" + sample, n, true, [utf8 = utf8] { return Utf8::isValid(utf8); },
        [utf8 = utf8] { return std::memchr(utf8.data(), 0, utf8.size()) == nullptr; });
}

#ifdef HALVTYPES_WITH_QT
void addQt(std::string const& sample, std::size_t n, Texts const& texts) {
    auto const& [utf8, wide, units] = texts;
    QString const text = QString::fromStdString(utf8);
    addNew(
        "UTF-8 to wide" + sample, n, "Qt",
        [utf8 = utf8] { return QString::fromStdString(utf8).toStdWString(); },
        [&](std::wstring const& made) { return made == wide; });
    addNew(
        "UTF-8 to 16-bit" + sample, n, "Qt", [utf8 = utf8] { return QString::fromStdString(utf8); },
        [&](QString const& made) { return holds(made.constData(), units); });
    addNew(
        "wide to UTF-8" + sample, n, "Qt",
        [wide = wide] { return QString::fromStdWString(wide).toUtf8(); },
        [&](QByteArray const& made) { return made.toStdString() == utf8; });
    addNew(
        "16-bit to UTF-8" + sample, n, "Qt", [text] { return text.toUtf8(); },
        [&](QByteArray const& made) { return made.toStdString() == utf8; });
}
#endif

#ifdef HALVTYPES_WITH_ICU
void addIcu(std::string const& sample, std::size_t n, Texts const& texts) {
    auto const& [utf8, wide, units] = texts;
    auto const isUtf8 = [&](std::string const& made) { return made == utf8; };
    auto const text = icu::UnicodeString::fromUTF8(utf8);
    addNew(
        "UTF-8 to wide" + sample, n, "ICU",
        [utf8 = utf8] {
            auto const made = icu::UnicodeString::fromUTF8(utf8);
            std::wstring out(static_cast<std::size_t>(made.length()), L'\0');
            UErrorCode error = U_ZERO_ERROR;
            made.toUTF32(reinterpret_cast<UChar32*>(out.data()), made.length(), error);
            return out;
        },
        [&](std::wstring const& made) { return made == wide; });
    addNew(
        "UTF-8 to 16-bit" + sample, n, "ICU",
        [utf8 = utf8] { return icu::UnicodeString::fromUTF8(utf8); },
        [&](icu::UnicodeString const& made) { return holds(made.getBuffer(), units); });
    addNew(
        "wide to UTF-8" + sample, n, "ICU",
        [wide = wide] {
            std::string out;
            auto const* const from = reinterpret_cast<UChar32 const*>(wide.data());
            auto const length = static_cast<std::int32_t>(wide.size());
            return icu::UnicodeString::fromUTF32(from, length).toUTF8String(out);
        },
        isUtf8);
    addNew(
        "16-bit to UTF-8" + sample, n, "ICU",
        [text] {
            std::string out;
            return text.toUTF8String(out);
        },
        isUtf8);

    // Into an output that is there.
    addSame("UTF-8 to 16-bit" + sample, n, "ICU", units,
            [utf8 = utf8, out = HLVString(n, 0)]() mutable -> HLVString& {
                UErrorCode error = U_ZERO_ERROR;
                u_strFromUTF8(reinterpret_cast<UChar*>(out.data()), std::int32_t(out.size()),
                              nullptr, utf8.data(), std::int32_t(utf8.size()), &error);
                return out;
            });
    addSame("16-bit to UTF-8" + sample, n, "ICU", utf8,
            [units = units, out = std::string(utf8.size(), ' ')]() mutable -> std::string& {
                UErrorCode error = U_ZERO_ERROR;
                u_strToUTF8(out.data(), std::int32_t(out.size()), nullptr,
                            reinterpret_cast<UChar const*>(units.data()),
                            std::int32_t(units.size()), &error);
                return out;
            });
}
#endif

#ifdef HALVTYPES_WITH_GLIB
template <typename Made, typename From, typename In, typename Out>
void addGlib(std::string const& name, std::size_t n,
             Made* (*convert)(From const*, glong, glong*, glong*, GError**), In const& in,
             Out const& expected) {
    addNew(
        name, n, "GLib",
        [convert, in] {
            auto const* const from = reinterpret_cast<From const*>(in.data());
            Made* const made = convert(from, glong(in.size()), nullptr, nullptr, nullptr);
            return std::unique_ptr<Made, void (*)(void*)>(made, g_free);
        },
        [&](auto const& made) { return holds(made.get(), expected); });
}

void addGlib(std::string const& sample, std::size_t n, Texts const& texts) {
    auto const& [utf8, wide, units] = texts;
    addGlib("UTF-8 to wide" + sample, n, g_utf8_to_ucs4, utf8, wide);
    addGlib("UTF-8 to 16-bit" + sample, n, g_utf8_to_utf16, utf8, units);
    addGlib("wide to UTF-8" + sample, n, g_ucs4_to_utf8, wide, utf8);
    addGlib("16-bit to UTF-8" + sample, n, g_utf16_to_utf8, units, utf8);
    addSame("UTF-8 is valid" + sample, n, "GLib", true, [utf8 = utf8] {
        return g_utf8_validate(utf8.data(), static_cast<gssize>(utf8.size()), nullptr) != 0;
    });
}
#endif

using Records = std::vector<std::vector<std::string>>;

// What many programs have instead: a line, cut at each separator outside quotes, and the next one
// too where a quote stays open. True with the fields of a record.
bool readByHand(std::istream& stream, std::vector<std::string>& fields) {
    std::string line;
    if (!std::getline(stream, line)) {
        return false;
    }
    fields.assign(1, "");
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size() || isQuoted; ++i) {
        if (i == line.size()) {
            fields.back() += '\n';
            std::getline(stream, line);
            i = static_cast<std::size_t>(-1);
        } else if (line[i] == '"' && isQuoted && line[i + 1] == '"') {
            fields.back() += line[++i];
        } else if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == ',' && !isQuoted) {
            fields.emplace_back();
        } else if (line[i] != '\r' || isQuoted) {
            fields.back() += line[i];
        }
    }
    return true;
}

// Times one pass over all records by `next`, which `open` makes anew for each, once it has given
// them as expected, but for `otherwise` at most.
template <typename Open>
void addRecords(std::string const& name, char const* who, Records const& expected, Open open,
                std::size_t otherwise = 0) {
    std::vector<std::string> fields;
    auto next = open();
    std::size_t same = 0;
    for (auto const& record : expected) {
        same += next->next(fields) && fields == record ? 1 : 0;
    }
    bench::stopUnless(same + otherwise >= expected.size() && !next->next(fields),
                      name + " by " + who);
    bench::add(name, expected.size(), who, [open, fields]() mutable {
        for (auto reader = open(); reader->next(fields);) {
            benchmark::DoNotOptimize(fields.data());
        }
    });
}

struct Stream {
    explicit Stream(std::string const& text) : stream(text), reader(stream) {}
    bool next(std::vector<std::string>& fields) { return reader.next(fields); }
    std::istringstream stream;
    CsvReader reader;
};

struct ByHand {
    explicit ByHand(std::string const& text) : stream(text) {}
    bool next(std::vector<std::string>& fields) { return readByHand(stream, fields); }
    std::istringstream stream;
};

// Lines that are cut already.
struct Lines {
    bool next(std::vector<std::string>& fields) {
        if (at == lines->size()) {
            return false;
        }
        Convert::splitQuoted((*lines)[at++], ',', fields);
        return true;
    }
    std::shared_ptr<std::vector<std::string>> lines;
    std::size_t at = 0;
};

void addRegistry() {
    std::ifstream file("/usr/share/ieee-data/oui.csv", std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(file), {});
    Records records;
    auto const byHand = [text] { return std::make_unique<ByHand>(text); };
    auto const hand = byHand();
    for (std::vector<std::string> fields; hand->next(fields);) {
        records.push_back(fields);
    }
    if (records.empty()) {
        return;
    }
    auto const lines = std::make_shared<std::vector<std::string>>();
    for (std::size_t at = 0, end; (end = text.find("\r\n", at)) != std::string::npos;
         at = end + 2) {
        lines->push_back(text.substr(at, end - at));
    }
    addRecords("records of CSV", "ours", records,
               [text] { return std::make_unique<CsvReader>(text); });
    bench::add("records of CSV", records.size(), "limit",
               [text] { benchmark::DoNotOptimize(std::count(text.begin(), text.end(), ',')); });
    // splitQuoted has no empty last field and takes no quotes in quoted ones.
    addRecords(
        "records of CSV", "Convert", records,
        [lines] { return std::make_unique<Lines>(Lines{lines}); }, 150);
    addRecords("records of CSV", "getline", records, byHand);
    addRecords("records of a CSV stream", "ours", records,
               [text] { return std::make_unique<Stream>(text); });
    addRecords("records of a CSV stream", "getline", records, byHand);
}

} // namespace

int main(int argc, char** argv) {
    for (auto const& [name, pattern] : samples) {
        for (std::size_t const n : {16u, 256u, 4096u}) {
            Texts const texts = textsOf(pattern, n);
            std::string const sample = std::string(", ") + name;
            addOurs(sample, n, texts);
#ifdef HALVTYPES_WITH_QT
            addQt(sample, n, texts);
#endif
#ifdef HALVTYPES_WITH_ICU
            addIcu(sample, n, texts);
#endif
#ifdef HALVTYPES_WITH_GLIB
            addGlib(sample, n, texts);
#endif
        }
    }
    addRegistry();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
