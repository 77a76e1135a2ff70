#include <Halvora/array/ArrayView.h>

#include <locale>
#include <malloc.h>
#include <random>
#include <sstream>
#include <tuple>
#include <vector>

#include <tests/support/Memory.h>

namespace Halvora::test {
namespace {

using A = HLVArray;
using Count = unsigned short;
using U64 = unsigned long long;
static_assert(std::is_nothrow_move_constructible_v<A> && std::is_nothrow_move_assignable_v<A>);

// An array whose internal operations are in reach.
struct Array : HLVArray {
    using HLVArray::_add, HLVArray::_init, HLVArray::_set, HLVArray::_setIndex, HLVArray::_setRange;
    using HLVArray::HLVArray, HLVArray::operator=;
    Array() : HLVArray(DT_VOID) {}
};

constexpr auto isText = [](eDataType type) { return type == DT_STRING || type == DT_STRINGRES; };
template <typename T> // what setters and adders take
using Passed = std::conditional_t<std::is_integral_v<T> && sizeof(T) <= 4, T, T const&>;

// The operations of one element type.
template <eDataType Type, typename T, int (A::*Set)(Count, Passed<T>), int (A::*Add)(Passed<T>),
          int (A::*SetRange)(Count, Count, T const*), int (A::*Get)(Count&, T const*&) const>
struct Row {
    static constexpr eDataType type = Type;
    static constexpr unsigned int width = isText(Type) ? 0 : sizeof(T); // bytes
    static int set(A& a, Count index, T const& value) { return (a.*Set)(index, value); }
    static int add(A& a, T const& value) { return (a.*Add)(value); }
    static int setRange(A& a, Count i, Count n, T const* p) { return (a.*SetRange)(i, n, p); }
    static int get(A const& a, Count& count, T const*& values) { return (a.*Get)(count, values); }
    template <typename... Source> // one value, or a count and a run
    static A create(Source const&... source) {
        if constexpr (Type == DT_TICK) {
            return A::createTick(source...);
        } else if constexpr (Type == DT_ID) {
            return A::createID(source...);
        } else {
            return A(source...);
        }
    }
    // A value for each number, the default one for 0.
    static T value(unsigned int seed) {
        auto const mixed = seed * 0x9E3779B97F4A7C15ull;
        if constexpr (isText(Type)) {
            return std::wstring(seed, static_cast<wchar_t>(L'a' + seed));
        } else if constexpr (std::is_same_v<T, Binary16>) {
            return Binary16(seed, 0, 0, mixed);
        } else {
            return static_cast<T>(Type == DT_BOOL ? seed % 2 : mixed);
        }
    }
};
#define ROW(TYPE, T, X) Row<DT_##TYPE, T, &A::set##X, &A::add##X, &A::setRange##X, &A::get##X>
using Rows =
    std::tuple<ROW(BOOL, bool, Bool), ROW(BYTE, unsigned char, Byte), ROW(INT16, short, Int16),
               ROW(INT32, int, Int32), ROW(INT64, long long, Int64), ROW(UINT16, Count, UInt16),
               ROW(UINT32, unsigned int, UInt32), ROW(UINT64, U64, UInt64),
               ROW(FLOAT, float, Float), ROW(DOUBLE, double, Double), ROW(TICK, U64, Tick),
               ROW(ID, Binary16, ID), ROW(BINARY16, Binary16, Bin16),
               ROW(STRING, std::wstring, String), ROW(STRINGRES, ResString, ResString)>;

constexpr auto forEachRow = [](auto act) {
    std::apply([&](auto... row) { (act(row), ...); }, Rows{});
};

using Seeds = std::vector<unsigned int>;

// What an array is, by the rules alone.
struct Model {
    eDataType type = DT_VOID;
    Seeds seeds = {}; // of its values
    bool storage = false;

    void check(HLVArray const& array) const {
        ASSERT_TRUE(array.getDataType() == type && array.getCount() == seeds.size()) << array;
        forEachRow([&](auto row) {
            Count count = 4711;
            auto const marker = row.value(9), *values = &marker;
            auto const view = viewOf<std::remove_const_t<decltype(marker)>>(array);
            ASSERT_EQ(row.type == type ? 0 : ERR_WRONG_TYPE, row.get(array, count, values));
            if (row.type != type && count == 4711 && values == &marker) {
                return;
            }
            ASSERT_EQ(seeds.size(), count);
            EXPECT_EQ(count * row.width, array.getByteSize());
            EXPECT_EQ(isText(type) ? nullptr : values, array.getData());
            EXPECT_EQ(storage, values != nullptr);
            EXPECT_TRUE(view.data() == values && view.size() == count);
            for (Count i = 0; i < count; ++i) {
                ASSERT_EQ(row.value(seeds[i]), values[i]);
            }
        });
    }

