#include <Halvora/text/ResString.h>

#include <sstream>

#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString2.h>
#include <gtest/gtest.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

std::string const idBytes = "0123456789abcdef";
Binary16 const id(idBytes.data(), 16);

ResString used() {
    return {id, HLVString(128, 'x')};
}

TEST(ResString, everySourceIsCutTo128Units) {
    for (unsigned const length : {0u, 1u, 16u, 17u, 127u, 128u, 129u, 65537u}) {
        std::wstring const wide = anyText(length);
        HLVString units;
        Convert::toHLVString(units, wide);
        bool const fits = length <= 128;
        EXPECT_TRUE(ResString::fits(wide) == fits && ResString::fits(units) == fits) << length;
        for (ResString const& text :
             {ResString(id, wide), ResString(id, units),
              ResString(wide) = id, ResString(units) = id, ResString(wide.c_str()) = id,
              ResString(units.c_str()) = id, used() = wide, used() = units, used() = wide.c_str(),
              used() = units.c_str()}) {
            EXPECT_EQ(idBytes + rawForm(wide.substr(0, 128)), bytesOf(text)) << length;
        }
    }
    EXPECT_EQ(3, ResString(std::wstring(L"\x10000\0z", 3)).length());
    EXPECT_EQ(2, ResString(L"\x10000z").length()); // no end, though the unit is zero
    EXPECT_EQ(2, ResString(HLVString{0, 'z'}).length());
    EXPECT_EQ(0, (used() = static_cast<wchar_t const*>(nullptr)).length());
    EXPECT_EQ(0, (used() = static_cast<unsigned short const*>(nullptr)).length());
}

TEST(ResString, packedFormsAndSlotsLieAnywhereAndMayOverlap) {
    for (unsigned const length : {0u, 1u, 10u, 128u, 129u, 200u, 65535u}) {
        std::wstring const text = anyText(length).substr(0, 300);
        std::string const packed = "<" + idBytes + rawForm(text, length - text.size());
        ResString loaded = used();
        loaded.set(&packed[1]);
        EXPECT_EQ(idBytes + rawForm(text.substr(0, 128)), bytesOf(loaded));
        EXPECT_EQ(18 + 2 * length, ResString::size(&packed[1]));
        for (unsigned const capacity : {0u, 1u, 9u, 10u, 128u, 300u}) {
            std::string slot = idBytes + rawForm(text.substr(0, capacity));
            slot.resize(18 + 2 * capacity, '\0');
            for (unsigned const at : {0u, 1u, 2u, 17u, 40u, 299u, 300u}) {
                std::string buffer = packed + std::string(2000, '#'), expected = buffer;
                ResString::set(&buffer[1], capacity, &buffer[at]);
                ASSERT_EQ(expected.replace(at, slot.size(), slot), buffer) << length << " " << at;
            }
        }
    }
    std::string buffer(28, '#');
    ResString::set(nullptr, 4, &buffer[1]);
    EXPECT_EQ("#" + std::string(26, '\0') + "#", buffer);
    ResString text = used();
    text.set(nullptr);
    EXPECT_EQ(std::string(36, '\0'), bytesOf(text) + bytesOf(ResString::EMPTY));
}

TEST(ResString, sourceMayBeTheTextItself) {
    ResString text = used(), &same = text;
    text = HLVString{'a', 'b', 'c', 'd', 0, 'e'};
    text.set(&(text = same));
    EXPECT_EQ(idBytes + rawForm({L"abcd\0e", 6}), bytesOf(text = text.id()));
    EXPECT_EQ(idBytes + rawForm(L"bcd"), bytesOf(text = text.hlv_str() + 1));
    EXPECT_EQ(idBytes + rawForm(L"d"), bytesOf(text = text.c_str() + 2));
    EXPECT_EQ('c', text.hlv_str()[1]); // left by the longer text
}

TEST(ResString, sizeWithinIsThatOfAWholeForm) {
    checkSizes<ResString>(18, {
                                  {0,     0,      0     }, // no identifier
                                  {0,     17,     0     }, // half a length field
                                  {0,     18,     18    }, // the empty text
                                  {0,     1000,   18    }, // bytes behind it do not matter
                                  {3,     23,     0     }, // one byte short
                                  {3,     24,     24    }, //
                                  {128,   274,    274   }, // the longest of an object
                                  {200,   418,    418   }, // whole, but cut by an object
                                  {65535, 131087, 0     }, // one byte short
                                  {65535, 131088, 131088}  // the longest that can be announced
    });
}

TEST(ResString, textGoesOutOneElementAUnit) {
    ResString text = used();
    std::wostringstream failed;
    failed.setstate(std::ios_base::eofbit);
    ResString().toWStr(failed);
    EXPECT_FALSE(failed.fail()); // nothing is inserted
    for (unsigned const length : {128u, 0u, 1u, 17u}) {
        std::wstring wide, out(40, 'x');
        std::string narrow(200, 'x');
        std::wostringstream stream;
        HLVString const units =
            HLVString(length / 2, 0xFFFE) + HLVString(length - length / 2, 0xE9);
        Convert::toWString(wide, units);
        (text = units).toWStr(out);
        text.toStr(narrow);
        text.toWStr(stream);
        stream.width(3); // for the first character
        text.toWStr(stream);
        EXPECT_EQ(wide + L"/" + wide + L"/" + wide, out + L"/" + text.wstr() + L"/" + text.c_str());
        EXPECT_EQ(wide + (length == 0 ? L"" : L"  ") + wide, stream.str());
        EXPECT_EQ(Convert::toAString(units), narrow);
    }
}

TEST(ResString, equalityIsDecidedByTwoIdsElseByTheTexts) {
    std::wstring const a(128, 'a'), b = a.substr(1) + L"b", half(64, 'a');
    std::vector<ResString> texts = {ResString::EMPTY, a, b, half, ResString(id, a),
                                    ResString(id, b), a};
    texts[6] = Binary16(&idBytes[1], 15);
    std::vector<ResString2> const texts2(texts.begin(), texts.end());
    auto const equalities = [](auto const& left, auto const& right) {
        std::string rows;
        for (std::size_t i = 0; i < 49; ++i) {
            rows += left[i / 7] == right[i % 7] ? "=" : "";
            rows += left[i / 7] != right[i % 7] ? "." : "";
            rows += i % 7 == 6 ? " " : "";
        }
        return rows;
    };
    EXPECT_EQ("=...... .=..=.= ..=..=. ...=... .=..==. ..=.==. .=....= ", equalities(texts, texts));
    std::string const rows2 = "=...... .=..... ..=.... ...=... ....==. ....==. ......= ";
    EXPECT_EQ(rows2, equalities(texts2, texts2));
    EXPECT_EQ(rows2, equalities(texts2, texts));
    EXPECT_EQ(used() = L"a", ResString(L"a")); // whatever lies behind the text
    std::hash<ResString2> const hash;
    EXPECT_TRUE(hash(texts2[4]) == hash(texts2[5]) && hash(texts2[1]) != hash(texts2[2]));
    EXPECT_TRUE(hash(texts2[1]) != hash(texts2[5]) && hash(texts2[5]) != hash(texts2[6]));
}

} // namespace
} // namespace Halvora::test
