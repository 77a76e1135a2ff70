#pragma once

#include <Halvora/text/Utf8.h>

#include <string>
#include <string_view>

// Files and terminals speak UTF-8, the library wide and 16-bit text.

inline std::wstring fromUtf8(std::string_view text) {
    std::wstring wide;
    Halvora::Utf8::toWString(wide, text);
    return wide;
}

inline std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    Halvora::Utf8::fromWString(bytes, text);
    return bytes;
}

inline std::string toUtf8(Halvora::HLVString const& text) {
    std::string bytes;
    Halvora::Utf8::fromHLVString(bytes, text);
    return bytes;
}
