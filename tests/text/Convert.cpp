#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/ResString2.h>
#include <Halvora/text/VarChar.h>

#include <iomanip>
#include <sstream>

#include <tests/support/Memory.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

template <typename To, typename From, typename Function>
void checkEncoding(Function convert) {
    using Element = typename From::value_type;
    for (unsigned length = 0, unit = 0; length <= 1031; ++length) {
        From source;
        To expected, out(draw(2 * length + 30), 'x');
        while (source.size() < length) { // bytes, every 16-bit unit in turn, anything
            unsigned const any = draw(~0u) & (0xFFu << draw(25) | 0xFFu);
            unsigned const drawn = draw(2) == 0 ? draw(256) : draw(2) == 0 ? unit++ : any;
            auto const value = static_cast<std::make_unsigned_t<Element>>(drawn);
            bool const lost = sizeof(typename To::value_type) == 1 && value > 0xFF;
            source += static_cast<Element>(value);
            expected += static_cast<typename To::value_type>(lost ? 0x20 : value);
        }
        out.resize(draw(out.size() + 1)); // with capacity to spare
        convert(out, source);
        ASSERT_EQ(expected, out) << __PRETTY_FUNCTION__;
        out.assign(length, 'x'); // takes the text as it is
        convert(out, source);
        ASSERT_EQ(expected, out) << __PRETTY_FUNCTION__;
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
    checkEncoding<std::wstring, HLVString>(toWide);
    checkEncoding<std::wstring, std::string>(toWide);
    checkEncoding<std::string, HLVString>(toNarrow);
    checkEncoding<std::string, std::wstring>(toNarrow);
    checkEncoding<HLVString, std::wstring>(toUnits);
    checkEncoding<HLVString, std::string>(toUnits);
}

// Makes a result by as many allocations as said, each of which may fail.
template <typename Make>
void expectAllocations(int expected, Make make) {
    auto const act = [&](int) { make(); };
    EXPECT_EQ(expected, failEachAllocation([] { return 0; }, act, [](int) {}))
        << __PRETTY_FUNCTION__;
}

// The same with an output that is empty; one that has been used has the memory.
template <typename Out, typename Into>
void expectReuse(int expected, Out out, Into into) {
    expectAllocations(expected, [&] {
        Out fresh;
        into(fresh);
    });
    expectAllocations(0, [&] { into(out); });
}

TEST(Convert, aResultIsOneAllocationWhichMayFail) {
    std::string const narrow(5000, 'x');
    std::wstring const wide(5000, L'x');
    HLVString const units(5000, 'x');
    auto const checkFrom = [&](auto const& text) {
        expectAllocations(1, [&] { ResString2({}, text); });
        expectAllocations(1, [&] { ResString2({}, text.c_str()); });
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
            expectReuse(2, std::vector(1, text),
                        [&](auto& out) { Convert::split(text, ',', out); });
            expectReuse(2, std::vector(1, text),
                        [&](auto& out) { Convert::splitQuoted(text, ',', out); });
        }
    };
    checkFrom(narrow);
    checkFrom(wide);
    checkFrom(units);
    expectAllocations(1, [] { Convert::toAString(Binary16()); });
    expectAllocations(1, [] { Convert::toWString(Binary16()); });
    expectAllocations(1, [&] { Convert::toBool(narrow); });
    ResString const res(wide);
    VarChar const varChar(wide);
    unsigned short length = 0;
    expectAllocations(1, [&] { ResString2{res}; });
    expectAllocations(1, [&] { res.wstr(); });
    expectAllocations(1, [&] { ResString(wide).c_str(); });
    expectAllocations(1, [&] { varChar.wstr(); });
    expectReuse(1, narrow, [&](auto& out) { res.toStr(out); });
    expectReuse(1, wide, [&](auto& out) { res.toWStr(out); });
    expectReuse(1, wide, [&](auto& out) { varChar.wstr(out); });
    expectReuse(1, wide, [&](auto& out) { VarChar::set(&varChar, out, length); });
}

// The text trimmed on the left, on the right and on both sides.
template <typename Text>
Text trimmed(Text const& text, Text const& set) {
    Text left = text, right = text, both = text;
    Convert::trimLeft(left, set);
    Convert::trimRight(right, set);
    Convert::trim(both, set);
    return (left += '/') += (right += '/') += both;
}

TEST(Convert, trimmingSparesTextOfNothingButTheSet) {
    EXPECT_EQ("a\v b\n\r/ \ta\v b/a\v b", trimmed({" \ta\v b\n\r"}, Convert::ms_strTrim));
    EXPECT_EQ("\va/\va/\va", trimmed({"\va"}, Convert::ms_strTrim));
    EXPECT_EQ("\r\t /\r\t /\r\t ", trimmed({"\r\t "}, Convert::ms_strTrim));
    EXPECT_EQ(" a / a / a ", trimmed<std::string>(" a ", ""));
    EXPECT_EQ(L"a\n\r/ \ta/a", trimmed({L" \ta\n\r"}, Convert::ms_wstrTrim));
    EXPECT_EQ(L"xyx/xyx/xyx", trimmed<std::wstring>(L"xyx", L"yx"));
}

