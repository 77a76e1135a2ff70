// Sizes, alignments and offsets are compiled into programs. A change here asks for another major
// version. The numbers hold with libstdc++, whose strings lie inside the classes.
#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using namespace Halvora;

#if defined(__GLIBCXX__)
namespace {

constexpr std::size_t on(std::size_t desk, std::size_t target) {
    return sizeof(void*) == 8 ? desk : target;
}

template <typename T>
constexpr bool is(std::size_t desk, std::size_t target, std::size_t alignment = alignof(void*)) {
    return sizeof(T) == on(desk, target) && alignof(T) == alignment;
}

static_assert(is<Binary16>(16, 16, 1) && is<VarChar>(1026, 1026, 2));
static_assert(is<eDataType>(4, 4, 4) && is<eParseStatus>(4, 4, 4) && is<ParseResult>(16, 8));
static_assert(is<ResString>(312, 300) && is<ResString2>(56, 44));
static_assert(is<ITranslator>(8, 4) && is<ITranslatable>(8, 4));
static_assert(is<ResString::DummyTranslator>(8, 4));
static_assert(is<HLVArray>(32, 20) && is<ArrayView<int>>(16, 8));
static_assert(is<HLVError>(48, 24) && is<HLVError::Param>(56, 44) && is<HLVError::Holder>(16, 8));
static_assert(is<HLVError::List>(24, 16) && is<HLVError::List::iterator>(24, 12));
static_assert(is<HLVError::List::const_iterator>(24, 12));
static_assert(is<Exception>(80, 56) && is<HLVErrorException>(80, 56) && is<KrVersion>(416, 316));

// A member whose address is to be had.
void expectAt(std::size_t desk, std::size_t target, void const* object, void const* member) {
    EXPECT_EQ(static_cast<char const*>(object) + on(desk, target), member);
}

// A member that gives out copies only.
template <typename T>
void expectCopyAt(std::size_t desk, std::size_t target, void const* object, T const& value) {
    auto const* const at = static_cast<char const*>(object) + on(desk, target);
    EXPECT_EQ(0, std::memcmp(at, &value, sizeof value)) << "offset " << on(desk, target);
}

} // namespace

TEST(Layout, textsAndArraysKeepTheirMembersPlaces) {
    ResString const text(Binary16(7), L"abc");
    expectAt(0, 0, &text, &text.id());
    expectAt(18, 18, &text, text.hlv_str());
    expectCopyAt(8, 4, std::make_unique<ResString2>(text).get(), Binary16(7));
    VarChar const varChar("");
    expectAt(2, 2, &varChar, varChar.pstr());

    int const numbers[] = {1, 2, 3};
    HLVArray const array(3, numbers);
    expectCopyAt(8, 4, &array, DT_INT32);
    expectCopyAt(12, 8, &array, static_cast<unsigned short>(3));
    expectCopyAt(16, 12, &array, 12u);
    expectCopyAt(24, 16, &array, array.getData());

    KrVersion const version(1, 2, 3, 4, "", "", "", "", true, "", "", 5, 6, "", "", "", "", "", "");
    unsigned int const parts[] = {1, 5, 2, 6, 3, 4};
    expectCopyAt(0, 0, &version, parts);
    expectAt(24, 24, &version, &version.getReleaseType());
    expectAt(120, 96, &version, &version.getConfiguration());
    expectCopyAt(152, 120, &version, true);
    expectAt(160, 124, &version, &version.getPlatform());
    expectAt(384, 292, &version, &version.getOriginalFilename());
}

TEST(Layout, errorsKeepTheirMembersPlaces) {
    HLVError const error(-5, &error, new HLVError(-1), new HLVError::Param(1),
                         new HLVError::Param(2), new HLVError::Param(3));
    expectAt(0, 0, &error, &error.getCode());
    expectCopyAt(8, 4, &error, error.getTag());
    expectCopyAt(16, 8, &error, error.getPrecedingError());
    HLVError::Param const* const params[] = {error.getParam0(), error.getParam1(),
                                             error.getParam2()};
    expectCopyAt(24, 12, &error, params);
    expectCopyAt(0, 0, params[0], DT_INT32);
    expectAt(4, 4, params[0], &params[0]->getData());
    expectAt(24, 20, params[0], &params[0]->getDataString());

    Exception const exception(1, "", "");
    expectAt(8, 4, &exception, &exception.code());
    expectAt(48, 32, &exception, &exception.trace());
    HLVErrorException const carrier(nullptr, "");
    expectAt(8, 4, &carrier, &carrier.trace());
    expectCopyAt(72, 52, &carrier, carrier.error());

    HLVError::Holder holder(new HLVError(-7));
    expectCopyAt(8, 4, &holder, holder.getError());
    HLVError::List list(holder);
    list.add(new HLVError(1));
    list.add(new HLVError(2));
    int const counts[] = {1, 2};
    expectCopyAt(16, 8, &list, counts);
}
#endif
