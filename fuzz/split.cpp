#include <Halvora/text/Convert.h>

#include <tests/support/SlowSplit.h>

#include "Bytes.h"

using namespace Halvora;

// The text is one of the fields that are replaced.
template <bool quoted, typename Text, typename Char>
void compareFields(Text const& text, Char separator) {
    std::vector<Text> expected, fields(3, text);
    test::splitByStream<quoted>(text, separator, expected);
    assert(expected == (quoted ? Convert::splitQuoted(fields[1], separator, fields)
                               : Convert::split(fields[1], separator, fields)));
}

// A delimiter with nothing behind it belongs to the last token.
void compareTokens(std::string rest, std::string const& delimiter) {
    std::vector<char> text(rest.c_str(), rest.c_str() + rest.size() + 1);
    char* next = nullptr;
    char* token = Convert::token(text.data(), delimiter.c_str(), next);
    while (!delimiter.empty() && rest.find(delimiter) < rest.size() - delimiter.size()) {
        assert(token == rest.substr(0, rest.find(delimiter)));
        rest.erase(0, rest.find(delimiter) + delimiter.size());
        token = Convert::token(nullptr, delimiter.c_str(), next);
    }
    assert(token == rest && next == nullptr);
}

void run(Bytes& bytes) {
    std::string const delimiter = bytes.ConsumeBytesAsString(bytes.ConsumeIntegralInRange(0u, 3u));
    std::string const text = bytes.ConsumeBytesAsString(200);
    std::wstring wide(text.begin(), text.end());
    // A wide stream takes this one for its end.
    std::replace(wide.begin(), wide.end(), static_cast<wchar_t>(WEOF), L'\x122');
    auto const separator = static_cast<wchar_t>(delimiter.c_str()[0] & 0x7F);
    compareFields<false>(text, delimiter.c_str()[0]);
    compareFields<true>(text, delimiter.c_str()[0]);
    compareFields<false>(wide, separator);
    compareFields<true>(wide, separator);
    compareTokens(text.c_str(), delimiter.c_str());
}
