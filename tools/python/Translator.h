#pragma once

#include "Module.h"

#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>

#include <string>

namespace HalvPython {

/// A translator whose answers a Python class overrides; what it leaves out the default translator
/// answers. What Python raises comes out of the call that asked.
class Translator : public Halvora::ITranslator {
public:
    void getTranslation(std::wostream& stream, Halvora::ResString const& text) const override;
    void getTranslation(std::wostream& stream, Halvora::Binary16 const& id,
                        wchar_t const* defaultText) const override;
    Halvora::ResString* getErrorDescription(int code) const override;
    wchar_t* getErrorName(int code) const override;
    Halvora::ResString* getErrorParamDesc(int code, int param) const override;
    std::string const& getLanguage() const override;

private:
    template <typename... Arguments>
    py::object ask(char const* name, Arguments const&... arguments) const;

    Halvora::ResString::DummyTranslator m_default;
    mutable std::string m_language;
};

template <>
inline constexpr bool isOwn<Translator> = true;

} // namespace HalvPython
