// Appending to, changing, copying and walking typed arrays.

#include "Bench.h"
#include "Exact.h"

#include <Halvora/array/ArrayView.h>
#include <Halvora/array/HLVArray.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <numeric>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <tests/support/ArrayModel.h>

#ifdef HALVTYPES_WITH_ABSEIL
#    include <absl/types/span.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QVariant>
#    include <QVector>
#endif

using namespace Halvora;
using bench::add;
using bench::addBoth;
using bench::addSame;
using bench::stopUnless;

namespace {

constexpr std::size_t counts[] = {16, 256, 4096, 65535};

// A value of one element type.
template <typename Row>
struct Sample {
    using Value = typename Row::Value;
    std::string name;
    unsigned int seed;
    Value value = Row::value(seed);

    std::vector<Value> times(std::size_t n) const { return std::vector<Value>(n, value); }

    // An array of n such values, which has to be what the rules say.
    HLVArray array(std::size_t n) const {
        HLVArray made(static_cast<unsigned short>(n), times(n).data());
        test::ArrayModel const model{Row::type, test::Seeds(n, seed), true};
        stopUnless(model.differs(made).empty(), "an array of " + name);
        return made;
    }
};

Sample<test::DoubleRow> const doubles{"double", 5};
Sample<test::Int32Row> const ints{"int", 5};
Sample<test::ByteRow> const bytes{"byte", 5};
Sample<test::StringRow> const shortTexts{"short text", 2};
Sample<test::StringRow> const longTexts{"long text", 40};
Sample<test::ResStringRow> const resourceStrings{"resource string", 2};

template <typename T>
HLVArray arrayOf(std::vector<T> const& values) {
    return HLVArray(static_cast<unsigned short>(values.size()), values.data());
}

template <typename Vector, typename T>
void addPushes(std::string const& name, char const* who, std::vector<T> const& values) {
    addSame(name, values.size(), who, Vector(values.begin(), values.end()), [values] {
        Vector vector;
        for (T const& value : values) {
            vector.push_back(value);
        }
        return vector;
    });
}

// A straightforward exact array: a new block an append, every element copied.
template <typename T>
void addCopies(std::string const& name, char const* who, std::vector<T> const& values) {
    auto const append = [values] {
        std::unique_ptr<T[]> all;
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::unique_ptr<T[]> grown(new T[i + 1]);
            std::copy(all.get(), all.get() + i, grown.get());
            grown[i] = values[i];
            all = std::move(grown);
        }
        return all;
    };
    stopUnless(std::equal(values.begin(), values.end(), append().get()), name + " by " + who);
    add(name, values.size(), who, [append] { benchmark::DoNotOptimize(append().get()); });
}

template <typename Array, typename T>
void addExact(std::string const& name, char const* who, std::vector<T> const& values) {
    auto const append = [values] {
        Array exact;
        for (T const value : values) {
            exact.append(value);
        }
        return exact;
    };
    stopUnless(std::equal(values.begin(), values.end(), append().all.get()), name + " by " + who);
    add(name, values.size(), who, [append] { benchmark::DoNotOptimize(append().all.get()); });
}

template <typename Row>
void addAppends(Sample<Row> const& of, std::size_t n, char const* byCopy) {
    std::string const name = "append " + of.name;
    addSame(name, n, "ours", of.array(n), [n, of] {
        HLVArray array(Row::type);
        for (std::size_t i = 0; i < n; ++i) {
            Row::add(array, of.value);
        }
        return array;
    });
    addPushes<std::vector<typename Row::Value>>(name, "limit", of.times(n));
    if constexpr (std::is_arithmetic_v<typename Row::Value>) {
        addExact<Exact<typename Row::Value>>(name, "bare realloc", of.times(n));
        addExact<ExactInLibrary<typename Row::Value>>(name, "floor", of.times(n));
    }
    if (n <= 4096) { // quadratic
        addCopies(name, byCopy, of.times(n));
    }
}

template <typename Row>
void addSetting(Sample<Row> const& of, std::size_t n) {
    std::string const name = "init, then set " + of.name;
    addSame(name, n, "ours", of.array(n), [n, of] {
        HLVArray array(Row::type);
        array.init(static_cast<unsigned short>(n), Row::type);
        for (std::size_t i = 0; i < n; ++i) {
            Row::set(array, static_cast<unsigned short>(i), of.value);
        }
        return array;
    });
    addPushes<std::vector<typename Row::Value>>(name, "limit", of.times(n));
}

