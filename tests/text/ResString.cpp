#include <Halvora/text/ResString.h>

#include <sstream>

#include <Halvora/text/Convert.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

// What is read as a packed form, and that no text is.
HALV_COMPILES(isRead, ResString().set(argument<T>()));
HALV_COMPILES(isPacked, ResString::set(argument<T>(), 1, nullptr));
HALV_COMPILES(isMeasured, ResString::size(argument<T>()));
HALV_COMPILES(isMeasuredWithin, ResString::sizeWithin(argument<T>(), 1));
template <typename T>
constexpr int uses = isRead<T> + isPacked<T> + isMeasured<T> + isMeasuredWithin<T>;
template <int count, typename... T>
constexpr bool allHave = ((uses<T> == count) && ...);
static_assert(allHave<4, char (&)[9], char*, char const*, unsigned char*, void const*, ResString*,
                      unsigned char const (&)[9], std::nullptr_t>);
static_assert(allHave<0, char const (&)[9], wchar_t*, wchar_t const (&)[9], char16_t const*,
                      char32_t (&)[9], decltype((u8"x"))>);

std::string const idBytes = "0123456789abcdef";
Binary16 const id(idBytes.data(), 16);
std::string const noId(16, '\0');

HLVString unitsOf(std::wstring const& text) {
    HLVString units;
    Convert::toHLVString(units, text);
    return units;
}

TEST(ResString, textByExample) {
    std::wstring const longest(128, L'x'), longer(65537, L'x'), withZero(L"a\0b", 3);
    struct {
        std::wstring text, kept;
    } const rows[] = {
        {L"",            L""          },
        {L"ab",          L"ab"        },
        {withZero,       withZero     }, // a counted text keeps its zeros
        {L"\xE9\x20AC",  L"\xE9\x20AC"},
        {L"\x1F600",     L"\xF600"    }, // cut to 16 bits
        {L"\x10041",     L"A"         }, // so another character may come out
        {longest,        longest      },
        {longest + L"x", longest      }, // and the text to 128 units
        {longer,         longest      },
    };
    for (auto const& [wide, kept] : rows) {
        ResString const text(id, wide), again(id, unitsOf(wide));
        EXPECT_TRUE(same(kept, text.wstr())) << shown(wide);
        EXPECT_TRUE(same(idBytes + rawForm(kept), bytesOf(text))) << shown(wide);
        EXPECT_TRUE(same(bytesOf(text), bytesOf(again))) << shown(wide);
        EXPECT_EQ(18 + 2 * kept.size(), text.size());
        EXPECT_EQ(wide.size() <= 128, ResString::fits(wide) && ResString::fits(unitsOf(wide)));
    }
    EXPECT_EQ(2, ResString(L"\x10000z").length()); // no end, though the unit is zero
    EXPECT_EQ(noId + rawForm(L""), bytesOf(ResString::EMPTY));
}

TEST(ResString, nullIsTheEmptyTextAndForm) {
    ResString const none = static_cast<wchar_t const*>(nullptr);
    ResString text(id, std::wstring(L"old"));
    EXPECT_EQ(0, none.length() + (text = static_cast<wchar_t const*>(nullptr)).length());
    EXPECT_EQ(0, (text = static_cast<unsigned short const*>(nullptr)).length());
    EXPECT_EQ(id, text.id());
    text.set(nullptr);
    EXPECT_EQ(noId + rawForm(L""), bytesOf(text));
    std::string slot(28, '#');
    ResString::set(nullptr, 4, &slot[1]);
    EXPECT_TRUE(same("#" + std::string(26, '\0') + "#", slot));
    ResString::set(&text, 4, nullptr); // does nothing
    EXPECT_EQ(18u, ResString::size(nullptr));
}

TEST(ResString, sizeWithinIsThatOfAWholeForm) {
    checkSizeWithin<ResString>(18);
}

TEST(ResString, slotsByExample) {
    struct {
        std::wstring text;
        unsigned capacity;
        std::string expected; // behind the identifier
    } const rows[] = {
        {L"ab",         4, "02 00 61 00 62 00 00 00 00 00"},
        {L"abcd",       4, "04 00 61 00 62 00 63 00 64 00"},
        {L"abcdefghij", 2, "02 00 61 00 62 00"            },
        {L"\xABCD",     2, "01 00 CD AB 00 00"            },
        {L"",           1, "00 00 00 00"                  },
        {L"ab",         0, "00 00"                        },
    };
    for (auto const& [text, capacity, expected] : rows) {
        std::string const packed = "<" + idBytes + rawForm(text);
        std::string slot(20 + 2 * capacity, '#');
        ResString::set(&packed[1], capacity, &slot[1]);
        EXPECT_EQ("#" + idBytes, slot.substr(0, 17)) << shown(text) << " in " << capacity;
        EXPECT_EQ(expected + " 23", hexOf(slot.substr(17))) << shown(text) << " in " << capacity;
    }
}

