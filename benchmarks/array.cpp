// Appending to, copying and walking typed arrays.

#include "Bench.h"

#include <Halvora/array/ArrayView.h>
#include <Halvora/array/HLVArray.h>

#include <memory>
#include <numeric>

#ifdef HALVTYPES_WITH_QT
#    include <QVector>
#endif

using namespace Halvora;
using bench::add;

namespace {

constexpr std::size_t counts[] = {16, 256, 4096, 65535};

// Both arrays grow in turn when there are two: the storage then cannot always grow in place.
void append(std::size_t n, HLVArray& a, HLVArray* b = nullptr) {
    for (std::size_t i = 0; i < n; ++i) {
        a.addDouble(static_cast<double>(i));
        if (b != nullptr) {
            b->addDouble(static_cast<double>(i));
        }
    }
    benchmark::DoNotOptimize(a.getData());
}

void addAppends(std::size_t n) {
    add("append double", n, "ours", [n] {
        HLVArray array(DT_DOUBLE);
        append(n, array);
    });
    add("append double, two in turn", n, "ours", [n] {
        HLVArray a(DT_DOUBLE);
        HLVArray b(DT_DOUBLE);
        append(n, a, &b);
    });
    auto const vectors = [n](int many) {
        std::vector<double> a;
        std::vector<double> b;
        for (std::size_t i = 0; i < n; ++i) {
            a.push_back(static_cast<double>(i));
            if (many > 1) {
                b.push_back(static_cast<double>(i));
            }
        }
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(b.data());
    };
    add("append double", n, "limit", [vectors] { vectors(1); });
    add("append double, two in turn", n, "limit", [vectors] { vectors(2); });
    add("append double", n, "new, copy, delete", [n] {
        std::unique_ptr<double[]> all;
        for (std::size_t i = 0; i < std::min<std::size_t>(n, 4096); ++i) { // quadratic
            std::unique_ptr<double[]> grown(new double[i + 1]);
            std::copy(all.get(), all.get() + i, grown.get());
            grown[i] = static_cast<double>(i);
            all = std::move(grown);
        }
        benchmark::DoNotOptimize(all.get());
    });
#ifdef HALVTYPES_WITH_QT
    add("append double", n, "QVector", [n] {
        QVector<double> vector;
        for (std::size_t i = 0; i < n; ++i) {
            vector.append(static_cast<double>(i));
        }
        benchmark::DoNotOptimize(vector.constData());
    });
#endif
}

// A straightforward exact array of texts: a new block an append, every text copied.
void appendByCopy(std::size_t n, std::wstring const& text) {
    std::unique_ptr<std::wstring[]> all;
    for (std::size_t i = 0; i < n; ++i) {
        std::unique_ptr<std::wstring[]> grown(new std::wstring[i + 1]);
        std::copy(all.get(), all.get() + i, grown.get());
        grown[i] = text;
        all = std::move(grown);
    }
}

void addTexts(std::string const& kind, std::wstring const& text, std::size_t n) {
    std::string const name = "append " + kind + " text";
    add(name, n, "ours", [n, text] {
        HLVArray array(DT_STRING);
        for (std::size_t i = 0; i < n; ++i) {
            array.addString(text);
        }
    });
    add(name, n, "copy assignment", [n, text] { appendByCopy(n, text); });
    add("init, then set " + kind + " text", n, "ours", [n, text] {
        HLVArray array(DT_STRING);
        array.init(static_cast<unsigned short>(n), DT_STRING);
        for (std::size_t i = 0; i < n; ++i) {
            array.setString(static_cast<unsigned short>(i), text);
        }
    });
    for (std::string const& both : {name, "init, then set " + kind + " text"}) {
        add(both, n, "limit", [n, text] {
            std::vector<std::wstring> vector;
            for (std::size_t i = 0; i < n; ++i) {
                vector.push_back(text);
            }
            benchmark::DoNotOptimize(vector.data());
        });
    }
}

void addReading(std::size_t n) {
    std::vector<double> const values(n, 0.5);
    auto const array = std::make_shared<HLVArray>(static_cast<unsigned short>(n), values.data());
    add("copy of an array", n, "ours", [array] { benchmark::DoNotOptimize(HLVArray(*array)); });
    add("copy of an array", n, "limit",
        [values] { benchmark::DoNotOptimize(std::vector<double>(values)); });
    add("sum of an array", n, "ours", [array] {
        auto const view = viewOf<double>(*array);
        benchmark::DoNotOptimize(std::accumulate(view.begin(), view.end(), 0.0));
    });
    add("sum of an array", n, "limit",
        [values] { benchmark::DoNotOptimize(std::accumulate(values.begin(), values.end(), 0.0)); });
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t const n : counts) {
        addAppends(n);
        addReading(n);
    }
    for (std::size_t const n : {256, 1024, 4096}) {
        addTexts("short", L"ab", n);
        addTexts("long", std::wstring(40, L'x'), n);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
