#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/Braces.h>
#include <Halvora/text/HLVString.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora {

/// A text of at most 512 16-bit code units, laid out as a length and the units, the same in an
/// object and in buffers that callers own. It never allocates but for its results.
///
/// @code{.unparsed}
/// raw  := length:u16le unit:u16le[length]
/// slot := raw fill:byte[2 * (capacity - length)]     every fill byte is 0x30
/// @endcode
///
/// A buffer may begin at any byte address. Text longer than 512 units is cut without notice, also
/// when an object reads a longer form, and wide characters to their low 16 bits. Narrow text is ISO
/// 8859-1. A null pointer to text is the empty text; given where a string is asked for, it meets
/// the string's own constructor, which throws `std::logic_error` with libstdc++. Lengths count
/// units, sizes bytes.
class HALVTYPES_API VarChar {
    template <typename T>
    using IfText = std::enable_if_t<detail::isText<T>>;
    template <typename T>
    using IfInteger = std::enable_if_t<(std::is_integral_v<T> && !std::is_same_v<T, bool>) ||
                                       (std::is_enum_v<T> && std::is_convertible_v<T, int>)>;

public:
    static constexpr unsigned short maxLength = 512; ///< The most that is kept, in code units.

    /// The empty text.
    VarChar() noexcept {} // leaves the units as they are: none is ever read beyond the length
    /// Copies the units in use.
    VarChar(VarChar const& other) noexcept;
    /// The text given.
    VarChar(std::wstring const& text) noexcept;
    /// Braces that were a text by accident.
    VarChar(detail::NoText<wchar_t>) = delete;
    /// A zero-terminated narrow text; empty for null.
    VarChar(char const* text) noexcept;
    /// The text of a narrow or wide view.
    template <typename View, typename = detail::IfView<View>>
    explicit VarChar(View const& text) noexcept {
        set(text);
    }

    /// Copies the units in use.
    VarChar& operator=(VarChar const& other) noexcept;
    /// Replaces the text.
    VarChar& operator=(std::wstring const& text) noexcept;
    /// Braces that were a text by accident.
    VarChar& operator=(detail::NoText<wchar_t>) = delete;
    /// Replaces the text by that of a narrow or wide view.
    template <typename View, typename = detail::IfView<View>>
    VarChar& operator=(View const& text) noexcept {
        set(text);
        return *this;
    }

    /// Whether a text would be kept whole.
    static bool fits(std::wstring const& text) noexcept { return text.size() <= maxLength; }
    /// Whether a text would be kept whole.
    static bool fits(std::string const& text) noexcept { return text.size() <= maxLength; }
    /// Whether the text of a view would be kept whole.
    template <typename View, typename = detail::IfView<View>>
    static bool fits(View const& text) noexcept {
        return text.size() <= maxLength;
    }

    /// Replaces the text by a zero-terminated narrow one; by the empty text for null.
    void set(char const* text) noexcept;
    /// Replaces the text by the first `length` characters of `text`; by the empty text for null.
    void set(wchar_t const* text, unsigned short length) noexcept;
    /// Replaces the text by the first `length` characters of the narrow `text`; by the empty text
    /// for null and for a length below zero.
    template <typename T, typename = IfInteger<T>>
    void set(char const* text, T length) noexcept {
        assign(text, length <= 0           ? 0
                     : length <= maxLength ? static_cast<unsigned short>(length)
                                           : maxLength);
    }

    /// Replaces the text by that of a narrow or wide view.
    template <typename View, typename = detail::IfView<View>>
    void set(View const& text) noexcept {
        set(text.data(),
            static_cast<unsigned short>(text.size() <= maxLength ? text.size() : maxLength));
    }

    /// The length of the text in code units.
    unsigned short length() const noexcept { return m_length; }
    /// The size of the raw form in bytes: 2 + 2 * `length()`.
    unsigned short size() const noexcept { return rawSize(m_length); }

    /// The `length()` units of the text, not terminated; valid as long as the object is.
    unsigned short const* pstr() const noexcept { return m_units; }

    /// The text widened.
    std::wstring wstr() const;
    /// Replaces `out` by the text widened.
    void wstr(std::wstring& out) const;

    /// @name Comparison
    /// The order of the stored bytes, as `memcmp` sees the raw forms, for use as a key. It is not
    /// an order of texts: the low byte of the length decides first, then its high byte, then the
    /// bytes of the units, low byte first. `b` comes before `ab`, a text of 256 units before one of
    /// 1, and U+0100 before U+00FF.
    /// @{

