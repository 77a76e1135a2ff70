// An error that is dropped is lost, and one has at most three parameters. A catalogue is checked
// when it is compiled.
#include <Halvora/error/Catalogue.h>

#pragma GCC diagnostic error "-Wunused-result"

using namespace Halvora;

inline constexpr CatalogueRow rows[] = {
    {-2, L"a", L"A sentence.", {}},
    {7,  L"b", L"A sentence.", {}},
};
#if defined(HALV_CASE_1)
inline constexpr CatalogueRow tested[] = {
    {-2, L"a", L"A sentence.", {}},
    {7,  L"b", L"A sentence.", {}},
    {-2, L"c", L"A sentence.", {}},
};
#elif defined(HALV_CASE_2)
inline constexpr CatalogueRow tested[] = {
    {1, L"a", nullptr, {}}
};
#elif defined(HALV_CASE_3)
inline constexpr CatalogueRow tested[] = {
    {1, nullptr, L"A sentence.", {}}
};
#elif defined(HALV_CASE_4)
inline constexpr CatalogueRow tested[] = {
    {1, L"a", L"\U0001F600", {}}
};
#elif defined(HALV_CASE_5)
#    define EIGHT L"12345678"
#    define HALF EIGHT EIGHT EIGHT EIGHT EIGHT EIGHT EIGHT EIGHT
inline constexpr CatalogueRow tested[] = {
    {1, L"a", L"A sentence.", {nullptr, HALF HALF L"9"}}
};
#elif defined(HALV_CASE_6)
#    define tested rows, rows
#else
#    define tested rows
#endif
static_assert(catalogue<tested>.getCount() == 2);

void use(HLVError::Holder& holder, HLVError const* error) {
    HLVError::Holder const kept(holder.extractError());
#if defined(HALV_CASE_7)
    holder.extractError();
#elif defined(HALV_CASE_8)
    HLVError::copy(error);
#elif defined(HALV_CASE_9)
    HLVError::makeError(-1);
#elif defined(HALV_CASE_10)
    HLVError::create(-1);
#elif defined(HALV_CASE_11)
    holder.prepend(-1, 1, 2, 3, 4);
#endif
    static_cast<void>(error);
}
