#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace Halvora::test {

// Convert::split by a stream: line by line, with the separator as the line's end.
template <typename Text>
std::vector<Text>& splitByStream(Text const& text, typename Text::value_type separator,
                                 std::vector<Text>& fields) {
    fields.clear();
    std::basic_istringstream<typename Text::value_type> stream(text);
    for (Text field; std::getline(stream, field, separator);) {
        fields.push_back(field);
    }
    return fields;
}

// Convert::splitQuoted in the same way.
template <typename Text>
std::vector<Text>& splitQuotedByStream(Text const& text, typename Text::value_type separator,
                                       std::vector<Text>& fields) {
    using Char = typename Text::value_type;
    fields.clear();
    std::basic_istringstream<Char> stream(text);
    for (Text item, rest; std::getline(stream, item, separator);) {
        bool const opens = !item.empty() && item.front() == '"';
        if (!opens || item.back() == '"') {
            fields.push_back(opens && item.size() > 1 ? item.substr(1, item.size() - 2) : item);
        } else if (std::getline(stream, rest, Char('"'))) {
            fields.push_back(item.substr(1) + separator + rest);
            if (Char next; stream.get(next) && next != separator) {
                stream.unget();
            }
        }
    }
    return fields;
}

} // namespace Halvora::test
