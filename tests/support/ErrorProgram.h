#pragma once

#include <tests/support/ErrorModel.h>

#include <functional>
#include <memory>
#include <utility>

namespace Halvora::test {

// Holders and lists that pass errors on in every way there is, beside their model. The choices come
// from outside: from dice, or from a fuzzer's bytes.
class ErrorProgram {
public:
    using Choose = std::function<int(int)>; // choose(n) gives 0 to n - 1

    explicit ErrorProgram(Choose choose) : m_choose(std::move(choose)) {}

    // Does one operation. What is wrong then, with the step and those before; empty if nothing is.
    std::string step() {
        static constexpr void (ErrorProgram::*operations[])() = {
            &ErrorProgram::make, &ErrorProgram::make,    &ErrorProgram::copy,
            &ErrorProgram::hand, &ErrorProgram::add,     &ErrorProgram::add,
            &ErrorProgram::join, &ErrorProgram::extract, &ErrorProgram::replace};
        m_steps += "\n  ";
        (this->*operations[m_choose(std::size(operations))])();
        keepSmall();
        findFaults();
        std::size_t const recent =
            m_steps.size() > 600 ? m_steps.find('\n', m_steps.size() - 600) : 0;
        return m_fault.empty() ? m_fault : m_fault + "\nThe last steps:" + m_steps.substr(recent);
    }

private:
    using Holder = HLVError::Holder;
    using List = HLVError::List;

    void expect(bool isRight, std::string const& what) {
        if (!isRight && m_fault.empty()) {
            m_fault = what;
        }
    }

    // These say in the step what they choose.

    int way(char const* operation, int ways) {
        int const chosen = m_choose(ways);
        m_steps += operation + (", way " + std::to_string(chosen));
        return chosen;
    }
    int holder(char const* role) {
        int const h = m_choose(3);
        m_steps += role + (" holder " + std::to_string(h)) + " with " +
                   (m_held[h].empty() ? "<NONE>" : std::to_string(m_held[h].front().code));
        return h;
    }
    int list(char const* role) {
        int const l = m_choose(2);
        m_steps +=
            role + (" list " + std::to_string(l)) + " of " + std::to_string(m_listed[l].size());
        return l;
    }

    // A position that steps along the ring lead to, and its index.
    List::iterator walk(int l, std::size_t& at) {
        std::size_t const end = m_listed[l].size();
        List::iterator position = m_lists[l].begin();
        for (int steps = m_choose(8); steps > 0; --steps) {
            bool const isForward = m_choose(2) == 0;
            isForward ? ++position : --position;
            at = (at + (isForward ? 1 : end)) % (end + 1);
            expect(position.begin() == (at == 0) && position.end() == (at == end),
                   "a position is not where its steps lead");
        }
        m_steps += ", position " + std::to_string(at);
        return position;
    }

    // The operations: first on the errors, then on the model.

    void make() {
        int const ways = way("make", 4), h = holder(" in");
        ModelError model{nullptr, m_choose(5) - 2, nullptr, {}};
        std::wstring const text(static_cast<std::size_t>(m_choose(300) + 1), L'\u20AC');
        Holder& target = m_holders[h];
        if (ways == 0) {
            target.prepend(model.code, text, std::string_view("\xE9"), 7);
            model.params[0] = text, model.params[1] = L"\u00E9", model.params[2] = L"7";
        } else if (ways == 1) {
            target.prependError(model.code, nullptr, new HLVError::Param(text));
            model.params[1] = text;
        } else if (ways == 2) {
            target.prependError(model.code, this, nullptr, nullptr, new HLVError::Param(-7));
            model.tag = this, model.params[2] = L"-7";
        } else {
            target.setError(HLVError::create(model.code));
            m_held[h].clear();
        }
        model.address = target.getError();
        m_held[h].insert(m_held[h].begin(), model);
        m_steps += ", now " + std::to_string(model.code);
    }

    void copy() {
        int const ways = way("copy", 4), from = holder(" from"), to = holder(" to");
        Holder const& source = m_holders[from];
        switch (ways) {
        case 0: source.copy(m_holders[to]); break;
        case 1: m_holders[to] = source; break;
        case 2: m_holders[to] = Holder(source); break;
        default: m_holders[to].setError(HLVError::copy(source.getError()));
        }
        m_held[to] = m_held[from];
        HLVError const* error = m_holders[to].getError();
        for (ModelError& each : m_held[to]) {
            expect(error != nullptr && error != each.address, "a copy is cut, or shares an error");
            each.address = std::exchange(error, error ? error->getPrecedingError() : nullptr);
        }
    }

