#include <Halvora/text/Convert.h>

#include "Bytes.h"

using namespace Halvora;

// Against line extraction. The text is one of the fields that are replaced.
template <typename Text, typename Char>
void compareFields(Text const& text, Char separator, bool quoted) {
    std::basic_istringstream<Char> stream(text);
    std::vector<Text> expected;
    for (Text item, tail; std::getline(stream, item, separator);) {
        bool const opens = quoted && !item.empty() && item.front() == '"';
        if (!opens || item.back() == '"') {
            expected.push_back(opens && item.size() > 1 ? item.substr(1, item.size() - 2) : item);
        } else if (std::getline(stream, tail, Char('"'))) {
            expected.push_back(item.substr(1) + separator + tail);
            stream.peek() == Text::traits_type::to_int_type(separator) ? stream.get() : 0;
        }
    }
    std::vector<Text> fields(3, text);
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
    for (bool const quoted : {false, true}) {
        compareFields(text, delimiter.c_str()[0], quoted);
        compareFields(wide, static_cast<wchar_t>(delimiter.c_str()[0] & 0x7F), quoted);
    }
    compareTokens(text.c_str(), delimiter.c_str());
}
