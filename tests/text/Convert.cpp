#include <Halvora/text/Convert.h>

#include <Halvora/text/ResString.h>
#include <Halvora/text/ResString2.h>
#include <Halvora/text/VarChar.h>
#include <tests/support/Memory.h>
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
        {L"a\x100",   "a ",       L"a\x100",   "a "      },
        {L"\x20AC",   " ",        L"\x20AC",   " "       },
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
        EXPECT_TRUE(same(Convert::toWString(narrow), Convert::toWString(fromNarrow)));
    }
}

// `convert(out, source)` at every length, against one element after the other.
template <typename To, typename From, typename Function>
void checkEncoding(Function convert) {
    for (unsigned length = 0, unit = 0; length <= 1031; ++length) {
        From source;
        To expected, out(draw(2 * length + 30), 'x');
        while (source.size() < length) { // bytes, every 16-bit unit in turn, anything
            unsigned const any = draw(~0u) & (0xFFu << draw(25) | 0xFFu);
            unsigned const drawn = draw(2) == 0 ? draw(256) : draw(2) == 0 ? unit++ : any;
            auto const value = static_cast<std::make_unsigned_t<typename From::value_type>>(drawn);
            bool const lost = sizeof expected[0] == 1 && value > 0xFF;
            source += static_cast<typename From::value_type>(value);
            expected += static_cast<typename To::value_type>(lost ? 0x20 : value);
        }
        out.resize(draw(out.size() + 1)); // with capacity to spare
        for (std::size_t const before : {out.size(), source.size()}) {
            out.resize(before, 'x');
            convert(out, source);
            ASSERT_TRUE(same(expected, out)) << shown(source) << __PRETTY_FUNCTION__;
        }
    }
}

TEST(Convert, everyElementIsConvertedByItselfAtEveryLength) {
    auto const toWide = [](auto& out, auto const& in) {
        std::wstring none = out, ended = out;
        Convert::toWString(none, decltype(in.c_str())()); // null
        Convert::toWString(ended, in.c_str());
        Convert::toWString(out, in);
        EXPECT_EQ(out.substr(0, in.find('\0')), none + ended);
        EXPECT_EQ(Convert::toWString(in), out);
    };
    auto const toNarrow = [](auto& out, auto const& in) {
        std::string none = out, null = out;
        Convert::toAString(none, 5, decltype(in.c_str())());
        Convert::toAString(null, 5, nullptr);
        Convert::toAString(out, static_cast<unsigned>(in.size()), in.data());
        EXPECT_EQ(Convert::toAString(in), none + null + out);
    };
    auto const toUnits = [](auto& out, auto const& in) { Convert::toHLVString(out, in); };
    checkEncoding<std::wstring, HLVString>(toWide);
    checkEncoding<std::wstring, std::string>(toWide);
    checkEncoding<std::string, HLVString>(toNarrow);
    checkEncoding<std::string, std::wstring>(toNarrow);
    checkEncoding<HLVString, std::wstring>(toUnits);
    checkEncoding<HLVString, std::string>(toUnits);
}

// An output that is new takes so many allocations, each of which may fail; a used one none.
template <typename Out, typename Into>
void expectAllocations(int expected, Out used, Into into) {
    auto const count = [&](Out const& before) {
        return failEachAllocation([&] { return before; }, into, [](Out&) {});
    };
    EXPECT_EQ(expected, count(Out())) << __PRETTY_FUNCTION__;
    long const before = allocations();
    into(used);
    EXPECT_EQ(before, allocations()) << __PRETTY_FUNCTION__;
}

TEST(Convert, aResultIsOneAllocationWhichMayFail) {
    std::string const narrow(5000, 'x');
    std::wstring const wide(5000, L'x');
    HLVString const units(5000, 'x');
    ResString const res(wide);
    VarChar const varChar(wide);
    auto const toWide = [&](auto into) { expectAllocations(1, wide, into); };
    toWide([&](auto& out) { Convert::toWString(out, units); });
    toWide([&](auto& out) { Convert::toWString(out, narrow.c_str()); });
    toWide([&](auto& out) { res.toWStr(out); });
    toWide([&](auto& out) { varChar.wstr(out); });
    expectAllocations(1, narrow, [&](auto& out) { Convert::toAString(out, 5000, wide.data()); });
    expectAllocations(1, narrow, [&](auto& out) { res.toStr(out); });
    expectAllocations(1, units, [&](auto& out) { Convert::toHLVString(out, wide); });
    auto const act = [](auto make) { // a new result; no output is used again
        return failEachAllocation([] { return 0; }, [&](int) { make(); }, [](int) {});
    };
    EXPECT_EQ(1, act([&] { Convert::toAString(wide); }));
    EXPECT_EQ(1, act([&] { Convert::toWString(Binary16()); }));
    EXPECT_EQ(1, act([&] { ResString2({}, narrow.c_str()); }));
    EXPECT_EQ(1, act([&] { ResString2({}, units); }));
}

TEST(Convert, digitPairsAreDecodedWithoutValidation) {
    std::string const digits = "0123456789:;<=>?ABCDEFabcdef";
    auto const value = [&digits](char c) {
        auto const at = digits.find(c);
        return at == std::string::npos ? 0 : at < 16 ? at : 10 + (at - 16) % 6;
    };
    for (int i = 0; i <= 0xFFFF; ++i) {
        auto const high = static_cast<char>(i >> 8), low = static_cast<char>(i & 0xFF);
        ASSERT_EQ(value(high) * 16 + value(low), Convert::toByte(high, low)) << i;
    }
}

TEST(Convert, truthIsOneOrBeginsWithTrue) {
    for (char const* const text : {"1", "true", "TrUe", " \t\n\v\f\rtrue", "true.", "TRUEST"}) {
        EXPECT_TRUE(Convert::toBool(text)) << text;
    }
    for (char const* const text : {"", "0", "1 ", " 1", "11", "tru", "t", "yes", "xtrue",
                                   "\xA0true", "\x1Ftrue", "\x08true"}) {
        EXPECT_FALSE(Convert::toBool(text)) << text;
    }
}

TEST(Convert, groupedFormShowsThreeNumbersAndTheLastEightBytes) {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    EXPECT_EQ("12345678-9abc-def0-0807-060504030201", Convert::toAString(id));
    EXPECT_EQ(L"12345678-9abc-def0-0807-060504030201", Convert::toWString(id));
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
