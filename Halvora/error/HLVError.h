#pragma once

#include <Halvora/Export.h>

#include <exception>
#include <iosfwd>
#include <memory>
#include <string>
#include <type_traits>

namespace Halvora {

/// An error or a warning: a code, up to three typed parameters, and the error that it wraps, so
/// that every caller on the way up adds one to the chain. A code below 0 is an error, above 0 a
/// warning; 0 is neither and stands for no error.
///
/// Errors live on the heap, travel as owning pointers and do not change. An error owns its
/// preceding error and its parameters; an object may have one owner only, and an error must not
/// precede itself. The tag is stored and returned, never followed or freed. Chains may be of any
/// length: no operation recurses.
///
/// Nothing is locked: an error and its chain belong to one thread at a time.
class HALVTYPES_API HLVError {
public:
    class Param;
    class Holder;
    class List;

private:
    // What an error can be made of.
    template <typename... Values>
    using IfParams =
        std::enable_if_t<sizeof...(Values) <= 3 &&
                         std::conjunction_v<std::is_constructible<Param, Values const&>...>>;

public:
    /// A new error with up to three values as parameters 0 to 2, each of whatever a `Param` takes:
    /// `HLVError::create(-5, pumpId, "no answer")`. Whichever allocation fails, nothing is leaked.
    template <typename... Values, typename = IfParams<Values...>>
    [[nodiscard]] static std::unique_ptr<HLVError> create(int code, Values const&... values);

    /// Code 0, nothing else.
    HLVError() noexcept;

    /// Takes ownership of the parameters, each of which may be null. No tag, no preceding error.
    explicit HLVError(int code, Param* param0 = nullptr, Param* param1 = nullptr,
                      Param* param2 = nullptr) noexcept;

    /// Takes ownership of `precedingError` and of the parameters, each of which may be null. `tag`
    /// stays the caller's.
    HLVError(int code, void const* tag, HLVError const* precedingError, Param* param0,
             Param* param1, Param* param2) noexcept;

    /// Code -1, and the narrow text of `e.what()` as parameter 0.
    explicit HLVError(std::exception const& e);

    /// A deep copy: the whole chain with all parameters; the tags are the same pointers.
    HLVError(HLVError const& other);
    HLVError& operator=(HLVError const&) = delete; ///< An error does not change.

    /// Deletes the chain below and the parameters.
    ~HLVError();

    /// @name Parts
    /// What is returned by pointer stays this error's own.
    /// @{

    /// The code, which lives as long as the error.
    int const& getCode() const noexcept { return m_code; }
    /// The tag, null when none was given.
    void const* getTag() const noexcept { return m_tag; }
    /// The error that this one wraps, null if it wraps none.
    HLVError const* getPrecedingError() const noexcept { return m_precedingError; }
    /// Parameter 0, null if absent.
    Param const* getParam0() const noexcept { return m_params[0]; }
    /// Parameter 1, null if absent.
    Param const* getParam1() const noexcept { return m_params[1]; }
    /// Parameter 2, null if absent.
    Param const* getParam2() const noexcept { return m_params[2]; }

    /// The end of the chain, which is this error itself when it wraps none.
    HLVError const* getBaseError() const noexcept;

    /// The first error of the chain, from this one down, that has the code; null if none has.
    HLVError const* getByCode(int code) const noexcept;
    /// @}

    /// Whether the code is below 0; false for null.
    static bool isError(HLVError const* error) noexcept;

    /// Whether the code is above 0; false for null.
    static bool isWarning(HLVError const* error) noexcept;

    /// The caller deletes the result: a new error for a negative code, otherwise null.
    [[nodiscard]] static HLVError* makeError(int code);

    /// The caller deletes the result: a deep copy, null for null.
    [[nodiscard]] static HLVError* copy(HLVError const* error);

    /// @name Text forms
    /// @code{.unparsed}
    /// error := "Error " code ("\n  P1: " param)? ("\n  P2: " param)? ("\n  P3: " param)?
    /// chain := error (separator error)*
    /// separator := "\n" 51 hyphens "\n"
    /// @endcode
    /// The code and the parameters go through the stream's own output, under its flags and locale.
    /// @{

    /// Writes this error alone, without its chain.
    std::ostream& singleOutput(std::ostream& stream) const;
    /// Writes this error alone, without its chain.
    std::wostream& singleOutput(std::wostream& stream) const;

    /// Writes the whole chain, newest error first.
    std::ostream& operator<<(std::ostream& stream) const;
    /// Writes the whole chain, newest error first.
    std::wostream& operator<<(std::wostream& stream) const;

    /// "Error " and the code in decimal, under every locale.
    std::wstring message() const;
    /// "Error " and the code in decimal, under every locale.
    std::string messageA() const;
    /// @}

private:
    void copyParams(HLVError const& other);

    int m_code = 0;
    void const* m_tag = nullptr;
    HLVError* m_precedingError = nullptr;
    Param* m_params[3] = {};
};

} // namespace Halvora

namespace std {

// In this namespace, so that every user of a stream finds them.

/// Writes the whole chain, newest error first.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError const& error);
/// Writes the whole chain, newest error first.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError const& error);
/// Writes the whole chain, newest error first; `<NONE>` for null.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError const* error);
/// Writes the whole chain, newest error first; `<NONE>` for null.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError const* error);

} // namespace std

// The nested classes, so that this header gives the whole error model.
#include <Halvora/error/Holder.h>
#include <Halvora/error/List.h>
#include <Halvora/error/Param.h>
