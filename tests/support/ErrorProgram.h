#pragma once

#include <Halvora/error/HLVError.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Halvora::test {

// A chain as it has to be: its newest error, and the codes from it down, those with a tag marked.
struct ModelChain {
    HLVError const* head = nullptr;
    std::string codes = {};

    int code() const { return codes.empty() ? 0 : std::stoi(codes); }
    std::string text() const {
        return '(' + std::to_string(reinterpret_cast<std::uintptr_t>(head)) + codes + ')';
    }
};

// As it is, with a note when it finds other errors in itself.
inline ModelChain chainOf(HLVError const* error) {
    ModelChain chain{error};
    HLVError const *base = error, *two = nullptr; // the first of that code
    for (auto const* at = error; at != nullptr; at = at->getPrecedingError()) {
        chain.codes += ' ' + std::to_string(at->getCode()) + (at->getTag() != nullptr ? "t" : "");
        base = at;
        two = two == nullptr && at->getCode() == 2 ? at : two;
    }
    bool const isFound =
        error == nullptr || (error->getBaseError() == base && error->getByCode(2) == two);
    chain.codes += isFound ? "" : ", wrong search";
    return chain;
}

// A list as it is, with a note when what it says of itself is something else.
inline std::string textOf(HLVError::List const& list) {
    std::string text;
    std::vector<HLVError const*> errors{nullptr};
    int count = 0, found = 0;
    for (HLVError const* error : list) {
        text += chainOf(error).text();
        error->getCode() < 0 ? errors.push_back(error) : void();
        found = static_cast<int>(errors.size()) - 1;
        ++count;
    }
    bool const isCounted = list.getCount() == count && list.getErrorCount() == found &&
                           list.getWarningCount() == count - found;
    bool const isSearched =
        list.getFirstError() == errors[found > 0] && list.getLastError() == errors.back();
    return text + (isCounted ? "" : ", wrong counts") + (isSearched ? "" : ", wrong first or last");
}

// Holders and lists that pass errors on in every way there is, beside their model. In every second
// step each allocation fails once, which has to leave everything as it was.
class ErrorProgram {
public:
    using Choose = std::function<int(int)>; // choose(n) gives 0 to n - 1: dice, or a fuzzer's bytes
    using Fail = std::function<void(long)>; // the n-th allocation from now on fails; 0: none

    ErrorProgram(Choose choose, Fail fail) : m_choose(std::move(choose)), m_fail(std::move(fail)) {}

    // One operation. What is wrong then, with the step and those before; empty if nothing is.
    std::string step() {
        Step{*this}.take();
        m_steps.erase(0, m_steps.size() > 900 ? m_steps.find('\n', m_steps.size() - 900) : 0);
        return m_fault.empty() ? "" : m_fault + "The steps:" + m_steps;
    }

private:
    using Holder = HLVError::Holder;
    using List = HLVError::List;
    using Param = HLVError::Param;

    // An error on its way. What nobody takes goes back.
    struct Lent : std::unique_ptr<HLVError> {
        explicit Lent(Holder& from) : unique_ptr(from.extractError()), owner(from) {}
        ~Lent() { owner.setError(release()); }
        Holder& owner;
    };

