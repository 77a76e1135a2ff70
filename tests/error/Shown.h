#pragma once

#include <Halvora/Halvora.h>
#include <tests/support/Memory.h>

#include <locale>
#include <sstream>
#include <string>

namespace Halvora::test {

using ios = std::ios_base;
using Byte = unsigned char;
using Unit = unsigned short;
using Holder = HLVError::Holder;
using List = HLVError::List;
using Param = HLVError::Param;

template <typename Char>
struct Grouping : std::numpunct<Char> {
    Char do_thousands_sep() const override { return '_'; }
    std::string do_grouping() const override { return "\3"; }
};
inline std::locale grouped() {
    return std::locale(std::locale(std::locale(), new Grouping<char>), new Grouping<wchar_t>);
}

// What is written to a wide stream; a narrow one must show the same, narrowed.
template <typename T>
std::wstring text(T const& value, ios::fmtflags flags = {}, int width = 0,
                  std::locale const& locale = {}) {
    std::wostringstream wide;
    std::ostringstream narrow;
    auto const write = [&](auto& stream) {
        stream.imbue(locale);
        stream.flags(flags);
        stream.width(width);
        stream << value;
    };
    write(wide);
    write(narrow);
    EXPECT_EQ(Convert::toAString(wide.str()), narrow.str());
    return wide.str();
}

// -5 over -4 over the warning 3.
inline Holder chainOfThree() {
    Holder holder = HLVError::create(3, L"base");
    holder.prependError(-4, &holder, nullptr, new Param(8), nullptr);
    holder.prepend(-5, 7, true, std::string(30, 't'));
    return holder;
}

} // namespace Halvora::test
