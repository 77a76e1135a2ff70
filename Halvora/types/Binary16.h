#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/ResultCodes.h>

#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <type_traits>

#if __has_include(<version>)
#    include <version>
#endif
#if defined(__cpp_lib_three_way_comparison)
#    include <compare>
#endif

namespace Halvora {

namespace detail {
template <typename T>
struct LastChoice;
}

/// A plain 16-byte value: an identifier, raw bytes, or the carrier of one number in its leading
/// bytes. It is trivially copyable, has no alignment of its own and no other storage, so arrays of
/// it may be filled, compared and stored as raw memory.
///
/// @code{.unparsed}
/// identifier := part1:u32le part2:u16le part3:u16le part4:u64le
/// @endcode
///
/// Numbers lie in little-endian order, floating-point numbers as their IEEE 754 bit patterns.
/// `long` counts as the integer of its width: 8 bytes on 64-bit Linux, 4 on 32-bit ARM and on
/// Windows. For the same bytes everywhere write `std::int32_t` or `std::int64_t` instead.
///
/// Nothing here allocates. Nothing throws but `operator[]`, and streams that are set to.
class HALVTYPES_API Binary16 {
public:
    /// Characters of the hexadecimal form.
    static constexpr std::size_t HEXADECIMAL_LENGTH = 34;
    /// Characters of the grouped form.
    static constexpr std::size_t GROUPED_LENGTH = 36;

    static Binary16 const MIN;   ///< all bytes 0x00
    static Binary16 const MAX;   ///< all bytes 0xFF
    static Binary16 const EMPTY; ///< all bytes 0x00: no identifier is set

    /// All bytes zero.
    constexpr Binary16() noexcept = default;

    /// @name From a number
    /// The number lies in the leading bytes, every other byte is zero. Smaller integers and `bool`
    /// come in as `int`.
    /// @{

    /// Bytes 0 to 3; a negative number is not sign-extended beyond them.
    constexpr Binary16(int value) noexcept : Binary16(static_cast<unsigned int>(value)) {}
    /// Bytes 0 to 3.
    constexpr Binary16(unsigned int value) noexcept : Binary16(value, 0, 0, 0) {}
    /// As many bytes as `long` has: 4 or 8.
    constexpr Binary16(long value) noexcept : Binary16(static_cast<unsigned long>(value)) {}
    /// As many bytes as `unsigned long` has: 4 or 8.
    constexpr Binary16(unsigned long value) noexcept : Binary16(0ull + value) {}
    /// Bytes 0 to 7.
    constexpr Binary16(long long const& value) noexcept
        : Binary16(static_cast<unsigned long long>(value)) {}
    /// Bytes 0 to 7.
    constexpr Binary16(unsigned long long const& value) noexcept
        : Binary16(static_cast<unsigned int>(value), static_cast<unsigned short>(value >> 32),
                   static_cast<unsigned short>(value >> 48), 0) {}
    /// Bytes 0 to 3, the bit pattern.
    Binary16(float const& value) noexcept { set(value); }
    /// Bytes 0 to 7, the bit pattern.
    Binary16(double const& value) noexcept { set(value); }
    /// @}

    /// The four parts of an identifier, see the layout above.
    constexpr Binary16(unsigned int part1, unsigned short part2, unsigned short part3,
                       unsigned long long const& part4) noexcept
        : m_bytes{at(part1, 0), at(part1, 1), at(part1, 2), at(part1, 3),
                  at(part2, 0), at(part2, 1), at(part3, 0), at(part3, 1),
                  at(part4, 0), at(part4, 1), at(part4, 2), at(part4, 3),
                  at(part4, 4), at(part4, 5), at(part4, 6), at(part4, 7)} {}

    /// The first `length` bytes of `data`, at most 16; the rest is zero. All zero for null.
    Binary16(void const* data, unsigned int length) noexcept;

    /// Copies 16 bytes from `bytes`, which may overlap this value; all zero for null.
    Binary16& operator=(unsigned char const* bytes) noexcept;

    /// @name Setters
    /// Write the leading bytes that the type occupies, leave every other byte, and return 0.
    /// @{

