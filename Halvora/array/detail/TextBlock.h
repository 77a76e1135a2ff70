#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Halvora::detail {

// Owns the storage of an array of texts, or none: objects of `Text`, which it knows the number of.
// Never grows in place: more texts are a new block, into which the old ones move.
template <typename Text>
class TextBlock {
public:
    using Data = Text;

    // Owns from now on what release() gave, or nothing if it is null.
    explicit TextBlock(Text* texts) noexcept : m_texts(texts) {}

    // `count` empty texts, in a block of their own even for 0.
    static TextBlock ofEmpty(std::size_t count) {
        static_assert(std::is_nothrow_default_constructible_v<Text>);
        TextBlock block = withRoom(count);
        std::uninitialized_value_construct_n(block.m_texts, count);
        block.header()->count = count;
        return block;
    }

    // The first `headCount` texts of `head`, whose storage ends, and copies of `tail` behind them.
    // The tail may be part of the head. If memory runs out, the head stays as it was.
    static TextBlock joined(TextBlock&& head, std::size_t headCount, Text const* tail,
                            std::size_t tailCount) {
        static_assert(std::is_nothrow_move_constructible_v<Text>);
        TextBlock all = withRoom(headCount + tailCount);
        std::uninitialized_copy_n(tail, tailCount, all.m_texts + headCount);
        all.header()->count = headCount + tailCount;
        for (std::size_t i = 0; i < headCount; ++i) {
            new (all.m_texts + i) Text(std::move(head.m_texts[i]));
            std::destroy_at(head.m_texts + i);
        }
        head.end(headCount);
        return all;
    }

    TextBlock(TextBlock&& other) noexcept : m_texts(other.release()) {}
    TextBlock& operator=(TextBlock&&) = delete;
    ~TextBlock() { end(0); }

    // Gives up the storage: the caller owns it.
    Text* release() noexcept { return std::exchange(m_texts, nullptr); }

private:
    struct alignas(std::max_align_t) Header {
        std::size_t count; // of objects; the array may have fewer elements
    };

    Header* header() const noexcept { return reinterpret_cast<Header*>(m_texts) - 1; }

    // Room for `count` objects, none of which is there yet.
    static TextBlock withRoom(std::size_t count) {
        void* const block = ::operator new(sizeof(Header) + count * sizeof(Text));
        return TextBlock(reinterpret_cast<Text*>(new (block) Header{0} + 1));
    }

    // Destroys the objects from `first` on, the others being gone, and frees the storage. Not
    // inline: beside a raw block in one function GCC at -O3 takes this storage for that of realloc.
    [[gnu::noinline]] void end(std::size_t first) noexcept {
        if (m_texts == nullptr) {
            return;
        }
        for (std::size_t i = header()->count; i > first; --i) {
            std::destroy_at(m_texts + i - 1);
        }
        ::operator delete(header());
        m_texts = nullptr;
    }

    //              m_texts
    //              v
    //   +----------+--------+--------+-----+----------------+
    //   | Header   | text 0 | text 1 | ... | text count - 1 |
    //   +----------+--------+--------+-----+----------------+
    Text* m_texts;
};

// Assigns `count` texts, which may overlap those that they overwrite, all or none: what has to be
// allocated is allocated first.
template <typename Text>
void assignTexts(Text* out, Text const* values, std::size_t count) {
    if constexpr (!std::is_nothrow_copy_assignable_v<Text>) {
        for (std::size_t i = 0; i < count; ++i) {
            if (out[i].capacity() < values[i].size()) {
                out[i].reserve(values[i].size());
            }
        }
    }
    if (std::less<>()(values, out)) {
        std::copy_backward(values, values + count, out + count);
    } else {
        std::copy(values, values + count, out);
    }
}

} // namespace Halvora::detail
