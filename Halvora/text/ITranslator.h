#pragma once

#include <Halvora/Export.h>

#include <iosfwd>
#include <string>

namespace Halvora {

class Binary16;
class ResString;

// Turns identified texts and error codes into text in the user's language. Implemented by the
// components that know the texts; the library holds only the default, ResString::DummyTranslator.
// The order of the operations is the order of their slots: never change it.
class HALVTYPES_API ITranslator {
public:
    ITranslator() = default;
    ITranslator(ITranslator const&) = default;
    ITranslator& operator=(ITranslator const&) = default;
    virtual ~ITranslator();

    // Writes the text for the id in the translator's language, or the default text, which may be
    // null in the second form.
    virtual void getTranslation(std::wostream& stream, ResString const& text) const = 0;
    virtual void getTranslation(std::wostream& stream, Binary16 const& id,
                                wchar_t const* defaultText) const = 0;

    // The caller deletes the result: a description with delete, a name, which is zero-terminated,
    // with delete[].
    virtual ResString* getErrorDescription(int code) const = 0;
    virtual wchar_t* getErrorName(int code) const = 0;
    virtual ResString* getErrorParamDesc(int code, int param) const = 0;

    // The name of the language, valid as long as the translator.
    virtual std::string const& getLanguage() const = 0;
};

} // namespace Halvora
