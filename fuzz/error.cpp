#include <Halvora/error/HLVError.h>
#include <Halvora/text/Convert.h>

#include "Bytes.h"

using namespace Halvora;

// The code of a chain's head, and the whole chain as it is printed.
using Chain = std::pair<int, std::wstring>;
Chain const none(0, L"<NONE>");

void compare(HLVError const* error, Chain const& chain) {
    std::wostringstream wide;
    std::ostringstream narrow;
    wide << error;
    narrow << error;
    assert(wide.str() == chain.second && narrow.str() == Convert::toAString(chain.second));
}

void prepend(HLVError::Holder& holder, Chain& chain, Bytes& bytes) {
    int const code = bytes.ConsumeIntegralInRange(-2, 2);
    int const place = bytes.ConsumeIntegralInRange(0, 2);
    std::string const text = bytes.ConsumeRandomLengthString(300);
    std::wstring value(text.begin(), text.end());
    // A wide stream takes this one for its end.
    std::replace(value.begin(), value.end(), static_cast<wchar_t>(WEOF), L'\x122');
    HLVError::Param* params[3] = {};
    params[place] = new HLVError::Param(value);
    holder.prependError(code, params[0], params[1], params[2]);
    value = L"\n  P" + std::to_wstring(place + 1) + L": " + value;
    value += chain == none ? L"" : L"\n" + std::wstring(51, L'-') + L"\n" + chain.second;
    chain = {code, L"Error " + std::to_wstring(code) + value};
}

// A holder and a list that take from each other.
void run(Bytes& bytes) {
    HLVError::Holder holder;
    HLVError::List list;
    Chain held = none;
    std::vector<Chain> listed;
    for (int left = 12; left > 0 && bytes.remaining_bytes() != 0; --left) {
        auto const steps = bytes.ConsumeIntegralInRange(0u, 20u);
        auto const at = listed.begin() + steps % (listed.size() + 1);
        auto position = list.begin();
        for (unsigned i = 0; i < steps; ++i) {
            ++position;
        }
        compare(*position, at == listed.end() ? none : *at);
        int const operation = bytes.ConsumeIntegralInRange(0, at == listed.end() ? 1 : 4);
        if (operation == 0) {
            prepend(holder, held, bytes);
        } else if (operation == 1) {
            HLVError::List other(holder);
            assert(list.add(other) == (held.first < 0));
            listed.insert(listed.end(), held.first != 0, held);
            held = none;
        } else if (operation == 2) {
            holder.setError(HLVError::copy(*position));
            held = *at;
        } else if (operation == 3) {
            list.extract(position, holder);
            held = *at;
            listed.erase(at);
        } else {
            list.replace(position, holder);
            *at = held;
            listed.erase(at, at + (held.first == 0));
            held = none;
        }
        compare(holder.getError(), held);
        auto const isError = [](Chain const& chain) { return chain.first < 0; };
        assert(list.getErrorCount() == std::count_if(listed.begin(), listed.end(), isError));
        assert(list.getErrorCount() + list.getWarningCount() == static_cast<int>(listed.size()));
    }
}
