#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace Halvora::test {

inline unsigned draw(std::size_t end) { // 0 to end - 1
    static std::mt19937 random;
    return static_cast<unsigned>(random() % end);
}

// No unit is zero; some characters lie above U+FFFF, or below zero where wchar_t has a sign.
inline std::wstring anyText(std::size_t length) {
    std::wstring text(length, L'\0');
    for (wchar_t& c : text) {
        c = static_cast<wchar_t>(draw(0xFFFF) + 1 + draw(3) * 0x7FFF0000);
    }
    return text;
}

// length:u16le unit:u16le[], the units being the low 16 bits of the characters. The length counts
// `absent` units more than there are.
inline std::string rawForm(std::wstring const& text, std::size_t absent = 0) {
    std::string bytes;
    for (auto const unit : static_cast<wchar_t>(text.size() + absent) + text) {
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    }
    return bytes;
}

template <typename Text>
std::string bytesOf(Text const& text) {
    return {reinterpret_cast<char const*>(&text), text.size()};
}

struct SizeRow {
    std::size_t field;     // the number that stands in the length field
    std::size_t available; // bytes
    std::size_t expected;
};

// Asks rows of one class, whose forms have `head` bytes before the units. The bytes lie alone on
// the heap, where a sanitizer sees what is read beyond them.
template <typename Text>
void checkSizes(std::size_t head, std::vector<SizeRow> const& rows) {
    for (auto const& [field, available, expected] : rows) {
        std::vector<char> bytes(std::max(head, available), '\0');
        bytes[head - 2] = static_cast<char>(field & 0xFF);
        bytes[head - 1] = static_cast<char>(field >> 8);
        std::vector<char> const memory(bytes.begin(), bytes.begin() + static_cast<long>(available));
        EXPECT_EQ(expected, Text::sizeWithin(memory.data(), available))
            << "length field " << field << ", " << available << " bytes";
    }
    EXPECT_EQ(0u, Text::sizeWithin(nullptr, 1000));
}

} // namespace Halvora::test
