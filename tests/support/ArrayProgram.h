#pragma once

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <tests/support/ArrayModel.h>

namespace Halvora::test {

// Three arrays and their models go through the same operations, with values of two types and with
// values of the arrays' own. Where they differ, a report tells the step and those before it.
class ArrayProgram {
public:
    using Pick = std::function<unsigned int(unsigned int)>; // any number below the given one
    using FailAllocation = void (*)(long);                  // the n-th from now on; 0: none

    // With `fail`, each allocation of every second step fails before the step succeeds.
    ArrayProgram(eDataType first, eDataType second, Pick pick, FailAllocation fail = nullptr)
        : m_types{first, second}, m_pick(std::move(pick)), m_fail(fail) {}

    // One operation. False when an array is not what the rules say, or answers something else.
    bool step();

    long failedAllocations() const { return m_failures; }

    // The last step and what is wrong, and the steps before.
    std::string report() const {
        std::string text = "step " + std::to_string(m_log.size()) + ": " + m_log.back() + '\n' +
                           m_complaints + "The steps before it (#n is the n-th value):\n";
        for (std::size_t i = std::max<std::size_t>(m_log.size(), 6) - 6; i + 1 < m_log.size();
             ++i) {
            text += "  " + std::to_string(i + 1) + ": " + m_log[i] + '\n';
        }
        return text;
    }

private:
    template <typename Row>
    struct Step;

    static constexpr int thrown = 1; // no operation answers that

    void complain(std::size_t array, char const* when) {
        std::string const wrong = m_models[array].differs(m_arrays[array]);
        if (!wrong.empty()) {
            m_complaints += std::string("  ") + "abc"[array] + when + " should be " +
                            m_models[array].text() + "; not so is " + wrong + '\n';
        }
    }

    template <typename Act>
    int tryOnce(Act act, long failing) {
        m_fail != nullptr ? m_fail(failing) : void();
        int code = thrown;
        try {
            code = act();
        } catch (std::bad_alloc const&) {
            ++m_failures;
        }
        m_fail != nullptr ? m_fail(0) : void();
        return code;
    }

    // Carries a call out until no allocation fails any more. The target's model is what the call
    // should do, `failed` what a failed allocation should leave, null if none may fail.
    template <typename Act>
    void perform(std::size_t target, int expected, ArrayModel const* failed, Act act) {
        ArrayModel const done = m_models[target];
        long failing = m_fail != nullptr && failed != nullptr ? m_pick(2) : 0;
        for (int code = thrown; code == thrown && m_complaints.empty();) {
            code = tryOnce(act, failing);
            m_models[target] = code == thrown ? *failed : done;
            complain(target, code == thrown ? " after a failed allocation" : "");
            failing += failing != 0 ? 1 : 0;
            if (code != thrown && code != expected) {
                m_complaints +=
                    "  answered " + codeText(code) + ", expected " + codeText(expected) + '\n';
            }
        }
    }

    eDataType m_types[2];
    Pick m_pick;
    FailAllocation m_fail;
    Array m_arrays[3];
    ArrayModel m_models[3];
    std::vector<std::string> m_log;
    std::string m_complaints;
    long m_failures = 0;
};

// One step with values of one type: what it works with, chosen at random, and the operations.
template <typename Row>
struct ArrayProgram::Step {
    using Value = typename Row::Value;
    static constexpr eDataType type = Row::type;

    explicit Step(ArrayProgram& of) : program(of) {
        for (unsigned int seed = 0; seed < 40; ++seed) {
            fresh[seed] = Row::value(seed);
            run.push_back(seed);
        }
        auto const own = viewOf<Value>(a);
        isOwn = m.type == type && !own.empty() && pick(4) != 0;
        run = isOwn ? m.seeds : run;
        Count const first = pick(run.size());
        n = pick(run.size() - first + 1);
        one = {run[first]};
        run = Seeds(run.begin() + first, run.begin() + first + n);
        value = (isOwn ? own.data() : fresh) + first;
        values = pick(8) != 0 ? value : nullptr;
        i = pick((m.seeds.size() + 3) / (1u + pick(3)));
    }

    void takeStep() {
        switch (pick(8)) {
        case 0: return onTheInside();
        case 1:
        case 2: return onTheWhole();
        default: return onElements();
        }
    }

private:
    Count pick(std::size_t below) {
        return static_cast<Count>(program.m_pick(static_cast<unsigned int>(below)));
    }

    // Writes the call down, and carries it out.
    template <typename Act>
    void did(std::string const& call, int expected, Act act) {
        did(call, expected, &was, act);
    }
    template <typename Act>
    void did(std::string const& call, int expected, ArrayModel const* failed, Act act) {
        program.m_log.push_back(std::string(1, "abc"[target]) + " is " + was.text() + ": " + call);
        program.perform(target, expected, failed, act);
    }

