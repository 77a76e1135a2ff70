#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/text/ITranslatable.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora {

class ResString;

// An identified text of any length that can write itself through a translator. Text comes in and
// goes out in every encoding, converted as by Convert. An identifier of 16 zero bytes is empty.
class HALVTYPES_API ResString2 : public virtual ITranslatable {
    template <typename T>
    using IfText = std::enable_if_t<std::is_convertible_v<T const&, std::wstring> ||
                                    std::is_convertible_v<T const&, HLVString>>;

public:
    // The id and the text; what is not given is empty.
    ResString2() noexcept;
    ResString2(ResString const& other);
    ResString2(ResString2 const& other);
    ResString2(Binary16 const& id, HLVString const& text);
    ResString2(Binary16 const& id, std::string const& text);
    ResString2(Binary16 const& id, std::wstring const& text);

    // Zero-terminated texts; null throws std::logic_error.
    ResString2(Binary16 const& id, unsigned short const* text);
    ResString2(Binary16 const& id, char const* text);
    ResString2(Binary16 const& id, wchar_t const* text);

    // On a failed allocation this object is unchanged.
    ResString2& operator=(ResString2 const& other);
    ~ResString2() override;

    // the text as it is, without a translator

    void getText(std::string& out) const;
    void getText(std::wstring& out) const;
    void getText(std::ostream& stream) const;
    void getText(std::wostream& stream) const;

    // Writes what the translator makes of the id and the text; the text itself when the id is
    // empty.
    void ToString(std::wostream& stream, ITranslator const& translator) const override;

    // Different ids are never equal, equal ids that are not empty always; with empty ids the texts
    // decide. Unlike two ResStrings, an empty id does not equal another one.
    bool operator==(ResString2 const& other) const noexcept;
    bool operator!=(ResString2 const& other) const noexcept { return !(*this == other); }
    bool operator==(ResString const& other) const noexcept;
    bool operator!=(ResString const& other) const noexcept { return !(*this == other); }

    template <typename T, typename = IfText<T>>
    bool operator==(T const& text) const = delete; // would be cut to a ResString
    template <typename T, typename = IfText<T>>
    bool operator!=(T const& text) const = delete;

private:
    friend struct std::hash<ResString2>;

    bool equals(Binary16 const& id, unsigned short const* text, std::size_t length) const noexcept;

    Binary16 m_id;
    HLVString m_text;
};

} // namespace Halvora

// Of what decides equality: the id, or the text when the id is empty.
template <>
struct std::hash<Halvora::ResString2> {
    std::size_t operator()(Halvora::ResString2 const& value) const noexcept {
        if (value.m_id != Halvora::Binary16::EMPTY) {
            return std::hash<Halvora::Binary16>()(value.m_id);
        }
        auto const* const bytes = reinterpret_cast<char const*>(value.m_text.data());
        return std::hash<std::string_view>()({bytes, value.m_text.size() * sizeof(short)});
    }
};
