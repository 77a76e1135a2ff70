#include <Halvora/text/ResString.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <ostream>

#include <Halvora/text/Convert.h>
#include <Halvora/text/detail/Encoding.h>
#include <Halvora/types/detail/Loaded.h>

namespace Halvora {

// In the order in which they are set up when the library is loaded. The default translator is never
// deleted: a program may hold on to it beyond the life of these statics.
ResString const ResString::EMPTY;
std::string const ResString::DummyTranslator::ms_strLanguage;
// This pointer keeps it in sight of leak checkers once another one is installed.
[[gnu::used]] static ITranslator const* const defaultTranslator =
    detail::loaded([] { return new ResString::DummyTranslator; });
ITranslator const* ResString::ms_pMainTranslator = defaultTranslator;

namespace {

constexpr std::size_t lengthOffset = 16;
constexpr std::size_t textOffset = 18;

// The length as it stands there; 0 for null.
unsigned short lengthField(void const* packed) noexcept {
    return packed == nullptr ? 0 : detail::unitAt(static_cast<char const*>(packed) + lengthOffset);
}

constexpr std::size_t nameLength = 20;

// `number` in decimal behind the prefix, zero-terminated. An int takes at most 11 characters.
void putNumber(wchar_t (&out)[nameLength], char const* prefix, int number) noexcept {
    char text[nameLength] = {};
    std::snprintf(text, sizeof text, "%s%d", prefix, number);
    std::copy(std::begin(text), std::end(text), out);
}

} // namespace

// Leaves the text's units as they are: only those within the length are ever read.
ResString::ResString() noexcept {
    static_assert(offsetof(ResString, m_id) == 0 && offsetof(ResString, m_length) == lengthOffset &&
                      offsetof(ResString, m_text) == textOffset,
                  "an object begins with its packed form");
}

ResString::ResString(unsigned short const* text) noexcept {
    *this = text;
}

ResString::ResString(HLVString const& text) noexcept {
    *this = text;
}

ResString::ResString(wchar_t const* text) noexcept {
    *this = text;
}

ResString::ResString(std::wstring const& text) noexcept {
    *this = text;
}

ResString::ResString(Binary16 const& id, HLVString const& text) noexcept : m_id(id) {
    *this = text;
}

ResString::ResString(Binary16 const& id, std::wstring const& text) noexcept : m_id(id) {
    *this = text;
}

ResString::ResString(ResString const& other) noexcept {
    *this = other;
}

ResString::~ResString() = default;

template <typename Char>
void ResString::assignText(Char const* text, std::size_t length) noexcept {
    m_length = static_cast<unsigned short>(std::min<std::size_t>(length, maxLength));
    if constexpr (sizeof(Char) == sizeof(unsigned short)) {
        if (m_length != 0) {
            std::memmove(m_text, text, m_length * sizeof *m_text); // may be part of this text
        }
    } else {
        detail::convertRun(m_text, text, m_length);
    }
}

void ResString::assign(wchar_t const* text, std::size_t length) noexcept {
    assignText(text, length);
}

ResString& ResString::operator=(Binary16 const& id) noexcept {
    m_id = id;
    return *this;
}

ResString& ResString::operator=(unsigned short const* text) noexcept {
    assignText(text, detail::terminatedLength(text, maxLength));
    return *this;
}

ResString& ResString::operator=(HLVString const& text) noexcept {
    assignText(text.data(), text.size());
    return *this;
}

ResString& ResString::operator=(wchar_t const* text) noexcept {
    assignText(text, detail::terminatedLength(text, maxLength));
    return *this;
}

ResString& ResString::operator=(std::wstring const& text) noexcept {
    assign(text.data(), text.size());
    return *this;
}

ResString& ResString::operator=(ResString const& other) noexcept {
    m_id = other.m_id;
    assignText(other.m_text, other.m_length);
    return *this;
}

wchar_t const* ResString::c_str() const {
    toWStr(m_wideCache);
    return m_wideCache.c_str();
}

std::wstring ResString::wstr() const {
    return detail::converted<std::wstring>(m_text, m_length);
}

void ResString::toWStr(std::wstring& out) const {
    detail::convertInto(out, m_text, m_length);
}

void ResString::toWStr(std::wostream& stream) const {
    std::for_each(m_text, m_text + m_length,
                  [&stream](unsigned short unit) { stream << static_cast<wchar_t>(unit); });
}

void ResString::toStr(std::string& out) const {
    Convert::toAString(out, m_length, m_text);
}

unsigned int ResString::size(void const* packed) noexcept {
    return packedSize(lengthField(packed));
}

std::size_t ResString::sizeWithin(void const* data, std::size_t available) noexcept {
    if (data == nullptr || available < packedSize(0)) {
        return 0;
    }
    std::size_t const whole = size(data);
    return whole <= available ? whole : 0;
}

void ResString::set(void const* packed, unsigned int const& capacity, void* slot) noexcept {
    if (slot == nullptr) {
        return;
    }
    std::size_t const slotSize = (std::size_t{capacity} + 9) * 2;
    if (packed == nullptr) {
        std::memset(slot, 0, slotSize);
        return;
    }
    auto const length =
        static_cast<unsigned short>(std::min<unsigned int>(lengthField(packed), capacity));
    auto* const bytes = static_cast<char*>(slot);
    std::memmove(bytes, packed, packedSize(length));
    std::memcpy(bytes + lengthOffset, &length, sizeof length);
    std::memset(bytes + packedSize(length), 0, slotSize - packedSize(length));
}

void ResString::set(void const* packed) noexcept {
    if (packed == nullptr) {
        m_id = Binary16();
        m_length = 0;
        return;
    }
    unsigned short const length = std::min(lengthField(packed), maxLength);
    std::memmove(static_cast<void*>(this), packed, packedSize(length));
    m_length = length;
}

bool ResString::operator==(ResString const& other) const noexcept {
    if (hasId() && other.hasId()) {
        return m_id == other.m_id;
    }
    return m_length == other.m_length &&
           std::memcmp(m_text, other.m_text, m_length * sizeof *m_text) == 0;
}

void ResString::setMainTranslator(ITranslator const* translator) noexcept {
    ms_pMainTranslator = translator;
}

ResString::DummyTranslator::~DummyTranslator() = default;

void ResString::DummyTranslator::getTranslation(std::wostream& stream,
                                                ResString const& text) const {
    stream << text.wstr();
}

void ResString::DummyTranslator::getTranslation(std::wostream& stream, Binary16 const&,
                                                wchar_t const* defaultText) const {
    if (defaultText == nullptr) {
        stream.setstate(std::ios_base::badbit);
        return;
    }
    stream << defaultText;
}

ResString* ResString::DummyTranslator::getErrorDescription(int code) const {
    wchar_t text[nameLength];
    putNumber(text, "", code);
    return new ResString(text);
}

wchar_t* ResString::DummyTranslator::getErrorName(int code) const {
    wchar_t text[nameLength];
    putNumber(text, "", code);
    auto* const name = new wchar_t[nameLength];
    std::copy(std::begin(text), std::end(text), name);
    return name;
}

ResString* ResString::DummyTranslator::getErrorParamDesc(int, int param) const {
    wchar_t text[nameLength];
    putNumber(text, "P", param);
    return new ResString(text);
}

std::string const& ResString::DummyTranslator::getLanguage() const {
    return ms_strLanguage;
}

} // namespace Halvora
