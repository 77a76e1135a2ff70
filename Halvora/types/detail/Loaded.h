#pragma once

namespace Halvora::detail {

// Says that memory is short and ends the process with status 127, as the system's loader does.
[[noreturn]] void endLoading() noexcept;

// What make() gives, for a static that is set up while the library is loaded: nobody can catch what
// that throws.
template <typename Make>
auto loaded(Make make) noexcept {
    try {
        return make();
    } catch (...) {
        endLoading();
    }
}

} // namespace Halvora::detail
