#include <Halvora/version/KrVersion.h>

#include <locale>

#include <Halvora/types/HalvTypes.h>
#include <tests/support/Memory.h>

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

TEST(KrVersion, isFourNumbersAndALabelOfItsOwn) {
    struct {
        KrVersion version;
        char const* text;
    } const rows[] = {
        {KrVersion(), "0.0.0.0"},
        {KrVersion(1, 2),        "1.2.0.0"},
        {KrVersion(3,           0,          0, 39686), "3.0.0.39686"},
        {labelled(""),          "1234.56.255.4294967295"   },
        {labelled("release"),           "1234.56.255.4294967295"        },
        {labelled("Release"),           "1234.56.255.4294967295 (Release)"},
        {labelled("release "),           "1234.56.255.4294967295 (release )"},
        {HalvTypes::ms_Version,           "3.0.0.39686 (release-dev)"  },
    };
    for (auto const& row : rows) {
        std::ostringstream narrow;
        std::wostringstream wide;
        narrow << row.version;
        wide << row.version;
        EXPECT_EQ(row.text, narrow.str());
        EXPECT_EQ(std::wstring(row.text, row.text + std::strlen(row.text)), wide.str());
    }
}

template <typename Char>
struct Grouped : std::numpunct<Char> {
    Char do_thousands_sep() const override { return Char('\''); }
    std::string do_grouping() const override { return "\3"; }
};

// The text of a version with this release type, in characters of either width.
template <typename Char>
void expectText(std::string const& expected, char const* type, std::ios::fmtflags flags) {
    std::basic_ostringstream<Char> stream;
    stream.imbue(std::locale(std::locale(), new Grouped<Char>));
    stream.flags(flags);
    stream << std::setfill(Char('*')) << std::setw(7) << labelled(type);
    auto const* const begin = reinterpret_cast<unsigned char const*>(expected.data());
    EXPECT_EQ(std::basic_string<Char>(begin, begin + expected.size()), stream.str());
}

TEST(KrVersion, theStreamDecidesHowTheNumbersLook) {
    auto const expectBoth = [](auto... arguments) {
        expectText<char>(arguments...);
        expectText<wchar_t>(arguments...);
    };
    auto const dec = std::ios::dec, hex = std::ios::hex | std::ios::left;
    expectBoth("**1'234.56.255.4'294'967'295", "", dec);
    expectBoth("**1'234.56.255.4'294'967'295 (\xE4\xFF)", "\xE4\xFF", dec);
    expectBoth("4d2****.38.ff.ff'fff'fff (Release)", "Release", hex);
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

TEST(KrVersion, failedAllocationsLeakNothing) {
    std::string const t(40, 'x');
    auto const act = [&](KrVersion& assigned) {
        KrVersion const all(1, 2, 3, 4, t, t, t, t, true, t, t, 5, 6, t, t, t, t, t, t);
        assigned = KrVersion(all);
    };
    EXPECT_LE(24, test::failEachAllocation([] { return KrVersion(); }, act, [](auto&) {}));
}

TEST(KrVersion, theFourNumbersDecideAboutEquality) {
    EXPECT_EQ(KrVersion(3, 0, 0, 39686), HalvTypes::ms_Version);
    EXPECT_TRUE(KrVersion(1, 2) == KrVersion(1, 2, 0, 0) && KrVersion() == KrVersion(0, 0));
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_NE(KrVersion(), KrVersion(i == 0, i == 1, i == 2, i == 3));
    }
}

} // namespace
