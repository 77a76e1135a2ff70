#include <Halvora/text/Convert.h>
#include <Halvora/types/ElementTypes.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <type_traits>

#include <Halvora/text/detail/Encoding.h>
#include <Halvora/types/detail/Loaded.h>

// Where space is cheap, an output of the right length spares its conversion every call.
#ifdef HALV_LONG_RUNS
#    define HALV_FLAT [[gnu::flatten]]
#else
#    define HALV_FLAT
#endif

namespace Halvora {

std::string const Convert::ms_strTrim = " \t\r\n";
std::wstring const Convert::ms_wstrTrim = detail::loaded(
    [] { return std::wstring(L" \t\r\n"); }); // longer than what a string may hold itself

namespace {

// Programs that were built before it was inline find it in the library.
[[gnu::used]] constexpr auto byteFromDigits = &Convert::toByte;

// The last row answers every number that no type has.
constexpr char mixedNames[][10] = {
    "",      "Bool",   "Byte",   "Int16", "Int32", "Int64",    "UInt16",    "UInt32", "UInt64",
    "Float", "Double", "String", "Tick",  "ID",    "Binary16", "ResString", "",
};
static_assert(std::size(mixedNames) == DT_STRINGRES + 2);

// Fields one after another into the elements that a vector already has.
template <typename Text>
class FieldWriter {
public:
    using Char = typename Text::value_type;

    explicit FieldWriter(std::vector<Text>& fields)
        : m_fields(fields), m_next(fields.data()), m_end(m_next + fields.size()) {}

    void add(Char const* begin, Char const* end) {
        if (m_next == m_end) {
            m_fields.emplace_back();
            m_end = m_fields.data() + m_fields.size();
            m_next = m_end - 1;
        }
        m_next->assign(begin, static_cast<std::size_t>(end - begin));
        ++m_next;
    }
    std::vector<Text>& finish() {
        while (m_end != m_next) { // smaller than what resize() may have to do
            m_fields.pop_back();
            --m_end;
        }
        return m_fields;
    }

private:
    std::vector<Text>& m_fields;
    Text* m_next;
    Text* m_end;
};

template <typename Text>
bool isFieldOf(Text const& text, std::vector<Text> const& fields) {
    std::less<Text const*> const before;
    return !before(&text, fields.data()) && before(&text, fields.data() + fields.size());
}

// The first `wanted` in the run, or its end.
template <typename Char>
Char const* findOrEnd(Char const* begin, Char const* end, Char wanted) {
    auto const* const found =
        std::char_traits<Char>::find(begin, static_cast<std::size_t>(end - begin), wanted);
    return found != nullptr ? found : end;
}

// The characters of a set. Those from 1 to 32, white space among them, are bits; in short sets a
// search for others would cost more than it spares.
template <typename Char>
class CharacterSet {
public:
    explicit CharacterSet(std::basic_string<Char> const& set)
        : m_begin(set.data()), m_end(m_begin + set.size()) {
        for (auto const* at = m_begin; at != m_end; ++at) {
            std::uint32_t const bit = bitOf(*at);
            m_bits |= bit < 32 ? 1u << bit : 0;
            m_hasOthers = m_hasOthers || bit >= 32;
        }
    }

    bool has(Char wanted) const {
        std::uint32_t const bit = bitOf(wanted);
        return bit < 32 ? (m_bits >> bit & 1) != 0 : m_hasOthers && isListed(wanted);
    }

private:
    static std::uint32_t bitOf(Char c) { return std::uint32_t{std::make_unsigned_t<Char>(c)} - 1; }

    bool isListed(Char wanted) const {
        auto const* at = m_begin;
        while (at != m_end && *at != wanted) {
            ++at;
        }
        return at != m_end;
    }