// Two that grow in turn: their storage cannot always grow in place.
template <typename Array, typename Append>
void addInTurn(char const* who, std::size_t n, Append append) {
    constexpr char name[] = "append double, two in turn";
    auto const run = [n, append] {
        std::pair<Array, Array> both;
        for (std::size_t i = 0; i < n; ++i) {
            append(both.first, doubles.value);
            append(both.second, doubles.value);
        }
        return both;
    };
    auto const [first, second] = run();
    for (double const* numbers : {first.data(), second.data()}) {
        stopUnless(std::count(numbers, numbers + n, doubles.value) == std::ptrdiff_t(n), name);
    }
    add(name, n, who, [run] { benchmark::DoNotOptimize(run().second.data()); });
}

struct DoubleArray : HLVArray {
    DoubleArray() : HLVArray(DT_DOUBLE) {}
    double const* data() const { return viewOf<double>(*this).data(); }
};

struct ExactDoubles : ExactInLibrary<double> {
    double const* data() const { return all.get(); }
};

void addNumbers(std::size_t n) {
    addAppends(doubles, n, "new, copy, delete");
#ifdef HALVTYPES_WITH_QT
    addPushes<QVector<double>>("append double", "QVector", doubles.times(n));
#endif
    addInTurn<DoubleArray>("ours", n, [](auto& to, double value) { to.addDouble(value); });
    addInTurn<ExactDoubles>("floor", n, [](auto& to, double value) { to.append(value); });
    auto const push = [](auto& to, double value) { to.push_back(value); };
    addInTurn<std::vector<double>>("limit", n, push);
#ifdef HALVTYPES_WITH_QT
    addInTurn<QVector<double>>("QVector", n, push);
#endif
    addAppends(ints, n, "new, copy, delete");
    addAppends(bytes, n, "new, copy, delete");
}

// Runs of `n` doubles, each operation beside that of a vector.
void addRuns(std::size_t n) {
    std::vector<double> values(n);
    std::iota(values.begin(), values.end(), 0.0);
    HLVArray const array = arrayOf(values);

    std::vector<double> turned(values);
    turned.push_back(0.5);
    turned.erase(turned.begin());
    addSame("remove first, append", n, "ours", arrayOf(turned),
            [array = HLVArray(array)]() mutable -> HLVArray& {
                array.removeRange(0, 1);
                array.addDouble(0.5);
                return array;
            });
    addSame("remove first, append", n, "limit", turned, [values]() mutable -> std::vector<double>& {
        values.erase(values.begin());
        values.push_back(0.5);
        return values;
    });

    std::vector<double> doubled(values);
    doubled.insert(doubled.end(), values.begin(), values.end());
    addSame("add an array twice", n, "ours", arrayOf(doubled), [array] {
        HLVArray sum(DT_DOUBLE);
        sum.add(array);
        sum.add(array);
        return sum;
    });
    addSame("add an array twice", n, "limit", doubled, [values] {
        std::vector<double> sum;
        sum.insert(sum.end(), values.begin(), values.end());
        sum.insert(sum.end(), values.begin(), values.end());
        return sum;
    });

    addBoth(
        "arrays compared", n, true, [array, same = array] { return array == same; },
        [values, same = values]() mutable {
            benchmark::DoNotOptimize(values.data());
            return std::memcmp(values.data(), same.data(), values.size() * sizeof(double)) == 0;
        });
}

// The sum of all elements, each as a value of its own: what it is a copy of may change meanwhile.
// `one` takes it from the elements and gives its number.
template <typename Elements, typename One>
void addEach(char const* who, Elements const& elements, std::size_t n, double expected, One one) {
    addSame("array[i] of each", n, who, expected, [elements, n, one]() mutable {
        benchmark::DoNotOptimize(&elements);
        double sum = 0;
        for (std::size_t i = 0; i < n; ++i) {
            sum += one(elements, i);
        }
        return sum;
    });
}