    /// Byte 0: 1 for true, 0 for false.
    int set(bool value) noexcept { return set(static_cast<unsigned char>(value)); }
    /// Writes byte 0.
    int set(unsigned char value) noexcept { return put(value); }
    /// Writes bytes 0 and 1.
    int set(short value) noexcept { return put(value); }
    /// Writes bytes 0 and 1.
    int set(unsigned short value) noexcept { return put(value); }
    /// Writes bytes 0 to 3.
    int set(int value) noexcept { return put(value); }
    /// Writes bytes 0 to 3.
    int set(unsigned int value) noexcept { return put(value); }
    /// Writes 4 or 8 bytes, as many as `long` has.
    int set(long value) noexcept { return put(value); }
    /// Writes 4 or 8 bytes, as many as `long` has.
    int set(unsigned long value) noexcept { return put(value); }
    /// Writes bytes 0 to 7.
    int set(long long const& value) noexcept { return put(value); }
    /// Writes bytes 0 to 7.
    int set(unsigned long long const& value) noexcept { return put(value); }
    /// Writes bytes 0 to 3, the bit pattern.
    int set(float const& value) noexcept { return put(value); }
    /// Writes bytes 0 to 7, the bit pattern.
    int set(double const& value) noexcept { return put(value); }
    /// All 16 bytes.
    int set(Binary16 const& value) noexcept {
        *this = value;
        return 0;
    }
    /// A pointer is no bool.
    template <typename T>
    int set(T*) = delete;
    /// @}

    /// Writes byte `index` and returns 0; `ERR_OUT_OF_RANGE` for an index of 16 or more.
    int set(unsigned char index, unsigned char value) noexcept;

    /// @name Getters
    /// Copy the leading bytes into `value`, whatever was stored there.
    /// @{

    /// Byte 0; every value but 0 is true.
    void get(bool& value) const noexcept { value = m_bytes[0] != 0; }
    /// Reads byte 0.
    void get(unsigned char& value) const noexcept { take(value); }
    /// Reads bytes 0 and 1.
    void get(short& value) const noexcept { take(value); }
    /// Reads bytes 0 and 1.
    void get(unsigned short& value) const noexcept { take(value); }
    /// Reads bytes 0 to 3.
    void get(int& value) const noexcept { take(value); }
    /// Reads bytes 0 to 3.
    void get(unsigned int& value) const noexcept { take(value); }
    /// Reads 4 or 8 bytes, as many as `long` has.
    void get(long& value) const noexcept { take(value); }
    /// Reads 4 or 8 bytes, as many as `long` has.
    void get(unsigned long& value) const noexcept { take(value); }
    /// Reads bytes 0 to 7.
    void get(long long& value) const noexcept { take(value); }
    /// Reads bytes 0 to 7.
    void get(unsigned long long& value) const noexcept { take(value); }
    /// Reads bytes 0 to 3.
    void get(float& value) const noexcept { take(value); }
    /// Reads bytes 0 to 7.
    void get(double& value) const noexcept { take(value); }
    /// @}

    /// Byte `index`; throws `std::out_of_range` ("out_of_range") for an index of 16 or more.
    unsigned char operator[](unsigned char index) const;

    /// @name UUIDs
    /// RFC 9562 stores the first three groups of a UUID with the most significant byte first; here
    /// they are little-endian numbers. These two translate, so that the grouped form of a value is
    /// the text of its UUID. A GUID in memory has the order of this class: copy it as it is.
    /// @{

    /// The value of the UUID whose 16 bytes stand at `bytes`; all zero for null.
    static Binary16 fromUuidBytes(void const* bytes) noexcept;
    /// Writes the 16 bytes of the UUID to `bytes`, which may overlap this value; nothing for null.
    void toUuidBytes(void* bytes) const noexcept;
    /// @}

    /// @name Text
    /// The hexadecimal form is "0x" and 32 upper-case digits, byte 15 first: the bytes as one large
    /// number. The grouped form has 32 lower-case digits in five groups: parts 1, 2 and 3 of an
    /// identifier as numbers, bytes 8 and 9, bytes 10 to 15, as in
    /// "12345678-9abc-def0-0807-060504030201". A strict reader of both is parseBinary16(); strings
    /// are made by Convert::toAString(Binary16 const&).
    /// @{

    /// Writes the hexadecimal form to `out`, no zero behind it, and returns 34. Writes nothing and
    /// returns 0 when `out` is null or has a `capacity` of fewer characters.
    std::size_t toHexadecimal(char* out, std::size_t capacity) const noexcept;
    /// The same as wide text.
    std::size_t toHexadecimal(wchar_t* out, std::size_t capacity) const noexcept;
    /// Writes the grouped form to `out`, no zero behind it, and returns 36. Writes nothing and
    /// returns 0 when `out` is null or has a `capacity` of fewer characters.
    std::size_t toGrouped(char* out, std::size_t capacity) const noexcept;
    /// The same as wide text.
    std::size_t toGrouped(wchar_t* out, std::size_t capacity) const noexcept;

