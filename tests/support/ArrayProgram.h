#pragma once

#include <functional>

#include <tests/support/ArrayModel.h>

namespace Halvora::test {

// Three arrays and their models go through the same operations, with values of two types and with
// values of the arrays' own. Where they differ, a report tells the step and those before it.
struct ArrayProgram {
    Seeds types;                                    // the numbers of two data types
    std::function<unsigned int(unsigned int)> pick; // any number below the given one
    std::function<void(long)> fail;                 // the n-th allocation from now on; 0: none
    Array arrays[3] = {};
    std::vector<ArrayModel> models = std::vector<ArrayModel>(3);
    std::vector<std::function<std::string()>> tells = {}; // what each step was, for a report
    std::string complaint = {};
    long failures = 0; // of allocations, in every second step

    // One operation. False when an array is not what the rules say, or answers something else.
    bool step() {
        unsigned int const type = types[pick(2)];
        forEachArrayRow([&](auto row) { row.type == type ? Step(*this, row).take() : void(); });
        for (std::size_t i = 0; i < 3 && complaint.empty(); ++i) {
            std::string const wrong = models[i].differs(arrays[i]);
            if (!wrong.empty()) {
                complaint = "abc"[i] + (" should be " + models[i].text()) + ", but " + wrong;
            }
        }
        return complaint.empty();
    }
    std::string report() const { // the last steps only; #1, #2, ... are values of the type
        std::string all = complaint + "\nThe last steps:";
        for (std::size_t i = std::max<std::size_t>(tells.size(), 6) - 6; i < tells.size(); ++i) {
            all += "\n  " + tells[i]();
        }
        return all;
    }

    // One step with values of one type: what it works with, chosen at random, and the operations.
    template <typename Row>
    struct Step {
        Step(ArrayProgram& of, Row) : program(of) {
            for (unsigned int seed = 0; seed < 40; ++seed) {
                fresh[seed] = Row::value(seed);
                run.push_back(seed);
            }
            run = isOwn ? m.seeds : run;
            Count const first = pick(run.size());
            n = pick(run.size() - first + 1);
            one = {run[first]};
            run = Seeds(run.begin() + first, run.begin() + first + n);
            value = (isOwn ? own.data() : fresh) + first;
            p = pick(8) != 0 ? value : nullptr;
            given = p != nullptr ? run : Seeds();
            i = pick((m.seeds.size() + 3) / (1u + pick(3)));
        }

#define DO(what, expected, call) perform(what, expected, [&] { return call; })
        // clang-format off
        void take() {
            std::string const X = Row::name;
            switch (pick(pick(3) != 0 ? 6 : 15)) {
            case 0: return DO("add" + X, m.append(type, one), Row::add(a, *value));
            case 1: return DO("set" + X, m.replace(i, 1, type, one), Row::set(a, i, *value));
            case 2: return DO("setRange" + X, m.replace(i, n, type, run, !p), Row::setRange(a, i, n, p));
            case 3: return DO("removeRange", m.replace(i, n, m.type, {}), a.removeRange(i, n));
            case 4: return DO("add(array)", m.append(other.type, other.seeds), a.add(b));
            case 5: return failed = {any}, DO("init(other type)", m.init(n, any), a.init(n, any));
            case 6: return DO("= array[index]", m.become(other.at(i)), (a = b[i], 0));
            case 7: return DO("= array", m.copy(other), (a = b, 0));
            case 8: return DO("= move(array)", m.take(other, other.type), (a = std::move(b), 0));
            case 9: return DO("moveFrom(array)", m.take(other, any), (a.moveFrom(b, any), 0));
            case 10: return DO("swap(array)", (std::swap(m, other), 0), (swap(a, b), 0));
            case 11: return DO("clear(other type)", m.become({any}), (a.clear(any), 0));
            case 12: return DO("= a value", m.become({type, one, true}), (a = Row::create(*value), 0));
            case 13: return DO("= a run", m.become({type, given, !given.empty()}), (a = Row::create(n, p), 0));
            default: failed = {was.type};
                return DO("_set", m.assign(type, run, !p), a._set(n, p, type, Row::width()));
            }
        }
        // clang-format on
#undef DO

        Count pick(std::size_t below) {
            return static_cast<Count>(program.pick(static_cast<unsigned int>(below)));
        }

        // Carries the call out, which has changed the model, until no allocation fails any more.
        template <typename Act>
        void perform(std::string const& call, int expected, Act act) {
            ArrayModel const done = m, values{type, run.empty() ? one : run, true};
            program.tells.push_back([=, to = target, from = source, was = was, own = isOwn,
                                     null = p == nullptr, n = n, i = i, any = any] {
                return "abc"[to] + (" is " + was.text() + "; ") + call + " with index " +
                       std::to_string(i) + ", count " + std::to_string(n) + ", " +
                       (null ? "null" : (own ? "own " : "") + values.text()) + ", array " +
                       "abc"[from] + ", other type " + HalvTypes::dataTypeToString(any);
            });
            // A failure that empties the array would take its own values along.
            long failing = isOwn && failed.seeds != was.seeds ? 0 : pick(2);
            for (int code = thrown; code == thrown && program.complaint.empty(); ++failing) {
                program.fail(failing);
                try {
                    code = act();
                } catch (std::bad_alloc const&) {
                    ++program.failures;
                }
                program.fail(0);
                m = code == thrown ? failed : done;
                std::string const wrong = m.differs(a);
                if (!wrong.empty() || (code != thrown && code != expected)) {
                    program.complaint = call + " answered " + std::to_string(code) +
                                        ", should answer " + std::to_string(expected) +
                                        " and leave " + m.text() +
                                        (wrong.empty() ? "" : ", but " + wrong) +
                                        " (-1004996: outside, -1004997: other type, -1004999: "
                                        "null, 1: no memory)";
                }
            }
        }

        using Value = typename Row::Value;
        static constexpr eDataType type = Row::type;
        static constexpr int thrown = 1; // no operation answers that

        ArrayProgram& program;
        std::size_t target = pick(3), source = pick(3);
        Array &a = program.arrays[target], &b = program.arrays[source];
        ArrayModel &m = program.models[target], &other = program.models[source];
        ArrayModel const was = m;
        ArrayModel failed = was; // what a failed allocation leaves
        eDataType any = pick(3) != 0 ? type : static_cast<eDataType>(pick(18) - 1);
        ArrayView<Value> own = viewOf<Value>(a);
        bool isOwn = m.type == type && !own.empty() && pick(4) != 0; // what is written lies there,
        Value fresh[40];                                             // or here:
        Value const *value, *p;                                      // one, and n of them or null
        Count i, n;
        Seeds one, run, given;
    };
};

} // namespace Halvora::test
