#include <Halvora/types/ParseBinary16.h>

namespace Halvora {

namespace {

// Programs that were built before these were inline find them in the library.
template <typename View>
using Parse = ParseResult (*)(View, Binary16&) noexcept;
[[gnu::used]] constexpr Parse<std::string_view> narrow = parseBinary16;
[[gnu::used]] constexpr Parse<std::wstring_view> wide = parseBinary16;

} // namespace

} // namespace Halvora