    Char const* m_begin;
    Char const* m_end;
    std::uint32_t m_bits = 0;
    bool m_hasOthers = false;
};

enum Ends : unsigned int { LEFT = 1, RIGHT = 2, BOTH = LEFT | RIGHT };

template <typename Char>
void trimEnds(std::basic_string<Char>& text, std::basic_string<Char> const& set, Ends ends) {
    CharacterSet<Char> const cut(set);
    Char* const begin = text.data();
    Char* first = begin;
    Char* end = begin + text.size();
    while ((ends & RIGHT) != 0 && end != begin && cut.has(end[-1])) {
        --end;
    }
    while ((ends & LEFT) != 0 && first != end && cut.has(*first)) {
        ++first;
    }
    if (first == end) {
        return; // it holds no others
    }
    auto const length = static_cast<std::size_t>(end - first);
    if (first != begin) {
        std::char_traits<Char>::move(begin, first, length);
    }
    text.erase(length);
}

constexpr bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The letter in lower case; nothing else becomes a letter.
constexpr char toLower(char c) {
    return static_cast<char>(c | 0x20);
}

} // namespace

HALV_FLAT void Convert::toWString(std::wstring& out, unsigned short const* units) {
    detail::convertInto(out, units, detail::terminatedLength(units));
}

HALV_FLAT void Convert::toWString(std::wstring& out, HLVString const& text) {
    detail::convertInto(out, text.data(), text.size());
}

std::wstring Convert::toWString(HLVString const& text) {
    return detail::converted<std::wstring>(text.data(), text.size());
}

HALV_FLAT void Convert::toWString(std::wstring& out, char const* text) {
    detail::convertInto(out, text, detail::terminatedLength(text));
}

HALV_FLAT void Convert::toWString(std::wstring& out, std::string const& text) {
    detail::convertInto(out, text.data(), text.size());
}

std::wstring Convert::toWString(std::string const& text) {
    return detail::converted<std::wstring>(text.data(), text.size());
}

HALV_FLAT void Convert::toAString(std::string& out, unsigned int length,
                                  unsigned short const* units) {
    detail::convertInto(out, units, units == nullptr ? 0 : length);
}

std::string Convert::toAString(HLVString const& text) {
    return detail::converted<std::string>(text.data(), text.size());
}

HALV_FLAT void Convert::toAString(std::string& out, unsigned int length, wchar_t const* chars) {
    detail::convertInto(out, chars, chars == nullptr ? 0 : length);
}

std::string Convert::toAString(std::wstring const& text) {
    return detail::converted<std::string>(text.data(), text.size());
}

HALV_FLAT void Convert::toHLVString(HLVString& out, std::wstring const& text) {
    detail::convertInto(out, text.data(), text.size());
}

HALV_FLAT void Convert::toHLVString(HLVString& out, std::string const& text) {
    detail::convertInto(out, text.data(), text.size());
}

HALV_FLAT void Convert::_widen(std::wstring& out, char const* text, std::size_t n) {
    detail::convertInto(out, text, n);
}

HALV_FLAT void Convert::_narrow(std::string& out, wchar_t const* text, std::size_t n) {
    detail::convertInto(out, text, n);
}

HALV_FLAT void Convert::_toUnits(HLVString& out, char const* text, std::size_t n) {
    detail::convertInto(out, text, n);
}

HALV_FLAT void Convert::_toUnits(HLVString& out, wchar_t const* text, std::size_t n) {
    detail::convertInto(out, text, n);
}

template <typename Text>
std::vector<Text>& Convert::_split(Text const& text, typename Text::value_type separator,
                                   std::vector<Text>& fields) {
    if (isFieldOf(text, fields)) {
        return _split(Text(text), separator, fields);
    }
    FieldWriter<Text> writer(fields);
    auto const* const end = text.data() + text.size();
    for (auto const* at = text.data(); at != end;) {
        auto const* const fieldEnd = findOrEnd(at, end, separator);
        writer.add(at, fieldEnd);
        at = fieldEnd == end ? end : fieldEnd + 1;
    }
    return writer.finish();
}

template <typename Text>
std::vector<Text>& Convert::_splitQuoted(Text const& text, typename Text::value_type separator,
                                         std::vector<Text>& fields) {
    if (isFieldOf(text, fields)) {
        return _splitQuoted(Text(text), separator, fields);
    }
    constexpr typename Text::value_type quote = '"';
    FieldWriter<Text> writer(fields);
    auto const* const end = text.data() + text.size();
    auto const behind = [end](auto const* found) { return found == end ? end : found + 1; };
    for (auto const* at = text.data(); at != end;) {
        auto const* const item = at;
        auto const* const itemEnd = findOrEnd(item, end, separator);
        at = behind(itemEnd);
        bool const opens = item != itemEnd && *item == quote;
        if (opens && itemEnd[-1] != quote) {
            if (at == end) {
                break; // nothing closes the quote and no text follows: the item is dropped
            }
            // The text between the two pieces is exactly the separator.
            auto const* const close = findOrEnd(at, end, quote);
            writer.add(item + 1, close);
            at = behind(close);
            if (at != end && *at == separator) {
                ++at;
            }
        } else if (opens && itemEnd - item >= 2) {
            writer.add(item + 1, itemEnd - 1);
        } else {
            writer.add(item, itemEnd);
        }
    }
    return writer.finish();
}

void Convert::trimLeft(std::string& text, std::string const& set) {
    trimEnds(text, set, LEFT);
}

void Convert::trimLeft(std::wstring& text, std::wstring const& set) {
    trimEnds(text, set, LEFT);
}

void Convert::trimRight(std::string& text, std::string const& set) {
    trimEnds(text, set, RIGHT);
}

void Convert::trimRight(std::wstring& text, std::wstring const& set) {
    trimEnds(text, set, RIGHT);
}

void Convert::trim(std::string& text, std::string const& set) {
    trimEnds(text, set, BOTH);
}

void Convert::trim(std::wstring& text, std::wstring const& set) {
    trimEnds(text, set, BOTH);
}

std::vector<std::string>& Convert::split(std::string const& text, char separator,
                                         std::vector<std::string>& fields) {
    return _split(text, separator, fields);
}

std::vector<std::wstring>& Convert::split(std::wstring const& text, wchar_t separator,
                                          std::vector<std::wstring>& fields) {
    return _split(text, separator, fields);
}

std::vector<std::string>& Convert::splitQuoted(std::string const& text, char separator,
                                               std::vector<std::string>& fields) {
    return _splitQuoted(text, separator, fields);
}

std::vector<std::wstring>& Convert::splitQuoted(std::wstring const& text, wchar_t separator,
                                                std::vector<std::wstring>& fields) {
    return _splitQuoted(text, separator, fields);
}

char* Convert::token(char* text, char const* delimiter, char*& next) noexcept {
    if (text == nullptr) {
        text = next;
    }
    next = nullptr;
    if (text == nullptr || delimiter == nullptr || *delimiter == '\0') {
        return text;
    }
    char* const found = std::strstr(text, delimiter);
    if (found != nullptr && found[std::strlen(delimiter)] != '\0') {
        *found = '\0';
        next = found + std::strlen(delimiter);
    }
    return text;
}

bool Convert::toBool(std::string text) {
    char const* at = text.data();
    char const* const end = at + text.size();
    while (at != end && isSpace(*at)) {
        ++at;
    }
    char name[4];
    if (static_cast<std::size_t>(end - at) < sizeof name) {
        return text == "1";
    }
    std::transform(at, at + sizeof name, name, toLower);
    return std::memcmp(name, "true", sizeof name) == 0;
}

std::string Convert::toAString(eDataType type) {
    return mixedNames[isDataType(type) ? type : DT_STRINGRES + 1];
}

std::string Convert::toAString(Binary16 const& value) {
    // A text to write over: a copy takes less than a fill.
    std::string text("00000000-0000-0000-0000-000000000000", Binary16::GROUPED_LENGTH);
    value.toGrouped(text.data(), text.size());
    return text;
}

std::wstring Convert::toWString(Binary16 const& value) {
    char text[Binary16::GROUPED_LENGTH];
    value.toGrouped(text, sizeof text);
    return detail::converted<std::wstring>(text, sizeof text);
}

} // namespace Halvora
