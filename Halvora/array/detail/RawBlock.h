#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace Halvora::detail {

#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
#        define HALVTYPES_EXACT_BLOCKS
#    endif
#elif defined(__SANITIZE_ADDRESS__)
#    define HALVTYPES_EXACT_BLOCKS
#endif

// Owns the storage of an array of fixed-width elements, or none. Its length is the array's to know.
// The C library's realloc grows it, where there is room without a copy.
class RawBlock {
public:
    using Data = unsigned char;

    // Owns from now on what release() gave, or nothing if it is null.
    explicit RawBlock(Data* bytes) noexcept : m_bytes(bytes) {}

    // `size` bytes of any value; no storage for 0.
    static RawBlock ofSize(std::size_t size) {
        RawBlock block(nullptr);
        if (size != 0) {
            block.resize(size);
        }
        return block;
    }

    RawBlock(RawBlock&& other) noexcept : m_bytes(other.release()) {}
    RawBlock& operator=(RawBlock&&) = delete;
    ~RawBlock() { std::free(m_bytes); }

    Data* data() const noexcept { return m_bytes; }

    // Gives up the storage: the caller owns it.
    Data* release() noexcept { return std::exchange(m_bytes, nullptr); }

    // Becomes `size` bytes long, which is not 0, and keeps the leading ones. When there is no
    // memory it asks the program's new-handler, as operator new does; what that throws finds the
    // block as it was.
    void resize(std::size_t size) { m_bytes = resized(m_bytes, size); }

    // The same for what release() gave.
    static Data* resized(void* bytes, std::size_t size) {
        void* const given = std::realloc(bytes, rounded(size));
        return static_cast<Data*>(given != nullptr ? given : resizedFallback(bytes, rounded(size)));
    }

    // True when a block of `size` bytes has no room behind them for another element of the width,
    // which divides the size.
    static constexpr bool isFull(std::size_t size, std::size_t width) noexcept {
        return width > spare || (size + overhead) % unit == 0;
    }

private:
    [[gnu::noinline, gnu::cold]] static void* resizedFallback(void* bytes, std::size_t size) {
        void* given = nullptr;
        while (given == nullptr) {
            std::new_handler const handler = std::get_new_handler();
            if (handler == nullptr) {
                throw std::bad_alloc();
            }
            handler();
            given = std::realloc(bytes, size);
        }
        return given;
    }

    // The sizes of the C library's blocks are multiples of two pointers less one pointer.
#if defined(HALVTYPES_EXACT_BLOCKS) // a sanitizer looks at the ends of blocks
    static constexpr std::size_t overhead = 0, unit = 1, spare = 0;
#else
    static constexpr std::size_t overhead = sizeof(void*), unit = 2 * overhead, spare = overhead;
#endif

    // What to ask the C library for: what costs no more, so that fewer appends have to ask.
    static constexpr std::size_t rounded(std::size_t size) noexcept {
        return (size + overhead + unit - 1) / unit * unit - overhead;
    }

    //   m_bytes
    //   v
    //   +-----------+-----------+-----+-----------+-------------------------------+
    //   | element 0 | element 1 | ... | element n | rest of the last unit, if any |
    //   +-----------+-----------+-----+-----------+-------------------------------+
    Data* m_bytes;
};

} // namespace Halvora::detail