TEST(ResString, slotsTakeLongFormsAndMayOverlapThem) {
    for (unsigned const length : {0u, 1u, 10u, 128u, 200u, 65535u}) {
        std::wstring const text = anyText(std::min(length, 300u));
        std::string const packed = "<" + idBytes + rawForm(text, length - text.size());
        EXPECT_EQ(18 + 2 * length, ResString::size(&packed[1]));
        for (unsigned const capacity : {0u, 1u, 9u, 10u, 128u, 300u}) {
            std::string slot = idBytes + rawForm(text.substr(0, capacity));
            slot.resize(18 + 2 * capacity, '\0');
            for (unsigned const at : {0u, 1u, 2u, 17u, 40u, 299u, 300u}) {
                std::string buffer = packed + std::string(2000, '#'), expected = buffer;
                ResString::set(&buffer[1], capacity, &buffer[at]);
                ASSERT_TRUE(same(expected.replace(at, slot.size(), slot), buffer))
                    << length << " units at 1 into a slot of " << capacity << " at " << at;
            }
        }
    }
}

struct Model {
    std::string id = noId;
    std::wstring text; // its units
};

bool isEqual(Model const& a, Model const& b) {
    return a.id != noId && b.id != noId ? a.id == b.id : a.text == b.text;
}

TEST(ResString, equalityIsDecidedByTwoIdsElseByTheTexts) {
    std::string const other(16, 'x');
    struct {
        Model a, b;
        bool expected;
    } const rows[] = {
        {{idBytes, L"a"}, {idBytes, L"b"}, true }, // the same text resource
        {{idBytes, L"a"}, {other, L"a"},   false},
        {{noId, L"a"},    {idBytes, L"a"}, true },
        {{noId, L"a"},    {other, L"a"},   true }, // so equality is not transitive
        {{noId, L"a"},    {idBytes, L"b"}, false},
        {{noId, L"a"},    {noId, L"a"},    true },
        {{noId, L"a"},    {noId, L"ab"},   false},
        {{noId, L"a"},    {noId, L"A"},    false},
        {{noId, L""},     {idBytes, L""},  true },
    };
    auto const make = [](Model const& model) {
        return ResString(Binary16(model.id.data(), 16), model.text);
    };
    for (auto const& [a, b, expected] : rows) {
        EXPECT_EQ(expected, make(a) == make(b)) << shown(a.id + b.id) << shown(a.text + b.text);
        EXPECT_EQ(expected, make(b) == make(a));
        EXPECT_EQ(!expected, make(a) != make(b));
        EXPECT_EQ(expected, isEqual(a, b));
    }
}

// Two texts and what they should hold.
struct Pair {
    ResString texts[2];
    Model models[2];
    unsigned at = 0; // of the one that a step is about
    Steps steps;

    void assign(ResString& text, Model& model) {
        std::wstring const any = anyText(draw(4) == 0 ? 120 + draw(20) : draw(20));
        HLVString const units = unitsOf(any);
        unsigned const source = draw(4);
        switch (source) {
        case 0: text = any; break;
        case 1: text = any.c_str(); break;
        case 2: text = units; break;
        default: text = units.c_str();
        }
        model.text = Convert::toWString(units).substr(0, 128);
        steps.add("assign to one a text of a kind", at, source, any);
    }
    void assignOwnTail(ResString& text, Model& model) {
        model.text = model.text.substr(0, 127);
        text = unitsOf(model.text + L'\0'); // so that there is an end
        unsigned const from = draw(model.text.size() + 1);
        draw(2) == 0 ? text = text.hlv_str() + from : text = text.c_str() + from;
        model.text = model.text.substr(from);
        steps.add("assign to one its own text, from a unit on", at, from);
    }
    void setId(ResString& text, Model& model) {
        model.id = draw(2) == 0 ? noId : std::string(16, static_cast<char>(draw(3)));
        text = Binary16(model.id.data(), 16);
        steps.add("assign to one an identifier", at, model.id);
    }
    void load(ResString& text, Model const& other) {
        unsigned const offset = draw(3);
        std::string const packed = std::string(offset, '#') + other.id + rawForm(other.text);
        text.set(&packed[offset]);
        steps.add("load into one the other's packed form, at an offset", at, offset);
    }
    void next() {
        unsigned const kind = draw(8);
        at = draw(2);
        ResString& text = texts[at];
        Model& model = models[at];
        switch (kind) {
        case 0: return setId(text, model);
        case 1: return assignOwnTail(text, model);
        case 2: load(text, models[1 - at]); break;
        case 3: steps.add("copy to one the other", at), text = ResString(texts[1 - at]); break;
        default: return assign(text, model);
        }
        model = models[1 - at];
    }
};

