#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>

namespace Halvora {

/// An identified text: the identifier of a text resource and a default text of at most 128 code
/// units, kept inside the object. An identifier of 16 zero bytes is empty: none is set.
///
/// @code{.unparsed}
/// packed := id:byte[16] length:u16le unit:u16le[length]
/// slot   := packed zero:byte[2 * (capacity - length)]
/// @endcode
///
/// Every object begins with its packed form, so its address serves wherever one is read. A packed
/// form may begin at any byte address.
///
/// Text longer than 128 units is cut without notice, and wide characters are cut to their low 16
/// bits. A null text pointer is the empty text. A copy takes the packed form, not the cache.
/// `c_str` writes a cache inside a const object: calls on one object need the caller's
/// synchronisation.
///
/// Equality is not transitive (see `operator==`), so there is neither a hash nor an order.
class HALVTYPES_API ResString {
    template <typename T>
    using IfText = std::enable_if_t<detail::isText<T>>;

public:
    class DummyTranslator;

    static constexpr unsigned short maxLength = 128; ///< The most that is kept, in code units.
    static ResString const EMPTY;                    ///< Neither identifier nor text.

    /// @name Construction
    /// The identifier and the text; what is not given is empty. A null pointer given beside an
    /// identifier meets the string's own constructor, which throws `std::logic_error` with
    /// libstdc++.
    /// @{

    /// Neither identifier nor text.
    ResString() noexcept;
    /// A zero-terminated text; empty for null.
    ResString(unsigned short const* text) noexcept;
    /// A text without identifier.
    ResString(HLVString const& text) noexcept;
    /// A zero-terminated text; empty for null.
    ResString(wchar_t const* text) noexcept;
    /// A text without identifier.
    ResString(std::wstring const& text) noexcept;
    /// A text with its identifier.
    ResString(Binary16 const& id, HLVString const& text) noexcept;
    /// A text with its identifier.
    ResString(Binary16 const& id, std::wstring const& text) noexcept;
    /// The text of a wide view, without identifier.
    template <typename View, typename = detail::IfWideView<View>>
    explicit ResString(View const& text) noexcept {
        assign(text.data(), text.size());
    }
    /// The text of a wide view with its identifier.
    template <typename View, typename = detail::IfWideView<View>>
    ResString(Binary16 const& id, View const& text) noexcept : m_id(id) {
        assign(text.data(), text.size());
    }
    /// Copies identifier and text.
    ResString(ResString const& other) noexcept;
    /// Releases the cache of `c_str`.
    ~ResString();

    /// @}

    /// Whether a text would be kept whole.
    static bool fits(HLVString const& text) noexcept { return text.size() <= maxLength; }
    /// Whether a text would be kept whole.
    static bool fits(std::wstring const& text) noexcept { return text.size() <= maxLength; }
    /// Whether the text of a wide view would be kept whole.
    template <typename View, typename = detail::IfWideView<View>>
    static bool fits(View const& text) noexcept {
        return text.size() <= maxLength;
    }

    /// @name Assignment
    /// Each replaces what its argument is, identifier or text, and keeps the other. The text may be
    /// part of this object's own.
    /// @{

    /// Replaces the identifier.
    ResString& operator=(Binary16 const& id) noexcept;
    /// Replaces the text by a zero-terminated one; by the empty text for null.
    ResString& operator=(unsigned short const* text) noexcept;
    /// Replaces the text.
    ResString& operator=(HLVString const& text) noexcept;
    /// Replaces the text by a zero-terminated one; by the empty text for null.
    ResString& operator=(wchar_t const* text) noexcept;
    /// Replaces the text.
    ResString& operator=(std::wstring const& text) noexcept;
    /// Replaces the text by that of a wide view.
    template <typename View, typename = detail::IfWideView<View>, typename = void>
    ResString& operator=(View const& text) noexcept {
        assign(text.data(), text.size());
        return *this;
    }
    /// Replaces identifier and text.
    ResString& operator=(ResString const& other) noexcept;
    /// Not offered: a number is no identifier.
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    ResString& operator=(T) = delete;

    /// @}

    /// The identifier; 16 zero bytes when none is set.
    Binary16 const& id() const noexcept { return m_id; }
    /// The length of the text in code units.
    unsigned short length() const noexcept { return m_length; }
    /// The size of the packed form in bytes: 18 + 2 * `length()`.
    unsigned int size() const noexcept { return packedSize(m_length); }

    /// @name Text out
    /// @{

    /// The `length()` units of the text, not terminated; valid as long as the object is.
    unsigned short const* hlv_str() const noexcept { return m_text; }
    /// The text widened, zero-terminated; valid until the next `c_str()` on this object, its next
    /// change or its end.
    wchar_t const* c_str() const;
    /// The text widened.
    std::wstring wstr() const;
    /// Replaces `out` by the text widened.
    void toWStr(std::wstring& out) const;
    /// Writes the text widened, each character as an insertion of its own: a field width set on the
    /// stream goes to the first.
    void toWStr(std::wostream& stream) const;
    /// Replaces `out` by the text narrowed as by `Convert::toAString`.
    void toStr(std::string& out) const;