    /// Whether length and units are equal.
    bool operator==(VarChar const& other) const noexcept { return compare(other) == 0; }
    /// Whether length or units differ.
    bool operator!=(VarChar const& other) const noexcept { return compare(other) != 0; }
    /// Whether length and units are those of a view, cut to 512 units.
    template <typename View, typename = detail::IfView<View>>
    bool operator==(View const& text) const noexcept {
        return *this == VarChar(text);
    }
    /// The negation.
    template <typename View, typename = detail::IfView<View>>
    bool operator!=(View const& text) const noexcept {
        return !(*this == text);
    }
    /// Whether this comes first in the order of the stored bytes.
    bool operator<(VarChar const& other) const noexcept { return compare(other) < 0; }
    /// Whether this equals `other` or comes first in the order of the stored bytes.
    bool operator<=(VarChar const& other) const noexcept { return compare(other) <= 0; }
    /// Whether `other` comes first in the order of the stored bytes.
    bool operator>(VarChar const& other) const noexcept { return compare(other) > 0; }
    /// Whether this equals `other` or `other` comes first in the order of the stored bytes.
    bool operator>=(VarChar const& other) const noexcept { return compare(other) >= 0; }

    /// @}

    /// @name Raw forms in callers' buffers
    /// A null pointer to a raw form counts as the form of the empty text. A text given where a form
    /// is read does not compile: nothing of wide characters, nor a literal or other array of
    /// `char const` (whose address may be given: `&bytes[0]`).
    /// @{

    /// The size of a raw form in bytes, by its length field as it stands, even above 512; modulo
    /// 65,536.
    static unsigned short size(void const* raw) noexcept;

    /// How many of the `available` bytes at `data` a raw form takes, by its length field as it
    /// stands; 0 when they do not hold a whole one, and for null. Reads no byte beyond them. Ask
    /// this before a form from outside is read; a form of more than 512 units is whole too and is
    /// cut by an object that reads it.
    static std::size_t sizeWithin(void const* data, std::size_t available) noexcept;

    /// Reads a raw form into an object, cut to 512 units.
    static void set(void const* raw, VarChar& dest) noexcept;
    /// Reads a raw form into a text, widened and cut to 512 characters, and its length.
    static void set(void const* raw, std::wstring& text, unsigned short& length);

    /// Writes a slot of 2 + 2 * `capacity` bytes: the first `length` characters of `text`, cut to
    /// the capacity and to 512, and the fill. A null `text` is the empty one. Writes nothing for a
    /// null `buffer`.
    static void set(wchar_t const* text, unsigned int length, unsigned int capacity,
                    void* buffer) noexcept;

    /// Writes the raw form of a zero-terminated narrow text and nothing behind it. A null `text` is
    /// the empty one. Writes nothing for a null `buffer`.
    static void set(char const* text, void* buffer) noexcept;

    /// Whether the raw form holds exactly `length` units, each the low 16 bits of its character. A
    /// raw form with a length field above 512 equals no text, and a null `text` only equals the
    /// empty one when `length` is 0.
    static bool equal(void const* raw, wchar_t const* text, unsigned int length) noexcept;

    /// Not offered: a text is no raw form.
    template <typename T, typename = IfText<T>>
    static unsigned short size(T&& text) = delete;
    /// Not offered: a text is no raw form.
    template <typename T, typename = IfText<T>>
    static std::size_t sizeWithin(T&& text, std::size_t available) = delete;
    /// Not offered: a text is no raw form.
    template <typename T, typename = IfText<T>>
    static void set(T&& text, VarChar& dest) = delete;
    /// Not offered: a text is no raw form.
    template <typename T, typename = IfText<T>>
    static void set(T&& text, std::wstring& out, unsigned short& length) = delete;
    /// Not offered: a text is no raw form.
    template <typename T, typename = IfText<T>>
    static bool equal(T&& text, wchar_t const* other, unsigned int length) = delete;

    /// @}

private:
    static constexpr unsigned short rawSize(unsigned int length) noexcept {
        return static_cast<unsigned short>((length + 1) * 2);
    }
    template <typename Char>
    void assignText(Char const* text, std::size_t length) noexcept;
    void assign(char const* text, unsigned short length) noexcept;
    int compare(VarChar const& other) const noexcept;

    unsigned short m_length = 0;
    unsigned short m_units[maxLength];
};

static_assert(sizeof(VarChar) == 1026 && std::is_standard_layout_v<VarChar> &&
              std::is_trivially_destructible_v<VarChar>);

} // namespace Halvora

/// Of the units in use.
template <>
struct std::hash<Halvora::VarChar> {
    /// Equal for equal texts.
    std::size_t operator()(Halvora::VarChar const& value) const noexcept {
        auto const* const bytes = reinterpret_cast<char const*>(value.pstr());
        return std::hash<std::string_view>()({bytes, value.length() * std::size_t{2}});
    }
};
