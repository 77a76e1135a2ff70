#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/HalvTypes.h>

#include <climits>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace Halvora {

class ResString;

/// One typed value of an error. Scalars and 16-byte values are kept in a `Binary16`, numbers in its
/// leading bytes, the rest zero; texts as a wide string. A resource string gives its id to the
/// bytes and its text to the string. Immutable but for its end.
class HALVTYPES_API HLVError::Param {
public:
    /// @name From a value
    /// The value under the data type of its kind.
    /// @{

    /// `DT_BOOL`.
    explicit Param(bool value) noexcept;
    /// `DT_BYTE`.
    explicit Param(unsigned char value) noexcept;
    /// `DT_INT16`, kept sign-extended to 32 bits.
    explicit Param(short value) noexcept;
    /// `DT_UINT16`, kept zero-extended to 32 bits.
    explicit Param(unsigned short value) noexcept;
    /// `DT_INT32`.
    explicit Param(int value) noexcept;
    /// `DT_UINT32`.
    explicit Param(unsigned int value) noexcept;
#if LONG_MAX > INT_MAX
    /// `DT_INT64`. Does not compile where `long` has 32 bits: write `int` or `long long`.
    explicit Param(long value) noexcept;
    /// `DT_UINT64`. Does not compile where `long` has 32 bits: write `unsigned int` or
    /// `unsigned long long`.
    explicit Param(unsigned long value) noexcept;
#endif
    /// `DT_INT64`.
    explicit Param(long long const& value) noexcept;
    /// `DT_UINT64`.
    explicit Param(unsigned long long const& value) noexcept;
    /// `DT_FLOAT`.
    explicit Param(float const& value) noexcept;
    /// `DT_DOUBLE`.
    explicit Param(double const& value) noexcept;
    /// `DT_BINARY16`.
    explicit Param(Binary16 const& value) noexcept;
    /// `DT_STRINGRES`: the id in the bytes, the text in the string.
    explicit Param(ResString const& value);
    /// @}

    /// @name From a text
    /// `DT_STRING`. Narrow and 16-bit texts are converted by `Convert`.
    /// @{

    /// A zero-terminated narrow text; empty for null.
    explicit Param(char const* text);
    /// A narrow text, zeros inside it included.
    explicit Param(std::string const& text);
    /// A zero-terminated wide text; null throws `std::logic_error`.
    explicit Param(wchar_t const* text);
    /// A wide text, zeros inside it included.
    explicit Param(std::wstring const& text);
    /// A zero-terminated text of 16-bit units; empty for null.
    explicit Param(unsigned short const* text);
    /// A text of 16-bit units, zeros inside it included.
    explicit Param(HLVString const& text);
    /// A `std::string_view` or a `std::wstring_view`, zeros inside it included. What only converts
    /// to a view is none.
    template <typename View, typename = std::enable_if_t<std::is_same_v<View, std::string_view> ||
                                                         std::is_same_v<View, std::wstring_view>>>
    explicit Param(View const& text) : Param(text.data(), text.size()) {}
    /// @}

    /// Other pointers are no `bool`.
    template <typename T,
              typename = std::enable_if_t<!std::is_same_v<std::remove_const_t<T>, char> &&
                                          !std::is_same_v<std::remove_const_t<T>, wchar_t> &&
                                          !std::is_same_v<std::remove_const_t<T>, unsigned short>>>
    explicit Param(T*) = delete;
    /// Other pointers are no `bool`.
    template <typename T, typename Class>
    explicit Param(T Class::*) = delete;
    /// Null is no value.
    explicit Param(std::nullptr_t) = delete;

    /// An independent copy.
    Param(Param const& other);
    Param& operator=(Param const&) = delete; ///< A parameter does not change.
    /// Ends the text.
    ~Param();

    /// The data type of the value.
    eDataType getDataType() const noexcept {
        return m_type;
    }
    /// The bytes of the value; all zero for a text.
    Binary16 const& getData() const noexcept {
        return m_data;
    }
    /// The text; empty for all other types.
    std::wstring const& getDataString() const noexcept {
        return m_dataString;
    }

