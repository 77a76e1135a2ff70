#include "Shown.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace Halvora::test {
namespace {

// Nothing becomes a parameter by accident, no pointer a bool, and no long where that is no type of
// its own.
static_assert(!std::is_convertible_v<int, Param> && !std::is_constructible_v<Param, void*> &&
              std::is_constructible_v<Param, char*> && !std::is_copy_assignable_v<Param>);
static_assert(std::is_constructible_v<Param, std::int64_t> &&
              std::is_constructible_v<Param, std::uint64_t> &&
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
    EXPECT_EQ(type, param.getDataType());
    EXPECT_TRUE(data == param.getData());
    EXPECT_EQ(type == DT_STRING || type == DT_STRINGRES ? prints : L"", param.getDataString());
    EXPECT_EQ(prints, text(param) /* by value */);
    EXPECT_EQ(prints, text(&param));
    EXPECT_EQ(prints, shown([&](auto& s) { EXPECT_EQ(&s, &(param << s)); }));
    EXPECT_TRUE(reads(param, Byte(9), short(9), Unit(9), 9, 9u, 9L, 9UL, 9LL, 9ULL, 9.f, 9., id));
    bool isSet = data[0] == 0;
    std::wstring wide = L"old";
    std::string narrow = "old";
    param.getValue(isSet);
    param.getValue(wide);
    param.getValue(narrow);
    EXPECT_EQ(data[0] != 0, isSet);
    EXPECT_EQ(param.getDataString(), wide);
    EXPECT_EQ(Convert::toAString(wide), narrow);
}

TEST(Param, keepsTypeAndBytesAndPrintsItsValue) {
    ResString const resource(id, std::wstring(L"a\u20AC"));
    struct {
        Param param;
        eDataType type;
        Binary16 data;
        std::wstring prints;
    } const rows[] = {
        {Param(true),             DT_BOOL,      1,                     L"1"                  },
        {Param(Byte(0xC1)),       DT_BYTE,      0xC1,                  L"193"                },
        {Param(short(-2)),        DT_INT16,     0xFFFFFFFEu,           L"-2"                 },
        {Param(Unit(0xFFFE)),     DT_UINT16,    0xFFFE,                L"65534"              },
        {Param(-3),               DT_INT32,     0xFFFFFFFDu,           L"-3"                 },
        {Param(0xFFFFFFFCu),      DT_UINT32,    0xFFFFFFFCu,           L"4294967292"         },
        {Param(std::int64_t(7)),  DT_INT64,     7,                     L"7"                  },
        {Param(std::uint64_t(7)), DT_UINT64,    7,                     L"7"                  },
        {Param(-(1LL << 40)),     DT_INT64,     0xFFFFFF0000000000ull, L"-1099511627776"     },
        {Param(1ULL << 63),       DT_UINT64,    1ULL << 63,            L"9223372036854775808"},
        {Param(-3.5f),            DT_FLOAT,     0xC0600000u,           L"-3.5"               },
        {Param(0.1),              DT_DOUBLE,    0x3FB999999999999Aull, L"0.1"                },
        {Param(id),               DT_BINARY16,  id,                    idText                },
        {Param(resource),         DT_STRINGRES, id,                    L"a\u20AC"            },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.prints);
        expectParam(row.param, row.type, row.data, row.prints);
        expectParam(Param(row.param), row.type, row.data, row.prints);
    }
    EXPECT_EQ(L"<NONE>", text(static_cast<Param const*>(nullptr)));
}

TEST(Param, keepsTextsAsWideOnes) {
    struct {
        Param param;
        std::wstring prints;
    } const rows[] = {
        {Param("a\xE9"),                   L"a\u00E9"                        },
        {Param(std::string("a\0\xFF",      3)),                                std::wstring(L"a\0\u00FF", 3)},
        {Param(std::string_view("a\0\xFF-",                              3)),                                                                std::wstring(L"a\0\u00FF", 3)},
        {Param(std::string_view()),L""},
        {Param(L"\U0001F600\u0100"),                                L"\U0001F600\u0100"                                         },
        {Param(std::wstring(L"a\0b",                                3)),                                                                                                std::wstring(L"a\0b", 3)},
        {Param(std::wstring_view(L"a\0b-",                                3)),std::wstring(L"a\0b", 3)},
        {Param(std::wstring_view()),            L""},
        {Param(units), L"a\u20AC\uFFFF"},
        {Param(HLVString(units,                              4)),                                                                std::wstring(L"a\u20AC\uFFFF\0", 4)},
        {Param(static_cast<char const*>(nullptr)),                  L""                                                                                                       },
        {Param(static_cast<Unit const*>(nullptr)),                L""                                                 },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.prints);
        expectParam(row.param, DT_STRING, {}, row.prints);
    }
    EXPECT_THROW(Param(static_cast<wchar_t const*>(nullptr)), std::logic_error);
}

