#pragma once

#include <Halvora/array/ArrayView.h>

#include <string>
#include <tuple>
#include <vector>

namespace Halvora::test {

using Count = unsigned short;
using Seeds = std::vector<unsigned int>; // the numbers that make values

// What the operations of one element type have in common: the type and its values.
template <eDataType Type>
struct ArrayRow : ElementOf<Type> {
    using Value = ElementValue<Type>;

    // A value for each number, the default one for 0.
    static Value value(unsigned int seed) {
        auto const mixed = seed * 0x9E3779B97F4A7C15ull;
        if constexpr (isTextType(Type)) {
            return std::wstring(seed, static_cast<wchar_t>(L'a' + seed));
        } else if constexpr (std::is_same_v<Value, Binary16>) {
            return Binary16(seed, 0, 0, mixed);
        } else if constexpr (Type == DT_BOOL) {
            return seed % 2 != 0;
        } else {
            return static_cast<Value>(mixed);
        }
    }

    static std::vector<Value> values(Seeds const& seeds) {
        std::vector<Value> all;
        for (unsigned int const seed : seeds) {
            all.push_back(value(seed));
        }
        return all;
    }

    template <typename... Source> // one value, or a count and a run
    static HLVArray create(Source const&... source) {
        if constexpr (Type == DT_TICK) {
            return HLVArray::createTick(source...);
        } else if constexpr (Type == DT_ID) {
            return HLVArray::createID(source...);
        } else {
            return HLVArray(source...);
        }
    }
};

// The typed operations, by the word that their names end in.
#define HALV_ROW(TYPE, X)                                                                       \
    struct X##Row : ArrayRow<DT_##TYPE> {                                                       \
        static constexpr char const* name = #X;                                                 \
        static int set(HLVArray& a, Count i, Value const& v) { return a.set##X(i, v); }         \
        static int add(HLVArray& a, Value const& v) { return a.add##X(v); }                     \
        static int setRange(HLVArray& a, Count i, Count n, Value const* v) {                    \
            return a.setRange##X(i, n, v);                                                      \
        }                                                                                       \
        static int get(HLVArray const& a, Count& n, Value const*& v) { return a.get##X(n, v); } \
    };
HALV_ROW(BOOL, Bool)
HALV_ROW(BYTE, Byte)
HALV_ROW(INT16, Int16)
HALV_ROW(INT32, Int32)
HALV_ROW(INT64, Int64)
HALV_ROW(UINT16, UInt16)
HALV_ROW(UINT32, UInt32)
HALV_ROW(UINT64, UInt64)
HALV_ROW(FLOAT, Float)
HALV_ROW(DOUBLE, Double)
HALV_ROW(STRING, String)
HALV_ROW(TICK, Tick)
HALV_ROW(ID, ID)
HALV_ROW(BINARY16, Bin16)
HALV_ROW(STRINGRES, ResString)
#undef HALV_ROW
using ArrayRows =
    std::tuple<BoolRow, ByteRow, Int16Row, Int32Row, Int64Row, UInt16Row, UInt32Row, UInt64Row,
               FloatRow, DoubleRow, StringRow, TickRow, IDRow, Bin16Row, ResStringRow>;

constexpr auto forEachArrayRow = [](auto act) {
    std::apply([&](auto... row) { (act(row), ...); }, ArrayRows{});
};

// How a report writes types, values and codes.
inline std::string typeText(eDataType type) {
    return isDataType(type) ? std::string("DT_") + HalvTypes::dataTypeToString(type)
                            : "type " + std::to_string(static_cast<int>(type));
}
inline std::string seedsText(Seeds const& seeds) {
    std::string list = "{";
    for (unsigned int const seed : seeds) {
        list += (list.size() == 1 ? "#" : " #") + std::to_string(seed);
    }
    return list + "}";
}
inline std::string codeText(int code) {
    switch (code) {
    case ERR_OUT_OF_RANGE: return "ERR_OUT_OF_RANGE";
    case ERR_WRONG_TYPE: return "ERR_WRONG_TYPE";
    case ERR_NULL_POINTER: return "ERR_NULL_POINTER";
    default: return std::to_string(code);
    }
}

// An array whose internal operations are in reach.
struct Array : HLVArray {
    using HLVArray::_add, HLVArray::_init, HLVArray::_set, HLVArray::_setIndex, HLVArray::_setRange;
    using HLVArray::HLVArray, HLVArray::operator=;
    Array() : HLVArray(DT_VOID) {}
};

// What an array is, and what its operations answer and do, by the rules alone.
struct ArrayModel {
    eDataType type = DT_VOID;
    Seeds seeds = {};
    bool storage = false; // decides whether an append adopts another type

    int become(ArrayModel const& other) { return *this = other, 0; }

    int init(Count n, eDataType t) {
        return elementWidth(t) == 0 && !isTextType(t) ? 0 : become({t, Seeds(n), n != 0});
    }

    int take(ArrayModel& source, eDataType left) {
        return this == &source ? 0 : (become(source), source.become({left}));
    }

    // Of an emptied array, a copy holds storage only if it is of texts.
    int copy(ArrayModel const& other) {
        bool const keeps = other.storage && (isTextType(other.type) || !other.seeds.empty());
        return this == &other ? 0 : become({other.type, other.seeds, keeps});
    }

    ArrayModel at(Count i) const {
        return i < seeds.size() ? ArrayModel{type, {seeds[i]}, true} : ArrayModel{DT_BYTE};
    }

    int append(eDataType of, Seeds const& tail) {
        if (storage && type != of) {
            return ERR_WRONG_TYPE;
        }
        Seeds all(seeds);
        all.insert(all.end(), tail.begin(), tail.end());
        return become({of, all, isTextType(of) || !all.empty()});
    }

    // Replaces `count` elements from `start` on by others, which may be fewer.
    int replace(std::size_t start, std::size_t count, eDataType of, Seeds const& by,
                bool isNull = false) {
        if (count == 0) {
            return 0;
        }
        if (start + count > seeds.size()) {
            return ERR_OUT_OF_RANGE;
        }
        if (of != type) {
            return ERR_WRONG_TYPE;
        }
        if (isNull) {
            return ERR_NULL_POINTER;
        }
        auto const at = seeds.begin() + static_cast<std::ptrdiff_t>(start);
        seeds.insert(seeds.erase(at, at + static_cast<std::ptrdiff_t>(count)), by.begin(),
                     by.end());
        return 0;
    }

    // The internal operation that sets the whole contents.
    int assign(eDataType of, Seeds const& by, bool isNull) {
        if (isNull && !by.empty()) {
            return ERR_NULL_POINTER;
        }
        bool const keeps = storage && type == of;
        return isTextType(of) ? ERR_WRONG_TYPE : become({of, by, keeps || !by.empty()});
    }

    // Whether the array is what the model says, by every way of reading it; if not, what differs.
    std::string differs(HLVArray const& array) const {
        if (array.getDataType() != type || array.getCount() != seeds.size()) {
            return "the type or the count";
        }
        std::string found;
        forEachArrayRow([&](auto row) { found += row.type == type ? differs(array, row) : ""; });
        forEachArrayRow([&](auto row) {
            Count count = 4711;
            auto const marker = row.value(9), *values = &marker;
            if (row.type != type && (row.get(array, count, values) != ERR_WRONG_TYPE ||
                                     count != 4711 || values != &marker)) {
                found += std::string("the answer of get") + row.name + " to another type; ";
            }
        });
        return found;
    }

    std::string text() const {
        return typeText(type) + " " + seedsText(seeds) + (storage ? "" : " without storage");
    }

private:
    template <typename Row>
    std::string differs(HLVArray const& array, Row row) const {
        Count count = 4711;
        typename Row::Value const* values = nullptr;
        if (row.get(array, count, values) != 0 || count != seeds.size()) {
            return std::string("what get") + row.name + " answers";
        }
        if (storage != (values != nullptr)) {
            return "whether there is storage";
        }
        if (array.getByteSize() != count * row.width()) {
            return "the size in bytes";
        }
        auto const view = viewOf<typename Row::Value>(array);
        if (array.getData() != (isTextType(type) ? nullptr : values) || view.data() != values ||
            view.size() != count) {
            return "where the data or the view lies";
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (!(values[i] == row.value(seeds[i]))) {
                return "element " + std::to_string(i);
            }
        }
        return "";
    }
};

} // namespace Halvora::test
