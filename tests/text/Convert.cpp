#include <Halvora/text/Convert.h>

#include <iomanip>
#include <sstream>

#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

static_assert(!std::is_aggregate_v<Convert> && !std::is_default_constructible_v<Convert>);

TEST(Convert, encodingsByExample) {
    std::wstring const zeros(3, L'\0'), none(1, static_cast<wchar_t>(-1));
    std::string const zero(3, '\0');
    struct {
        std::wstring wide;
        std::string narrow;
        std::wstring units; // each as a wide character
        std::string cut;    // narrow by way of the units
    } const rows[] = {
        {L"",         "",         L"",         ""        },
        {L"ab",       "ab",       L"ab",       "ab"      },
        {L"\xE9\xFF", "\xE9\xFF", L"\xE9\xFF", "\xE9\xFF"},
        {L"\x100",    " ",        L"\x100",    " "       },
        {L"a\x20AC",  "a ",       L"a\x20AC",  "a "      },
        {L"\xFFFF",   " ",        L"\xFFFF",   " "       },
        {L"\x10041",  " ",        L"A",        "A"       }, // cut to 16 bits
        {L"\x1F600",  " ",        L"\xF600",   " "       },
        {zeros,       zero,       zeros,       zero      },
        {none,        " ",        L"\xFFFF",   " "       }, // no character at all
    };
    for (auto const& [wide, narrow, units, cut] : rows) {
        HLVString fromWide(3, 'x'), fromNarrow(3, 'x');
        Convert::toHLVString(fromWide, wide);
        Convert::toHLVString(fromNarrow, narrow);
        EXPECT_TRUE(same(narrow, Convert::toAString(wide))) << shown(wide);
        EXPECT_TRUE(same(units, Convert::toWString(fromWide))) << shown(wide);
        EXPECT_TRUE(same(cut, Convert::toAString(fromWide))) << shown(wide);
        EXPECT_TRUE(same(narrow, Convert::toAString(fromNarrow))) << shown(narrow);
        EXPECT_TRUE(same(Convert::toWString(fromNarrow), Convert::toWString(narrow)));
    }
    EXPECT_EQ(L"\xE9", Convert::toWString(std::string("\xE9"))); // no sign
}

// A text of bytes, of every 16-bit unit in turn, and of anything.
template <typename Text>
Text drawElements(unsigned length) {
    static unsigned unit = 0;
    Text text;
    while (text.size() < length) {
        unsigned const any = draw(~0u) & (0xFFu << draw(25) | 0xFFu);
        unsigned const drawn = draw(2) == 0 ? draw(256) : draw(2) == 0 ? unit++ : any;
        text += static_cast<typename Text::value_type>(drawn);
    }
    return text;
}

template <typename To, typename From>
To slowlyConverted(From const& source) {
    To result;
    for (auto const element : source) {
        auto const value = static_cast<std::make_unsigned_t<decltype(element + 0)>>(element) &
                           (sizeof element == 1 ? 0xFFu : ~0u);
        bool const lost = sizeof result[0] == 1 && value > 0xFF;
        result += static_cast<typename To::value_type>(lost ? 0x20 : value);
    }
    return result;
}

// `convert(out, source)` at every length, into outputs with and without capacity.
template <typename To, typename From, typename Function>
void checkEncoding(char const* name, Function convert) {
    for (unsigned length = 0; length <= 1031; ++length) {
        From const source = drawElements<From>(length);
        To const expected = slowlyConverted<To>(source);
        To out(draw(2 * length + 30), 'x');
        out.resize(draw(out.size() + 1));
        for (std::size_t const before : {out.size(), std::size_t{length}}) {
            out.resize(before, 'x');
            convert(out, source);
            ASSERT_TRUE(same(expected, out))
                << name << " of " << shown(source) << "\ninto " << before << " old elements";
        }
    }
}

TEST(Convert, everyElementIsConvertedByItselfAtEveryLength) {
    auto const toWide = [](auto& out, auto const& in) {
        std::wstring none = out, ended = out;
        Convert::toWString(none, decltype(in.c_str())()); // null
        Convert::toWString(ended, in.c_str());
        Convert::toWString(out, in);
        EXPECT_EQ(Convert::toWString(in), out);
        EXPECT_EQ(out.substr(0, in.find('\0')), none + ended);
    };
    auto const toNarrow = [](auto& out, auto const& in) {
        std::string none = out;
        Convert::toAString(none, 5, decltype(in.c_str())()); // null
        Convert::toAString(out, static_cast<unsigned>(in.size()), in.data());
        EXPECT_EQ(Convert::toAString(in), none + out);
    };
    auto const toUnits = [](auto& out, auto const& in) { Convert::toHLVString(out, in); };
    checkEncoding<std::wstring, HLVString>("16-bit to wide", toWide);
    checkEncoding<std::wstring, std::string>("narrow to wide", toWide);
    checkEncoding<std::string, HLVString>("16-bit to narrow", toNarrow);
    checkEncoding<std::string, std::wstring>("wide to narrow", toNarrow);
    checkEncoding<HLVString, std::wstring>("wide to 16-bit", toUnits);
    checkEncoding<HLVString, std::string>("narrow to 16-bit", toUnits);
    std::string old = "old";
    Convert::toAString(old, 3, nullptr);
    EXPECT_EQ("", old);
}