    static std::string text(Count number) { return std::to_string(number); }
    std::string it() const { return seedsText(one) + (isOwn ? " of its own)" : ")"); }
    std::string them() const {
        std::string const list = seedsText(run) + (isOwn ? " of its own)" : ")");
        return text(n) + ", " + (values == nullptr ? "null)" : list);
    }
    std::string at() const { return "(" + text(i) + ", "; }
    std::string that() const { return std::string(1, "abc"[source]); }

    void onElements() {
        std::string const X = Row::name;
        switch (pick(5)) {
        case 0:
            return did("add" + X + "(" + it(), m.append(type, one),
                       [&] { return Row::add(a, *value); });
        case 1:
            return did("set" + X + at() + it(), m.replace(i, 1, type, one),
                       [&] { return Row::set(a, i, *value); });
        case 2:
            return did("setRange" + X + at() + them(), m.replace(i, n, type, run, !values),
                       [&] { return Row::setRange(a, i, n, values); });
        case 3:
            return did("removeRange" + at() + text(n) + ")", m.replace(i, n, m.type, {}),
                       [&] { return a.removeRange(i, n); });
        default:
            return did("add(" + that() + ")", m.append(other.type, Seeds(other.seeds)),
                       [&] { return a.add(b); });
        }
    }

    // The operations that the typed ones stand on, which refuse texts.
    void onTheInside() {
        constexpr bool isText = isTextType(type);
        constexpr eDataType known = isText ? DT_VOID : type;
        ArrayModel const empty{type}, emptied{was.type};
        switch (pick(5)) {
        case 0:
            return did("_init(" + text(n) + ")", isText ? ERR_WRONG_TYPE : m.init(n, type),
                       isText ? &was : &empty, [&] { return a._init(n, type, Row::width()); });
        case 1:
            return did("_add(" + it(), isText ? ERR_WRONG_TYPE : m.append(type, one),
                       [&] { return a._add(value, type, Row::width()); });
        case 2:
            return did("_setIndex" + at() + it(), m.replace(i, 1, known, one),
                       [&] { return a._setIndex(i, value, type, Row::width()); });
        case 3:
            return did("_setRange" + at() + them(), m.replace(i, n, known, run, !values),
                       [&] { return a._setRange(i, n, values, type, Row::width()); });
        default: // the array's own values would be gone when it fails
            return did("_set(" + them(), m.assign(type, run, !values), isOwn ? nullptr : &emptied,
                       [&] { return a._set(n, values, type, Row::width()); });
        }
    }

    void onTheWhole() {
        ArrayModel const empty{any};
        switch (pick(9)) {
        case 0:
            return did("init(" + text(n) + ", " + typeText(any) + ")", m.init(n, any), &empty,
                       [&] { return a.init(n, any); });
        case 1: return did("= " + that(), m.copy(other), [&] { return a = b, 0; });
        case 2:
            return did("= move of " + that(), m.take(other, other.type),
                       [&] { return a = std::move(b), 0; });
        case 3:
            return did("moveFrom(" + that() + ", " + typeText(any) + ")", m.take(other, any),
                       [&] { return a.moveFrom(b, any), 0; });
        case 4:
            std::swap(m, other);
            return did("swap with " + that(), 0, [&] { return swap(a, b), 0; });
        case 5:
            return did("clear(" + typeText(any) + ")", m.become({any}),
                       [&] { return a.clear(any), 0; });
        case 6:
            return did("= " + that() + "[" + text(i) + "]", m.become(other.at(i)),
                       [&] { return a = b[i], 0; });
        case 7:
            return did("= of " + typeText(type) + " (" + it(), m.become({type, one, true}),
                       [&] { return a = Row::create(*value), 0; });
        default:
            return did("= of " + typeText(type) + " (" + them(),
                       m.become({type, values ? run : Seeds(), values != nullptr && n != 0}),
                       [&] { return a = Row::create(n, values), 0; });
        }
    }

    ArrayProgram& program;
    std::size_t target = pick(3), source = pick(3);
    Array &a = program.m_arrays[target], &b = program.m_arrays[source];
    ArrayModel &m = program.m_models[target], &other = program.m_models[source];
    ArrayModel const was = m;
    eDataType any = pick(3) != 0 ? type : static_cast<eDataType>(pick(18) - 1);
    bool isOwn;          // what is written lies in the array itself
    Value fresh[40];     // or here
    Value const* value;  // one
    Value const* values; // `n` of them, or null
    Count i, n;          // where, and how many
    Seeds one, run;      // of these values
};

inline bool ArrayProgram::step() {
    eDataType const type = m_types[m_pick(4) == 0 ? 0 : 1];
    forEachArrayRow([&](auto row) {
        if (row.type == type) {
            Step<decltype(row)>(*this).takeStep();
        }
    });
    for (std::size_t i = 0; i < 3 && m_complaints.empty(); ++i) {
        complain(i, "");
    }
    return m_complaints.empty();
}

} // namespace Halvora::test
