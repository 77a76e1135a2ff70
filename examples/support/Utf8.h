#pragma once

#include <string>
#include <string_view>

// Files and terminals speak UTF-8, the library one element a character: these two stand between.

// Bytes that are not UTF-8 become U+FFFD, each by itself.
std::wstring fromUtf8(std::string_view bytes);

// Numbers that are no character (surrogates, above U+10FFFF) become U+FFFD.
std::string toUtf8(std::wstring_view text);
