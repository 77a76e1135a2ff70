#include <Halvora/array/ArrayView.h>

#include <iomanip>
#include <malloc.h>
#include <random>

#include <Halvora/array/detail/RawBlock.h>
#include <tests/support/ArrayProgram.h>
#include <tests/support/Memory.h>

#if defined(_WIN32)
#    define malloc_usable_size _msize
#endif

namespace Halvora {

// What a failed comparison shows of an array.
static void PrintTo(HLVArray const& array, std::ostream* out) {
    *out << HalvTypes::dataTypeToString(array.getDataType());
    test::forEachArrayRow([&](auto row) {
        for (auto const& value : viewOf<typename decltype(row)::Value>(array)) {
            row.type == array.getDataType() ? *out << ' ' << testing::PrintToString(value) : *out;
        }
    });
}

namespace test {
namespace {

using A = HLVArray;
static_assert(std::is_nothrow_move_constructible_v<A> && std::is_nothrow_move_assignable_v<A>);

// The rules: a call on an array of 10, 20, 30 and 40, what it answers, what the array then holds.
#define RULE(call, answer, ...)                \
    {                                          \
        A a({10, 20, 30, 40});                 \
        EXPECT_EQ(answer, a.call) << #call;    \
        EXPECT_EQ(A(__VA_ARGS__), a) << #call; \
    }
TEST(HLVArray, answersAndDoesWhatTheRulesSay) {
    int const nines[] = {9, 9};
    RULE(setInt32(3, 9), 0, {10, 20, 30, 9});
    RULE(setInt16(3, 9), ERR_WRONG_TYPE, {10, 20, 30, 40});
    RULE(setInt16(4, 9), ERR_OUT_OF_RANGE, {10, 20, 30, 40}); // the index is tested first
    RULE(setRangeInt32(1, 2, nines), 0, {10, 9, 9, 40});
    RULE(setRangeInt32(3, 2, nullptr), ERR_OUT_OF_RANGE, {10, 20, 30, 40});
    RULE(setRangeInt16(2, 2, nullptr), ERR_WRONG_TYPE, {10, 20, 30, 40});
    RULE(setRangeInt32(2, 2, nullptr), ERR_NULL_POINTER, {10, 20, 30, 40});
    RULE(setRangeInt16(9, 0, nullptr), 0, {10, 20, 30, 40}); // nothing to do
    RULE(addInt16(50), ERR_WRONG_TYPE, {10, 20, 30, 40});
    RULE(add(a), 0, {10, 20, 30, 40, 10, 20, 30, 40});
    RULE(removeRange(1, 2), 0, {10, 40});
    RULE(removeRange(3, 2), ERR_OUT_OF_RANGE, {10, 20, 30, 40});
}

// Every pair of types in turn, and every allocation fails once.
TEST(HLVArray, randomProgramsKeepToTheModel) {
    long const blocks = liveBlocks();
    long failures = 0;
    for (unsigned int number = 0; number < 15 * 15 * 4; ++number) {
        std::mt19937 random(number);
        auto const pick = [&](unsigned int below) { return random() % below; };
        Seeds const types{number % 15 + 1, number / 15 % 15 + 1};
        ArrayProgram program{types, pick, failAllocation};
        for (int step = 0; step < 120; ++step) {
            ASSERT_TRUE(program.step()) << "program " << number << ": " << program.report();
        }
        failures += program.failures;
    }
    EXPECT_EQ(blocks, liveBlocks());
    EXPECT_LT(3000, failures);
}

// A run of the array's own texts, moved by one place, where two of three have to grow.
TEST(HLVArray, textsThatOverlapAreAssignedAllOrNone) {
    std::wstring const a(40, L'a'), b = L"b", c(60, L'c'), d = L"d";
    for (bool const down : {false, true}) {
        A const before = down ? A({b, c, d, a}) : A({a, b, c, d});
        auto const move = [&](A& of) {
            of.setRangeString(down ? 0 : 1, 3, viewOf<std::wstring>(of).data() + (down ? 1 : 0));
        };
        EXPECT_EQ(2, failEachAllocation([&] { return A(before); }, move,
                                        [&](A const& left) { EXPECT_EQ(before, left); }));
        A array(before);
        move(array);
        EXPECT_EQ(down ? A({c, d, a, a}) : A({a, a, b, c}), array);
    }
}

#if defined(__GLIBC__) && !defined(__SANITIZE_THREAD__) // where realloc can be made to fail
TEST(HLVArray, numbersAskTheNewHandlerForMemory) {
    static int asked = 0;
    A array({1, 2});
    auto const old = std::set_new_handler([] { asked++ == 0 ? void() : throw std::bad_alloc(); });
    failAllocation(1);
    EXPECT_TRUE(array.addInt32(3) == 0 && array.add(array) == 0 && asked == 1);
    failAllocation(1);
    EXPECT_THROW(array.add(array), std::bad_alloc);
    std::set_new_handler(old);
    EXPECT_TRUE(array == A({1, 2, 3, 1, 2, 3}) && asked == 2);
}
#endif

template <typename Call>
constexpr bool compiles(Call) {
    return std::is_invocable_v<Call, A>;
}
#define MAKING(...) [](auto a) -> decltype(void(decltype(a)(__VA_ARGS__))) {}
static_assert(!compiles(MAKING({1, 2u})) && !compiles(MAKING({3, L'x'})));
static_assert(!compiles(MAKING({L"a", L"b"})) && !compiles(MAKING({})));
constexpr bool hasLong = __SIZEOF_LONG__ == 8; // or no element type is one
static_assert(compiles(MAKING({5l, 5l})) == hasLong && compiles(MAKING(5ul)) == hasLong);
static_assert(std::is_constructible_v<A, Count, unsigned long const*> == hasLong);

TEST(HLVArray, bracesHoldTheElements) {
    int const ints[] = {1, 2, 3};
    EXPECT_TRUE(A({1, 2, 3}) == A(3, ints) && A{5} == A(5) && A{DT_INT32} == A(DT_INT32));
    EXPECT_EQ(A(std::wstring(L"yy")), A({L'y', L'y'})); // still a text
    EXPECT_EQ(A(std::wstring(L"yy")), A({u'y', U'y'}));
}

#if __SIZEOF_LONG__ == 8
TEST(HLVArray, longIsTheIntegerOf64Bits) {
    long const longs[] = {-5, 5}, *read = longs;
    unsigned long const ulongs[] = {~0ul, 5, 6}, *uread = ulongs;
    A numbers(2, longs), counts(3, ulongs), ticks(A::createTick(3, ulongs));
    EXPECT_EQ(0, numbers.setRangeInt64(0, 1, longs + 1) + counts.setRangeUInt64(1, 2, ulongs));
    EXPECT_TRUE(numbers == A({5ll, 5ll}) && counts == A({~0ull, ~0ull, 5ull}));
    EXPECT_TRUE(A(5l) == A(5ll) && A(5ul) == A(5ull));
    Count count = 7;
    EXPECT_EQ(ERR_WRONG_TYPE, counts.getInt64(count, read));
    EXPECT_EQ(2 * ERR_WRONG_TYPE, ticks.getUInt64(count, uread) + counts.getTick(count, uread));
    EXPECT_TRUE(count == 7 && read == longs && uread == ulongs &&
                viewOf<long>(numbers).size() == 2);
    EXPECT_TRUE(ticks.setRangeTick(1, 2, ulongs) == 0 && ticks.getTick(count, uread) == 0);
    EXPECT_TRUE(count == 3 && uread[1] == ~0ul && uread[2] == 5);
}
#endif

static_assert(elementWidth(DT_VOID) + elementWidth(static_cast<eDataType>(16)) == 0);

TEST(HLVArray, aFullArrayRefusesToGrowAndAnyArrayAForeignWidth) {
    forEachArrayRow([](auto row) {
        auto const v = row.value(7);
        unsigned int const w = row.width();
        EXPECT_EQ(w, elementWidth(row.type)) << row.name;
        for (unsigned int const width : {w, 0u, w / 2, w + 1, w * 2}) {
            int const code = row.isText || width != w ? ERR_WRONG_TYPE : 0;
            Array a, one(row.type);
            a.init(3, row.type);
            EXPECT_EQ(code, one._add(&v, row.type, width));
            EXPECT_EQ(code == 0 ? row.create(v) : Array(row.type), one) << row.name << width;
            EXPECT_EQ(code == 0 ? w : 0, one.getByteSize()) << row.name << width;
            EXPECT_EQ(3 * code, a._add(&v, row.type, width) + a._setIndex(1, &v, row.type, width) +
                                    a._setRange(2, 1, &v, row.type, width));
            Seeds const seeds = code == 0 ? Seeds{0, 7, 7, 7} : Seeds(3);
            EXPECT_EQ("", (ArrayModel{row.type, seeds, true}).differs(a)) << row.name << width;
            EXPECT_EQ(code != 0 ? code : ERR_NULL_POINTER, a._add(nullptr, row.type, width));
            EXPECT_EQ(2 * code, a._init(2, row.type, width) + a._set(1, &v, row.type, width));
        }
        Array a;
        a.init(65534, row.type);
        EXPECT_EQ(0, a.add(row.create(v)) + a._setRange(9, 0, nullptr, row.type, 3));
        for (int const code :
             {row.add(a, v), a.add(row.create(v)), a.add(a), row.set(a, 65535, v),
              row.setRange(a, 65535, 1, &v), row.setRange(a, 1, 65535, &v),
              row.isText ? ERR_OUT_OF_RANGE : a._add(&v, row.type, row.width()),
              row.isText ? ERR_OUT_OF_RANGE : a._add(nullptr, row.type, row.width()),
              a.removeRange(1, 65535)}) {
            EXPECT_EQ(ERR_OUT_OF_RANGE, code) << row.name;
        }
    });
}

TEST(HLVArray, storageIsExactAfterAnAppend) {
    Array a;
    auto const room = [&] { return malloc_usable_size(const_cast<void*>(a.getData())); };
    for (bool const removes : {true, false}) {
        EXPECT_TRUE(a.init(999, DT_INT64) == 0 && a.addInt64(1) == 0 && room() < 8064);
        EXPECT_EQ(0, (removes ? a.removeRange(5, 990) : 0) + a._set(10, a.getData(), DT_INT64, 8));
        Array(std::move(a)).swap(a); // which takes the room along
        EXPECT_TRUE(room() >= 8000 && a.addInt64(2) == 0 && room() < 152) << removes;
    }
    EXPECT_TRUE(a._set(4, a.getData(), DT_INT16, 2) == 0 && viewOf<short>(a)[0] == 0); // its own
    for (unsigned short n = 1; n < 40; ++n) {
        takeLargestAllocation();
        EXPECT_EQ(0, a.init(n, DT_BYTE));
        EXPECT_GT(n + 2 * sizeof(void*), takeLargestAllocation()) << n;
    }
#ifndef HALVTYPES_EXACT_BLOCKS // one block of the C library holds many
    Array bytes(DT_BYTE);
    long const before = allocations();
    for (unsigned char i = 0; i < 160; ++i) {
        bytes.addByte(i);
    }
    EXPECT_GE(before + 1 + 160 / long(2 * sizeof(void*)), allocations());
#endif
}

TEST(HLVArray, equalityIsOfTypesAndBytes) {
    A drained(1);
    drained.removeRange(0, 1);
    EXPECT_TRUE(drained == A(DT_INT32) && A(5ull) != A::createTick(5));
    EXPECT_TRUE(A(0.0f) != A(-0.0f) && A(std::stof("nan")) == A(std::stof("nan")));
    std::wstring const x = L"x", ab(L"a\0b", 3), ac(L"a\0c", 3);
    EXPECT_TRUE(A({x, ab}) != A({x, ac}) && A({x, ab}) == A({x, ab}) && A({1, 2}) != A({1, 3}));
    EXPECT_EQ(A(ResString(Binary16(7), x)), A(ResString(Binary16(7), ab)));
}

TEST(HLVArray, printsCountAndTypeByTheStreamsOwnIntegerOutput) {
    std::ostringstream out;
    out << std::hex << std::setw(4) << A({true, false}) << ' ' << A(static_cast<eDataType>(-1));
    EXPECT_EQ("   2; 1 0; ffffffff", out.str());
}

} // namespace
} // namespace test
} // namespace Halvora