TEST(ResString, anyStepsAgreeWithAModel) {
    Pair pair;
    for (int step = 0; step < 8000; ++step) {
        pair.next();
        for (int at = 0; at < 2; ++at) {
            Model const& model = pair.models[at];
            std::string const packed = model.id + rawForm(model.text);
            ASSERT_TRUE(same(packed, bytesOf(pair.texts[at]))) << pair.steps;
            ASSERT_TRUE(same(model.text, std::wstring(pair.texts[at].c_str()))) << pair.steps;
        }
        ASSERT_EQ(isEqual(pair.models[0], pair.models[1]), pair.texts[0] == pair.texts[1])
            << pair.steps;
    }
}

TEST(ResString, aTextMayBePartOfItself) {
    ResString text(id, HLVString(100, 'a') + HLVString{'b', 0, 'c'});
    text = text.hlv_str() + 1;
    EXPECT_TRUE(same(idBytes + rawForm(std::wstring(99, L'a') + L"b"), bytesOf(text)));
    EXPECT_EQ('c', text.hlv_str()[102]); // left by the longer text
    text.set(&(text = text.c_str() + 98));
    EXPECT_TRUE(same(idBytes + rawForm(L"ab"), bytesOf(text)));
}

TEST(ResString, textGoesOutOneElementAUnit) {
    for (unsigned const length : {128u, 0u, 1u, 17u}) {
        HLVString const units =
            HLVString(length / 2, 0xFFFE) + HLVString(length - length / 2, 0xE9);
        ResString const text = units;
        std::wstring const wide = Convert::toWString(units);
        std::wstring out(40, 'x');
        std::string narrow(200, 'x');
        text.toWStr(out);
        text.toStr(narrow);
        EXPECT_EQ(wide + L"/" + wide + L"/" + wide, out + L"/" + text.wstr() + L"/" + text.c_str());
        EXPECT_EQ(Convert::toAString(units), narrow);
    }
}

TEST(ResString, resultsAreOneAllocation) {
    ResString const text(std::wstring(128, L'x'));
    expectAllocations(1, [&] { text.wstr(); });
    expectAllocations(1, [&] { ResString(text).c_str(); });
    expectReuse(1, std::string(128, 'x'), [&](auto& out) { text.toStr(out); });
    expectReuse(1, std::wstring(128, L'x'), [&](auto& out) { text.toWStr(out); });
}

// Takes three characters.
struct Sink : std::wstreambuf {
    wchar_t room[3];
    Sink() { setp(room, room + 3); }
};

TEST(ResString, aStreamIsLeftAsByInsertionsOfEachCharacter) {
    auto const outcome = [](std::ios_base::iostate exceptions, auto insert) {
        Sink sink;
        std::wostream stream(&sink);
        stream.exceptions(exceptions);
        stream.width(2); // for the first character
        bool threw = false;
        try {
            insert(stream);
        } catch (std::ios_base::failure const&) {
            threw = true;
        }
        return std::to_string(stream.rdstate()) + (threw ? " threw" : "");
    };
    for (std::wstring const text : {L"", L"a", L"ab", L"abc", L"abcd"}) {
        for (auto const exceptions :
             {std::ios_base::goodbit, std::ios_base::badbit, std::ios_base::failbit}) {
            auto const slowly = [&](auto& stream) {
                std::for_each(text.begin(), text.end(), [&](wchar_t c) { stream << c; });
            };
            EXPECT_EQ(outcome(exceptions, slowly),
                      outcome(exceptions, [&](auto& stream) { ResString(text).toWStr(stream); }))
                << shown(text) << " with exceptions " << exceptions;
        }
    }
}

} // namespace
} // namespace Halvora::test
