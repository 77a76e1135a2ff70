#include <Halvora/text/Utf8.h>

#include <tests/support/Utf8Reference.h>

#include "Bytes.h"

using namespace Halvora;

static void compare(Utf8Result const& result, test::Decoded const& expected) {
    assert(result.replaced == expected.result.replaced);
    assert(result.position == expected.result.position);
}

// Any bytes from UTF-8, and the same bytes as units to UTF-8, against the table of sequences.
void run(Bytes& bytes) {
    std::string const text = bytes.ConsumeRemainingBytesAsString();
    test::Decoded const decoded = test::slowDecode(text);
    std::wstring wide(3, L'x');
    HLVString units(300, 'x');
    compare(Utf8::toWString(wide, text), decoded);
    compare(Utf8::toHLVString(units, text), decoded);
    assert(wide == test::slowUnits<std::wstring>(decoded.codes));
    assert(units == test::slowUnits<HLVString>(decoded.codes));
    assert(Utf8::isValid(text) == (decoded.result.replaced == 0));

    wide.assign(text.size() / sizeof(wchar_t), L'\0');
    units.assign(text.size() / 2, 0);
    std::copy_n(text.data(), wide.size() * sizeof(wchar_t), reinterpret_cast<char*>(wide.data()));
    std::copy_n(text.data(), units.size() * 2, reinterpret_cast<char*>(units.data()));
    std::string out = "x";
    compare(Utf8::fromWString(out, wide), test::slowDecodeUnits(wide));
    assert(out == test::slowEncode(test::slowDecodeUnits(wide).codes));
    compare(Utf8::fromHLVString(out, units), test::slowDecodeUnits(units));
    assert(out == test::slowEncode(test::slowDecodeUnits(units).codes));
}
