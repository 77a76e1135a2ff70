#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace Halvora::test {

// Convert::split or splitQuoted by a stream: line by line, with the separator as the line's end.
template <bool quoted, typename Text, typename Char = typename Text::value_type>
std::vector<Text>& splitByStream(Text const& text, Char separator, std::vector<Text>& fields) {
    fields.clear();
    std::basic_istringstream<Char> stream(text);
    for (Text item, rest; std::getline(stream, item, separator);) {
        bool const opens = quoted && !item.empty() && item.front() == '"';
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