TEST(Param, followsTheFormatOfTheStream) {
    EXPECT_EQ(L"true", text(Param(true), ios::boolalpha));
    EXPECT_EQ(L"+65", text(Param(Byte(65)), ios::showpos));
    EXPECT_EQ(L"fffe", text(Param(short(-2)), ios::hex));
    EXPECT_EQ(L"9   ", text(Param(Unit(9)), ios::showpos | ios::left, 4));
    EXPECT_EQ(idText, text(Param(id), ios::oct | ios::showbase));
}

TEST(Param, writesLongTextsAsOneInsertion) {
    for (std::size_t const length : {0u, 1u, 255u, 256u, 257u, 512u, 513u, 700u}) {
        std::wstring wide(length, L'A');
        for (std::size_t i = 0; i < length; i += 7) {
            wide[i] = L'\u20AC';
        }
        for (std::size_t const width : {0u, 256u, 257u, 520u, 705u}) {
            std::wstring const padding(std::max(width, length) - length, L' ');
            EXPECT_EQ(padding + wide, text(Param(wide), ios::right, width));
            EXPECT_EQ(wide + padding, text(Param(wide), ios::left, width));
        }
    }
}

// Takes so many characters, then refuses or throws. Cannot be flushed if it is stuck.
struct Sink : std::streambuf {
    Sink(std::size_t takes, bool isThrowing, bool isStuck)
        : room(takes), throws(isThrowing), stuck(isStuck) {}
    int_type overflow(int_type c) override {
        if (taken.size() == room) {
            return throws ? throw std::runtime_error("full") : traits_type::eof();
        }
        taken += static_cast<char>(c);
        return c;
    }
    int sync() override { return stuck ? -1 : 0; }
    std::size_t room;
    bool throws, stuck;
    std::string taken;
};

struct Outcome {
    std::string taken;
    ios::iostate state;
    bool hasThrown;
    bool operator==(Outcome const& other) const {
        return taken == other.taken && state == other.state && hasThrown == other.hasThrown;
    }
};

template <typename Value>
Outcome insert(Value const& value, Sink sink, ios::iostate exceptions, ios::fmtflags flags) {
    std::ostream stream(&sink);
    stream.exceptions(exceptions);
    stream.flags(flags);
    bool hasThrown = false;
    try {
        stream << value;
    } catch (std::exception const&) {
        hasThrown = true;
    }
    return {sink.taken, stream.rdstate(), hasThrown};
}

TEST(Param, leavesAFailingStreamAsOneInsertionDoes) {
    std::string const whole(700, 'A');
    for (std::size_t const room : {0u, 100u, 255u, 256u, 257u, 600u, 699u, 700u, 701u}) {
        for (int i = 0; i < 16; ++i) {
            bool const isFlushed = (i & 8) != 0, throwsBad = (i & 4) != 0;
            // Flushing fails only where that does not throw: it happens in a destructor.
            Sink const sink(room, i % 2 == 1, isFlushed && !throwsBad);
            auto const exceptions =
                (i & 2 ? ios::failbit : ios::goodbit) | (throwsBad ? ios::badbit : ios::goodbit);
            auto const flags = isFlushed ? ios::unitbuf : ios::fmtflags();
            EXPECT_TRUE(insert(whole, sink, exceptions, flags) ==
                        insert(Param(whole), sink, exceptions, flags))
                << "room " << room << ", case " << i;
        }
    }
}

TEST(Param, failedAllocationsLeakNothing) {
    std::wstring const wide = L"a long wide text";
    std::string const narrow(wide.begin(), wide.end());
    HLVString const hlv(wide.size(), 'x');
    auto const make = [&](int) {
        Param const params[] = {
            Param(narrow), Param(std::string_view(narrow)), Param(narrow.c_str()),
            Param(wide),   Param(std::wstring_view(wide)),  Param(wide.c_str()),
            Param(hlv),    Param(ResString(wide))};
        Param const copy(params[0]);
        std::wstring out;
        copy.getValue(out);
    };
    failsCleanly<int>("params", 8, make, [](int state) { return state; });
}

} // namespace
} // namespace Halvora::test
