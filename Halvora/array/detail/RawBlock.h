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
    void resize(std::size_t size) {
        for (;;) {
            void* const resized = std::realloc(m_bytes, rounded(size));
            if (resized != nullptr) {
                m_bytes = static_cast<Data*>(resized);
                return;
            }
            askForMemory();
        }
    }

    // True when blocks of `size` and of `newSize` bytes are equally long.
    static constexpr bool isAlike(std::size_t size, std::size_t newSize) noexcept {
        return rounded(size) == rounded(newSize);
    }

private:
    [[gnu::noinline, gnu::cold]] static void askForMemory() {
        std::new_handler const handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }

    // What to ask the C library for. The sizes of its blocks are multiples of two pointers less one
    // pointer, so rounding up to one costs nothing, and fewer appends have to ask.
    static constexpr std::size_t rounded(std::size_t size) noexcept {
#if defined(HALVTYPES_EXACT_BLOCKS) // a sanitizer looks at the ends of blocks
        return size;
#else
        constexpr std::size_t unit = 2 * sizeof(void*);
        return (size + sizeof(void*) + unit - 1) / unit * unit - sizeof(void*);
#endif
    }

    //   m_bytes
    //   v
    //   +-----------+-----------+-----+-----------+-------------------------------+
    //   | element 0 | element 1 | ... | element n | rest of the last unit, if any |
    //   +-----------+-----------+-----+-----------+-------------------------------+
    Data* m_bytes;
};

} // namespace Halvora::detail