    /// Inserts the hexadecimal form as one text, which a field width applies to. An operator of the
    /// program's own goes first.
    friend HALVTYPES_API std::ostream& operator<<(detail::LastChoice<std::ostream> stream,
                                                  detail::LastChoice<Binary16 const> value);
    /// The same on a wide stream.
    friend HALVTYPES_API std::wostream& operator<<(detail::LastChoice<std::wostream> stream,
                                                   detail::LastChoice<Binary16 const> value);

    /// Writes the hexadecimal form as insertions of single characters do: a field width goes to the
    /// "0" alone, and a sink that fails half-way leaves the same state. Returns `stream`.
    std::ostream& write(std::ostream& stream) const;
    /// The same on a wide stream, where "0x" is one insertion, which the field width goes to, and
    /// each digit is widened by the stream's locale.
    std::wostream& write(std::wostream& stream) const;

    /// Skips two characters, whatever they are, then extracts 32 digits, white space before each
    /// skipped if the stream does so. '0' to '9', 'A' to 'F' and 'a' to 'f' are digits, ':' to '?'
    /// count as 10 to 15, everything else as 0: nothing is validated. When the stream ends early
    /// or its buffer throws, its state says so, the bytes read till then are kept, the others zero.
    std::istream& read(std::istream& stream);
    /// @}

    /// @name Comparison
    /// Byte by byte, byte 0 first.
    /// @{

    /// Whether all 16 bytes are equal.
    friend constexpr bool operator==(Binary16 const& a, Binary16 const& b) noexcept {
        return compare(a, b) == 0;
    }
    /// Whether a byte differs.
    friend constexpr bool operator!=(Binary16 const& a, Binary16 const& b) noexcept {
        return !(a == b);
    }
    /// Whether `a` has the smaller byte where they first differ.
    friend constexpr bool operator<(Binary16 const& a, Binary16 const& b) noexcept {
        return compare(a, b) < 0;
    }
    /// Whether `b < a`.
    friend constexpr bool operator>(Binary16 const& a, Binary16 const& b) noexcept {
        return compare(a, b) > 0;
    }
    /// Whether not `b < a`.
    friend constexpr bool operator<=(Binary16 const& a, Binary16 const& b) noexcept {
        return compare(a, b) <= 0;
    }
    /// Whether not `a < b`.
    friend constexpr bool operator>=(Binary16 const& a, Binary16 const& b) noexcept {
        return compare(a, b) >= 0;
    }
#if defined(__cpp_lib_three_way_comparison)
    /// All of these at once, in C++20.
    friend constexpr std::strong_ordering operator<=>(Binary16 const& a,
                                                      Binary16 const& b) noexcept {
        return compare(a, b) <=> 0;
    }
#endif
    /// @}

    /// The storage; programs use `operator[]` and set(). Public because C++20 takes nothing as
    /// template argument that has private members.
    unsigned char m_bytes[16] = {};

private:
    static constexpr unsigned char at(unsigned long long number, int byte) noexcept {
        return static_cast<unsigned char>(number >> (8 * byte));
    }
    static constexpr int compare(Binary16 const& a, Binary16 const& b) noexcept {
        if (!__builtin_is_constant_evaluated()) {
            return std::memcmp(a.m_bytes, b.m_bytes, sizeof a.m_bytes);
        }
        std::size_t i = 0;
        while (i < 15 && a.m_bytes[i] == b.m_bytes[i]) {
            ++i;
        }
        return a.m_bytes[i] - b.m_bytes[i];
    }
    template <typename T>
    int put(T const& value) noexcept {
        std::memcpy(m_bytes, &value, sizeof value);
        return 0;
    }
    template <typename T>
    void take(T& value) const noexcept {
        std::memcpy(&value, m_bytes, sizeof value);
    }
};

static_assert(sizeof(Binary16) == 16 && alignof(Binary16) == 1 &&
              std::is_trivially_copyable_v<Binary16> && std::is_standard_layout_v<Binary16>);
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "numbers are stored in native order");
static_assert(sizeof(int) == 4 && sizeof(short) == 2 && sizeof(long long) == 8);

} // namespace Halvora

#include <Halvora/types/Binary16Inline.h>