    // What the operations answer and do.
    int become(Model const& other) { return *this = other, 0; }
    int init(Count n, eDataType t) { return t > 0 && t < 16 ? become({t, Seeds(n), n != 0}) : 0; }
    int take(Model& o, eDataType left) { return this == &o ? 0 : (become(o), o.become({left})); }
    int copy(Model const& other) {
        bool const kept = other.storage && (isText(other.type) || !other.seeds.empty());
        return this == &other ? 0 : become({other.type, other.seeds, kept});
    }
    Model at(Count i) { return i < seeds.size() ? Model{type, {seeds[i]}, true} : Model{DT_BYTE}; }
    int append(eDataType newType, Seeds all) {
        all.insert(all.begin(), seeds.begin(), seeds.end());
        Model const joined{newType, all, isText(newType) || !all.empty()};
        return storage && type != newType ? ERR_WRONG_TYPE : become(joined);
    }
    int edit(int start, int count, eDataType t, Seeds const& by, bool null = false) {
        int const refusal = type != t ? ERR_WRONG_TYPE : null ? ERR_NULL_POINTER : 0;
        bool const fits = start + count <= static_cast<int>(seeds.size());
        int const code = count == 0 ? 0 : fits ? refusal : ERR_OUT_OF_RANGE;
        if (count != 0 && code == 0) {
            seeds.erase(seeds.begin() + start, seeds.begin() + start + count);
            seeds.insert(seeds.begin() + start, by.begin(), by.end());
        }
        return code;
    }
    int replace(eDataType t, Seeds const& by, bool null) {
        bool const kept = !by.empty() || (storage && type == t), missing = null && !by.empty();
        return missing ? ERR_NULL_POINTER : isText(t) ? ERR_WRONG_TYPE : become({t, by, kept});
    }
};

// Three arrays and their models go through the same operations, with arguments of two types in
// every program, each pair of types in turn, and with values of the array's own. In every second
// step each allocation fails once before it succeeds.
TEST(HLVArray, randomProgramsKeepToTheModel) {
    auto const typeOf = [](int number) { return static_cast<eDataType>(number % 18 - 1); };
    long blocks = liveBlocks(), failures = 0;
    for (int program = 0; program < 18 * 18 * 4; ++program) {
        std::mt19937 random(static_cast<unsigned int>(program));
        auto const pick = [&](std::size_t n) { return static_cast<Count>(random() % n); };
        int op = 0;
        Array arrays[3];
        Model models[3];
        auto const step = [&](auto row) {
            Array &a = arrays[pick(3)], &b = arrays[pick(3)];
            Model &m = models[&a - arrays], &other = models[&b - arrays];
            Model const was = m;
            auto const own = viewOf<decltype(row.value(0))>(a);
            bool const alias = pick(4) != 0 && !own.empty();
            decltype(row.value(0)) fresh[40];
            Seeds run(40);
            for (unsigned int i = 0; i < 40; ++i) {
                fresh[i] = row.value(run[i] = i);
            }
            run = alias ? m.seeds : run;
            auto const* const values = alias ? own.data() : fresh;
            Count const first = pick(run.size()), n = pick(run.size() - first + 1);
            Count const i = pick((m.seeds.size() + 3) / (1u + pick(3)));
            Seeds const one{run[first]};
            run = Seeds(run.begin() + first, run.begin() + first + n);
            auto const& v = values[first];
            auto const* const p = pick(8) != 0 ? &v : nullptr;
            eDataType const t = row.type, any = pick(3) != 0 ? t : typeOf(pick(18));
            op = pick(pick(3) != 0 ? 7 : 15);
            // A failed init or _set empties the array, and with it values of its own.
            long failing = op == 1 && alias ? 0 : pick(2);
            auto const same = [&](int expected, auto act) {
                for (int code = 1; code == 1;) {
                    failAllocation(failing++);
                    try {
                        code = act();
                    } catch (std::bad_alloc const&) {
                        ++failures;
                    }
                    failAllocation(0);
                    EXPECT_TRUE(code == 1 || code == expected) << code;
                    (code != 1 ? m : op < 2 ? Model{op == 0 ? any : was.type} : was).check(a);
                }
            };
            switch (op) {
            case 0: return same(m.init(n, any), [&] { return a.init(n, any); });
            case 1: return same(m.replace(t, run, !p), [&] { return a._set(n, p, t, row.width); });
            case 2: return same(m.append(t, one), [&] { return row.add(a, v); });
            case 3: return same(m.edit(i, 1, t, one), [&] { return row.set(a, i, v); });
            case 4: return same(m.edit(i, n, t, run, !p), [&] { return row.setRange(a, i, n, p); });
            case 5: return same(m.edit(i, n, m.type, {}), [&] { return a.removeRange(i, n); });
            case 6: return same(m.append(other.type, other.seeds), [&] { return a.add(b); });
            case 7: return same(m.copy(other), [&] { return a = b, 0; });
            case 8: return same(m.take(other, other.type), [&] { return a = std::move(b), 0; });
            case 9: return same(m.take(other, any), [&] { return a.moveFrom(b, any), 0; });
            case 10: return same((std::swap(m, other), 0), [&] { return a.swap(b), 0; });
            case 11: return same(m.become({any}), [&] { return a.clear(any), 0; });
            case 12: return same(m.become(other.at(i)), [&] { return a = b[i], 0; });
            case 13: return same(m.become({t, one, true}), [&] { return a = row.create(v), 0; });
            default:
                return same(m.become({t, p ? run : Seeds(), p && n != 0}),
                            [&] { return a = row.create(n, p), 0; });
            }
        };
        for (int i = 0; i < 120; ++i) {
            eDataType const type = typeOf(i % 4 == 0 ? program : program / 18);
            forEachRow([&](auto row) { row.type == type ? step(row) : void(); });
            for (int j = 0; j < 3; ++j) {
                models[j].check(arrays[j]);
            }
            ASSERT_FALSE(HasFailure()) << "operation " << op << " of program " << program;
        }
    }
    EXPECT_EQ(blocks, liveBlocks());
    EXPECT_LT(3000, failures);
}

TEST(HLVArray, aFullArrayRefusesToGrowAndAnyArrayAForeignWidth) {
    forEachRow([](auto row) {
        auto const v = row.value(7);
        Array a;
        a.init(65533, row.type);
        for (unsigned int const width : {0u, row.width / 2, row.width + 1}) {
            for (int const code :
                 {a._init(2, row.type, width), a._add(&v, row.type, width),
                  a._setIndex(2, &v, row.type, width), a._setRange(1, 1, &v, row.type, width),
                  a._set(1, &v, row.type, width)}) {
                EXPECT_EQ(ERR_WRONG_TYPE, code) << width;
            }
        }
        EXPECT_EQ(row.width == 0 ? ERR_WRONG_TYPE : ERR_NULL_POINTER,
                  a._add(nullptr, row.type, row.width));
        EXPECT_EQ(0, row.width == 0 ? row.add(a, v) : a._add(&v, row.type, row.width));
        EXPECT_EQ(0, a.add(row.create(v)));
        for (int const code : {row.add(a, v), a.add(row.create(v)), a.add(a), row.set(a, 65535, v),
                               row.setRange(a, 65535, 1, &v), row.setRange(a, 1, 65535, &v),
                               a.removeRange(1, 65535)}) {
            EXPECT_EQ(ERR_OUT_OF_RANGE, code);
        }
        Model full{row.type, Seeds(65533), true};
        full.seeds.resize(65535, 7);
        full.check(a);
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
    EXPECT_TRUE(viewOf<int>(A(5u)).empty() && viewOf<unsigned int>(A(5)).empty());
    bool const isShort = sizeof(long) == 4;
    long const longs[] = {-5, 5}, *const none = nullptr;
    unsigned long const ulongs[] = {~0ul, 5}, *const nothing = nullptr;
    EXPECT_EQ(A(2, longs), isShort ? A(2, std::data({-5, 5})) : A(2, std::data({-5ll, 5ll})));
    EXPECT_TRUE(A(-5l) == A(1, longs) && A(5ul) == A(1, ulongs + 1));
    EXPECT_EQ(A(~0ul), isShort ? A(~0u) : A(~0ull));
    EXPECT_EQ(A(isShort ? DT_INT32 : DT_INT64), A(2, none));
    EXPECT_EQ(A(isShort ? DT_UINT32 : DT_UINT64), A(2, nothing));
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
    std::wostringstream wide;
    EXPECT_TRUE(wide << std::hex << array && wide.str() == L"3039; f");
}

} // namespace
} // namespace Halvora::test