    void hand() {
        int const ways = way("hand", 5), from = holder(" from"), to = holder(" to");
        Holder& source = m_holders[from];
        switch (ways) {
        case 0: source.move(m_holders[to]); break;
        case 1: m_holders[to] = std::move(source); break;
        case 2: m_holders[to] = Holder(std::move(source)); break;
        case 3: m_holders[to].setError(std::unique_ptr<HLVError>(source.extractError())); break;
        default: m_holders[to].setError(source.extractError());
        }
        ModelChain const moved = std::exchange(m_held[from], {});
        m_held[to] = moved;
    }

    bool addIn(int ways, List& list, Holder& source) {
        if (ways < 2) {
            return ways == 0 ? list.add(source) : list += source;
        }
        std::unique_ptr<HLVError> error(source.extractError());
        if (ways < 4) {
            return ways == 2 ? list.add(std::move(error)) : list += std::move(error);
        }
        bool const isAnError = ways == 4 ? list.add(error.get()) : list += error.get();
        // What the list does not take stays with the one who gave a pointer.
        bool const isTaken = HLVError::isWarning(error.get()) || HLVError::isError(error.get());
        return static_cast<void>(isTaken ? error.release() : nullptr), isAnError;
    }

    void add() {
        int const ways = way("add", 6), h = holder(" from"), l = list(" to");
        bool const isAnError = addIn(ways, m_lists[l], m_holders[h]);
        int const code = codeOf(m_held[h]);
        expect(isAnError == (code < 0), "a list answers wrongly whether it got an error");
        m_listed[l].insert(m_listed[l].end(), code != 0 ? 1 : 0, m_held[h]);
        m_held[h].clear();
    }

    void join() {
        int const ways = way("join", 3), to = list(""), from = list(" with");
        if (ways == 0) {
            bool const isAnswer = to != from && m_lists[from].getErrorCount() > 0;
            expect((m_lists[to] += m_lists[from]) == isAnswer,
                   "a list answers wrongly for another");
        } else {
            m_listed[to].clear(), m_lists[to].clear();
            m_lists[to] = ways == 1 ? std::move(m_lists[from]) : List(std::move(m_lists[from]));
        }
        if (to != from) {
            m_listed[to].insert(m_listed[to].end(), m_listed[from].begin(), m_listed[from].end());
            m_listed[from].clear();
        }
    }

    void eraseEntry(int l, std::size_t at) {
        m_listed[l].erase(m_listed[l].begin() + static_cast<std::ptrdiff_t>(at));
    }

    void extract() {
        int const ways = way("take out", 2), h = holder(" to"), l = list(" from");
        std::size_t at = 0;
        List::iterator position = walk(l, at);
        ways == 0 ? m_lists[l].extract(position, m_holders[h]) : m_lists[l].remove(position);
        if (at != m_listed[l].size()) {
            m_held[h] = ways == 0 ? m_listed[l][at] : m_held[h];
            eraseEntry(l, at);
        }
    }

    void replace() {
        int const ways = way("replace", 4), h = holder(" by"), l = list(" in");
        std::size_t at = 0;
        List::iterator position = walk(l, at);
        bool const isEntry = at != m_listed[l].size(), isTaken = codeOf(m_held[h]) != 0;
        if (ways == 0) {
            m_lists[l].replace(position, m_holders[h]);
        } else if (ways == 1) {
            std::unique_ptr<HLVError> error(m_holders[h].extractError());
            m_lists[l].replace(position, std::move(error));
            isEntry ? void() : m_holders[h].setError(std::move(error));
        } else if (ways == 2 && isEntry && isTaken) {
            m_lists[l].replace(position, m_holders[h].extractError());
        } else {
            return m_lists[l].replace(position, *position); // by itself
        }
        if (isEntry) {
            isTaken ? m_listed[l][at].swap(m_held[h]) : eraseEntry(l, at);
            m_held[h].clear();
        }
    }

    // Long chains and lists find no more than short ones, and take longer.
    void keepSmall() {
        for (int h = 0; h < 3; ++h) {
            if (m_held[h].size() > 6) {
                m_holders[h] = nullptr;
                m_held[h].clear();
            }
        }
        for (int l = 0; l < 2; ++l) {
            if (m_listed[l].size() > 9) {
                m_lists[l].clear();
                m_listed[l].clear();
            }
        }
    }

    void findFaults() {
        for (int h = 0; h < 3; ++h) {
            std::string const fault = faultOf(m_holders[h].getError(), m_held[h]);
            expect(fault.empty(), "Holder " + std::to_string(h) + " " + fault);
            expect(bool(m_holders[h]) == !m_held[h].empty(), "a holder does not know what it has");
        }
        for (int l = 0; l < 2; ++l) {
            std::string const fault = faultOf(m_lists[l], m_listed[l]);
            expect(fault.empty(), "List " + std::to_string(l) + " " + fault);
        }
    }

    Choose m_choose;
    std::string m_steps;
    std::string m_fault;
    Holder m_holders[3];
    List m_lists[2];
    ModelChain m_held[3];
    std::vector<ModelChain> m_listed[2];
};

} // namespace Halvora::test
