#include <Halvora/text/ResString2.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <stdexcept>

#include <Halvora/text/Convert.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/detail/Encoding.h>

namespace Halvora {

namespace {

template <typename Char>
Char const* notNull(Char const* text) {
    if (text == nullptr) {
        throw std::logic_error("ResString2: the text is null");
    }
    return text;
}

} // namespace

ResString2::ResString2() noexcept = default;
ResString2::ResString2(ResString2 const& other) = default;
ResString2::~ResString2() = default;

ResString2::ResString2(ResString const& other)
    : m_id(other.id()), m_text(other.hlv_str(), other.length()) {}

ResString2::ResString2(Binary16 const& id, HLVString const& text) : m_id(id), m_text(text) {}

ResString2::ResString2(Binary16 const& id, std::string const& text) : m_id(id) {
    Convert::toHLVString(m_text, text);
}

ResString2::ResString2(Binary16 const& id, std::wstring const& text) : m_id(id) {
    Convert::toHLVString(m_text, text);
}

ResString2::ResString2(Binary16 const& id, unsigned short const* text)
    : m_id(id), m_text(notNull(text)) {}

ResString2::ResString2(Binary16 const& id, char const* text) : m_id(id) {
    Convert::toHLVString(m_text, std::basic_string_view<char>(notNull(text)));
}

ResString2::ResString2(Binary16 const& id, wchar_t const* text) : m_id(id) {
    Convert::toHLVString(m_text, std::basic_string_view<wchar_t>(notNull(text)));
}

ResString2& ResString2::operator=(ResString2 const& other) {
    m_text = other.m_text;
    m_id = other.m_id;
    return *this;
}

void ResString2::getText(std::string& out) const {
    detail::convertInto(out, m_text.data(), m_text.size());
}

void ResString2::getText(std::wstring& out) const {
    Convert::toWString(out, m_text);
}

void ResString2::getText(std::ostream& stream) const {
    stream << Convert::toAString(m_text);
}

void ResString2::getText(std::wostream& stream) const {
    stream << Convert::toWString(m_text);
}

void ResString2::ToString(std::wostream& stream, ITranslator const& translator) const {
    std::wstring const text = Convert::toWString(m_text);
    if (hasId()) {
        translator.getTranslation(stream, m_id, text.c_str());
    } else {
        stream << text;
    }
}

template <typename Char>
bool ResString2::isText(Char const* text, std::size_t length) const noexcept {
    if (m_text.size() != length) {
        return false;
    }
    if constexpr (sizeof(Char) == sizeof(unsigned short)) {
        return std::memcmp(m_text.data(), text, length * sizeof *text) == 0;
    } else {
        return std::equal(m_text.begin(), m_text.end(), text, [](unsigned short unit, Char c) {
            return unit == detail::convertElement<unsigned short>(c);
        });
    }
}

bool ResString2::equals(Binary16 const& id, unsigned short const* text,
                        std::size_t length) const noexcept {
    return m_id == id && (hasId() || isText(text, length));
}

bool ResString2::operator==(ResString2 const& other) const noexcept {
    return equals(other.m_id, other.m_text.data(), other.m_text.size());
}

bool ResString2::operator==(ResString const& other) const noexcept {
    return equals(other.id(), other.hlv_str(), other.length());
}

bool ResString2::operator==(unsigned short const* text) const noexcept {
    return !hasId() && isText(text, detail::terminatedLength(text));
}

bool ResString2::operator==(HLVString const& text) const noexcept {
    return !hasId() && isText(text.data(), text.size());
}

bool ResString2::operator==(wchar_t const* text) const noexcept {
    return !hasId() && isText(text, detail::terminatedLength(text));
}

bool ResString2::operator==(std::wstring const& text) const noexcept {
    return isWideText(text.data(), text.size());
}

bool ResString2::isWideText(wchar_t const* text, std::size_t length) const noexcept {
    return !hasId() && isText(text, length);
}

} // namespace Halvora