TEST(Convert, aResultIsOneAllocationWhichMayFail) {
    std::string const narrow(5000, 'x');
    std::wstring const wide(5000, L'x');
    HLVString const units(5000, 'x');
    auto const checkFrom = [&](auto const& text) {
        if constexpr (sizeof text[0] != sizeof(wchar_t)) {
            expectAllocations(1, [&] { Convert::toWString(text); });
            expectReuse(1, wide, [&](auto& out) { Convert::toWString(out, text); });
            expectReuse(1, wide, [&](auto& out) { Convert::toWString(out, text.c_str()); });
        }
        if constexpr (sizeof text[0] != sizeof(char)) {
            expectAllocations(1, [&] { Convert::toAString(text); });
            expectReuse(1, narrow, [&](auto& out) { Convert::toAString(out, 5000, text.data()); });
        }
        if constexpr (sizeof text[0] != sizeof(short)) {
            expectReuse(1, units, [&](auto& out) { Convert::toHLVString(out, text); });
        }
    };
    checkFrom(narrow);
    checkFrom(wide);
    checkFrom(units);
    expectAllocations(1, [] { Convert::toAString(Binary16()); });
    expectAllocations(1, [] { Convert::toWString(Binary16()); });
    expectAllocations(1, [&] { Convert::toBool(narrow); });
}

TEST(Convert, digitPairsAreDecodedWithoutValidation) {
    struct {
        char high, low;
        int expected;
    } const rows[] = {
        {'4',    '1', 0x41},
        {'F',    'f', 0xFF},
        {'a',    'B', 0xAB},
        {':',    '0', 0xA0},
        {'?',    ';', 0xFB},
        {'@',    '1', 0x01},
        {'G',    '1', 0x01},
        {'g',    '1', 0x01},
        {'/',    '9', 0x09},
        {'`',    '2', 0x02},
        {'\xB1', '3', 0x03}
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.expected, Convert::toByte(row.high, row.low)) << row.high << row.low;
    }
    std::string const digits = "0123456789:;<=>?ABCDEFabcdef";
    for (int i = 0; i <= 0xFFFF; ++i) {
        auto const high = static_cast<char>(i >> 8), low = static_cast<char>(i & 0xFF);
        auto const value = [&digits](char c) {
            auto const at = digits.find(c);
            return at == std::string::npos ? 0 : at < 16 ? at : 10 + (at - 16) % 6;
        };
        ASSERT_EQ(value(high) * 16 + value(low), Convert::toByte(high, low)) << i;
    }
}

TEST(Convert, truthIsOneOrBeginsWithTrue) {
    std::pair<std::string, bool> const rows[] = {
        {"1",         true },
        {"true",      true },
        {"TrUe",      true },
        {" \t\ntrue", true },
        {"true.",     true },
        {"truely",    true },
        {"1 ",        false},
        {" 1",        false},
        {"11",        false},
        {"yes",       false},
        {"tru",       false},
        {"\xA0true",  false},
        {"",          false},
        {"false",     false},
    };
    for (auto const& [text, expected] : rows) {
        EXPECT_EQ(expected, Convert::toBool(text)) << testing::PrintToString(text);
    }
    std::vector<std::string> const pieces = {"true", "tRu",   "E", "t",    "1",    "1",
                                             "0",    "false", " ", "\t\n", "\v\f", "\r",
                                             "\x1F", "\xA0",  ".", {'\0'}};
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (unsigned count = draw(5); count != 0; --count) {
            text += pieces[draw(pieces.size())];
        }
        std::string lowered = text;
        for (char& c : lowered) {
            c = std::tolower(c, std::locale::classic());
        }
        bool truth = false;
        std::istringstream(lowered) >> std::boolalpha >> truth;
        ASSERT_EQ(truth || text == "1", Convert::toBool(text)) << testing::PrintToString(text);
    }
}

TEST(Convert, groupedFormShowsThreeNumbersAndTheLastEightBytes) {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    EXPECT_EQ("12345678-9abc-def0-0807-060504030201", Convert::toAString(id));
    EXPECT_EQ("00000000-0000-0000-0000-000000000000", Convert::toAString(Binary16()));
    for (int round = 0; round < 1000; ++round) {
        unsigned const words[] = {draw(~0u), draw(~0u), draw(~0u), draw(~0u)};
        Binary16 const value(words, sizeof words);
        std::ostringstream stream;
        stream << std::hex << std::setfill('0');
        for (int const i : {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15}) {
            stream << std::setw(2) << short{value[static_cast<unsigned char>(i)]};
            stream << (i == 0 || i == 4 || i == 6 || i == 9 ? "-" : "");
        }
        ASSERT_EQ(stream.str(), Convert::toAString(value));
        ASSERT_EQ(Convert::toWString(stream.str()), Convert::toWString(value));
    }
}

TEST(Convert, typesHaveMixedCaseNames) {
    std::string names;
    for (int type = -1; type <= 16; ++type) {
        names += Convert::toAString(static_cast<eDataType>(type)) + "/";
    }
    EXPECT_EQ("//Bool/Byte/Int16/Int32/Int64/UInt16/UInt32/UInt64/Float/Double/String/Tick/ID/"
              "Binary16/ResString//",
              names);
}

} // namespace
} // namespace Halvora::test
