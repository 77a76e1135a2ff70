#include <Halvora/text/VarChar.h>

#include <algorithm>
#include <cstring>

#include <Halvora/text/detail/Encoding.h>

namespace Halvora {

namespace {

constexpr std::size_t unitsOffset = 2;
constexpr int fillByte = 0x30;

// The length as it stands there; 0 for null.
unsigned short lengthField(void const* raw) noexcept {
    return raw == nullptr ? 0 : detail::unitAt(raw);
}

// Writes a raw form and returns the first byte behind it. The units are converted in an aligned
// buffer of their own, since the raw form may begin at any address.
template <typename Char>
char* putRaw(void* raw, Char const* text, std::size_t count) noexcept {
    auto const length = static_cast<unsigned short>(count);
    unsigned short units[VarChar::maxLength];
    detail::convertRun(units, text, length);
    auto* const bytes = static_cast<char*>(raw);
    std::memcpy(bytes, &length, sizeof length);
    std::memcpy(bytes + unitsOffset, units, length * sizeof *units);
    return bytes + unitsOffset + length * sizeof *units;
}

} // namespace

VarChar::VarChar(VarChar const& other) noexcept {
    *this = other;
}

VarChar::VarChar(std::wstring const& text) noexcept {
    *this = text;
}

VarChar::VarChar(char const* text) noexcept {
    set(text);
}

VarChar& VarChar::operator=(VarChar const& other) noexcept {
    std::memmove(static_cast<void*>(this), static_cast<void const*>(&other), other.size());
    return *this;
}

template <typename Char>
void VarChar::assignText(Char const* text, std::size_t length) noexcept {
    m_length = static_cast<unsigned short>(std::min<std::size_t>(length, maxLength));
    detail::convertRun(m_units, text, m_length);
}

VarChar& VarChar::operator=(std::wstring const& text) noexcept {
    assignText(text.data(), text.size());
    return *this;
}

void VarChar::set(char const* text) noexcept {
    assignText(text, detail::terminatedLength(text, maxLength));
}

void VarChar::set(wchar_t const* text, unsigned short length) noexcept {
    assignText(text, text == nullptr ? 0 : length);
}

void VarChar::assign(char const* text, unsigned short length) noexcept {
    assignText(text, text == nullptr ? 0 : length);
}

std::wstring VarChar::wstr() const {
    std::wstring text;
    wstr(text);
    return text;
}

void VarChar::wstr(std::wstring& out) const {
    detail::convertInto(out, m_units, m_length);
}

unsigned short VarChar::size(void const* raw) noexcept {
    return rawSize(lengthField(raw));
}

std::size_t VarChar::sizeWithin(void const* data, std::size_t available) noexcept {
    if (data == nullptr || available < unitsOffset) {
        return 0;
    }
    std::size_t const whole = unitsOffset + std::size_t{2} * lengthField(data);
    return whole <= available ? whole : 0;
}

void VarChar::set(void const* raw, VarChar& dest) noexcept {
    unsigned short const length = std::min(lengthField(raw), maxLength);
    if (length != 0) {
        std::memmove(static_cast<void*>(&dest), raw, rawSize(length));
    }
    dest.m_length = length;
}

void VarChar::set(void const* raw, std::wstring& text, unsigned short& length) {
    VarChar copy;
    set(raw, copy);
    copy.wstr(text);
    length = copy.m_length;
}

void VarChar::set(wchar_t const* text, unsigned int length, unsigned int capacity,
                  void* buffer) noexcept {
    if (buffer == nullptr) {
        return;
    }
    std::size_t const count =
        text == nullptr ? 0 : std::min<std::size_t>({length, capacity, maxLength});
    char* const end = putRaw(buffer, text, count);
    std::memset(end, fillByte, (capacity - count) * sizeof(unsigned short));
}

void VarChar::set(char const* text, void* buffer) noexcept {
    if (buffer != nullptr) {
        putRaw(buffer, text, detail::terminatedLength(text, maxLength));
    }
}

bool VarChar::equal(void const* raw, wchar_t const* text, unsigned int length) noexcept {
    if (lengthField(raw) != length || length > maxLength || (text == nullptr && length != 0)) {
        return false;
    }
    VarChar copy;
    set(raw, copy);
    return std::equal(copy.m_units, copy.m_units + copy.m_length, text,
                      [](unsigned short unit, wchar_t c) {
                          return unit == detail::convertElement<unsigned short>(c);
                      });
}

int VarChar::compare(VarChar const& other) const noexcept {
    return std::memcmp(this, &other, std::min(size(), other.size()));
}

} // namespace Halvora
