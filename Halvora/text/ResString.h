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

// An identified text: the identifier of a text resource and a default text of at most 128 code
// units, kept inside the object. An identifier of 16 zero bytes is empty: none is set.
//
//     packed := id:byte[16] length:u16le unit:u16le[length]
//     slot   := packed zero:byte[2 * (capacity - length)]
//
// Every object begins with its packed form, so its address serves wherever one is read. A packed
// form may begin at any byte address. A length field above 128 counts as 128.
//
// Text longer than 128 units is cut without notice, and wide characters are cut to their low 16
// bits. A null text pointer is the empty text. Copying moves the packed form only. c_str() writes a
// cache inside a const object: calls on one object need the caller's synchronisation.
//
// Equality is not transitive (see operator==), so there is neither a hash nor an order.
class HALVTYPES_API ResString {
public:
    class DummyTranslator;

    static constexpr unsigned short maxLength = 128; // code units
    static ResString const EMPTY;                    // neither identifier nor text

    // The id and the text; what is not given is empty.
    ResString() noexcept;
    ResString(unsigned short const* text) noexcept; // zero-terminated
    ResString(HLVString const& text) noexcept;
    ResString(wchar_t const* text) noexcept; // zero-terminated
    ResString(std::wstring const& text) noexcept;
    ResString(Binary16 const& id, HLVString const& text) noexcept;
    ResString(Binary16 const& id, std::wstring const& text) noexcept;
    ResString(ResString const& other) noexcept;
    ~ResString();

    // Whether a text would be kept whole.
    static bool fits(HLVString const& text) noexcept { return text.size() <= maxLength; }
    static bool fits(std::wstring const& text) noexcept { return text.size() <= maxLength; }

    // Each replaces what its argument is, id or text, and keeps the other.
    ResString& operator=(Binary16 const& id) noexcept;
    ResString& operator=(unsigned short const* text) noexcept;
    ResString& operator=(HLVString const& text) noexcept;
    ResString& operator=(wchar_t const* text) noexcept;
    ResString& operator=(std::wstring const& text) noexcept;
    ResString& operator=(ResString const& other) noexcept;
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T> || std::is_enum_v<T>>>
    ResString& operator=(T) = delete; // a number is no id

    Binary16 const& id() const noexcept { return m_id; }        // 16 zero bytes: none is set
    unsigned short length() const noexcept { return m_length; } // code units

    // Of the packed form, in bytes: 18 + 2 * length().
    unsigned int size() const noexcept { return packedSize(m_length); }

    // text out

    // length() units, not terminated; valid as long as the object is.
    unsigned short const* hlv_str() const noexcept { return m_text; }

    // The text widened, zero-terminated; valid until the next c_str() on this object, its next
    // change or its end.
    wchar_t const* c_str() const;

    // The text widened.
    std::wstring wstr() const;
    void toWStr(std::wstring& out) const;
    void toWStr(std::wostream& stream) const; // one insertion a character

    void toStr(std::string& out) const; // narrowed as by Convert::toAString

    // packed forms and slots

    // The size in bytes of a packed form, by its length field as it stands, even above 128; not of
    // null.
    static unsigned int size(void const* packed) noexcept;

    // Writes a slot of `capacity` units, (capacity + 9) * 2 bytes: the packed form, its text cut to
    // the slot's capacity and to 128 units, then zero bytes. All zero for null. The two may
    // overlap.
    static void set(void const* packed, unsigned int const& capacity, void* slot) noexcept;

    // Loads this object from a packed form, whatever its address; null makes it empty.
    void set(void const* packed) noexcept;
    template <typename T, typename = std::enable_if_t<std::is_same_v<T, wchar_t>>>
    void set(T const*) = delete; // a text is assigned

    // Equal ids are equal texts when neither id is empty. With an empty id on either side, the
    // texts decide alone: a text without an id equals the same text under every id.
    bool operator==(ResString const& other) const noexcept;
    bool operator!=(ResString const& other) const noexcept { return !(*this == other); }

    // The main translator, a slot for the components of a program. The pointer is not owned, may be
    // null, and is neither read by the library nor guarded against concurrent use. From the
    // library's start it is a DummyTranslator that is never deleted.
    static ITranslator const* getMainTranslator() noexcept { return ms_pMainTranslator; }
    static void setMainTranslator(ITranslator const* translator) noexcept;

private:
    static constexpr unsigned int packedSize(unsigned int length) noexcept {
        return (length + 9) * 2;
    }
    template <typename Char>
    void assignText(Char const* text, std::size_t length) noexcept;
    bool hasId() const noexcept { return m_id != Binary16::EMPTY; }

    static ITranslator const* ms_pMainTranslator;

    Binary16 m_id;
    unsigned short m_length = 0;
    unsigned short m_text[maxLength];
    mutable std::wstring m_wideCache;
};

// The default translator: writes default texts and numbers as they are. Without state, so any
// number of threads may use one.
class HALVTYPES_API ResString::DummyTranslator : public ITranslator {
public:
    static std::string const ms_strLanguage; // empty

    ~DummyTranslator() override;

    // The default text; the id is ignored. A null default text writes nothing and sets badbit.
    void getTranslation(std::wostream& stream, ResString const& text) const override;
    void getTranslation(std::wostream& stream, Binary16 const& id,
                        wchar_t const* defaultText) const override;

    ResString* getErrorDescription(int code) const override;          // the code in decimal
    wchar_t* getErrorName(int code) const override;                   // wchar_t[20], the same
    ResString* getErrorParamDesc(int code, int param) const override; // "P" and the number

    std::string const& getLanguage() const override;
};

} // namespace Halvora
