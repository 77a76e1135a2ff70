#pragma once

#include <Halvora/error/HLVError.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Halvora::test {

// A chain as it has to be: the newest error, and the codes from it down.
struct ModelChain {
    HLVError const* head = nullptr;
    std::vector<int> codes;

    int code() const { return codes.empty() ? 0 : codes.front(); }
    std::string text() const {
        std::string text = "[";
        for (int const each : codes) {
            text += " " + std::to_string(each);
        }
        return text + " ]";
    }
};

// What is wrong with a chain; empty if nothing is.
inline std::string faultOf(HLVError const* error, ModelChain const& chain) {
    ModelChain found{error, {}};
    HLVError const *base = nullptr, *two = nullptr;
    for (auto const* at = error; at != nullptr; at = at->getPrecedingError()) {
        found.codes.push_back(at->getCode());
        base = at;
        two = two == nullptr && at->getCode() == 2 ? at : two;
    }
    bool const isFound =
        error == nullptr || (error->getBaseError() == base && error->getByCode(2) == two);
    return found.codes != chain.codes ? found.text() + " instead of " + chain.text()
           : error != chain.head      ? "another object with " + chain.text()
           : isFound                  ? ""
                                      : "a search fails in " + chain.text();
}

// What is wrong with a list: its entries in order, its counts, its first and last error.
inline std::string faultOf(HLVError::List const& list, std::vector<ModelChain> const& entries) {
    std::vector<HLVError const*> errors{nullptr};
    auto at = list.begin();
    for (ModelChain const& entry : entries) {
        std::string const fault = faultOf(*at, entry);
        if (at.end() || !fault.empty()) {
            return "an entry is " + fault;
        }
        entry.code() < 0 ? errors.push_back(*at) : void();
        ++at;
    }
    auto const count = static_cast<int>(entries.size()),
               ofErrors = static_cast<int>(errors.size()) - 1;
    bool const isCounted = list.getCount() == count && list.getErrorCount() == ofErrors &&
                           list.getWarningCount() == count - ofErrors;
    return !at.end() || *at != nullptr || at != list.end() ? "there are more entries"
           : !isCounted                                    ? "it counts wrongly"
           : list.getFirstError() != errors[ofErrors > 0] || list.getLastError() != errors.back()
               ? "its first or last error is another one"
               : "";
}

// Holders and lists that pass errors on in every way there is, beside their model. The choices come
// from outside: from dice, or from a fuzzer's bytes.
class ErrorProgram {
public:
    using Choose = std::function<int(int)>; // choose(n) gives 0 to n - 1

    explicit ErrorProgram(Choose choose) : m_choose(std::move(choose)) {}

    // Does one operation, of which every one has so many ways, on a holder or two and a list or
    // two. What is wrong then, with the step and those before; empty if nothing is.
    std::string step() {
        static constexpr struct {
            char const* name;
            int ways;
            void (ErrorProgram::*run)(int way, int a, int b);
        } operations[] = {
            {"make",    4, &ErrorProgram::make  },
            {"pass on", 9, &ErrorProgram::passOn},
            {"add",     4, &ErrorProgram::add   },
            {"join",    3, &ErrorProgram::join  },
            {"change",  7, &ErrorProgram::change}
        };
        auto const& operation = operations[m_choose(std::size(operations))];
        int const way = m_choose(operation.ways), a = m_choose(3), b = m_choose(3);
        m_steps += std::string("\n  ") + operation.name;
        for (int const number : {way, a, b}) {
            m_steps += " " + std::to_string(number);
        }
        (this->*operation.run)(way, a, b);
        findFaults();
        m_steps.erase(0, m_steps.size() > 500 ? m_steps.find('\n', m_steps.size() - 500) : 0);
        return m_fault.empty() ? "" : m_fault + "Steps (way, holder or list, another):" + m_steps;
    }

private:
    using Holder = HLVError::Holder;
    using List = HLVError::List;

    void expect(bool isRight, std::string const& what) { m_fault += isRight ? "" : what + "\n"; }

    // The operations: first on the errors, then on the model.

    void make(int way, int h, int) {
        int const code = m_choose(5) - 2;
        m_steps += " with code " + std::to_string(code);
        Holder& holder = m_holders[h];
        std::vector<int>& codes = m_held[h].codes;
        codes.resize(way == 0 || codes.size() > 5 ? 0 : codes.size());
        switch (codes.empty() ? 0 : way) {
        case 0: holder.setError(HLVError::create(code, "text", way)); break;
        case 1: holder.prepend(code, std::wstring(9, L'w'), 7); break;
        case 2: holder.prependError(code, nullptr, new HLVError::Param(7)); break;
        default: holder.prependError(code, this, nullptr, nullptr, new HLVError::Param(-7));
        }
        codes.insert(codes.begin(), code);
        m_held[h].head = holder.getError();
    }

