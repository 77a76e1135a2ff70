#include <tests/support/Utf8Reference.h>

#include "Bytes.h"

using namespace Halvora;

// Any bytes as UTF-8, and as wide and 16-bit text, against the table of sequences.
void run(Bytes& bytes) {
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    std::wstring wide(text.size() / sizeof(wchar_t), L'\0');
    HLVString units(text.size() / 2, 0);
    std::copy_n(text.data(), wide.size() * sizeof(wchar_t), reinterpret_cast<char*>(wide.data()));
    std::copy_n(text.data(), units.size() * 2, reinterpret_cast<char*>(units.data()));
    test::Utf8Outputs out;
    assert(out.decodes(text) && out.encodes(wide) && out.encodes(units));
}
