#pragma once

#include <Halvora/text/ITranslator.h>

#include <string>

// A translator over the message catalogues of the C library (gettext), which find a text by its
// default. There is one language a process, that of the translator made last. Only the main thread
// may make one, before it starts others: the environment and the locale are set.
class GettextTranslator : public Halvora::ITranslator {
public:
    // `language` as in "de" or "pt_BR"; `domain` names the catalogue.
    GettextTranslator(std::string const& language, std::string const& domain);

    // Whether the domain has a catalogue for the language. Without one, every text is its default.
    bool hasCatalogue() const;

    void getTranslation(std::wostream& stream, Halvora::ResString const& text) const override;
    void getTranslation(std::wostream& stream, Halvora::Binary16 const& id,
                        wchar_t const* defaultText) const override;

    // Negative codes are the system's error numbers.
    Halvora::ResString* getErrorDescription(int code) const override; // "Permission denied"
    wchar_t* getErrorName(int code) const override;                   // "EACCES"
    Halvora::ResString* getErrorParamDesc(int code, int param) const override;

    std::string const& getLanguage() const override { return m_language; }

private:
    std::string m_language;
    std::string m_domain;
};
