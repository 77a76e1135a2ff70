#include <Halvora/array/HLVArray.h>

#include "Bytes.h"

using namespace Halvora;
using A = HLVArray;
using Count = unsigned short;
constexpr unsigned long long odd = 0x9E3779B97F4A7C15;

// An array whose internal operations are in reach.
struct Array : A {
    using A::_add, A::_init, A::_set, A::_setIndex, A::_setRange, A::A, A::operator=;
};

// What an array should be, its values as the numbers that make them, and what its operations
// answer.
struct Model {
    eDataType type = DT_BYTE;
    std::u32string seeds = {};
    bool storage = false;

    int become(Model const& other, int code = 0) { return code != 0 ? code : (*this = other, 0); }
    Model copy() const {
        bool const isText = type == DT_STRING || type == DT_STRINGRES;
        return {type, seeds, storage && (isText || !seeds.empty())};
    }
    int append(Model const& tail, int refusal = 0) {
        int const code = storage && type != tail.type ? ERR_WRONG_TYPE : refusal;
        return become(Model{tail.type, seeds + tail.seeds, true}.copy(), code);
    }
    int edit(Count at, std::size_t n, Model const& by, int refusal = 0) {
        int const wrong = type != by.type ? ERR_WRONG_TYPE : refusal;
        int const code = at + n > seeds.size() ? ERR_OUT_OF_RANGE : wrong;
        code == 0 ? seeds.replace(at, n, by.seeds) : seeds;
        return n == 0 ? 0 : code;
    }
};

template <typename T> // what setters and adders take
using Passed = std::conditional_t<std::is_integral_v<T> && sizeof(T) <= 4, T, T const&>;

// The operations of one element type.
template <eDataType Type, typename T, int (A::*Set)(Count, Passed<T>), int (A::*Add)(Passed<T>),
          int (A::*SetRange)(Count, Count, T const*), int (A::*Get)(Count&, T const*&) const>
struct Row {
    static constexpr unsigned int width = sizeof(T) > 16 ? 0 : sizeof(T); // in bytes, 0 for texts
    static T value(char32_t seed) {
        if constexpr (width == 0) {
            return std::wstring(seed, L'x');
        } else {
            return static_cast<T>(seed * odd);
        }
    }

    static void check(A const& a, Model const& m) {
        assert(a.getDataType() == m.type && a.getCount() == m.seeds.size());
        Count count = 0;
        T const* values = nullptr;
        bool const given = m.type == Type;
        assert((a.*Get)(count, values) == (given ? 0 : ERR_WRONG_TYPE));
        assert(count == (given ? a.getCount() : 0) && (values != nullptr) == (given && m.storage));
        assert(!given || a.getByteSize() == count * width);
        assert(!given || a.getData() == (width == 0 ? nullptr : values));
        auto const holds = [](T const& v, char32_t seed) { return v == value(seed); };
        assert(std::equal(values, values + count, m.seeds.begin(), holds));
    }

    // One operation, with another array or with values, which may be the array's own.
    static void step(Bytes& bytes, Array& a, Model& m) {
        auto const pick = [&](int last) { return Count(bytes.ConsumeIntegralInRange(0, last)); };
        Count const op = pick(18), i = pick(9), n = pick(9), seed = pick(Type == DT_BOOL ? 1 : 15);
        T const v = value(seed), fresh[] = {v, v, v, v, v, v, v, v, v};
        T const *data = fresh, *own = nullptr;
        Model one{Type, {seed}, true}, run{Type, std::u32string(n, seed), n != 0};
        if (Count count = 0; (a.*Get)(count, own) == 0 && seed + n < count && pick(1) != 0) {
            data = own + seed;
            one.seeds = m.seeds[seed];
            run.seeds = m.seeds.substr(seed, n);
        }
        Model const zeros{Type, std::u32string(n, U'\0'), n != 0};
        Model const kept{Type, run.seeds, n != 0 || (m.storage && m.type == Type)};
        int const wrong = width == 0 ? ERR_WRONG_TYPE : 0; // of internal operations
        // Of plain numbers and bytes, also where the row is of ticks or ids.
        A other = n == 1 ? A(*data) : A(n, data);
        Model made{other.getDataType(), run.seeds, run.storage};
        assert((a != other) == (m.type != made.type || m.seeds != made.seeds));
        switch (op) {
        case 0: assert(a.init(n, Type) == m.become(zeros)); break;
        case 1: assert(a._init(n, Type, width) == m.become(zeros, wrong)); break;
        case 2: assert((a.*Add)(*data) == m.append(one)); break;
        case 3: assert(a._add(data, Type, width) == m.append(one, wrong)); break;
        case 4: assert((a.*Set)(i, *data) == m.edit(i, 1, one)); break;
        case 5: assert(a._setIndex(i, data, Type, width) == m.edit(i, 1, one, wrong)); break;
        case 6: assert((a.*SetRange)(i, n, data) == m.edit(i, n, run)); break;
        case 7: assert(a._setRange(i, n, data, Type, width) == m.edit(i, n, run, wrong)); break;
        case 8: assert(a.removeRange(i, n) == m.edit(i, n, {m.type})); break;
        case 9: m = i < a.getCount() ? Model{m.type, {m.seeds[i]}, true} : Model(), a = a[i]; break;
        case 10: assert(a.getCount() > 50 || a.add(a) == m.append(m)); break;
        case 11: a.clear(Type), m = {Type}; break;
        case 12: assert(a.add(other) == m.append(made)); break;
        case 13: a.moveFrom(other, Type), m = made, check(other, {Type}); break;
        case 14: a = other = A(a), m = m.copy(); break;
        case 15: other = A(std::move(a)), check(a, {m.type}), swap(a, other); break;
        case 16: a = A::createTick(seed * odd), m = {DT_TICK, {seed}, true}; break;
        case 17: a = A::createID(seed * odd), m = {DT_ID, {seed}, true}; break;
        default: assert(a._set(n, data, Type, width) == m.become(kept, wrong));
        }
    }
};

// An array that works with values of two types.
template <typename... Rows>
void runRows(Bytes& bytes) {
    constexpr void (*steps[])(Bytes&, Array&, Model&) = {Rows::step...};
    int const count = sizeof...(Rows), types = bytes.ConsumeIntegralInRange(0, count * count - 1);
    Array array(DT_BYTE);
    Model model;
    for (int left = 32; left > 0 && bytes.remaining_bytes() != 0; --left) {
        steps[bytes.ConsumeBool() ? types / count : types % count](bytes, array, model);
        (Rows::check(array, model), ...);
    }
}

#define ROW(TYPE, T, X) Row<DT_##TYPE, T, &A::set##X, &A::add##X, &A::setRange##X, &A::get##X>
void run(Bytes& bytes) {
    runRows<ROW(BOOL, bool, Bool), ROW(BYTE, unsigned char, Byte), ROW(INT16, short, Int16),
            ROW(INT32, int, Int32), ROW(INT64, long long, Int64), ROW(UINT16, Count, UInt16),
            ROW(UINT32, unsigned int, UInt32), ROW(UINT64, unsigned long long, UInt64),
            ROW(FLOAT, float, Float), ROW(DOUBLE, double, Double),
            ROW(TICK, unsigned long long, Tick), ROW(ID, Binary16, ID),
            ROW(BINARY16, Binary16, Bin16), ROW(STRING, std::wstring, String),
            ROW(STRINGRES, ResString, ResString)>(bytes);
}
