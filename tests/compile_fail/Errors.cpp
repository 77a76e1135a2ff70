// An error that is dropped is lost. A catalogue is checked when it is compiled.
#include <Halvora/error/Catalogue.h>
#include <Halvora/types/ParseBinary16.h>

#pragma GCC diagnostic error "-Wunused-result"

using namespace Halvora;

#if defined(HALV_CASE_1)
#    define SECOND -2, L"b", L"A sentence."
#elif defined(HALV_CASE_2)
#    define SECOND 7, L"b", nullptr
#elif defined(HALV_CASE_3)
#    define SECOND 7, L"b", L"\U0001F600"
#elif defined(HALV_CASE_4)
#    define HALF L"1234567812345678123456781234567812345678123456781234567812345678"
#    define SECOND 7, L"b", L"A sentence.", nullptr, HALF HALF L"9"
#else
#    define SECOND 7, L"b", L"A sentence."
#endif
inline constexpr CatalogueRow tested[] = {
    {-2,              L"a", L"A sentence.", {}},
    {SECOND}
};
static_assert(catalogue<tested>.getCount() == 2);

void use(HLVError::Holder& holder, HLVError const* error) {
    HLVError::Holder const kept(holder.extractError());
#if defined(HALV_CASE_5)
    holder.extractError();
#elif defined(HALV_CASE_6)
    HLVError::copy(error);
#elif defined(HALV_CASE_7)
    HLVError::makeError(-1);
#elif defined(HALV_CASE_8)
    HLVError::create(-1);
#elif defined(HALV_CASE_9)
    Binary16 id;
    parseBinary16("", id);
#elif defined(HALV_CASE_10)
    using namespace Halvora::literals;
    static_cast<void>("0x12"_id);
#endif
    static_cast<void>(error);
}
