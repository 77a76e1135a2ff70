#include <Halvora/text/Convert.h>
#include <Halvora/text/Utf8.h>

#include <Halvora/text/detail/Encoding.h>

#include <tests/support/Memory.h>
#include <tests/text/Text.h>

#ifdef HALV_LONG_RUNS
#    include <Halvora/text/detail/LongX86.h>
#endif

namespace Halvora::test {
namespace {

static_assert(!std::is_aggregate_v<Convert> && !std::is_default_constructible_v<Convert>);
static_assert(std::is_invocable_v<decltype(&Convert::toBool), std::string>); // has no overload

TEST(Convert, encodingsByExample) {
    std::tuple<wchar_t, char, unsigned short> const rows[] = {
        {L'\0',                '\0',                             0     },
        {0xFF,                 '\xFF',                           0xFF  },
        {0x100,                ' ',                              0x100 }, // narrow text does not have it
        {wideUnit(0x10041)[0], sizeof(wchar_t) == 2 ? 'A' : ' ', 'A'   }, // cut to 16 bits
        {WCHAR_MAX,            ' ',                              0xFFFF},
    };
    for (auto const& [wide, narrow, unit] : rows) {
        HLVString units(3, 'x');
        Convert::toHLVString(units, std::wstring(2, wide));
        EXPECT_EQ(HLVString(2, unit), units) << unit;
        EXPECT_EQ(std::string(2, narrow), Convert::toAString(std::wstring(2, wide))) << unit;
    }
}

// Conversions that do the same, at every length, against one element after the other.
template <typename To, typename From>
void checkEncoding(std::initializer_list<void (*)(To&, From const&)> conversions) {
    for (unsigned length = 0, unit = 0; length < 4500; length += 1 + length / 1031 * 500) {
        From source;
        To expected;
        while (source.size() < length) { // every 16-bit unit in turn, or anything
            auto const value = static_cast<std::make_unsigned_t<typename From::value_type>>(
                draw(2) == 0 ? unit++ : draw(~0u) >> draw(32));
            bool const lost = sizeof expected[0] == 1 && value > 0xFF;
            source += static_cast<typename From::value_type>(value);
            expected += static_cast<typename To::value_type>(lost ? 0x20 : value);
        }
        To out(draw(2 * length + 30), 'x');
        for (auto const convert : conversions) {
            bool const hasRoom = out.capacity() >= length && convert == *conversions.begin();
            long const before = allocations();
            convert(out, source);
            ASSERT_LE(allocations(), before + (hasRoom ? 0 : 1)) << __PRETTY_FUNCTION__;
            ASSERT_TRUE(same(expected, out)) << shown(source) << __PRETTY_FUNCTION__;
            out.resize(draw(out.size() + 1)); // with capacity to spare
        }
    }
}

TEST(Convert, everyElementIsConvertedByItselfAtEveryLength) {
    auto const toWide = [](auto& out, auto const& in) { Convert::toWString(out, in); };
    auto const toNewWide = [](auto& out, auto const& in) { out = Convert::toWString(in); };
    auto const toNewNarrow = [](auto& out, auto const& in) { out = Convert::toAString(in); };
    auto const toNarrow = [](auto& out, auto const& in) {
        Convert::toAString(out, static_cast<unsigned>(in.size()), in.data());
    };
    auto const toUnits = [](auto& out, auto const& in) { Convert::toHLVString(out, in); };
    auto const seenWide = [](auto& out, auto const& in) { Convert::toWString(out, viewOf(in)); };
    auto const seenNarrow = [](auto& out, auto const& in) { Convert::toAString(out, viewOf(in)); };
    auto const seenUnits = [](auto& out, auto const& in) { Convert::toHLVString(out, viewOf(in)); };
    auto const newSeen = [](auto& out, auto const& in) { out = Convert::toAString(viewOf(in)); };
    auto const newWide = [](auto& out, auto const& in) { out = Convert::toWString(viewOf(in)); };
    checkEncoding<std::wstring, HLVString>({toWide, toWide, toNewWide});
    checkEncoding<std::wstring, std::string>({toWide, toWide, toNewWide, seenWide, newWide});
    checkEncoding<std::string, HLVString>({toNarrow, toNarrow, toNewNarrow});
    checkEncoding<std::string, std::wstring>(
        {toNarrow, toNarrow, toNewNarrow, seenNarrow, newSeen});
    checkEncoding<HLVString, std::wstring>({toUnits, toUnits, seenUnits});
    checkEncoding<HLVString, std::string>({toUnits, toUnits, seenUnits});
}

// Short texts and long ones, into outputs without and with memory of their own.
template <typename Out, typename In>
void checkWithoutMemory(void (*convert)(Out&, In const&)) {
    for (unsigned const length : {24u, 256u, 3000u}) { // no string holds these itself
        for (std::size_t const before : {0u, 10u}) {
            In const in(length, 'a');
            EXPECT_EQ(1, failEachAllocation([&] { return Out(before, 'x'); },
                                            [&](Out& out) { convert(out, in); },
                                            [&](Out& out) {
                                                EXPECT_LE(out.size(), out.capacity());
                                                convert(out, In(2, 'b'));
                                                EXPECT_TRUE(same(Out(2, 'b'), out));
                                            }))
                << length << " into " << before << ' ' << __PRETTY_FUNCTION__;
        }
    }
}

TEST(Convert, anOutputWithoutMemoryCanBeUsedAgain) {
    checkWithoutMemory<std::wstring, std::string>(Convert::toWString);
    checkWithoutMemory<HLVString, std::string>(Convert::toHLVString);
    checkWithoutMemory<std::string, HLVString>([](auto& out, auto& in) {
        Convert::toAString(out, static_cast<unsigned>(in.size()), in.data());
    });
    checkWithoutMemory<std::wstring, std::string>(
        [](auto& out, auto& in) { Utf8::toWString(out, in); });
    checkWithoutMemory<HLVString, std::string>(
        [](auto& out, auto& in) { Utf8::toHLVString(out, in); });
    checkWithoutMemory<std::string, HLVString>(
        [](auto& out, auto& in) { Utf8::fromHLVString(out, in); });
}

#ifdef HALV_LONG_RUNS

// Each way of converting, on whatever processor has it, at every length, a long one too, and every
// place in a line of the cache; the elements around stay as they are.
template <typename To, typename From>
void checkRuns() {
    auto const blocks = [](auto... run) { detail::convertBlocks(run...); };
    auto const avx2 = [](auto... run) { detail::convertRunAvx2(run..., detail::replacement); };
    auto const avx512 = [](auto... run) {
        if constexpr (sizeof(To) > sizeof(From)) {
            detail::convertRunAvx512(run...);
        }
    };
    bool const widens = sizeof(To) > sizeof(From);
    bool const hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    bool const hasAvx512 = __builtin_cpu_supports("avx512bw") != 0;
    constexpr std::size_t step = detail::longStep<To>;
    struct {
        char const* name;
        bool isThere;
        std::size_t least;
        void (*convert)(To*, From const*, std::size_t);
    } const ways[] = {
        {"plain",   true,                0,    blocks},
        {"AVX2",    hasAvx2,             step, avx2  },
        {"AVX-512", widens && hasAvx512, step, avx512},
    };
    for (auto const& way : ways) {
        for (std::size_t more = 0; way.isThere && more <= 150; ++more) {
            std::size_t const length = way.least + (more < 150 ? more : 70000);
            std::size_t const place = draw(64);
            std::vector<From> source(place + length + 1);
            std::vector<To> out(place + length + 64, To(120)), expected = out;
            for (std::size_t i = place; i < place + length; ++i) {
                source[i] = static_cast<From>(draw(~0u) >> draw(32));
                expected[i] = detail::convertElement<To>(source[i]);
            }
            way.convert(&out[place], &source[place], length);
            ASSERT_TRUE(same(expected, out))
                << way.name << ", " << length << " elements, " << __PRETTY_FUNCTION__;
        }
    }
}

TEST(Convert, everyKindOfRegisterGivesTheSame) {
    checkRuns<wchar_t, char>();
    checkRuns<unsigned short, char>();
    checkRuns<wchar_t, unsigned short>();
    checkRuns<unsigned short, wchar_t>();
    checkRuns<char, unsigned short>();
    checkRuns<char, wchar_t>();
}

#endif

TEST(Convert, pointersAreReadToTheFirstZeroAndNullNotAtAll) {
    auto const widened = [](auto const* text, std::wstring out = L"old") {
        return Convert::toWString(out, text), out;
    };
    auto const narrowed = [](auto text, std::string out = "old") {
        return Convert::toAString(out, 3, text), out;
    };
    EXPECT_EQ(L"a", widened(HLVString{'a', 0, 'b'}.c_str()));
    EXPECT_EQ(L"\xE9", widened("\xE9\0b"));
    EXPECT_EQ(L"", widened(static_cast<char const*>(nullptr)));
    EXPECT_EQ(L"", widened(static_cast<unsigned short const*>(nullptr)));
    EXPECT_EQ(std::string("a\0b", 3), narrowed(L"a\0b"));
    EXPECT_EQ("", narrowed(nullptr));
    EXPECT_EQ("", narrowed(static_cast<wchar_t const*>(nullptr)) +
                      narrowed(static_cast<unsigned short const*>(nullptr)));
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

TEST(Convert, typesHaveMixedCaseNames) {
    std::string names;
    for (int type = -1; type <= 16; ++type) {
        names += Convert::toAString(static_cast<eDataType>(type)) + "/";
    }
    EXPECT_EQ(names, "//Bool/Byte/Int16/Int32/Int64/UInt16/UInt32/UInt64/Float/Double/String/Tick/"
                     "ID/Binary16/ResString//");
}

} // namespace
} // namespace Halvora::test
