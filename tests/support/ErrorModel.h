#pragma once

#include <Halvora/error/HLVError.h>
#include <Halvora/text/Convert.h>

#include <sstream>
#include <string>
#include <vector>

namespace Halvora::test {

// One error as it has to be. An absent parameter is an empty text.
struct ModelError {
    HLVError const* address = nullptr;
    int code = 0;
    void const* tag = nullptr;
    std::wstring params[3] = {};
};

// Newest first; empty for no error.
using ModelChain = std::vector<ModelError>;

inline int codeOf(ModelChain const& chain) {
    return chain.empty() ? 0 : chain.front().code;
}

inline std::wstring printed(ModelError const& error) {
    std::wstring text = L"Error " + std::to_wstring(error.code);
    for (int i = 0; i < 3; ++i) {
        if (!error.params[i].empty()) {
            text += L"\n  P" + std::to_wstring(i + 1) + L": " + error.params[i];
        }
    }
    return text;
}

inline std::wstring printed(ModelChain const& chain) {
    std::wstring text = chain.empty() ? L"<NONE>" : printed(chain.front());
    for (std::size_t i = 1; i < chain.size(); ++i) {
        text += L"\n" + std::wstring(51, L'-') + L"\n" + printed(chain[i]);
    }
    return text;
}

template <typename Char>
std::basic_string<Char> printed(HLVError const* error) {
    std::basic_ostringstream<Char> stream;
    stream << error;
    return stream.str();
}

// What is wrong with a chain, its narrow and its wide text; empty if nothing is.
inline std::string faultOf(HLVError const* first, ModelChain const& chain) {
    HLVError const* error = first;
    for (ModelError const& expected : chain) {
        if (error != expected.address || error->getTag() != expected.tag) {
            return "is another object, or has another tag, than " +
                   Convert::toAString(printed(expected));
        }
        if (first->getByCode(expected.code)->getCode() != expected.code) {
            return "is not found by its code: " + Convert::toAString(printed(expected));
        }
        error = error->getPrecedingError();
    }
    if (error != nullptr || (first != nullptr && first->getBaseError() != chain.back().address)) {
        return "does not end where it should";
    }
    std::wstring const expected = printed(chain);
    if (printed<wchar_t>(first) != expected ||
        printed<char>(first) != Convert::toAString(expected)) {
        return "prints " + printed<char>(first) + "\nand has to print " +
               Convert::toAString(expected);
    }
    return {};
}

// What is wrong with a list: its entries in order, its counts, its first and last error.
inline std::string faultOf(HLVError::List const& list, std::vector<ModelChain> const& entries) {
    HLVError const *first = nullptr, *last = nullptr;
    int errors = 0;
    auto at = list.begin();
    for (ModelChain const& entry : entries) {
        std::string const fault = at.end() ? "is missing" : faultOf(*at, entry);
        if (!fault.empty()) {
            return "has an entry that " + fault;
        }
        if (codeOf(entry) < 0) {
            errors += 1;
            first = first == nullptr ? *at : first;
            last = *at;
        }
        ++at;
    }
    auto const count = static_cast<int>(entries.size());
    bool const isCounted = list.getCount() == count && list.getErrorCount() == errors &&
                           list.getWarningCount() == count - errors;
    return !at.end() || *at != nullptr || at != list.end() ? "does not end behind its last entry"
           : !isCounted                                    ? "counts wrongly"
           : list.getFirstError() != first || list.getLastError() != last
               ? "has another first or last error"
               : "";
}

} // namespace Halvora::test
