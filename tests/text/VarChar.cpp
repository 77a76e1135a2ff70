#include <Halvora/text/VarChar.h>

#include <array>

#include <gtest/gtest.h>
#include <tests/text/Text.h>

namespace Halvora::test {
namespace {

TEST(VarChar, rawFormsAndSlotsLieAnywhereAndHoldAtMost512Units) {
    for (unsigned const length : {0u, 1u, 2u, 255u, 256u, 511u, 512u, 513u, 600u}) {
        std::wstring const text = anyText(length), cut = text.substr(0, 512);
        std::string const raw = "<" + rawForm(cut, length - cut.size());
        VarChar set("old"), loaded;
        set.set(text.data(), static_cast<unsigned short>(length));
        VarChar::set(&raw[1], loaded);
        for (VarChar const& value : {VarChar(text), VarChar("old") = text, VarChar(loaded), set}) {
            EXPECT_EQ(rawForm(cut), bytesOf(value)) << length;
        }
        EXPECT_EQ((length + 1) * 2, VarChar::size(&raw[1]));
        EXPECT_EQ(length <= 512, VarChar::fits(text));
        auto const count = static_cast<unsigned>(cut.size());
        EXPECT_EQ(length <= 512, VarChar::equal(&raw[1], text.data(), count));
        std::wstring out(600, 'x');
        unsigned short outLength = 9;
        VarChar::set(&raw[1], out, outLength);
        EXPECT_EQ(loaded.wstr(), out);
        EXPECT_EQ(set.length(), outLength);
        for (unsigned const capacity : {0u, 1u, 2u, 511u, 512u, 513u, 600u}) {
            std::string slot = rawForm(cut.substr(0, capacity));
            slot.resize(2 + 2 * capacity, '0');
            std::string buffer(1300, '#'), expected = buffer;
            VarChar::set(text.data(), length, capacity, &buffer[1]);
            EXPECT_EQ(expected.replace(1, slot.size(), slot), buffer) << length << " " << capacity;
        }
    }
    std::string slot = "9999999";
    VarChar text("old");
    VarChar::set(nullptr, 3, 2, slot.data());
    text.set(static_cast<wchar_t const*>(nullptr), 3);
    EXPECT_EQ(rawForm(L"") + "0000" + '9', slot);
    EXPECT_TRUE(VarChar::equal(&text, nullptr, 0) && text == VarChar());
    EXPECT_EQ(rawForm(L""), bytesOf(VarChar()));
    EXPECT_FALSE(VarChar::equal(&"\1\0x"[0], nullptr, 1));
}

TEST(VarChar, sizeWithinIsThatOfAWholeForm) {
    checkSizes<VarChar>(2, {
                               {0,     0,      0     }, //
                               {0,     1,      0     }, // half a length field
                               {0,     2,      2     }, // the empty text
                               {0,     1000,   2     }, // bytes behind it do not matter
                               {3,     7,      0     }, // one byte short
                               {3,     8,      8     }, //
                               {512,   1026,   1026  }, // the longest of an object
                               {600,   1202,   1202  }, // whole, but cut by an object
                               {65535, 131071, 0     }, // one byte short
                               {65535, 131072, 131072}  // the longest that can be announced
    });
}

TEST(VarChar, narrowTextIsWidenedAndRawFormsEqualTheirText) {
    for (unsigned const length : {1u, 17u, 512u, 513u}) {
        std::string const narrow(length, '\xE9');
        unsigned const count = std::min(length, 512u);
        std::wstring wide(count, L'\xE9');
        std::string buffer(1100, '#'), expected = buffer;
        VarChar::set(narrow.c_str(), &buffer[1]);
        EXPECT_EQ(expected.replace(1, 2 + 2 * count, rawForm(wide)), buffer);
        EXPECT_EQ(wide, VarChar(narrow.c_str()).wstr());
        EXPECT_EQ(length <= 512, VarChar::fits(narrow));
        EXPECT_FALSE(VarChar::equal(&buffer[1], wide.c_str(), count - 1));
        EXPECT_FALSE(VarChar::equal(&buffer[1], wide.c_str(), count + 1));
        wide[count - 1] = 0x1E9;
        EXPECT_FALSE(VarChar::equal(&buffer[1], wide.c_str(), count));
        wide[count - 1] = 0x100E9; // its low 16 bits are the unit
        EXPECT_TRUE(VarChar::equal(&buffer[1], wide.c_str(), count));
    }
}

TEST(VarChar, orderIsThatOfTheStoredBytes) {
    auto const relations = [](auto const& a, auto const& b) {
        std::hash<std::decay_t<decltype(a)>> const hash;
        return std::array{hash(a) == hash(b), a == b, a != b, a<b, a <= b, a> b, a >= b};
    };
    for (int round = 0; round < 5000; ++round) {
        std::size_t const lengths[] = {0, 1, 1, 2, 255, 256, 257, 512};
        std::wstring const a = anyText(lengths[draw(8)]), other = anyText(lengths[draw(8)]);
        std::wstring b = draw(2) == 0 ? a : other;
        if (!b.empty() && draw(4) != 0) {
            b[draw(b.size())] = static_cast<wchar_t>(draw(0x10000));
        }
        ASSERT_EQ(relations(rawForm(a), rawForm(b)), relations(VarChar(a), VarChar(b)));
    }
}

} // namespace
} // namespace Halvora::test
