#include <Halvora/version/KrVersion.h>

#include <tests/error/Shown.h>

namespace Halvora::test {
namespace {

// Whether the long constructor takes a value of this type for its flag.
using Text = char const (&)[2];
template <typename Flag>
constexpr bool takesFlag =
    std::is_constructible_v<KrVersion, int, int, int, int, Text, Text, Text, Text, Flag, Text, Text,
                            int, int, Text, Text, Text, Text, Text, Text>;
static_assert(takesFlag<bool&> && takesFlag<int> && takesFlag<eDataType> &&
              takesFlag<std::true_type>);
static_assert(!takesFlag<Text> && !takesFlag<char const* volatile&> && !takesFlag<void (&)()> &&
              !takesFlag<int KrVersion::*> && !takesFlag<std::string>);

KrVersion labelled(char const* releaseType) {
    return KrVersion(1234, 56, 255, ~0u, releaseType, "", "", "", false, "", "", 0, 0, "", "", "",
                     "", "", "");
}

std::wstring shown(KrVersion const& version, ios::fmtflags base = ios::dec) {
    return text(version, base, 7, grouped());
}

TEST(KrVersion, isFourNumbersAsTheStreamWritesThemAndALabelOfItsOwn) {
    EXPECT_EQ(L"      1.2.0.0", shown(KrVersion(1, 2)));
    EXPECT_EQ(L"  1_234.56.255.4_294_967_295", shown(labelled("")));
    EXPECT_EQ(L"  1_234.56.255.4_294_967_295", shown(labelled("release")));
    EXPECT_EQ(L"  1_234.56.255.4_294_967_295 (\u00E4\u00FF)", shown(labelled("\xE4\xFF")));
    EXPECT_EQ(L"    4d2.38.ff.ff_fff_fff (Release)", shown(labelled("Release"), ios::hex));
    EXPECT_EQ(L"      3.0.0.39_686 (release-dev)", shown(HalvTypes::ms_Version));
}

std::string fields(KrVersion const& v) {
    unsigned int major = 9, minor = 9;
    v.getProductVersion(major, minor);
    std::ostringstream all;
    all << v << ',' << v.getBuildDate() << ',' << v.getBuildTime() << ',' << v.getConfiguration()
        << ',' << v.getBuildFlag() << ',' << v.getPlatform() << ',' << v.getCompiler() << ','
        << major << ',' << minor << ',' << v.getProductName() << ',' << v.getCompanyName() << ','
        << v.getFileDescription() << ',' << v.getInternalName() << ',' << v.getLegalCopyright()
        << ',' << v.getOriginalFilename();
    return all.str();
}

TEST(KrVersion, everyArgumentGoesToItsField) {
    EXPECT_EQ("1.2.3.4,,,,0,,,0,0,,,,,,", fields(KrVersion(1, 2, 3, 4)));
    EXPECT_EQ("1.2.3.4 (a),b,c,d,1,e,f,5,6,g,h,i,j,k,l",
              fields(KrVersion(1, 2, 3, 4, "a", "b", "c", "d", true, "e", "f", 5, 6, "g", "h", "i",
                               "j", "k", "l")));
    EXPECT_EQ(
        "3.0.0.39686 (release-dev),May 27 2015,08:46:27,Release,0,linux,gcc 4.4.2,1,0,Halvora,"
        "Halvora,HalvTypes Dynamic Link Library,HalvTypes,Copyright Halvora. All rights "
        "reserved.,HalvTypes.dll",
        fields(HalvTypes::ms_Version));
}

TEST(KrVersion, theFourNumbersDecideAboutEquality) {
    KrVersion const same(3, 0, 0, 39686);
    EXPECT_EQ(same, HalvTypes::ms_Version);
    EXPECT_EQ(std::hash<KrVersion>()(same), std::hash<KrVersion>()(HalvTypes::ms_Version));
    EXPECT_TRUE(KrVersion(1, 2) == KrVersion(1, 2, 0, 0) && KrVersion() == KrVersion(0, 0));
    for (unsigned int i = 0; i < 4; ++i) {
        KrVersion const other(i == 0, i == 1, i == 2, i == 3);
        EXPECT_NE(KrVersion(), other);
        EXPECT_NE(std::hash<KrVersion>()(KrVersion()), std::hash<KrVersion>()(other));
    }
}

} // namespace
} // namespace Halvora::test
