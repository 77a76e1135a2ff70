#include "GettextTranslator.h"

#include <Halvora/Halvora.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ostream>

#include <libintl.h>

#include "../support/Text.h"

using namespace Halvora;

namespace {

std::wstring translated(std::string const& domain, std::wstring const& text) {
    // The catalogue's own heading stands under the empty text.
    return text.empty() ? text : fromUtf8(dgettext(domain.c_str(), toUtf8(text).c_str()));
}

// 0, "Success", for a code that is no system error; those end at 4095.
int systemNumber(int code) {
    return code < 0 && code >= -4095 ? -code : 0;
}

// Descriptions carry their code as identifier.
ResString* described(int code, std::string const& text) {
    return new ResString(Binary16(code), fromUtf8(text));
}

} // namespace

GettextTranslator::GettextTranslator(std::string const& language, std::string const& domain)
    : m_language(language), m_domain(domain) {
    setenv("LANGUAGE", language.c_str(), 1);
    std::setlocale(LC_ALL, "C.UTF-8"); // under "C" itself nothing would be translated
    bind_textdomain_codeset(domain.c_str(), "UTF-8");
}

bool GettextTranslator::hasCatalogue() const {
    return *dgettext(m_domain.c_str(), "") != '\0';
}

void GettextTranslator::getTranslation(std::wostream& stream, ResString const& text) const {
    stream << translated(m_domain, text.wstr());
}

void GettextTranslator::getTranslation(std::wostream& stream, Binary16 const&,
                                       wchar_t const* defaultText) const {
    if (defaultText != nullptr) {
        stream << translated(m_domain, defaultText);
    }
}

ResString* GettextTranslator::getErrorDescription(int code) const {
    return described(code, std::strerror(systemNumber(code)));
}

wchar_t* GettextTranslator::getErrorName(int code) const {
    char const* const known = strerrorname_np(systemNumber(code));
    std::string const name =
        known != nullptr && systemNumber(code) != 0 ? known : std::to_string(code);
    auto* const result = new wchar_t[name.size() + 1];
    std::copy(name.c_str(), name.c_str() + name.size() + 1, result);
    return result;
}

ResString* GettextTranslator::getErrorParamDesc(int code, int param) const {
    return described(code, "P" + std::to_string(param)); // the system's errors have no parameters
}
