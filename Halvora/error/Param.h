#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/HalvTypes.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>

namespace Halvora {

class ResString;

// One typed value of an error. Scalars and 16-byte values are kept in a Binary16, numbers in its
// leading bytes, the rest zero; texts as a wide string. A resource string gives its id to the bytes
// and its text to the string. Immutable but for its end.
class HALVTYPES_API HLVError::Param {
public:
    // The value under the data type of its kind: DT_BOOL, DT_INT32, DT_STRINGRES and so on.
    explicit Param(bool value) noexcept;
    explicit Param(unsigned char value) noexcept;
    explicit Param(short value) noexcept;          // kept sign-extended to 32 bits
    explicit Param(unsigned short value) noexcept; // kept zero-extended to 32 bits
    explicit Param(int value) noexcept;
    explicit Param(unsigned int value) noexcept;
    explicit Param(long value) noexcept; // as the integer of its width
    explicit Param(unsigned long value) noexcept;
    explicit Param(long long const& value) noexcept;
    explicit Param(unsigned long long const& value) noexcept;
    explicit Param(float const& value) noexcept;
    explicit Param(double const& value) noexcept;
    explicit Param(Binary16 const& value) noexcept; // DT_BINARY16
    explicit Param(ResString const& value);

    // DT_STRING. Narrow and 16-bit texts are converted by Convert, for which null is the empty
    // text; a null wide text throws std::logic_error.
    explicit Param(char const* text);
    explicit Param(std::string const& text);
    explicit Param(wchar_t const* text);
    explicit Param(std::wstring const& text);
    explicit Param(unsigned short const* text);
    explicit Param(HLVString const& text);

    // Other pointers are no bool.
    template <typename T,
              typename = std::enable_if_t<!std::is_same_v<std::remove_const_t<T>, char> &&
                                          !std::is_same_v<std::remove_const_t<T>, wchar_t> &&
                                          !std::is_same_v<std::remove_const_t<T>, unsigned short>>>
    explicit Param(T*) = delete;
    template <typename T, typename Class>
    explicit Param(T Class::*) = delete;
    explicit Param(std::nullptr_t) = delete;

    // A deep copy.
    Param(Param const& other);
    Param& operator=(Param const&) = delete;
    ~Param();

    // What is kept: the type, the bytes and the text.
    eDataType getDataType() const noexcept { return m_type; }
    Binary16 const& getData() const noexcept { return m_data; }
    std::wstring const& getDataString() const noexcept { return m_dataString; }

    // Read the leading bytes, whatever the type: another type than the stored one gets the bytes
    // reinterpreted, a text has all bytes zero, and everything but a text has an empty string.
    void getValue(bool& value) const noexcept { m_data.get(value); }
    void getValue(unsigned char& value) const noexcept { m_data.get(value); }
    void getValue(short& value) const noexcept { m_data.get(value); }
    void getValue(unsigned short& value) const noexcept { m_data.get(value); }
    void getValue(int& value) const noexcept { m_data.get(value); }
    void getValue(unsigned int& value) const noexcept { m_data.get(value); }
    void getValue(long& value) const noexcept { m_data.get(value); }
    void getValue(unsigned long& value) const noexcept { m_data.get(value); }
    void getValue(long long& value) const noexcept { m_data.get(value); }
    void getValue(unsigned long long& value) const noexcept { m_data.get(value); }
    void getValue(float& value) const noexcept { m_data.get(value); }
    void getValue(double& value) const noexcept { m_data.get(value); }
    void getValue(Binary16& value) const noexcept { value = m_data; }
    void getValue(std::wstring& value) const { value = m_dataString; }

    // The value by the stream's own output of its type: a byte as a number, a text narrowed as by
    // Convert, a 16-byte value as "<hexadecimal form>/<grouped form>", nothing for DT_VOID.
    std::ostream& operator<<(std::ostream& stream) const;
    std::wostream& operator<<(std::wostream& stream) const;

private:
    Param(eDataType type, Binary16 const& data) noexcept;
    template <typename Stream>
    Stream& write(Stream& stream) const;
    template <typename Stored, typename Written = Stored, typename Stream>
    Stream& writeNumber(Stream& stream) const;

    eDataType m_type;
    Binary16 m_data;
    std::wstring m_dataString;
};

} // namespace Halvora

namespace std {

// As the members.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError::Param const& param);
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError::Param const& param);

} // namespace std
