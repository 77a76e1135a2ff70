#include "Shown.h"

#include <cstdint>

#include <cstring>
#include <stdexcept>

#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

// Nothing becomes a parameter by accident, no pointer a bool, and no long where that is no type of
// its own.
static_assert(!std::is_convertible_v<int, Param> && !std::is_constructible_v<Param, void*> &&
              std::is_constructible_v<Param, char*> && !std::is_copy_assignable_v<Param> &&
              std::is_constructible_v<Param, long> == (sizeof(long) == 8) &&
              std::is_constructible_v<Param, unsigned long> == (sizeof(long) == 8));

Unit const units[] = {'a', 0x20AC, 0xFFFF, 0};
Binary16 const id(0x03020100u, 0x0504, 0x0706, 0x0F0E0D0C0B0A0908ull);
wchar_t const idText[] = L"0x0F0E0D0C0B0A09080706050403020100/03020100-0504-0706-0809-0a0b0c0d0e0f";

template <typename... T>
bool reads(Param const& p, T... values) {
    return ((p.getValue(values), std::memcmp(&values, &p.getData(), sizeof values) == 0) && ...);
}

void expectParam(Param const& param, eDataType type, Binary16 const& data,
                 std::wstring const& prints) {
    SCOPED_TRACE(prints);
    EXPECT_EQ(type, param.getDataType());
    EXPECT_TRUE(data == param.getData());
    EXPECT_EQ(type == DT_STRING || type == DT_STRINGRES ? prints : L"", param.getDataString());
    EXPECT_EQ(prints, text(param));
    EXPECT_EQ(prints, text(&param));
    EXPECT_TRUE(reads(param, Byte(9), short(9), Unit(9), 9, 9u, 9L, 9UL, 9LL, 9ULL, 9.f, 9., id));
    bool isSet = data[0] == 0;
    std::wstring wide = L"old";
    std::string narrow = "old";
    param.getValue(isSet), param.getValue(wide), param.getValue(narrow);
    EXPECT_TRUE(isSet == (data[0] != 0) && wide == param.getDataString() &&
                narrow == Convert::toAString(wide));
}

TEST(Param, keepsTypeAndBytesAndPrintsItsValue) {
    expectParam(Param(true), DT_BOOL, 1, L"1");
    expectParam(Param(Byte(0xC1)), DT_BYTE, 0xC1, L"193");
    expectParam(Param(short(-2)), DT_INT16, 0xFFFFFFFEu, L"-2");
    expectParam(Param(Unit(0xFFFE)), DT_UINT16, 0xFFFE, L"65534");
    expectParam(Param(-3), DT_INT32, 0xFFFFFFFDu, L"-3");
    expectParam(Param(0xFFFFFFFCu), DT_UINT32, 0xFFFFFFFCu, L"4294967292");
    expectParam(Param(std::int64_t(7)), DT_INT64, 7, L"7");
    expectParam(Param(std::uint64_t(7)), DT_UINT64, 7, L"7");
    expectParam(Param(-(1LL << 40)), DT_INT64, 0xFFFFFF0000000000ull, L"-1099511627776");
    expectParam(Param(1ULL << 63), DT_UINT64, 1ULL << 63, L"9223372036854775808");
    expectParam(Param(-3.5f), DT_FLOAT, 0xC0600000u, L"-3.5");
    expectParam(Param(0.1), DT_DOUBLE, 0x3FB999999999999Aull, L"0.1");
    expectParam(Param(Param(id)), DT_BINARY16, id, idText);
    Param const resource(ResString(id, std::wstring(L"a\u20AC")));
    expectParam(Param(resource), DT_STRINGRES, id, L"a\u20AC");
    EXPECT_EQ(L"<NONE>", text(static_cast<Param const*>(nullptr)));
}

