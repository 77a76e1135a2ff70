#pragma once

#include <Halvora/Halvora.h>
#include <tests/support/Memory.h>

#include <sstream>
#include <string>

namespace Halvora::test {

using ios = std::ios_base;
using Byte = unsigned char;
using Unit = unsigned short;
using Holder = HLVError::Holder;
using List = HLVError::List;
using Param = HLVError::Param;

// What `put` writes to a wide stream; a narrow one must show the same, with a space for every
// character that it cannot hold.
template <typename Put>
std::wstring shown(Put put) {
    std::wostringstream wide;
    std::ostringstream narrow;
    put(wide);
    put(narrow);
    std::string expected;
    for (wchar_t const c : wide.str()) {
        expected += static_cast<unsigned>(c) > 0xFF ? ' ' : static_cast<char>(c);
    }
    EXPECT_EQ(expected, narrow.str());
    return wide.str();
}

template <typename T>
std::wstring text(T const& value, ios::fmtflags flags = {}, std::size_t width = 0) {
    return shown([&](auto& stream) {
        stream.flags(flags);
        stream.width(static_cast<std::streamsize>(width));
        EXPECT_EQ(&stream, &(stream << value));
    });
}

// A chain of four: -5 over -4 over -4 over the warning 3.
inline Holder chainOfFour() {
    Holder holder = HLVError::create(3, L"base");
    holder.prependError(-4, nullptr, nullptr, new Param(9));
    holder.prependError(-4, &holder, nullptr, new Param(8), nullptr);
    holder.prepend(-5, 7, true, std::string(30, 't'));
    return holder;
}

// Each of at least so many allocations that `act` makes on a fresh `T` fails in turn, and changes
// and leaks nothing: state(T) stays.
template <typename T, typename Act, typename State>
void failsCleanly(char const* name, int atLeast, Act act, State state) {
    SCOPED_TRACE(name);
    auto const before = state(T());
    auto const check = [&](T const& left) { EXPECT_EQ(before, state(left)); };
    EXPECT_LE(atLeast, failEachAllocation([] { return T(); }, act, check));
}

} // namespace Halvora::test
