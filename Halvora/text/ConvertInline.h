#ifndef HALVORA_TEXT_CONVERTINLINE_H // the two headers include each other: no `#pragma once`
#define HALVORA_TEXT_CONVERTINLINE_H

// The templates of Convert, whose header includes this one.

#include <Halvora/text/Convert.h>

#include <algorithm>
#include <functional>

namespace Halvora {

template <typename Text, typename View>
void Convert::_trimLeftView(Text& text, View set) {
    std::size_t const first = text.find_first_not_of(set);
    if (first == View::npos) {
        return;
    }
    if constexpr (std::is_same_v<Text, View>) {
        text.remove_prefix(first);
    } else {
        text.erase(0, first);
    }
}

template <typename Text, typename View>
void Convert::_trimRightView(Text& text, View set) {
    std::size_t const last = text.find_last_not_of(set);
    if (last == View::npos) {
        return;
    }
    if constexpr (std::is_same_v<Text, View>) {
        text.remove_suffix(text.size() - last - 1);
    } else {
        text.erase(last + 1);
    }
}

// Whether the text is in a string that is going to be replaced.
template <typename View, typename Field>
bool Convert::_liesIn(View text, std::vector<Field> const& fields) {
    std::less<typename View::const_pointer> const before;
    bool isWithin = false;
    if constexpr (!std::is_same_v<View, Field>) {
        for (Field const& field : fields) {
            auto const* const end = field.data() + field.size();
            isWithin |= !before(text.data(), field.data()) && before(text.data(), end);
        }
    }
    return isWithin;
}

template <typename View, typename Field>
std::vector<Field>& Convert::_splitView(View text, typename View::value_type separator,
                                        bool isQuoted, std::vector<Field>& fields) {
    if (_liesIn(text, fields)) {
        std::basic_string<typename View::value_type> const copy(text);
        return _splitView(View(copy), separator, isQuoted, fields);
    }
    constexpr typename View::value_type quote = 0x22;
    std::size_t count = 0;
    auto const add = [&fields, &count, text](std::size_t begin, std::size_t end) {
        View const field = text.substr(begin, end - begin);
        count < fields.size() ? fields[count] = field : fields.emplace_back(field);
        ++count;
    };
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const begin = at;
        std::size_t const end = std::min(text.find(separator, begin), text.size());
        at = std::min(end + 1, text.size());
        bool const opens = isQuoted && begin != end && text[begin] == quote;
        if (!opens || begin + 1 == end) {
            add(begin, end);
        } else if (text[end - 1] == quote) {
            add(begin + 1, end - 1);
        } else if (at < text.size()) { // else it is dropped
            std::size_t const close = std::min(text.find(quote, at), text.size());
            add(begin + 1, close);
            at = std::min(close + 1, text.size());
            at += at < text.size() && text[at] == separator ? 1 : 0;
        }
    }
    fields.resize(count);
    return fields;
}

} // namespace Halvora

#endif
