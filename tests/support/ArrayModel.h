#pragma once

#include <Halvora/array/ArrayView.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Halvora::test {

using Count = unsigned short;
using Seeds = std::vector<unsigned int>; // the numbers that make values

// An array whose internal operations are in reach.
struct Array : HLVArray {
    using HLVArray::_add, HLVArray::_init, HLVArray::_set, HLVArray::_setIndex, HLVArray::_setRange;
    using HLVArray::HLVArray, HLVArray::operator=;
    Array() : HLVArray(DT_VOID) {}
};

// The values of one element type.
template <eDataType Type>
struct ArrayRow : ElementOf<Type> {
    using Value = ElementValue<Type>;

    // A value for each number, the default one for 0.
    static Value value(unsigned int seed) {
        auto const mixed = seed * 0x9E3779B97F4A7C15ull;
        if constexpr (isTextType(Type)) {
            return std::wstring(seed, static_cast<wchar_t>(L'a' + seed));
        } else if constexpr (Type == DT_ID || Type == DT_BINARY16) {
            return Binary16(seed, 0, 0, mixed);
        } else {
            return static_cast<Value>(Type == DT_BOOL ? seed % 2 : mixed);
        }
    }
};

// The typed operations, by the word that their names end in.
// clang-format off
#define HALV_ROWS(ROW)                                                                             \
    ROW(BOOL, Bool, ) ROW(BYTE, Byte, ) ROW(INT16, Int16, ) ROW(INT32, Int32, )                    \
    ROW(INT64, Int64, ) ROW(UINT16, UInt16, ) ROW(UINT32, UInt32, ) ROW(UINT64, UInt64, )          \
    ROW(FLOAT, Float, ) ROW(DOUBLE, Double, ) ROW(STRING, String, )                                \
    ROW(TICK, Tick, ::createTick) ROW(ID, ID, ::createID)                                          \
    ROW(BINARY16, Bin16, ) ROW(STRINGRES, ResString, )
#define HALV_ROW(TYPE, X, MAKER)                                                                   \
    struct X##Row : ArrayRow<DT_##TYPE> {                                                          \
        static constexpr char const* name = #X;                                                    \
        static int set(HLVArray& a, Count i, Value const& v) { return a.set##X(i, v); }            \
        static int add(HLVArray& a, Value const& v) { return a.add##X(v); }                        \
        static int setRange(HLVArray& a, Count i, Count n, Value const* p) { return a.setRange##X(i, n, p); } \
        static int get(HLVArray const& a, Count& n, Value const*& p) { return a.get##X(n, p); }    \
        static HLVArray create(Value const& v) { return HLVArray MAKER(v); }                       \
        static HLVArray create(Count n, Value const* p) { return HLVArray MAKER(n, p); }           \
    };
HALV_ROWS(HALV_ROW)
#define HALV_ACT(TYPE, X, MAKER) act(X##Row());
constexpr auto forEachArrayRow = [](auto act) { HALV_ROWS(HALV_ACT) };
// They are all there, in the order of the numbers.
template <typename, typename... Rows>
using TableOf = ElementTable<Rows...>;
#define HALV_TYPE(TYPE, X, MAKER) , ElementOf<DT_##TYPE>
static_assert(std::is_same_v<TableOf<void HALV_ROWS(HALV_TYPE)>, ElementTypes>);
// clang-format on

// What an array is, and what its operations answer and do, by the rules alone.
struct ArrayModel {
    eDataType type = DT_VOID;
    Seeds seeds = {};
    bool storage = false; // decides whether an append adopts another type

    int become(ArrayModel const& other) { return *this = other, 0; }
    int init(Count n, eDataType t) { return t > 0 && t < 16 ? become({t, Seeds(n), n != 0}) : 0; }
    int take(ArrayModel& source, eDataType left) {
        return this == &source ? 0 : (become(source), source.become({left}));
    }
    int copy(ArrayModel const& other) { // of emptied arrays only those of texts keep storage
        bool const keeps = other.storage && (isTextType(other.type) || !other.seeds.empty());
        return this == &other ? 0 : become({other.type, other.seeds, keeps});
    }
    ArrayModel at(Count i) const {
        return i < seeds.size() ? ArrayModel{type, {seeds[i]}, true} : ArrayModel{DT_BYTE};
    }
    int append(eDataType of, Seeds all) {
        all.insert(all.begin(), seeds.begin(), seeds.end());
        bool const fits = !storage || type == of;
        return fits ? become({of, all, isTextType(of) || !all.empty()}) : ERR_WRONG_TYPE;
    }
    // `count` elements from `start` on become others, which may be fewer; null is no run of them.
    int replace(Count start, Count count, eDataType of, Seeds const& by, bool isNull = false) {
        int const refusal = of != type ? ERR_WRONG_TYPE : isNull ? ERR_NULL_POINTER : 0;
        int const code = std::size_t{start} + count > seeds.size() ? ERR_OUT_OF_RANGE : refusal;
        if (count != 0 && code == 0) {
            seeds.erase(seeds.begin() + start, seeds.begin() + start + count);
            seeds.insert(seeds.begin() + start, by.begin(), by.end());
        }
        return count == 0 ? 0 : code;
    }
    int assign(eDataType of, Seeds const& by, bool isNull) { // the internal _set
        bool const keeps = !by.empty() || (storage && type == of);
        int const refusal = isTextType(of) ? ERR_WRONG_TYPE : 0;
        int const code = isNull && !by.empty() ? ERR_NULL_POINTER : refusal;
        return code != 0 ? code : become({of, by, keeps});
    }

    std::string text() const {
        std::string all = HalvTypes::dataTypeToString(type);
        for (std::size_t i = 0; i < std::min<std::size_t>(seeds.size(), 12); ++i) {
            all += " #" + std::to_string(seeds[i]);
        }
        all += seeds.size() > 12 ? " ... (" + std::to_string(seeds.size()) + ")" : "";
        return all + (storage ? "" : ", without storage");
    }

    // By every way of reading the array; empty when it is what the model says.
    std::string differs(HLVArray const& array) const {
        if (array.getDataType() != type || array.getCount() != seeds.size()) {
            return "it is " + std::string(HalvTypes::dataTypeToString(array.getDataType())) +
                   " with " + std::to_string(array.getCount()) + " elements";
        }
        std::string found;
        forEachArrayRow([&](auto row) {
            Count n = 4711;
            auto const marker = row.value(0), *values = &marker;
            int const code = row.get(array, n, values);
            auto const view = viewOf<typename decltype(row)::Value>(array);
            if (row.type != type) {
                bool const isRefused = code == ERR_WRONG_TYPE && n == 4711 && values == &marker;
                isRefused ? found : found.append("it is read as ").append(row.name);
            } else if (code != 0 || n != seeds.size() || storage != (values != nullptr) ||
                       array.getByteSize() != n * row.width() || view.data() != values ||
                       array.getData() != (row.isText ? nullptr : values) || view.size() != n ||
                       view.empty() != seeds.empty()) {
                found += "its storage, its size, or a way of reading it";
            } else {
                auto const isRight = [](auto const& v, unsigned int seed) {
                    return v == decltype(row)::value(seed);
                };
                auto const at = std::mismatch(values, values + n, seeds.begin(), isRight).first;
                at == values + n ? found : found += "its element " + std::to_string(at - values);
            }
        });
        return found;
    }
};

} // namespace Halvora::test
