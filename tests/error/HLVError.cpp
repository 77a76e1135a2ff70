#include "Shown.h"

#include <fstream>
#include <limits>
#include <pthread.h>
#include <stdexcept>

namespace Halvora::test {
namespace {

// So that nothing is printed as an error by accident.
static_assert(!std::is_convertible_v<std::exception&, HLVError> &&
              !std::is_convertible_v<int, HLVError> && !std::is_copy_assignable_v<HLVError>);

template <typename Values, typename = void>
constexpr bool isMade = false;
template <typename... Values>
constexpr bool
    isMade<void(Values...), decltype(void(HLVError::create(1, std::declval<Values>()...)))> = true;
static_assert(isMade<void()> && isMade<void(int, char[3], std::wstring_view)> &&
              !isMade<void(int, int, int, int)> && !isMade<void(Param*)> && !isMade<void(void*)>);

TEST(HLVError, printsItsCodeItsParametersAndItsChain) {
    std::wstring const line = L"\n" + std::wstring(51, L'-') + L"\n";
    auto const expectText = [](std::wstring const& expected, Holder const& error) {
        EXPECT_EQ(expected, text(error));
        EXPECT_EQ(expected, text(error.getError()));
    };
    expectText(L"<NONE>", Holder());
    expectText(L"Error 0", new HLVError);
    expectText(L"Error 5", new HLVError(5));
    expectText(L"Error -5\n  P2: 7", new HLVError(-5, nullptr, new Param(7)));
    expectText(L"Error -5\n  P1: 7\n  P3: x",
               new HLVError(-5, new Param(7), nullptr, new Param("x")));
    expectText(L"Error -1\n  P1: \u00E9", new HLVError(std::runtime_error("\xE9")));
    expectText(L"Error -5\n  P1: 7\n  P2: 1\n  P3: " + std::wstring(30, 't') + line +
                   L"Error -4\n  P2: 8" + line + L"Error 3\n  P1: base",
               chainOfThree());
    HLVError const error(-5, nullptr, new HLVError(2), new Param(7), nullptr, nullptr);
    std::ostringstream narrow;
    std::wostringstream wide;
    EXPECT_TRUE(&wide == &(error << error.singleOutput(wide)) &&
                &narrow == &(error << error.singleOutput(narrow)));
    EXPECT_EQ(L"Error -5\n  P1: 7" + text(error), wide.str());
    EXPECT_EQ(Convert::toAString(wide.str()), narrow.str());
}

TEST(HLVError, isAnErrorBelowZeroAndAWarningAbove) {
    EXPECT_FALSE(HLVError::isError(nullptr) || HLVError::isWarning(nullptr));
    for (int const code : {-0x7FFFFFFF, -1, 0, 1, 0x7FFFFFFF}) {
        HLVError const error(code);
        EXPECT_EQ(code < 0, HLVError::isError(&error)) << code;
        EXPECT_EQ(code > 0, HLVError::isWarning(&error)) << code;
        EXPECT_EQ(code < 0 ? text(error) : L"<NONE>", text(Holder(HLVError::makeError(code))));
    }
}

TEST(HLVError, messageIgnoresTheLocaleThatStreamsFollow) {
    HLVError const error(-1'234'567, new Param(1234)), least(std::numeric_limits<int>::min());
    auto const before = std::locale::global(grouped());
    EXPECT_EQ("Error -1234567 Error -2147483648", error.messageA() + " " + least.messageA());
    EXPECT_EQ(L"Error -1234567", error.message());
    EXPECT_EQ(L"Error -1_234_567\n  P1: 1_234", text(error));
    std::locale::global(before);
}

void* useLongChain(void*) {
    Holder holder(new HLVError(-2));
    for (int i = 1; i < 400'000; ++i) {
        holder.prepend(-1);
    }
    Holder const copy = holder;
    std::ofstream narrow("/dev/null");
    EXPECT_TRUE(narrow << copy && writeJson(narrow, *copy.getError()) &&
                describe(narrow, *copy.getError(), *ResString::getMainTranslator()));
    EXPECT_EQ(copy.getError()->getBaseError(), copy.getError()->getByCode(-2));
    return nullptr;
}

TEST(HLVError, longChainsNeedNoDeepStack) {
    pthread_attr_t attributes;
    pthread_t thread;
    ASSERT_EQ(0, pthread_attr_init(&attributes) | pthread_attr_setstacksize(&attributes, 1 << 18));
    ASSERT_EQ(0, pthread_create(&thread, &attributes, useLongChain, nullptr));
    pthread_join(thread, nullptr);
}

} // namespace
} // namespace Halvora::test