TEST(Param, keepsTextsAsWideOnes) {
    std::wstring const withZero(L"a\0\u00FF", 3);
    expectParam(Param("a\xE9"), DT_STRING, {}, L"a\u00E9");
    expectParam(Param(std::string("a\0\xFF", 3)), DT_STRING, {}, withZero);
    expectParam(Param(std::string_view("a\0\xFF-", 3)), DT_STRING, {}, withZero);
    expectParam(Param(std::string_view()), DT_STRING, {}, L"");
    expectParam(Param(L"\U0001F600\u0100"), DT_STRING, {}, L"\U0001F600\u0100");
    expectParam(Param(withZero), DT_STRING, {}, withZero);
    expectParam(Param(std::wstring_view(L"a\0\u00FF-", 3)), DT_STRING, {}, withZero);
    expectParam(Param(std::wstring_view()), DT_STRING, {}, L"");
    expectParam(Param(units), DT_STRING, {}, L"a\u20AC\uFFFF");
    expectParam(Param(HLVString(units, 4)), DT_STRING, {}, std::wstring(L"a\u20AC\uFFFF\0", 4));
    expectParam(Param(static_cast<char const*>(nullptr)), DT_STRING, {}, L"");
    expectParam(Param(static_cast<Unit const*>(nullptr)), DT_STRING, {}, L"");
    EXPECT_EQ("HLVError::Param: the text is null",
              refusal<std::logic_error>([] { Param(static_cast<wchar_t const*>(nullptr)); }));
}

TEST(Param, followsTheFormatOfTheStream) {
    EXPECT_EQ(L"true", text(Param(true), ios::boolalpha));
    EXPECT_EQ(L"+65", text(Param(Byte(65)), ios::showpos));
    EXPECT_EQ(L"fffe", text(Param(short(-2)), ios::hex));
    EXPECT_EQ(L"9   ", text(Param(Unit(9)), ios::showpos | ios::left, 4));
    EXPECT_EQ(idText, text(Param(id), ios::oct | ios::showbase));
    EXPECT_EQ(L"  Error fffffffb", text(HLVError(-5), ios::hex, 8));
}

// Takes so many characters, then refuses or throws.
struct Sink : std::streambuf {
    int_type overflow(int_type c) override {
        return taken.size() < room ? (taken += static_cast<char>(c), c) : throws ? throw 1 : EOF;
    }
    std::size_t room = 0;
    bool throws = false;
    std::string taken;
};

// What is taken and how that ends. The bits of the way: the sink throws, so does a stream that
// fails or is broken, it flushes at once, it pads behind.
template <typename Value>
std::string outcome(Value const& value, std::size_t room, int width, int way) {
    Sink sink;
    sink.room = room;
    sink.throws = (way & 1) != 0;
    std::ostream stream(&sink);
    stream.exceptions((way & 2 ? ios::failbit : ios::goodbit) |
                      (way & 4 ? ios::badbit : ios::goodbit));
    stream.flags((way & 8 ? ios::unitbuf : ios::skipws) | (way & 16 ? ios::left : ios::right));
    stream.width(width);
    try {
        stream << value;
    } catch (int) {
        sink.taken += "thrown";
    } catch (ios::failure const&) {
        sink.taken += "failed";
    }
    return sink.taken + std::to_string(stream.rdstate());
}

TEST(Param, writesATextAsOneInsertionAlsoWhereItIsCut) {
    for (std::size_t const length : {0u, 1u, 255u, 256u, 257u, 512u, 513u, 700u}) {
        std::string const text(length, '\xE9');
        for (std::size_t const room : {0u, 255u, 256u, 257u, 600u, 699u, 700u, 9999u}) {
            for (int const width : {0, 256, 257, 520, 705}) {
                for (int way = 0; way < 32; ++way) {
                    ASSERT_EQ(outcome(text, room, width, way),
                              outcome(Param(text), room, width, way))
                        << length << " characters, width " << width << ", way " << way;
                }
            }
        }
    }
}

template <typename Char>
void expectNoAllocation(Param const& param) {
    std::basic_ostringstream<Char> stream;
    stream << param;
    stream.seekp(0);
    long const before = allocations();
    stream << param;
    EXPECT_EQ(before, allocations()) << param.getDataType() << " by " << sizeof(Char);
}

TEST(Param, printingAllocatesNothing) {
    for (Param const& param : {Param(true), Param(-7LL), Param(id), Param("a text of a length")}) {
        expectNoAllocation<char>(param);
        expectNoAllocation<wchar_t>(param);
    }
}

} // namespace
} // namespace Halvora::test
