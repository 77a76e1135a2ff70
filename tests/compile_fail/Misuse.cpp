// A pointer must not turn into a value, and nothing without a text form slip into a stream by way
// of a conversion: with all headers, and with each alone that declares a text form. The first cases
// claim that something does.
#if defined(HALV_CASE_1)
#    include <Halvora/array/HLVArray.h>
#elif defined(HALV_CASE_2)
#    include <Halvora/error/HLVError.h>
#elif defined(HALV_CASE_3)
#    include <Halvora/version/KrVersion.h>
#else
#    define WITH_ALL_HEADERS
#    include <Halvora/Halvora.h>
#endif
#include <Halvora/text/ResString.h>

#include <ostream>

using namespace Halvora;

template <typename Stream, typename Value, typename = void>
constexpr bool inserts = false;
template <typename S, typename Value>
constexpr bool inserts<S, Value, decltype(void(std::declval<S&>() << std::declval<Value&>()))> =
    true;
template <typename... Values>
constexpr bool anyInserts = ((inserts<std::ostream, Values> || inserts<std::wostream, Values>) ||
                             ...);
constexpr bool slipsIn =
    anyInserts<HLVString, ResString, std::exception> || inserts<std::ostream, std::wstring>;

#if !defined(WITH_ALL_HEADERS)
static_assert(slipsIn);
#else
static_assert(!slipsIn && !anyInserts<ResString2, VarChar> && inserts<std::wostream, HLVError>);
static_assert(inserts<std::ostream, HLVArray> && !inserts<std::wostream, HLVArray>);
static_assert(std::is_constructible_v<HLVArray, bool> &&
              std::is_constructible_v<HLVError::Param, char*>);

struct S;
template <typename T, typename... Arguments>
constexpr bool anyBuilds = (std::is_constructible_v<T, Arguments> || ...);
static_assert(!anyBuilds<HLVArray, char const*, wchar_t const*, int*, int S::*, std::nullptr_t>);
static_assert(
    !anyBuilds<HLVError::Param, void*, int const*, int S::*, char volatile*, std::nullptr_t>);
static_assert(!anyBuilds<HLVError::List, HLVError::List&> && !std::is_copy_assignable_v<HLVError>);
static_assert(!std::is_default_constructible_v<std::hash<ResString>>);
static_assert(!std::is_assignable_v<ResString&, int> &&
              !std::is_assignable_v<ResString&, eDataType>);

// Whether no overload takes the arguments; what they are given to is `T`.
#    define REFUSED(name, ...)                 \
        template <typename T, typename = void> \
        constexpr bool name = true;            \
        template <typename T>                  \
        constexpr bool name<T, decltype(void(__VA_ARGS__))> = false
REFUSED(construct, T({1, 2, 3}));
REFUSED(assign, std::declval<T&>() = {2, L'x'});
REFUSED(trace, T(1, "message", {1, 2}));
REFUSED(message, T(1, {1, 2}, "trace"));
REFUSED(traceOfError, T(std::declval<HLVError*>(), {1, 2}));
REFUSED(traceOfOwned, T(std::declval<std::unique_ptr<HLVError>>(), {1, 2}));
REFUSED(twoTexts, T({L"a", L"b"}));
REFUSED(pointer, T({L"x"}));
REFUSED(addText, std::declval<T&>().addBool("x"));
REFUSED(setText, std::declval<T&>().setBool(0, "x"));
REFUSED(becomeText, std::declval<T&>().set("x"));
REFUSED(precede, std::declval<T const&>() < std::declval<T const&>());
REFUSED(nameOfNumber, T::toAString(3));
REFUSED(wideNameOfNumber, T::toWString(3));
REFUSED(lengthIsTrue, std::declval<T&>().set("x", true));
REFUSED(lengthIsHalf, std::declval<T&>().set("x", 0.5));
REFUSED(instance, T{});
static_assert(construct<VarChar> && assign<VarChar> && trace<Exception> && twoTexts<HLVArray>);
static_assert(pointer<HLVArray> && addText<HLVArray> && setText<HLVArray> && becomeText<Binary16>);
static_assert(message<Exception> && traceOfError<HLVErrorException> &&
              traceOfOwned<HLVErrorException>);
static_assert(nameOfNumber<Convert> && wideNameOfNumber<Convert>);
static_assert(precede<ResString> && instance<Round> && instance<Utf8>);
static_assert(std::is_constructible_v<CsvReader, std::string&> &&
              !anyBuilds<CsvReader, std::string, std::string const>); // gone before it is read
static_assert(lengthIsTrue<VarChar> && lengthIsHalf<VarChar>);

void use(HLVArray& array, Binary16& value, ResString const& text, VarChar& raw, Exception& e) {
    static_cast<void>(array.addBool(true) + array.setBool(0, text == text) + value.set(true));
    raw = {L'a', L'b'};
    // What programs pass on by its address alone is not overloaded.
    auto const add = &HLVArray::addString;
    auto const set = &HLVArray::setString;
    auto const trace = &Exception::addTrace;
    (array.*add)({}), (array.*set)(0, {L"ab", 1}), (e.*trace)("x");
#    if defined(HALV_CASE_4) && __SIZEOF_LONG__ == 4
    static_cast<void>(viewOf<long>(array));
#    elif defined(HALV_CASE_4)
#        error "every long is an element here"
#    endif
}
#endif