    // A step with two holders and two lists, which may be the same, at a position of the first.
    struct Step {
#define DO(call, model) \
    perform(            \
        #call, [&] { call; }, [&] { model; })
        // clang-format off
        void take() {
            switch (pick(H.codes.size() > 15 ? 1 : 28)) {
            case 0: return DO(h.setError(HLVError::create(code, "text")), (H = {}, grow()));
            case 1: return DO(h.prepend(code, std::wstring(9, L'w'), 7), grow());
            case 2: return DO(h.prependError(code, new Param(7)), grow());
            case 3: return DO(h.prependError(code, nullptr, new Param(7)), grow());
            case 4: return DO(h.prependError(code, this, nullptr, nullptr, new Param(7)), grow("t"));
            case 5: return DO(h.copy(g), copy());
            case 6: return DO(g = std::as_const(h), copy());
            case 7: return DO(g = Holder(h), copy());
            case 8: return DO(g.setError(HLVError::copy(h.getError())), copy());
            case 9: return DO(h.move(g), G = taken());
            case 10: return DO(g = std::move(h), G = taken());
            case 11: return DO(g = Holder(std::move(h)), G = taken());
            case 12: return DO(g.setError(h.extractError()), G = taken());
            case 13: return DO(g.setError(std::unique_ptr<HLVError>(h.extractError())), G = taken());
            case 14: return DO(answer = l += h, append({taken()}));
            case 15: return DO(answer = l += Lent(h), append({taken()}));
            case 16: return DO(answer = l += *std::make_unique<List>(Lent(h)), append({taken()}));
            case 17: return DO(answer = l += k, append(joined()));
            case 18: return DO(l = std::move(k), L = std::exchange(K, {}));
            case 19: return DO(l = List(std::move(k)), L = std::exchange(K, {}));
            case 20: return DO(l.extract(position(), h), (H = at < L.size() ? L[at] : H, replace({})));
            case 21: return DO(l.remove(position()), replace({}));
            case 22: return DO(k.remove(position()), &k == &l ? replace({}) : void());
            case 23: return DO(l.replace(position(), h), replace(at < L.size() ? taken() : H));
            case 24: return DO(l.replace(position(), Lent(h)), replace(at < L.size() ? taken() : H));
            case 25: return DO(l.clear(), L.clear());
            case 26: return DO(h.setError(h.getError()), void());
            default: return DO(l.replace(position(), *position()), void()); // by itself
            }
        }
        // clang-format on
#undef DO

        // What the holder or the other list gave away.
        ModelChain taken() {
            return std::exchange(H, {});
        }
        std::vector<ModelChain> joined() {
            return &L != &K ? std::exchange(K, {}) : std::vector<ModelChain>();
        }

        void grow(char const* tag = "") {
            H = {h.getError(), ' ' + std::to_string(code) + tag + H.codes};
        }
        void copy() {
            program.expect("A copy", H.head != nullptr, g.getError() != H.head);
            G = {g.getError(), H.codes};
        }
        void append(std::vector<ModelChain> const& chains) {
            bool hasErrors = false;
            for (ModelChain const& chain : chains) {
                L.insert(L.end(), chain.code() != 0 ? 1 : 0, chain);
                hasErrors = hasErrors || chain.code() < 0;
            }
            program.expect("The answer whether there are errors", hasErrors, answer);
        }
        void replace(ModelChain const& chain) {
            if (at < L.size()) {
                L.erase(L.begin() + static_cast<std::ptrdiff_t>(at));
                L.insert(L.begin() + static_cast<std::ptrdiff_t>(at), chain.code() != 0, chain);
            }
            program.expect("Being at the end behind a removal", true, found.end());
        }

        // Along the ring, forward and then back.
        List::iterator& position() {
            found = l.begin();
            for (std::size_t step = 0; step < forward + back; ++step) {
                step < forward ? ++found : --found;
            }
            program.expect("Being at the beginning", at == 0, found.begin());
            program.expect("Being at the end", at == L.size(), found.end());
            return found;
        }

        // Carries the call out until no allocation fails any more, then changes the model.
        template <typename Act, typename Model>
        void perform(std::string const& call, Act act, Model model) {
            program.m_steps += "\n  h, g, l, k, position, code are";
            for (int const number : {a, b, c, d, static_cast<int>(at), code}) {
                program.m_steps += ' ' + std::to_string(number);
            }
            program.m_steps += ": " + call;
            for (long failing = pick(2); failing >= 0; ++failing) {
                std::string const when = "When allocation " + std::to_string(failing) + " fails, ";
                program.m_fail(failing);
                try {
                    act();
                    failing = -2;
                } catch (std::bad_alloc const&) {
                }
                program.m_fail(0);
                failing < 0 ? model() : void();
                program.compare(failing < 0 ? "Now " : when);
            }
        }

        int pick(int n) {
            return program.m_choose(n);
        }

        ErrorProgram& program;
        int a = pick(3), b = pick(3), c = pick(2), d = pick(2), code = pick(5) - 2;
        Holder &h = program.m_holders[a], &g = program.m_holders[b];
        List &l = program.m_lists[c], &k = program.m_lists[d];
        ModelChain &H = program.m_held[a], &G = program.m_held[b];
        std::vector<ModelChain>&L = program.m_listed[c], &K = program.m_listed[d];
        std::size_t forward = std::size_t(pick(8)), back = std::size_t(pick(8));
        std::size_t at = (forward + L.size() * back) % (L.size() + 1);
        bool answer = false;
        List::iterator found = {};
    };

    template <typename T>
    void expect(std::string const& what, T const& expected, T const& actual) {
        std::ostringstream text;
        text << what << " is\n  " << actual << " instead of\n  " << expected << '\n';
        m_fault += expected == actual ? "" : text.str();
    }

    void compare(std::string const& when) {
        for (int i = 0; i < 3; ++i) {
            HLVError const* const error = m_holders[i].getError();
            expect(when + "holder " + std::to_string(i), m_held[i].text(), chainOf(error).text());
            expect(when + "what a holder says", error != nullptr, bool(m_holders[i]));
        }
        for (int i = 0; i < 2; ++i) {
            std::string entries;
            for (ModelChain const& entry : m_listed[i]) {
                entries += entry.text();
            }
            expect(when + "list " + std::to_string(i), entries, textOf(m_lists[i]));
        }
    }

    Choose m_choose;
    Fail m_fail;
    std::string m_steps, m_fault;
    Holder m_holders[3];
    List m_lists[2];
    ModelChain m_held[3];
    std::vector<ModelChain> m_listed[2];
};

} // namespace Halvora::test