    /// @name Reading
    /// These read the leading bytes, whatever the type: another type than the stored one gets the
    /// bytes reinterpreted, a text has all bytes zero, and everything but a text has an empty
    /// string. Ask `getDataType` first.
    /// @{

    /// Reads byte 0: false for 0, otherwise true.
    void getValue(bool& value) const noexcept {
        m_data.get(value);
    }
    /// Reads byte 0.
    void getValue(unsigned char& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 1.
    void getValue(short& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 1.
    void getValue(unsigned short& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 3.
    void getValue(int& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 3.
    void getValue(unsigned int& value) const noexcept {
        m_data.get(value);
    }
    /// Reads the leading bytes, as many as the target's `long` has.
    void getValue(long& value) const noexcept {
        m_data.get(value);
    }
    /// Reads the leading bytes, as many as the target's `long` has.
    void getValue(unsigned long& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 7.
    void getValue(long long& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 7.
    void getValue(unsigned long long& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 3.
    void getValue(float& value) const noexcept {
        m_data.get(value);
    }
    /// Reads bytes 0 to 7.
    void getValue(double& value) const noexcept {
        m_data.get(value);
    }
    /// Reads all 16 bytes.
    void getValue(Binary16& value) const noexcept {
        value = m_data;
    }
    /// Reads the text.
    void getValue(std::wstring& value) const {
        value = m_dataString;
    }
    /// Reads the text, narrowed as by `Convert`: a character that narrow text lacks is a space.
    void getValue(std::string& value) const {
        value = Convert::toAString(m_dataString);
    }
    /// @}

    /// Writes the value by the stream's own output of its type: a byte as a number, a text narrowed
    /// as by `Convert`, a 16-byte value as `<hexadecimal form>/<grouped form>`, nothing for
    /// `DT_VOID`.
    std::ostream& operator<<(std::ostream& stream) const;
    /// As the narrow form, a text unchanged.
    std::wostream& operator<<(std::wostream& stream) const;

private:
#if LONG_MAX == INT_MAX
    // Exported for programs that were linked when these still compiled.
    explicit Param(long value) noexcept;
    explicit Param(unsigned long value) noexcept;
#endif
    Param(eDataType type, Binary16 const& data) noexcept;
    Param(char const* text, std::size_t length);
    Param(wchar_t const* text, std::size_t length);

    eDataType m_type;
    Binary16 m_data;
    std::wstring m_dataString;
};

namespace detail {

// Calls `visit` with the value as what it is: a number, a `Binary16` or a text. False, and no call,
// when there is none.
template <typename Visit>
bool visitValue(HLVError::Param const& param, Visit visit) {
    return ElementTypes::visit(param.getDataType(), [&](auto const& row) {
        using Row = std::decay_t<decltype(row)>;
        if constexpr (Row::isText) {
            visit(param.getDataString());
        } else if constexpr (std::is_same_v<typename Row::Value, Binary16>) {
            visit(param.getData());
        } else {
            typename Row::Value value{};
            param.getValue(value);
            visit(value);
        }
    });
}

} // namespace detail

template <typename... Values, typename>
std::unique_ptr<HLVError> HLVError::create(int code, Values const&... values) {
    auto error = std::make_unique<HLVError>(code);
    [[maybe_unused]] Param** next = error->m_params;
    ((*next++ = new Param(values)), ...);
    return error;
}

} // namespace Halvora

namespace std {

/// Writes the value as the member does.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError::Param const& param);
/// Writes the value as the member does.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError::Param const& param);

/// Writes the value as the member does; `<NONE>` for null.
inline ostream& operator<<(ostream& stream, Halvora::HLVError::Param const* param) {
    return param != nullptr ? stream << *param
                            : stream << static_cast<Halvora::HLVError const*>(nullptr);
}
/// Writes the value as the member does; `<NONE>` for null.
inline wostream& operator<<(wostream& stream, Halvora::HLVError::Param const* param) {
    return param != nullptr ? stream << *param
                            : stream << static_cast<Halvora::HLVError const*>(nullptr);
}

} // namespace std
