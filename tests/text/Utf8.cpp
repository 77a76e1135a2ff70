#include <Halvora/text/Utf8.h>

#include <numeric>

#include <tests/support/Memory.h>
#include <tests/support/Utf8Reference.h>
#include <tests/text/Text.h>

namespace Halvora {

static bool operator==(Utf8Result const& a, Utf8Result const& b) {
    return a.replaced == b.replaced && a.position == b.position;
}
static std::ostream& operator<<(std::ostream& stream, Utf8Result const& result) {
    return stream << result.replaced << " replaced, from " << result.position;
}

namespace test {
namespace {

// The outputs keep what they held before.
struct Outputs {
    std::wstring wide;
    HLVString units;
    std::string bytes;

    bool decodes(std::string_view text) {
        Decoded const expected = slowDecode(text);
        return Utf8::toWString(wide, text) == expected.result &&
               Utf8::toHLVString(units, text) == expected.result &&
               wide == slowUnits<std::wstring>(expected.codes) &&
               units == slowUnits<HLVString>(expected.codes) &&
               Utf8::isValid(text) == (expected.result.replaced == 0);
    }
    bool encodes(std::wstring const& text) {
        Decoded const expected = slowDecodeUnits(text);
        return Utf8::fromWString(bytes, text) == expected.result &&
               bytes == slowEncode(expected.codes);
    }
    bool encodes(HLVString const& text) {
        Decoded const expected = slowDecodeUnits(text);
        return Utf8::fromHLVString(bytes, text) == expected.result &&
               bytes == slowEncode(expected.codes);
    }
};

TEST(Utf8, maximalSubpartsAreReplaced) {
    struct {
        char const* text;
        char const* expected; // U+FFFD as a question mark, U+00E9 as an e
        Utf8Result result;
    } const rows[] = {
        {"",                                  "",       {0, 0}},
        {"ab",                                "ab",     {0, 2}},
        {"a\xC3\xA9",                         "ae",     {0, 3}},
        {"a\xC0\xAFz",                        "a??z",   {2, 1}},
        {"\xE0\x80\xBFz",                     "???z",   {3, 0}},
        {"\xED\xA0\x80",                      "???",    {3, 0}},
        {"\xF4\x91\x92\x93\xFFz",             "?????z", {5, 0}},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBFz", "????z",  {4, 0}},
        {"a\xF0\x9F\x98",                     "a?",     {1, 1}},
    };
    for (auto const& [text, pattern, result] : rows) {
        std::wstring wide, expected;
        for (char const* c = pattern; *c != '\0'; ++c) {
            expected += *c == '?' ? L'\xFFFD' : *c == 'e' ? L'\xE9' : static_cast<wchar_t>(*c);
        }
        EXPECT_EQ(result, Utf8::toWString(wide, text)) << testing::PrintToString(text);
        EXPECT_EQ(expected, wide) << testing::PrintToString(text);
        EXPECT_TRUE(Outputs().decodes(text)) << testing::PrintToString(text);
    }
}

TEST(Utf8, everyCodePointIsConvertedBothWays) {
    Outputs out;
    for (unsigned long first = 0; first < 0x110100; first += 128) { // and some beyond
        std::vector<unsigned long> codes(128);
        std::iota(codes.begin(), codes.end(), first);
        auto const wide = slowUnits<std::wstring>(codes);
        bool const areCharacters = first < 0x110000 && (first < 0xD800 || first > 0xDFFF);
        ASSERT_TRUE(out.encodes(wide)) << "from U+" << std::hex << first;
        ASSERT_EQ(areCharacters, out.bytes == slowEncode(codes)) << "from U+" << std::hex << first;
        ASSERT_TRUE(out.decodes(slowEncode(codes))) << "from U+" << std::hex << first;
        ASSERT_EQ(areCharacters, out.wide == wide) << "from U+" << std::hex << first;
        auto const units = out.units;
        ASSERT_TRUE(out.encodes(units)) << "from U+" << std::hex << first;
    }
}

TEST(Utf8, everySequenceOfThreeBytesAndSomeOfFour) {
    Outputs out;
    for (unsigned n = 0; n < 0x10000 + 2000; ++n) {
        if ((n & 0x80) == 0) {
            continue; // ASCII before a shorter one
        }
        std::string text;
        for (unsigned last = 0; last < 256; ++last) {
            text += {static_cast<char>(n), static_cast<char>(n >> 8), static_cast<char>(last)};
            if (n >= 0x10000) { // another lead each
                text[text.size() - 3] = static_cast<char>(0xF0 + draw(5));
                text += {static_cast<char>(draw(256))};
            }
            text += "abcdefgh"[n & 7];
        }
        ASSERT_TRUE(out.decodes(text)) << "beginning with the bytes of " << std::hex << n;
        std::string_view const one(text.data(), 3); // with nothing behind it
        ASSERT_TRUE(n >= 0x10000 || out.decodes(one)) << testing::PrintToString(one);
    }
}

// Runs of one kind of character, of all lengths, with something else here and there.
TEST(Utf8, textsOfAllKindsAndLengths) {
    static constexpr unsigned ends[] = {0x80, 0x80, 0x250, 0x800, 0xFFFF, 0x110000, 0xFFFFFFFF};
    Outputs out;
    for (std::size_t length = 0; length < 1500; length += 1 + length / 40) {
        for (unsigned const end : ends) {
            std::vector<unsigned long> codes;
            std::wstring wide;
            HLVString units;
            while (wide.size() < length) {
                unsigned const code = draw(draw(9) == 0 ? 0x110000 : end);
                wide += static_cast<wchar_t>(code);
                units += static_cast<unsigned short>(draw(9) == 0 ? 0xD700 + draw(0xA00) : code);
                codes.push_back(code & 0xFFFFF);
            }
            std::string bytes = slowEncode(codes);
            for (auto damage = draw(3); damage > 0 && !bytes.empty(); --damage) {
                bytes[draw(bytes.size())] = static_cast<char>(draw(256));
            }
            ASSERT_TRUE(out.decodes(bytes)) << testing::PrintToString(bytes);
            ASSERT_TRUE(out.encodes(wide)) << testing::PrintToString(wide);
            ASSERT_TRUE(out.encodes(units)) << testing::PrintToString(units);
        }
    }
}

TEST(Utf8, oneAllocationAndNoneWithCapacity) {
    std::string text;
    for (unsigned i = 0; i < 1000; ++i) {
        text += slowEncode({0x20 + i, 0x4E00 + i, 0x1F600});
    }
    Outputs from;
    from.decodes(text);
    auto const check = [](char const* what, auto text_, auto convert, auto out) {
        for (long const expected : {1, 0}) {
            long const before = allocations();
            convert(out, text_);
            EXPECT_EQ(expected, allocations() - before) << what;
        }
        int const failures = failEachAllocation([] { return decltype(out)(); },
                                                [&](auto& fresh) { convert(fresh, text_); },
                                                [](auto& left) { left.assign(3, 'x'); });
        EXPECT_EQ(1, failures) << what;
    };
    check("toWString", text, Utf8::toWString, std::wstring());
    check("toHLVString", text, Utf8::toHLVString, HLVString());
    check("fromWString", from.wide, Utf8::fromWString, std::string());
    check("fromHLVString", from.units, Utf8::fromHLVString, std::string());
}

} // namespace
} // namespace test
} // namespace Halvora