    /// @}

    /// @name Packed forms and slots
    /// A null pointer to a form counts as one that is all zero. A text given where a form is read
    /// does not compile: nothing of wide characters, nor a literal or other array of `char const`
    /// (whose address may be given: `&bytes[0]`).
    /// @{

    /// The size of a packed form in bytes, by its length field as it stands, even above 128.
    static unsigned int size(void const* packed) noexcept;

    /// How many of the `available` bytes at `data` a packed form takes, by its length field as it
    /// stands; 0 when they do not hold a whole one, and for null. Reads no byte beyond them. Ask
    /// this before a form from outside is read; a form of more than 128 units is whole too and is
    /// cut by an object that reads it.
    static std::size_t sizeWithin(void const* data, std::size_t available) noexcept;

    /// Writes a slot of `capacity` units, (`capacity` + 9) * 2 bytes: the packed form, its text cut
    /// to the capacity, then zero bytes. The two may overlap. Writes nothing for a null `slot`.
    static void set(void const* packed, unsigned int const& capacity, void* slot) noexcept;

    /// Loads this object from a packed form, cut to 128 units.
    void set(void const* packed) noexcept;

    /// Not offered: a text is no packed form.
    template <typename T, typename = IfText<T>>
    static unsigned int size(T&& text) = delete;
    /// Not offered: a text is no packed form.
    template <typename T, typename = IfText<T>>
    static std::size_t sizeWithin(T&& text, std::size_t available) = delete;
    /// Not offered: a text is no packed form.
    template <typename T, typename = IfText<T>>
    static void set(T&& text, unsigned int const& capacity, void* slot) = delete;
    /// Not offered: a text is no packed form, it is assigned.
    template <typename T, typename = IfText<T>>
    void set(T&& text) = delete;

    /// @}

    /// Equal identifiers are equal texts when neither is empty. With an empty one on either side
    /// the texts decide alone: a text without an identifier equals the same text under every one.
    bool operator==(ResString const& other) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(ResString const& other) const noexcept { return !(*this == other); }
    /// The same with a wide view as a text without an identifier, cut to 128 units.
    template <typename View, typename = detail::IfWideView<View>>
    bool operator==(View const& text) const noexcept {
        return *this == ResString(text);
    }
    /// The negation.
    template <typename View, typename = detail::IfWideView<View>>
    bool operator!=(View const& text) const noexcept {
        return !(*this == text);
    }

    /// @name Main translator
    /// A slot for the components of a program. The pointer is not owned, may be null, and is
    /// neither read by the library nor guarded against concurrent use. From the library's start it
    /// is a `DummyTranslator` that is never deleted.
    /// @{

    /// The translator set last.
    static ITranslator const* getMainTranslator() noexcept { return ms_pMainTranslator; }
    /// Replaces the main translator; the one before is left alone.
    static void setMainTranslator(ITranslator const* translator) noexcept;
    static ITranslator const* ms_pMainTranslator; ///< The slot itself.

    /// @}

private:
    static constexpr unsigned int packedSize(unsigned int length) noexcept {
        return (length + 9) * 2;
    }
    template <typename Char>
    void assignText(Char const* text, std::size_t length) noexcept;
    void assign(wchar_t const* text, std::size_t length) noexcept;
    bool hasId() const noexcept { return m_id != Binary16::EMPTY; }

    Binary16 m_id;
    unsigned short m_length = 0;
    unsigned short m_text[maxLength];
    mutable std::wstring m_wideCache;
};

/// The default translator: writes default texts and numbers as they are. Without state, so any
/// number of threads may use one.
class HALVTYPES_API ResString::DummyTranslator : public ITranslator {
public:
    static std::string const ms_strLanguage; ///< The empty text.

    /// Leaves what it returned to the caller.
    ~DummyTranslator() override;

    /// Writes the default text of `text`; the identifier is ignored.
    void getTranslation(std::wostream& stream, ResString const& text) const override;
    /// Writes `defaultText`; the identifier is ignored. For null it writes nothing and sets
    /// `badbit`.
    void getTranslation(std::wostream& stream, Binary16 const& id,
                        wchar_t const* defaultText) const override;

    /// The code in decimal, without identifier. The caller deletes the result.
    ResString* getErrorDescription(int code) const override;
    /// The code in decimal, zero-terminated in a `wchar_t[20]`. The caller deletes the result with
    /// `delete[]`.
    wchar_t* getErrorName(int code) const override;
    /// `P` and the number of the parameter, without identifier. The caller deletes the result.
    ResString* getErrorParamDesc(int code, int param) const override;

    /// `ms_strLanguage`, the empty text.
    std::string const& getLanguage() const override;
};

} // namespace Halvora
