#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/text/ITranslatable.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Halvora {

class ResString;

/// An identified text of any length that can write itself through a translator. Text comes in and
/// goes out in every encoding, converted as by `Convert`, and is never cut. An identifier of 16
/// zero bytes is empty: none is set.
class HALVTYPES_API ResString2 : public virtual ITranslatable {
public:
    /// @name Construction
    /// The identifier and the text; what is not given is empty.
    /// @{

    /// Neither identifier nor text.
    ResString2() noexcept;
    /// The identifier and the text of `other`.
    ResString2(ResString const& other);
    /// Copies identifier and text.
    ResString2(ResString2 const& other);
    /// A text with its identifier.
    ResString2(Binary16 const& id, HLVString const& text);
    /// A narrow text with its identifier.
    ResString2(Binary16 const& id, std::string const& text);
    /// A wide text with its identifier.
    ResString2(Binary16 const& id, std::wstring const& text);
    /// A zero-terminated text with its identifier; null throws `std::logic_error`.
    ResString2(Binary16 const& id, unsigned short const* text);
    /// A zero-terminated narrow text with its identifier; null throws `std::logic_error`.
    ResString2(Binary16 const& id, char const* text);
    /// A zero-terminated wide text with its identifier; null throws `std::logic_error`.
    ResString2(Binary16 const& id, wchar_t const* text);
    /// The text of a narrow or wide view with its identifier.
    template <typename View, typename = detail::IfView<View>>
    ResString2(Binary16 const& id, View const& text) : m_id(id) {
        Convert::toHLVString(m_text, text);
    }

    /// @}

    /// Replaces identifier and text; this object is unchanged when memory runs out.
    ResString2& operator=(ResString2 const& other);
    /// Releases the text.
    ~ResString2() override;

    /// @name Text out
    /// The text as it is, without a translator.
    /// @{

    /// Replaces `out` by the text narrowed.
    void getText(std::string& out) const;
    /// Replaces `out` by the text widened.
    void getText(std::wstring& out) const;
    /// Inserts the text narrowed, as one string.
    void getText(std::ostream& stream) const;
    /// Inserts the text widened, as one string.
    void getText(std::wostream& stream) const;

    /// @}

    /// Writes what `translator` makes of the identifier and the text; the text itself when the
    /// identifier is empty.
    void ToString(std::wostream& stream, ITranslator const& translator) const override;

    /// @name Equality
    /// Different identifiers are never equal, equal ones that are not empty always; with empty ones
    /// the texts decide. Unlike with two `ResString`, an empty identifier does not equal another.
    /// @{

    /// Whether the identifiers are equal and, when they are empty, the texts.
    bool operator==(ResString2 const& other) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(ResString2 const& other) const noexcept { return !(*this == other); }
    /// Whether the identifiers are equal and, when they are empty, the texts.
    bool operator==(ResString const& other) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(ResString const& other) const noexcept { return !(*this == other); }

    /// @}

    /// @name Equality with a text
    /// A text has no identifier, so it only equals a text without one. The whole texts count, wide
    /// characters cut to their low 16 bits; a null pointer is the empty text.
    /// @{

    /// Whether this is the zero-terminated `text` without identifier.
    bool operator==(unsigned short const* text) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(unsigned short const* text) const noexcept { return !(*this == text); }
    /// Whether this is `text` without identifier.
    bool operator==(HLVString const& text) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(HLVString const& text) const noexcept { return !(*this == text); }
    /// Whether this is the zero-terminated `text` without identifier.
    bool operator==(wchar_t const* text) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(wchar_t const* text) const noexcept { return !(*this == text); }
    /// Whether this is `text` without identifier.
    bool operator==(std::wstring const& text) const noexcept;
    /// The negation of `operator==`.
    bool operator!=(std::wstring const& text) const noexcept { return !(*this == text); }
    /// Whether this is the text of a wide view without identifier.
    template <typename View, typename = detail::IfWideView<View>>
    bool operator==(View const& text) const noexcept {
        return isWideText(text.data(), text.size());
    }
    /// The negation of `operator==`.
    template <typename View, typename = detail::IfWideView<View>>
    bool operator!=(View const& text) const noexcept {
        return !(*this == text);
    }

    /// @}

private:
    friend struct std::hash<ResString2>;

    bool hasId() const noexcept { return m_id != Binary16::EMPTY; }
    bool equals(Binary16 const& id, unsigned short const* text, std::size_t length) const noexcept;
    template <typename Char>
    bool isText(Char const* text, std::size_t length) const noexcept;
    bool isWideText(wchar_t const* text, std::size_t length) const noexcept;

    Binary16 m_id;
    HLVString m_text;
};

} // namespace Halvora

/// Of what decides equality: the identifier, or the text when that is empty.
template <>
struct std::hash<Halvora::ResString2> {
    /// Equal for equal texts.
    std::size_t operator()(Halvora::ResString2 const& value) const noexcept {
        if (value.hasId()) {
            return std::hash<Halvora::Binary16>()(value.m_id);
        }
        auto const* const bytes = reinterpret_cast<char const*>(value.m_text.data());
        return std::hash<std::string_view>()({bytes, value.m_text.size() * sizeof(short)});
    }
};
