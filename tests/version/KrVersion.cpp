#include <Halvora/version/KrVersion.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <locale>
#include <sstream>

#include <Halvora/types/HalvTypes.h>

using namespace Halvora;

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

template <typename Char>
struct Grouped : std::numpunct<Char> {
    Char do_thousands_sep() const override { return Char('\''); }
    std::string do_grouping() const override { return "\3"; }
};

template <typename Char>
void expectTextOf(KrVersion const& version, std::string const& expected, std::ios::fmtflags base) {
    std::basic_ostringstream<Char> stream;
    stream.imbue(std::locale(std::locale(), new Grouped<Char>));
    stream.flags(base);
    stream << std::setfill(Char('*')) << std::setw(7) << version;
    auto const* const begin = reinterpret_cast<unsigned char const*>(expected.data());
    EXPECT_EQ(std::basic_string<Char>(begin, begin + expected.size()), stream.str());
}

void expectText(KrVersion const& version, char const* expected,
                std::ios::fmtflags base = std::ios::dec) {
    expectTextOf<char>(version, expected, base);
    expectTextOf<wchar_t>(version, expected, base);
}

TEST(KrVersion, isFourNumbersAsTheStreamWritesThemAndALabelOfItsOwn) {
    expectText(KrVersion(1, 2), "******1.2.0.0");
    expectText(labelled(""), "**1'234.56.255.4'294'967'295");
    expectText(labelled("release"), "**1'234.56.255.4'294'967'295");
    expectText(labelled("\xE4\xFF"), "**1'234.56.255.4'294'967'295 (\xE4\xFF)");
    expectText(labelled("Release"), "****4d2.38.ff.ff'fff'fff (Release)", std::ios::hex);
    expectText(HalvTypes::ms_Version, "******3.0.0.39'686 (release-dev)");
}

std::string fields(KrVersion const& v) {
    unsigned int major = 9, minor = 9;
    v.getProductVersion(major, minor);
    std::ostringstream all;
    all << v << ',' << v.getBuildDate() << ',' << v.getBuildTime() << ',' << v.getConfiguration()
        << ',' << v.getBuildFlag() << ',' << v.getPlatform() << ',' << v.getCompiler() << ','
        << major << ',' << minor << ',' << v.getProductName() << ',' << v.getCompanyName() << ','
        << v.getFileDescription() << ',' << v.getInternalName() << ','
        << v.getLegalCopyright().substr(0, 9) << ',' << v.getOriginalFilename();
    return all.str();
}

TEST(KrVersion, everyArgumentGoesToItsField) {
    EXPECT_EQ("1.2.3.4,,,,0,,,0,0,,,,,,", fields(KrVersion(1, 2, 3, 4)));
    EXPECT_EQ("1.2.3.4 (a),b,c,d,1,e,f,5,6,g,h,i,j,k,l",
              fields(KrVersion(1, 2, 3, 4, "a", "b", "c", "d", true, "e", "f", 5, 6, "g", "h", "i",
                               "j", "k", "l")));
    EXPECT_EQ(
        "3.0.0.39686 (release-dev),May 27 2015,08:46:27,Release,0,linux,gcc 4.4.2,1,0,Halvora,"
        "Halvora,HalvTypes Dynamic Link Library,HalvTypes,Copyright,HalvTypes.dll",
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
