#include <Halvora/array/HLVArray.h>

#include "Bytes.h"

using namespace Halvora;

// What an array should be. Its elements are told by numbers: ticks, or the lengths of strings.
struct Model {
    eDataType type;
    std::u32string elements;
    bool storage;
};

HLVArray arrayOf(Model const& model) {
    std::vector<unsigned long long> const ticks(model.elements.begin(), model.elements.end());
    std::vector<std::wstring> strings;
    for (std::size_t const length : ticks) {
        strings.emplace_back(length, L'x');
    }
    auto const count = static_cast<unsigned short>(ticks.size());
    return model.type == DT_TICK ? HLVArray::createTick(count, ticks.data())
                                 : HLVArray(count, strings.data());
}

// Operations on one array, with runs of equal elements, with another array and with itself.
void run(Bytes& bytes) {
    Model model{DT_STRING, U"", false};
    HLVArray array(model.type);
    for (int steps = 32; steps > 0 && bytes.remaining_bytes() != 0; --steps) {
        bool const text = bytes.ConsumeBool();
        auto const start = bytes.ConsumeIntegralInRange<unsigned short>(0, 9);
        auto const count = bytes.ConsumeIntegralInRange<unsigned short>(0, 9);
        auto const element = bytes.ConsumeIntegralInRange<char32_t>(1, 8);
        std::vector<unsigned long long> const ticks(9, element);
        std::vector<std::wstring> const strings(9, std::wstring(element, L'x'));
        Model run{text ? DT_STRING : DT_TICK, std::u32string(count, element), count != 0};
        int const range = count != 0 && start + count > array.getCount() ? ERR_OUT_OF_RANGE : 0;
        auto const at = std::min<std::size_t>(start, array.getCount());
        int const operation = bytes.ConsumeIntegralInRange(0, 5);
        if (operation == 0) {
            array.init(count, run.type);
            model = {run.type, std::u32string(count, U'\0'), run.storage};
        } else if (operation == 1) {
            HLVArray copy(array);
            array.moveFrom(copy, run.type);
            model.storage = model.storage && (model.type == DT_STRING || array.getCount() != 0);
        } else if (operation == 2) {
            assert(array.removeRange(start, count) == range);
            model.elements.erase(at, range == 0 ? count : 0);
        } else if (operation == 3) {
            bool const refused = range == 0 && count != 0 && model.type != run.type;
            int const result = text ? array.setRangeString(start, count, strings.data())
                                    : array.setRangeTick(start, count, ticks.data());
            assert(result == (refused ? ERR_WRONG_TYPE : range));
            std::fill_n(&model.elements[at], result == 0 ? count : 0, element);
        } else {
            bool const self = operation == 4 && array.getCount() < 50;
            run = self ? model : run;
            int const result = self         ? array.add(array)
                               : count != 1 ? array.add(arrayOf(run))
                               : text       ? array.addString(strings[0])
                                            : array.addTick(ticks[0]);
            bool const refused = model.storage && model.type != run.type;
            assert(result == (refused ? ERR_WRONG_TYPE : 0));
            if (!refused) {
                model = {run.type, model.elements + run.elements, true};
                model.storage = model.type == DT_STRING || array.getCount() != 0;
            }
        }
        assert(array == arrayOf(model));
        assert((array.getData() != nullptr) == (model.storage && model.type == DT_TICK));
    }
}
