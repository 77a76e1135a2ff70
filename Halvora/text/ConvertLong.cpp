#include <Halvora/text/detail/Encoding.h>

#ifdef HALV_LONG_RUNS

#    include <Halvora/text/detail/LongX86.h>

namespace Halvora::detail {

// What the processor has is read once, when the library is loaded; until then it has nothing.
template <typename To, typename From>
void convertLong(To* out, From const* in, std::size_t n) noexcept {
    if constexpr (sizeof(To) > sizeof(From)) {
        if (__builtin_cpu_supports("avx512bw")) {
            convertRunAvx512(out, in, n);
            return;
        }
    }
    if (__builtin_cpu_supports("avx2")) {
        convertRunAvx2(out, in, n, replacement);
        return;
    }
    convertBlocks(out, in, n);
}

template void convertLong(wchar_t*, char const*, std::size_t) noexcept;
template void convertLong(unsigned short*, char const*, std::size_t) noexcept;
template void convertLong(wchar_t*, unsigned short const*, std::size_t) noexcept;
template void convertLong(unsigned short*, wchar_t const*, std::size_t) noexcept;
template void convertLong(char*, unsigned short const*, std::size_t) noexcept;
template void convertLong(char*, wchar_t const*, std::size_t) noexcept;

} // namespace Halvora::detail

#endif
