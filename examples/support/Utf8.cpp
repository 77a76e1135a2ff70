#include "Utf8.h"

#include <cstdint>

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

bool isCharacter(std::uint32_t code) {
    return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF);
}

// The number of bytes behind the first one; -1 if no sequence begins like this.
int trailingBytes(unsigned char first) {
    if (first < 0x80) {
        return 0;
    }
    if (first < 0xC2 || first > 0xF4) {
        return -1;
    }
    return first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
}

// Reads the character at the front of `bytes` and takes it off.
std::uint32_t takeCharacter(std::string_view& bytes) {
    constexpr std::uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    auto const first = static_cast<unsigned char>(bytes.front());
    int const trailing = trailingBytes(first);
    std::uint32_t code = trailing <= 0 ? first : first & (0x3Fu >> trailing);
    for (int i = 1; i <= trailing; ++i) {
        auto const at = static_cast<std::size_t>(i);
        if (at >= bytes.size() || (static_cast<unsigned char>(bytes[at]) & 0xC0) != 0x80) {
            bytes.remove_prefix(1);
            return replacement;
        }
        code = code << 6 | (static_cast<unsigned char>(bytes[at]) & 0x3Fu);
    }
    bool const isValid = trailing >= 0 && code >= smallest[trailing] && isCharacter(code);
    bytes.remove_prefix(isValid ? static_cast<std::size_t>(trailing) + 1 : 1);
    return isValid ? code : replacement;
}

} // namespace

std::wstring fromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        text += static_cast<wchar_t>(takeCharacter(bytes));
    }
    return text;
}

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    auto const put = [&bytes](std::uint32_t byte) { bytes += static_cast<char>(byte); };
    for (wchar_t const c : text) {
        auto code = static_cast<std::uint32_t>(c);
        if (!isCharacter(code)) {
            code = replacement;
        }
        if (code < 0x80) {
            put(code);
            continue;
        }
        int const trailing = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        put((0xFFu << (7 - trailing) & 0xFF) | code >> 6 * trailing);
        for (int i = trailing - 1; i >= 0; --i) {
            put(0x80 | (code >> 6 * i & 0x3F));
        }
    }
    return bytes;
}