template <typename Text>
Text drawText(Text const& alphabet, std::size_t longest) {
    Text text(draw(longest + 1), alphabet[0]);
    for (auto& c : text) {
        c = alphabet[draw(alphabet.size())];
    }
    return text;
}

// Line by line, with the separator as the line's end.
template <typename Text, typename Char = typename Text::value_type>
std::vector<Text> slowlySplit(Text const& text, Char separator, bool quoted) {
    std::vector<Text> fields;
    std::basic_istringstream<Char> stream(text);
    for (Text item, rest; std::getline(stream, item, separator); fields.push_back(item)) {
        bool const opens = quoted && !item.empty() && item[0] == '"';
        if (opens && item.back() != '"') {
            if (!std::getline(stream, rest, Char('"'))) {
                break;
            }
            item = item.substr(1) + separator + rest;
            if (Char next; stream.get(next) && next != separator) {
                stream.unget();
            }
        } else if (opens && item.size() >= 2) {
            item = item.substr(1, item.size() - 2);
        }
    }
    return fields;
}

template <typename Text, typename Char = typename Text::value_type>
void checkSplitting(Text const& alphabet) {
    using Split = std::vector<Text>& (*)(Text const&, Char, std::vector<Text>&);
    Split const functions[] = {Convert::split, Convert::splitQuoted};
    static Text const empty; // with an address below that of any field
    std::vector<Text> fields(1);
    EXPECT_TRUE(Convert::split(empty, alphabet[0], fields).empty());
    for (unsigned round = 0; round < 20000; ++round) {
        Text const text = drawText(alphabet, round % 100 < 2 ? 300 : 14);
        Split const split = functions[round % 2];
        auto const expected = slowlySplit(text, alphabet[0], round % 2 == 1);
        ASSERT_EQ(expected, split(text, alphabet[0], fields)) << testing::PrintToString(text);
        long const before = allocations();
        ASSERT_EQ(&fields, &split(text, alphabet[0], fields));
        ASSERT_EQ(before, allocations()) << "fields are not reused";
        fields = std::vector<Text>(2, text); // the text may be one of the fields
        ASSERT_EQ(expected, split(fields[1], alphabet[0], fields));
    }
}

TEST(Convert, splittingAgreesWithReadingLines) {
    checkSplitting<std::string>({',', ',', '"', '"', 'a', '\0', '\xE9'});
    checkSplitting<std::string>({'"', 'a', ','});
    checkSplitting<std::wstring>({0x12C, 0x12C, '"', '"', ',', '\0', 0x122});
}

TEST(Convert, tokensEndWhereAFurtherCharacterFollowsTheDelimiter) {
    for (int round = 0; round < 20000; ++round) {
        std::string text = drawText<std::string>("a--", 9);
        std::string const delimiter = drawText<std::string>("a--", 2);
        SCOPED_TRACE(text + " by " + delimiter);
        char* next = text.data();
        ASSERT_EQ(text.data(), Convert::token(nullptr, nullptr, next));
        ASSERT_EQ(text.data(), Convert::token(text.data(), nullptr, next));
        std::string rest = text;
        for (char* at = text.data(); at != nullptr || next != nullptr; at = nullptr) {
            auto const end = std::min(rest.find(delimiter), rest.size());
            bool const last = delimiter.empty() || end + delimiter.size() >= rest.size();
            ASSERT_EQ(last ? rest : rest.substr(0, end),
                      Convert::token(at, delimiter.c_str(), next));
            ASSERT_EQ(last, next == nullptr);
            rest.erase(0, end + delimiter.size());
        }
        ASSERT_EQ(nullptr, Convert::token(nullptr, delimiter.c_str(), next));
    }
}

TEST(Convert, digitPairsAreDecodedWithoutValidation) {
    auto const value = [](char c) {
        auto const at = std::string("0123456789:;<=>?ABCDEFabcdef").find(c);
        return at == std::string::npos ? 0 : at < 16 ? at : 10 + (at - 16) % 6;
    };
    for (int i = 0; i <= 0xFFFF; ++i) {
        auto const high = static_cast<char>(i >> 8), low = static_cast<char>(i & 0xFF);
        ASSERT_EQ(value(high) * 16 + value(low), Convert::toByte(high, low)) << i;
    }
}

TEST(Convert, truthIsWhatAStreamReads) {
    std::vector<std::string> const pieces = {"true", "tRu",   "E", "t",    "1",    "1",
                                             "0",    "false", " ", "\t\n", "\v\f", "\r",
                                             "\x1F", "\xA0",  ".", {'\0'}};
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::string const& piece : drawText(pieces, 4)) {
            text += piece;
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

TEST(Convert, groupedFormAgreesWithAStream) {
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
