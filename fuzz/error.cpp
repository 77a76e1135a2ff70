#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/Convert.h>

#include "Bytes.h"

using namespace Halvora;
using Holder = HLVError::Holder;

// The code of a chain's head, and the whole chain as it is printed.
using Chain = std::pair<int, std::wstring>;
Chain const none(0, L"<NONE>");

void compare(HLVError const* error, Chain const& chain) {
    HLVError const *base = nullptr, *found = nullptr;
    for (auto const* at = error; at != nullptr; base = at, at = at->getPrecedingError()) {
        found = found == nullptr && at->getCode() == 2 ? at : found;
        assert(at->getTag() == &none);
    }
    assert(base == nullptr || (error->getBaseError() == base && error->getByCode(2) == found));
    std::wstring const text = (std::wostringstream() << error).str();
    assert(text == chain.second &&
           (std::ostringstream() << error).str() == Convert::toAString(text));
}

void prepend(Holder& holder, Chain& chain, Bytes& bytes) {
    int const code = bytes.ConsumeIntegralInRange(-2, 2);
    int const place = bytes.ConsumeIntegralInRange(0, 2);
    std::string const text = bytes.ConsumeRandomLengthString(300);
    std::wstring value(text.begin(), text.end());
    // A wide stream takes this one for its end.
    std::replace(value.begin(), value.end(), static_cast<wchar_t>(WEOF), L'\x122');
    HLVError::Param* params[3] = {};
    params[place] = new HLVError::Param(value);
    holder.prependError(code, &none, params[0], params[1], params[2]);
    value = L"\n  P" + std::to_wstring(place + 1) + L": " + value;
    value += chain == none ? L"" : L"\n" + std::wstring(51, L'-') + L"\n" + chain.second;
    chain = {code, L"Error " + std::to_wstring(code) + value};
}

// The error goes through all that may own one, and a copy of it comes back.
void passOn(Holder& holder) {
    Holder target;
    holder.move(target);
    target.copy(holder);
    target = Holder(holder);
    HLVErrorException thrown(target.extractError(), "a"), copy(thrown), moved(std::move(copy));
    moved.addTrace("b");
    assert(moved.trace() == "a -> b" && moved.what() == moved.error()->messageA());
    holder.setError(holder.getError()), holder.setError(HLVError::copy(moved.error()));
}

// A holder and a list that take from each other, from the list through another one.
void run(Bytes& bytes) {
    Holder holder;
    HLVError::List list, other;
    Chain held = none;
    std::vector<Chain> listed;
    for (int left = 16; left > 0 && bytes.remaining_bytes() != 0; --left) {
        auto const steps = bytes.ConsumeIntegralInRange(0, 20);
        auto const at = listed.begin() + steps % static_cast<int>(listed.size() + 1);
        auto position = std::prev(std::next(list.begin(), steps + 2), 2);
        at == listed.end() ? list.remove(position) : void();
        switch (bytes.ConsumeIntegralInRange(0, at == listed.end() ? 2 : 6)) {
        case 0: prepend(holder, held, bytes); break;
        case 1: held != none ? passOn(holder) : void(); break;
        case 2:
            assert(other.add(holder) == (held.first < 0) && list.add(other) == (held.first < 0));
            listed.insert(listed.end(), held.first != 0, held), held = none;
            break;
        case 3: holder.setError(HLVError::copy(*position)), held = *at; break;
        case 4: list.extract(position, holder), held = *at, listed.erase(at); break;
        case 5: list.remove(position), listed.erase(at); break;
        default:
            list.replace(position, holder), at->swap(held);
            listed.erase(at, at + (at->first == 0)), held = none;
        }
        compare(holder.getError(), held);
        auto const isError = [](Chain const& chain) { return chain.first < 0; };
        auto const first = std::find_if(listed.begin(), listed.end(), isError);
        auto const last = std::find_if(listed.rbegin(), listed.rend(), isError);
        compare(list.getFirstError(), first == listed.end() ? none : *first);
        compare(list.getLastError(), last == listed.rend() ? none : *last);
        auto const all = static_cast<int>(listed.size());
        assert(list.getErrorCount() == std::count_if(listed.begin(), listed.end(), isError));
        assert(list.getErrorCount() + list.getWarningCount() == all && list.getCount() == all);
    }
}
