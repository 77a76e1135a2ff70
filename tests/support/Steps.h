#pragma once

#include <deque>
#include <ostream>
#include <sstream>
#include <string>
#include <type_traits>

namespace Halvora::test {

// An argument or result: a number as it is, a text as its length and its first elements.
template <typename T>
std::string shown(T const& value) {
    std::ostringstream stream;
    if constexpr (std::is_arithmetic_v<T>) {
        stream << +value;
    } else {
        stream << value.size() << ':' << std::hex;
        for (std::size_t i = 0; i < value.size() && i < 12; ++i) {
            auto const element =
                static_cast<std::make_unsigned_t<typename T::value_type>>(value[i]);
            stream << ' ' << +element;
        }
        stream << (value.size() > 12 ? " ..." : "");
    }
    return stream.str();
}

// The steps of a random program, of which a failure shows the last ones.
class Steps {
public:
    template <typename... Arguments>
    void add(std::string const& operation, Arguments const&... arguments) {
        m_last.push_back("#" + std::to_string(++m_count) + " " + operation);
        ((m_last.back() += " (" + shown(arguments) + ")"), ...);
        if (m_last.size() > 5) {
            m_last.pop_front();
        }
    }
    friend std::ostream& operator<<(std::ostream& stream, Steps const& steps) {
        stream << "the last steps (a text is its length and first elements, in hexadecimal):\n";
        for (std::string const& step : steps.m_last) {
            stream << "  " << step << '\n';
        }
        return stream;
    }

private:
    std::deque<std::string> m_last;
    unsigned m_count = 0;
};

} // namespace Halvora::test
