#include <Halvora/text/Utf8.h>

#include <numeric>
#include <vector>

#include <Halvora/text/detail/Ascii.h>
#include <tests/support/Memory.h>
#include <tests/support/Utf8Reference.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

TEST(Utf8, replacesWhatIsIllFormedAndNothingElse) {
    struct {
        std::string bytes;
        std::wstring text;
        std::size_t replaced, position;
    } const rows[] = {
        {"",                   L"",                           0, 0},
        {"a\xC3\xA9",          L"a\u00E9",                    0, 3},
        {"\xEF\xBB\xBFz",      L"\uFEFFz",                    0, 4}, // a byte order mark
        {"\xF0\x9F\x98\x80",   L"\U0001F600",                 0, 4},
        {{"\0\x7F", 2},        {L"\0\x7F", 2},                0, 2},
        {"\xC0\x80",           L"\uFFFD\uFFFD",               2, 0}, // a zero, too long
        {"\xED\xA0\x80",       L"\uFFFD\uFFFD\uFFFD",         3, 0}, // a surrogate
        {"ab\xF4\x90\x80\x80", L"ab\uFFFD\uFFFD\uFFFD\uFFFD", 4, 2}, // U+110000
        {"\xE2\x82",           L"\uFFFD",                     1, 0}, // cut off
        {"a\xF0\x9F\x98z\xFF", L"a\uFFFDz\uFFFD",             2, 1},
    };
    Utf8Outputs out;
    for (auto const& [bytes, text, replaced, position] : rows) {
        Utf8Result const result = Utf8::toWString(out.wide, bytes);
        EXPECT_TRUE(out.wide == text && result == (Utf8Result{replaced, position}))
            << testing::PrintToString(bytes) << " gives " << shown(out.wide) << ", "
            << result.replaced << " replaced from " << result.position;
        EXPECT_TRUE(out.decodes(bytes) && out.encodes(text) &&
                    (replaced != 0 || out.bytes == bytes))
            << testing::PrintToString(bytes);
    }
}

TEST(Utf8, everyCodePointIsConvertedBothWays) {
    Utf8Outputs out;
    for (unsigned long first = 0; first < 0x110100; first += 128) { // and some beyond
        std::vector<unsigned long> codes(128);
        std::iota(codes.begin(), codes.end(), first);
        auto const wide = slowUnits<std::wstring>(codes);
        bool const areCharacters = first < 0x110000 && (first < 0xD800 || first > 0xDFFF);
        ASSERT_TRUE(out.encodes(wide)) << "from U+" << std::hex << first;
        ASSERT_EQ(areCharacters, out.bytes == slowEncode(codes)) << "from U+" << std::hex << first;
        ASSERT_TRUE(out.decodes(slowEncode(codes))) << "from U+" << std::hex << first;
        ASSERT_EQ(areCharacters, out.wide == wide) << "from U+" << std::hex << first;
        ASSERT_TRUE(out.encodes(HLVString(out.units))) << "from U+" << std::hex << first;
    }
}

TEST(Utf8, everyLeadBeforeBytesAtTheBounds) {
    std::string const at("\0A\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xE0\xED\xF0\xFF", 15);
    Utf8Outputs out;
    for (int lead = 0x7F; lead < 0x100; ++lead) {
        std::string all;
        for (unsigned n = 0; n < 15 * 15 * 15; ++n) {
            std::string const one = {char(lead), at[n / 225], at[n / 15 % 15], at[n % 15]};
            ASSERT_TRUE(out.decodes(one.substr(0, 1 + n % 4))) << testing::PrintToString(one);
            all += one + 'a';
        }
        ASSERT_TRUE(out.decodes(all)) << "with the lead " << lead;
    }
}