    void passOn(int way, int from, int to) {
        Holder &source = m_holders[from], &target = m_holders[to];
        switch (way) {
        case 0: std::as_const(source).copy(target); break;
        case 1: target = std::as_const(source); break;
        case 2: target = Holder(source); break;
        case 3: target.setError(HLVError::copy(source.getError())); break;
        case 4: source.move(target); break;
        case 5: target = std::move(source); break;
        case 6: target = Holder(std::move(source)); break;
        case 7: target.setError(std::unique_ptr<HLVError>(source.extractError())); break;
        default: target.setError(source.extractError());
        }
        ModelChain const passed = way < 4 ? m_held[from] : std::exchange(m_held[from], {});
        bool const isNew = way < 4 && passed.head != nullptr;
        expect(isNew == (target.getError() != passed.head), "a copy is none, or a move is one");
        m_held[to] = {target.getError(), passed.codes};
    }

    void add(int way, int h, int l) {
        l %= 2;
        int const code = m_held[h].code();
        List& list = m_lists[l];
        std::unique_ptr<HLVError> error(way == 0 ? nullptr : m_holders[h].extractError());
        bool const isAnError = way == 0   ? list += m_holders[h]
                               : way == 1 ? list += std::move(error)
                               : way == 2 ? list += error.get()
                                          : list += *std::make_unique<List>(std::move(error));
        // What a list does not take stays with the one who gave a pointer.
        static_cast<void>(way == 2 && code != 0 ? error.release() : nullptr);
        expect(isAnError == (code < 0), "the answer whether it is an error");
        m_listed[l].insert(m_listed[l].end(), code != 0 ? 1 : 0, m_held[h]);
        m_held[h] = {};
    }

    void join(int way, int to, int from) {
        to %= 2, from %= 2;
        List &target = m_lists[to], &source = m_lists[from];
        if (way == 0) {
            bool const hasErrors = to != from && source.getErrorCount() > 0;
            expect((target += source) == hasErrors, "the answer whether there are errors");
        } else {
            target.clear(), m_listed[to].clear();
            target = way == 1 ? std::move(source) : List(std::move(source));
        }
        auto const joined = std::exchange(m_listed[from], {});
        m_listed[to].insert(m_listed[to].end(), joined.begin(), joined.end());
    }

    // At the position that steps along the ring lead to.
    void change(int way, int h, int l) {
        l %= 2;
        List& list = m_lists[l];
        std::vector<ModelChain>& entries = m_listed[l];
        std::size_t const end = entries.size();
        std::size_t at = 0;
        List::iterator position = list.begin();
        for (int steps = m_choose(8); steps > 0; --steps) {
            bool const isForward = m_choose(2) == 0;
            isForward ? ++position : --position;
            at = (at + (isForward ? 1 : end)) % (end + 1);
            expect(position.begin() == (at == 0) && position.end() == (at == end), "a step");
        }
        m_steps += " at " + std::to_string(at) + " of " + std::to_string(end);
        changeAt(way, h, list, position);
        if (at == end || way == 6) {
            return;
        }
        ModelChain const entry = entries[at];
        bool const isReplaced = way > 1 && m_held[h].code() != 0;
        isReplaced ? void(entries[at] = m_held[h])
                   : void(entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(at)));
        m_held[h] = way == 0 ? entry : way == 1 ? m_held[h] : ModelChain();
    }

    void changeAt(int way, int h, List& list, List::iterator& position) {
        bool const isTaken = !position.end() && m_held[h].code() != 0;
        switch (way) {
        case 0: list.extract(position, m_holders[h]); break;
        case 1: list.remove(position); break;
        case 2:
        case 3: list.replace(position, m_holders[h]); break;
        case 4:
        case 5: {
            std::unique_ptr<HLVError> error(m_holders[h].extractError());
            if (way == 4 || !isTaken) {
                list.replace(position, std::move(error));
                error ? m_holders[h].setError(std::move(error)) : void();
            } else {
                list.replace(position, error.release());
            }
            break;
        }
        default: list.replace(position, *position); // by itself
        }
    }

    void findFaults() {
        for (int i = 0; i < 3; ++i) {
            std::string const fault = faultOf(m_holders[i].getError(), m_held[i]);
            expect(fault.empty() && bool(m_holders[i]) == !m_held[i].codes.empty(),
                   "holder " + std::to_string(i) + ": " + fault);
        }
        for (int i = 0; i < 2; ++i) {
            std::string const fault = faultOf(m_lists[i], m_listed[i]);
            expect(fault.empty(), "list " + std::to_string(i) + ": " + fault);
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
