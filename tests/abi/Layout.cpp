// Sizes, alignments and offsets are compiled into programs. A change here asks for another major
// version. The numbers hold with libstdc++, whose strings lie inside the classes.
#include <Halvora/Halvora.h>

#include <gtest/gtest.h>

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

TEST(Layout, theLibraryTellsItsMajorVersion) {
    EXPECT_EQ(HalvTypes::ms_Version.getMajor(), static_cast<unsigned>(Halvora::abi::HALVTYPES_ABI));
}

// Members of the standard library's types, which the descriptions in abi/ leave out.
TEST(Layout, stringsKeepTheirPlaces) {
    KrVersion const& version = HalvTypes::ms_Version;
    HLVError::Param const param(1);
    Exception const exception(1, "", "");
    HLVErrorException const carrier(nullptr, "");
    struct {
        void const *object, *member;
        std::size_t desk, target;
    } const rows[] = {
        {&version,   &version.getReleaseType(),      24,  24 },
        {&version,   &version.getConfiguration(),    120, 96 },
        {&version,   &version.getPlatform(),         160, 124},
        {&version,   &version.getOriginalFilename(), 384, 292},
        {&param,     &param.getDataString(),         24,  20 },
        {&exception, &exception.trace(),             48,  32 },
        {&carrier,   &carrier.trace(),               8,   4  },
    };
    for (auto const& row : rows) {
        EXPECT_EQ(static_cast<char const*>(row.object) + on(row.desk, row.target), row.member);
    }
}

} // namespace
#endif