// Runs of one kind of character, of all lengths, with something else here and there.
TEST(Utf8, textsOfAllKindsAndLengths) {
    static constexpr unsigned ends[] = {0x80, 0x80, 0x250, 0x800, 0xFFFF, 0x110000, 0xFFFFFFFF};
    Utf8Outputs out;
    for (std::size_t length = 0; length < 1500; length += 1 + length / 40) {
        for (unsigned const end : ends) {
            std::vector<unsigned long> codes;
            std::wstring wide;
            HLVString units;
            while (wide.size() < length) {
                // Among them some of each length.
                unsigned const code = draw(9) == 0 ? draw(0x110000) >> draw(15) : draw(end);
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
    EXPECT_TRUE(out.decodes({})) << "of another length before";
}

// Longer than all buffers on the stack, into a new output and into one with an element for each.
TEST(Utf8, longAsciiAndOneThatIsNone) {
    for (std::size_t const length : {128u, 2049u, 8193u, 70000u}) {
        for (std::size_t const at : {length, length - 1, length / 2, std::size_t{0}}) {
            std::wstring wide(length, L'a');
            for (std::size_t i = 0; i < length; ++i) {
                wide[i] = i == at ? L'\xE9' : static_cast<wchar_t>(i % 128);
            }
            HLVString const units(wide.begin(), wide.end());
            std::string const bytes = slowEncode({wide.begin(), wide.end()});
            Utf8Outputs out, other;
            for (int run = 0; run < 2; ++run) {
                ASSERT_TRUE(out.decodes(bytes) && out.encodes(wide) && other.encodes(units))
                    << length << " elements, beyond ASCII: " << at;
                out.decodes(std::string(bytes.size(), 'a'));
                out.encodes(std::wstring(length, L'a'));
                other.encodes(HLVString(length, 'a'));
            }
        }
    }
}

TEST(Utf8, theLastByteDecidesAtEveryLength) {
    Utf8Outputs out;
    for (std::size_t length = 0; length < 600; ++length) {
        std::string const text(length, 'a');
        ASSERT_TRUE(Utf8::isValid(text) && !Utf8::isValid(text + '\xFF')) << length;
        for (char const* const cut : {"\xC3", "\xE4", "\xE4\xB8", "\xF0\x9F\x98"}) {
            bool const alone = out.decodes(text + cut), asPart = out.decodes(text + cut);
            ASSERT_TRUE(alone && asPart) << length << " before " << testing::PrintToString(cut);
        }
    }
}

TEST(Utf8, oneAllocationAndNoneWithCapacity) {
    std::vector<unsigned long> codes(2000, 0x1F600);
    for (unsigned i = 0; i < 1000; ++i) {
        codes.insert(codes.end(), {0x20 + i, 0x4E00 + i});
    }
    auto const check = [](auto const& text, auto convert, auto out) {
        for (long const most : {1, 0}) {
            long const before = allocations();
            convert(out, text);
            EXPECT_EQ(before + most, allocations()) << __PRETTY_FUNCTION__;
        }
        // The length is known before, but for pairs, which count as two characters.
        std::size_t const pairs = sizeof text[0] == 2 ? 2000 : 0;
        EXPECT_LE(out.capacity(), out.size() + 2 * pairs + 16 / sizeof out[0])
            << __PRETTY_FUNCTION__;
    };
    for (unsigned more = 0; more < 16; ++more) { // each way to end beside a register
        check(slowEncode(codes), Utf8::toWString, std::wstring());
        check(slowEncode(codes), Utf8::toHLVString, HLVString());
        check(slowUnits<std::wstring>(codes), Utf8::fromWString, std::string());
        check(slowUnits<HLVString>(codes), Utf8::fromHLVString, std::string());
        codes.push_back(more % 3 == 0 ? 0x1F600 : 0x4E00 + more);
    }
}

#ifdef HALV_LONG_RUNS

// Each way of copying ASCII, on whatever processor has it, at every length and place in a line of
// the cache. Half of the texts have one element beyond ASCII, by one bit.
template <typename To, typename From>
void checkAscii() {
    auto const avx512 = [](auto... run) {
        if constexpr (sizeof(From) == 1) {
            return detail::copyAsciiAvx512(run...);
        }
        return false;
    };
    struct {
        char const* name;
        bool isThere;
        bool (*copy)(To*, From const*, std::size_t);
    } const ways[] = {
        {"plain",   true,                                                         [](auto... run) { return detail::copyAsciiBlocks(run...); }},
        {"AVX2",    __builtin_cpu_supports("avx2") != 0,
         [](auto... run) { return detail::copyAsciiAvx2(run...); }                                                                           },
        {"AVX-512", __builtin_cpu_supports("avx512bw") != 0 && sizeof(From) == 1, avx512                                                     },
    };
    for (auto const& way : ways) {
        for (std::size_t length = 32; way.isThere && length < 300; ++length) {
            std::size_t const place = draw(64);
            std::vector<From> source(place + length);
            std::vector<To> out(place + length + 64, To(120)), expected = out;
            for (std::size_t i = place; i < place + length; ++i) {
                source[i] = static_cast<From>(draw(128));
                expected[i] = static_cast<To>(source[i]);
            }
            bool const isAscii = length % 2 == 0;
            if (!isAscii) {
                source[place + draw(static_cast<unsigned>(length))] =
                    static_cast<From>(0x80u << draw(8 * sizeof(From) - 7));
            }
            ASSERT_EQ(isAscii, way.copy(&out[place], &source[place], length))
                << way.name << ", " << length << " elements, " << __PRETTY_FUNCTION__;
            ASSERT_TRUE(!isAscii || expected == out)
                << way.name << ", " << length << " elements, " << __PRETTY_FUNCTION__;
        }
    }
}

TEST(Utf8, asciiIsTheSameInEveryKindOfRegister) {
    checkAscii<wchar_t, unsigned char>();
    checkAscii<unsigned short, unsigned char>();
    checkAscii<char, wchar_t>();
    checkAscii<char, unsigned short>();
}

#endif

} // namespace
} // namespace Halvora::test
