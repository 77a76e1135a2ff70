#pragma once

#include <Halvora/Export.h>

#include <iosfwd>
#include <string>

namespace Halvora {

class Binary16;
class ResString;

/// Turns identified texts and error codes into text in the user's language. Implemented by the
/// components that know the texts; the library holds only the default,
/// `ResString::DummyTranslator`. The order of the operations is the order of their slots: never
/// change it.
class HALVTYPES_API ITranslator {
public:
    /// Holds nothing.
    ITranslator() = default;
    /// Copies nothing: the interface has no data.
    ITranslator(ITranslator const&) = default;
    /// Copies nothing: the interface has no data.
    ITranslator& operator=(ITranslator const&) = default;
    /// A translator may be deleted through this interface.
    virtual ~ITranslator();

    /// Writes to `stream` the text for the identifier of `text` in the translator's language, or
    /// its default text.
    virtual void getTranslation(std::wostream& stream, ResString const& text) const = 0;
    /// Writes to `stream` the text for `id` in the translator's language, or `defaultText`, which
    /// is zero-terminated and may be null.
    virtual void getTranslation(std::wostream& stream, Binary16 const& id,
                                wchar_t const* defaultText) const = 0;

    /// The description of an error code. The caller deletes the result.
    virtual ResString* getErrorDescription(int code) const = 0;
    /// The name of an error code, zero-terminated. The caller deletes the result with `delete[]`.
    virtual wchar_t* getErrorName(int code) const = 0;
    /// The description of parameter `param` of an error code, counted from 1 as an error prints
    /// them: `P1`. The caller deletes the result.
    virtual ResString* getErrorParamDesc(int code, int param) const = 0;

    /// The name of the language, valid as long as the translator.
    virtual std::string const& getLanguage() const = 0;
};

} // namespace Halvora
