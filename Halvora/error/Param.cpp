#include <Halvora/error/Param.h>

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include <Halvora/error/detail/Literal.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/detail/Encoding.h>

namespace Halvora {

namespace {

wchar_t const* notNull(wchar_t const* text) {
    if (text == nullptr) {
        throw std::logic_error("HLVError::Param: the text is null");
    }
    return text;
}

// Converts piece by piece on the stack and stops where one fails: another insertion would set
// failbit too. A long text is converted whole if it is padded or flushed at once.
void writeValue(std::ostream& stream, std::wstring const& text) {
    bool const isWhole = stream.width() != 0 || (stream.flags() & std::ios_base::unitbuf) != 0;
    if (text.size() > detail::chunkLength && isWhole) {
        stream << Convert::toAString(text);
        return;
    }
    char chunk[detail::chunkLength];
    std::size_t at = 0;
    do {
        std::size_t const length = std::min(text.size() - at, detail::chunkLength);
        detail::convertRun(chunk, text.data() + at, length);
        stream << std::string_view(chunk, length);
        at += length;
    } while (at < text.size() && stream.good());
}

template <typename Stream>
void writeValue(Stream& stream, Binary16 const& value) {
    using Char = typename Stream::char_type;
    Char text[Binary16::GROUPED_LENGTH];
    std::size_t const length = value.toGrouped(text, Binary16::GROUPED_LENGTH);
    value.write(stream);
    stream << detail::literal<Char>("/", L"/") << std::basic_string_view<Char>(text, length);
}

template <typename Stream>
void writeValue(Stream& stream, unsigned char value) {
    stream << static_cast<int>(value);
}

template <typename Stream, typename T>
void writeValue(Stream& stream, T const& value) {
    stream << value;
}

// Not inline: the member and the free operator share one copy.
template <typename Stream>
[[gnu::noinline]] Stream& write(Stream& stream, HLVError::Param const& param) {
    detail::visitValue(param, [&stream](auto const& value) { writeValue(stream, value); });
    return stream;
}

Binary16 byteOf(unsigned char value) noexcept {
    return Binary16(&value, sizeof value);
}

} // namespace

HLVError::Param::Param(eDataType type, Binary16 const& data) noexcept
    : m_type(type), m_data(data) {}

HLVError::Param::Param(bool value) noexcept : Param(DT_BOOL, byteOf(value)) {}
HLVError::Param::Param(unsigned char value) noexcept : Param(DT_BYTE, byteOf(value)) {}
HLVError::Param::Param(short value) noexcept : Param(DT_INT16, static_cast<int>(value)) {}
HLVError::Param::Param(unsigned short value) noexcept
    : Param(DT_UINT16, static_cast<unsigned int>(value)) {}
HLVError::Param::Param(int value) noexcept : Param(DT_INT32, value) {}
HLVError::Param::Param(unsigned int value) noexcept : Param(DT_UINT32, value) {}
HLVError::Param::Param(long value) noexcept
    : Param(sizeof value == sizeof(int) ? DT_INT32 : DT_INT64, value) {}
HLVError::Param::Param(unsigned long value) noexcept
    : Param(sizeof value == sizeof(int) ? DT_UINT32 : DT_UINT64, value) {}
HLVError::Param::Param(long long const& value) noexcept : Param(DT_INT64, value) {}
HLVError::Param::Param(unsigned long long const& value) noexcept : Param(DT_UINT64, value) {}
HLVError::Param::Param(float const& value) noexcept : Param(DT_FLOAT, value) {}
HLVError::Param::Param(double const& value) noexcept : Param(DT_DOUBLE, value) {}
HLVError::Param::Param(Binary16 const& value) noexcept : Param(DT_BINARY16, value) {}

HLVError::Param::Param(ResString const& value)
    : m_type(DT_STRINGRES), m_data(value.id()), m_dataString(value.wstr()) {}

HLVError::Param::Param(char const* text, std::size_t length)
    : m_type(DT_STRING), m_dataString(detail::converted<std::wstring>(text, length)) {}

HLVError::Param::Param(wchar_t const* text, std::size_t length)
    : m_type(DT_STRING), m_dataString(text, length) {}

HLVError::Param::Param(char const* text)
    : m_type(DT_STRING),
      m_dataString(detail::converted<std::wstring>(text, detail::terminatedLength(text))) {}

HLVError::Param::Param(std::string const& text)
    : m_type(DT_STRING), m_dataString(Convert::toWString(text)) {}

HLVError::Param::Param(wchar_t const* text) : m_type(DT_STRING), m_dataString(notNull(text)) {}

HLVError::Param::Param(std::wstring const& text) : m_type(DT_STRING), m_dataString(text) {}

HLVError::Param::Param(unsigned short const* text) : m_type(DT_STRING) {
    Convert::toWString(m_dataString, text);
}

HLVError::Param::Param(HLVString const& text)
    : m_type(DT_STRING), m_dataString(Convert::toWString(text)) {}

std::ostream& HLVError::Param::operator<<(std::ostream& stream) const {
    return write(stream, *this);
}

std::wostream& HLVError::Param::operator<<(std::wostream& stream) const {
    return write(stream, *this);
}

} // namespace Halvora

std::ostream& std::operator<<(std::ostream& stream, Halvora::HLVError::Param const& param) {
    return param << stream;
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::HLVError::Param const& param) {
    return param << stream;
}
