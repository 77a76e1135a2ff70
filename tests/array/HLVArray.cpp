#include <Halvora/array/ArrayView.h>

#include <locale>
#include <malloc.h>
#include <random>
#include <sstream>
#include <string>

#include <tests/support/ArrayProgram.h>
#include <tests/support/Memory.h>

namespace Halvora::test {
namespace {

using A = HLVArray;
static_assert(std::is_nothrow_move_constructible_v<A> && std::is_nothrow_move_assignable_v<A>);

// The rules, each on an array of the shorts 10, 20, 30 and 40: a call, what it answers, what the
// array then holds.
struct Rule {
    char const* call;
    int (*act)(A& a);
    int answer;
    std::vector<short> left;
};
short const nines[] = {9, 9};
int const wrong[] = {9, 9};
#define CALL(call) #call, [](A & a) { return a.call; }
Rule const rules[] = {
    {CALL(setInt16(3,                   9)),           0,                   {10, 20, 30, 9}      },
    {CALL(setInt16(4,                   9)),           ERR_OUT_OF_RANGE,    {10, 20, 30, 40}     },
    {CALL(setInt32(3,                   9)),           ERR_WRONG_TYPE,      {10, 20, 30, 40}     },
    {CALL(setInt32(4,                   9)),           ERR_OUT_OF_RANGE,    {10, 20, 30, 40}     }, // the index comes first
    {CALL(setRangeInt16(1,              2,             nines)),             0,                     {10, 9, 9, 40}},
    {CALL(setRangeInt16(3,                                 2,                           nines)),             ERR_OUT_OF_RANGE, {10, 20, 30, 40}},
    {CALL(setRangeInt32(2,                 2,                              wrong)),                              ERR_WRONG_TYPE,                                  {10, 20, 30, 40}},
    {CALL(setRangeInt16(2,                   2,                nullptr)),      ERR_NULL_POINTER,{10, 20, 30, 40}},
    {CALL(setRangeInt32(9,                        0,      nullptr)),    0,                                                   {10, 20, 30, 40}}, // nothing to do
    {CALL(addInt16(50)),         0,        {10, 20, 30, 40, 50}                      },
    {CALL(addInt32(50)),                ERR_WRONG_TYPE,                    {10, 20, 30, 40}           },
    {CALL(add(a)),    0,{10, 20, 30, 40, 10, 20, 30, 40}},
    {CALL(removeRange(1, 2)),                                 0,                                              {10, 40}},
    {CALL(removeRange(3,                         2)),                                      ERR_OUT_OF_RANGE,{10, 20, 30, 40}          },
};

TEST(HLVArray, answersAndDoesWhatTheRulesSay) {
    for (Rule const& rule : rules) {
        A array({short(10), short(20), short(30), short(40)});
        EXPECT_EQ(rule.answer, rule.act(array)) << rule.call;
        auto const view = viewOf<short>(array);
        EXPECT_EQ(rule.left, std::vector<short>(view.begin(), view.end())) << rule.call;
    }
}

// Every pair of types in turn, and every allocation fails once.
TEST(HLVArray, randomProgramsKeepToTheModel) {
    auto const typeOf = [](unsigned int number) { return static_cast<eDataType>(number % 15 + 1); };
    long const blocks = liveBlocks();
    long failures = 0;
    for (unsigned int number = 0; number < 15 * 15 * 4; ++number) {
        std::mt19937 random(number);
        ArrayProgram program(
            typeOf(number), typeOf(number / 15),
            [&](unsigned int below) { return random() % below; }, failAllocation);
        for (int step = 0; step < 120; ++step) {
            ASSERT_TRUE(program.step()) << "program " << number << ", " << program.report();
        }
        failures += program.failedAllocations();
    }
    EXPECT_EQ(blocks, liveBlocks());
    EXPECT_LT(3000, failures);
}

// A run of the array's own texts, moved by one place, where two of three have to grow.
TEST(HLVArray, textsThatOverlapAreAssignedAllOrNone) {
    struct {
        Count from, to;
        unsigned int lengths[4];
    } const rows[] = {
        {0, 1, {40, 5, 60, 20}},
        {1, 0, {0, 30, 1, 50} }
    };
    for (auto const& row : rows) {
        std::vector<std::wstring> texts;
        for (unsigned int const length : row.lengths) {
            texts.emplace_back(length, static_cast<wchar_t>(L'a' + length % 26));
        }
        A const before(4, texts.data());
        auto const move = [&](A& a) {
            auto const own = viewOf<std::wstring>(a);
            EXPECT_EQ(0, a.setRangeString(row.to, 3, own.data() + row.from));
        };
        EXPECT_EQ(2, failEachAllocation([&] { return A(before); }, move,
                                        [&](A const& a) { EXPECT_EQ(before, a) << row.from; }));
        A array(before);
        move(array);
        std::vector<std::wstring> expected(texts);
        std::copy_n(texts.begin() + row.from, 3, expected.begin() + row.to);
        EXPECT_EQ(A(4, expected.data()), array) << row.from;
    }
}

#if defined(__GLIBC__) && !defined(__SANITIZE_THREAD__) // where realloc can be made to fail
struct NoMemory : std::bad_alloc {};
int asked = 0; // of the new-handler

TEST(HLVArray, numbersAskTheNewHandlerForMemory) {
    auto const askedBy = [](auto act) {
        asked = 0;
        failAllocation(1);
        EXPECT_EQ(0, act()) << asked;
        failAllocation(0);
        return asked;
    };
    A array({1, 2}), other({3, 4});
    std::new_handler const before = std::set_new_handler([] { ++asked; });
    EXPECT_EQ(1, askedBy([&] { return array.add(other); }));
#    if !defined(__OPTIMIZE__) // compilers make a first realloc a malloc, which cannot fail here
    EXPECT_EQ(1, askedBy([&] { return A(1.5) == A(1.5) ? 0 : 1; }));
#    endif
    std::set_new_handler([] { throw NoMemory(); });
    EXPECT_THROW(askedBy([&] { return array.add(array); }), NoMemory);
    std::set_new_handler(before);
    EXPECT_EQ(A({1, 2, 3, 4}), array);
}
#endif

// Whether a call compiles for the array `A`.
#define COMPILES(NAME, ...)                \
    template <typename A, typename = void> \
    constexpr bool NAME = false;           \
    template <typename A>                  \
    constexpr bool NAME<A, decltype(void(__VA_ARGS__))> = true;
COMPILES(ofNothing, A({}))
COMPILES(ofMixedNumbers, A({1, 2u}))
COMPILES(ofCountAndCharacter, A({3, L'x'}))
COMPILES(ofLiterals, A({L"a", L"b"}))
COMPILES(ofNarrowText, A({"x"}))
COMPILES(ofTypes, A({DT_INT32, DT_INT64}))
static_assert(!ofNothing<A> && !ofMixedNumbers<A> && !ofCountAndCharacter<A> && !ofLiterals<A> &&
              !ofNarrowText<A> && !ofTypes<A>);

TEST(HLVArray, bracesHoldTheElements) {
    std::vector<int> const ints{1, 2, 3};
    EXPECT_EQ(A(3, ints.data()), A({1, 2, 3}));
    EXPECT_EQ(A(3, ints.data()), (A{
                                     {1, 2, 3}
    }));
    EXPECT_EQ(A(5), A{5});
    EXPECT_TRUE(A({true, false}).getDataType() == DT_BOOL && A({0.5, 1.5}).getCount() == 2);
    std::wstring const x = L"x", yy = L"yy";
    EXPECT_TRUE(viewOf<std::wstring>(static_cast<A const&>(A({x, yy})))[1] == yy);
    // Braces of a text are still one.
    EXPECT_EQ(A(yy), A({L'y', L'y'}));
    EXPECT_EQ(A(yy), A({yy.begin(), yy.end()}));
    EXPECT_EQ(A(DT_INT32), A{DT_INT32});
}

#if __SIZEOF_LONG__ == 8
TEST(HLVArray, longIsTheIntegerOf64Bits) {
    long const longs[] = {-5, 5};
    unsigned long const ulongs[] = {~0ul, 5};
    EXPECT_TRUE(A(-5l) == A(-5ll) && A(~0ul) == A(~0ull) && A(2, longs) == A({-5ll, 5ll}) &&
                A(2, ulongs) == A({~0ull, 5ull}) && A({-5l, 5l}) == A(2, longs));
    A numbers({1ll, 2ll, 3ll}), counts({1ull, 2ull, 3ull}), ticks(A::createTick(3, ulongs));
    EXPECT_EQ(0, numbers.setRangeInt64(1, 2, longs) + counts.setRangeUInt64(1, 2, ulongs) +
                     ticks.setRangeTick(1, 2, ulongs));
    EXPECT_TRUE(numbers == A({1ll, -5ll, 5ll}) && counts == A({1ull, ~0ull, 5ull}));
    Count count = 7;
    long const* read = longs;
    unsigned long const* uread = ulongs;
    EXPECT_TRUE(counts.getInt64(count, read) == ERR_WRONG_TYPE &&
                ticks.getUInt64(count, uread) == ERR_WRONG_TYPE &&
                counts.getTick(count, uread) == ERR_WRONG_TYPE);
    EXPECT_TRUE(count == 7 && read == longs && uread == ulongs);
    EXPECT_TRUE(ticks.getTick(count, uread) == 0 && count == 3 && uread[1] == ~0ul);
}
#else // no element type is a `long`
COMPILES(ofLong, A(5l))
COMPILES(ofLongs, A(1, std::declval<long const*>()))
COMPILES(ofBracedLongs, A({5l, 5l}))
static_assert(!ofLong<A> && !ofLongs<A> && !ofBracedLongs<A>);
#endif

TEST(HLVArray, aFullArrayRefusesToGrowAndAnyArrayAForeignWidth) {
    forEachArrayRow([](auto row) {
        auto const v = row.value(7);
        Array a;
        a.init(65533, row.type);
        for (unsigned int const width : {0u, row.width() / 2, row.width() + 1}) {
            for (int const code :
                 {a._init(2, row.type, width), a._add(&v, row.type, width),
                  a._setIndex(2, &v, row.type, width), a._setRange(1, 1, &v, row.type, width),
                  a._set(1, &v, row.type, width)}) {
                EXPECT_EQ(ERR_WRONG_TYPE, code) << width;
            }
        }
        EXPECT_EQ(row.width() == 0 ? ERR_WRONG_TYPE : ERR_NULL_POINTER,
                  a._add(nullptr, row.type, row.width()));
        EXPECT_EQ(0, row.width() == 0 ? row.add(a, v) : a._add(&v, row.type, row.width()));
        EXPECT_EQ(0, a.add(row.create(v)));
        for (int const code : {row.add(a, v), a.add(row.create(v)), a.add(a), row.set(a, 65535, v),
                               row.setRange(a, 65535, 1, &v), row.setRange(a, 1, 65535, &v),
                               a.removeRange(1, 65535)}) {
            EXPECT_EQ(ERR_OUT_OF_RANGE, code);
        }
        ArrayModel full{row.type, Seeds(65533), true};
        full.seeds.resize(65535, 7);
        EXPECT_EQ("", full.differs(a));
    });
}

TEST(HLVArray, storageIsExactAndAppendsMoveTheTexts) {
    for (bool const removes : {true, false}) {
        Array a, other;
        auto const room = [&] { return malloc_usable_size(const_cast<void*>(a.getData())); };
        EXPECT_TRUE(a.init(999, DT_INT64) == 0 && a.addInt64(1) == 0 && room() < 8064);
        EXPECT_EQ(0, removes ? a.removeRange(5, 990) : a._set(10, a.getData(), DT_INT64, 8));
        other = std::move(a);
        a.swap(other);
        EXPECT_LE(8000, room());
        EXPECT_TRUE(a.addInt64(2) == 0 && room() < 152) << removes;
    }
    std::wstring const text(50, L'x');
    A texts(text);
    long const before = allocations();
    EXPECT_TRUE(texts.addString(text) == 0 && allocations() == before + 2); // storage and tail
}

TEST(HLVArray, equalityIsOfTypesAndBytes) {
    Binary16 const id(7);
    A drained(1);
    drained.removeRange(0, 1);
    EXPECT_TRUE(drained == A(DT_INT32) && A(id) != A::createID(id) && A(5ull) != A::createTick(5));
    EXPECT_TRUE(A(0.0f) != A(-0.0f) && A(std::stof("nan")) == A(std::stof("nan")));
    std::wstring const texts[] = {L"x", std::wstring(L"a\0b", 3), L"x", std::wstring(L"a\0c", 3)};
    EXPECT_TRUE(A(2, texts) != A(2, texts + 2) && A(2, texts) == A(A(2, texts)));
    int const ints[] = {1, 2, 1, 3};
    EXPECT_TRUE(A(2, ints) != A(2, ints + 2) && A(1, ints) != A(2, ints));
    EXPECT_EQ(A(ResString(id, std::wstring(L"a"))), A(ResString(id, std::wstring(L"b"))));
}

TEST(HLVArray, printsCountAndTypeByTheStreamsOwnIntegerOutput) {
    struct Grouping : std::numpunct<char> {
        std::string do_grouping() const override { return "\3"; }
    };
    A array(DT_VOID);
    array.init(12345, DT_STRINGRES);
    std::ostringstream out;
    out << A(DT_STRING) << ' ' << std::hex << std::showbase << array << ' ' << std::dec;
    out.imbue(std::locale(out.getloc(), new Grouping));
    out.width(8);
    out << array << ' ' << A(static_cast<eDataType>(-1));
    EXPECT_EQ("0; 11 0x3039; 0xf   12,345; 15 0; -1", out.str());
}

} // namespace
} // namespace Halvora::test