void addElements(std::size_t n) {
    std::vector<double> values(n);
    std::iota(values.begin(), values.end(), 0.0);
    double const sum = std::accumulate(values.begin(), values.end(), 0.0);
    addEach("ours", arrayOf(values), n, sum, [](HLVArray const& array, std::size_t i) {
        return *static_cast<double const*>(array[static_cast<unsigned short>(i)].getData());
    });
    addEach("limit", values, n, sum, [](std::vector<double> const& all, std::size_t i) {
        std::vector<double> one(1, all[i]);
        benchmark::DoNotOptimize(one.data());
        return one[0];
    });
    using Variants = std::vector<std::variant<std::monostate, int, double, std::wstring>>;
    addEach("std::variant, no array", Variants(values.begin(), values.end()), n, sum,
            [](Variants const& all, std::size_t i) {
                auto const one = all[i];
                return std::get<double>(one);
            });
#ifdef HALVTYPES_WITH_QT
    QVector<double> const vector(values.begin(), values.end());
    addEach("QVector::mid", vector, n, sum, [](QVector<double> const& all, std::size_t i) {
        return all.mid(static_cast<int>(i), 1).constFirst();
    });
    QVariantList list;
    std::copy(values.begin(), values.end(), std::back_inserter(list));
    addEach("QVariantList::mid", list, n, sum, [](QVariantList const& all, std::size_t i) {
        return all.mid(static_cast<int>(i), 1).constFirst().toDouble();
    });
#endif
}

// Arrays of one number each, which a vector moves while it grows and swaps to turn itself round.
template <typename Array, typename Make>
void addMoves(char const* who, std::size_t n, Make make) {
    auto const grow = [n, make] {
        std::vector<Array> arrays;
        for (std::size_t i = 0; i < n; ++i) {
            arrays.push_back(make(static_cast<double>(i)));
        }
        return arrays;
    };
    std::vector<Array> const arrays = grow();
    addSame("arrays in a vector that grows", n, who, arrays, grow);
    addSame("arrays swapped in a vector", n, who, std::vector(arrays.rbegin(), arrays.rend()),
            [arrays = std::vector(arrays)]() mutable -> std::vector<Array>& {
                std::reverse(arrays.begin(), arrays.end());
                return arrays;
            });
}

void addMoves(std::size_t n) {
    addMoves<HLVArray>("ours", n, [](double value) { return HLVArray(1, &value); });
    using Vector = std::vector<double>;
    addMoves<Vector>("limit", n, [](double value) { return Vector(1, value); });
#ifdef HALVTYPES_WITH_QT
    using Numbers = QVector<double>;
    addMoves<Numbers>("QVector", n, [](double value) { return Numbers(1, value); });
    addMoves<QVariantList>("QVariantList", n,
                           [](double value) { return QVariantList{QVariant(value)}; });
#endif
}

void addReading(std::size_t n) {
    auto const values = std::make_shared<std::vector<double>>(n, 0.5);
    auto const array = std::make_shared<HLVArray>(arrayOf(*values));
    addSame("copy of an array", n, "ours", *array, [array] { return HLVArray(*array); });
    addSame("copy of an array", n, "limit", *values, [values] { return std::vector(*values); });
    auto const addSum = [n](char const* who, auto elementsOf) {
        addSame("sum of an array", n, who, 0.5 * static_cast<double>(n), [elementsOf] {
            auto const& elements = elementsOf();
            return std::accumulate(elements.begin(), elements.end(), 0.0);
        });
    };
    addSum("ours", [array] { return viewOf<double>(*array); });
    addSum("limit", [values]() -> std::vector<double> const& { return *values; });
#ifdef HALVTYPES_WITH_ABSEIL
    addSum("absl::Span", [values] { return absl::MakeConstSpan(*values); });
#endif
#ifdef HALVTYPES_WITH_QT
    QVector<double> const vector(values->begin(), values->end());
    addSum("QVector", [vector]() -> QVector<double> const& { return vector; });
    addSame("copy of an array", n, "QVector", vector, [vector] {
        QVector<double> copy(vector);
        copy.detach();
        return copy;
    });
#endif
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t const n : counts) {
        addNumbers(n);
        addReading(n);
        addSetting(shortTexts, n);
        addSetting(longTexts, n);
    }
    for (std::size_t const n : {16u, 256u, 4096u}) {
        addAppends(shortTexts, n, "copy assignment");
        addAppends(longTexts, n, "copy assignment");
        addAppends(resourceStrings, n, "copy assignment");
        addSetting(resourceStrings, n);
        addRuns(n);
        addElements(n);
        addMoves(n);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
