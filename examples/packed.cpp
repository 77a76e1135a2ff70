// Packed forms and slots, written to a file, read back from whatever address they come to lie at,
// and printed.

#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

using namespace Halvora;

namespace {

constexpr char fileName[] = "packed.tmp";

//     file := layout:byte packed packed slot slot raw-slot raw-slot
//
// The byte in front puts everything behind it at an odd offset.
constexpr char layout = 1;
constexpr unsigned int slotCapacity = 4;                   // code units
constexpr unsigned int slotSize = (slotCapacity + 9) * 2;  // bytes
constexpr unsigned int rawSlotSize = 2 + 2 * slotCapacity; // bytes

ResString const pump(Binary16(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708), L"pump station");
ResString const valve(Binary16(7), L"tap");

void writeFile() {
    std::ofstream file(fileName, std::ios::binary);
    file.put(layout);
    for (ResString const* text : {&pump, &valve}) {
        // An object begins with its packed form.
        file.write(reinterpret_cast<char const*>(text), text->size());
    }
    for (ResString const* text : {&pump, &valve}) {
        char slot[slotSize];
        ResString::set(text, slotCapacity, slot);
        file.write(slot, sizeof slot);
    }
    for (std::wstring const text : {L"pump station", L"tap"}) {
        char slot[rawSlotSize];
        VarChar::set(text.data(), static_cast<unsigned int>(text.size()), slotCapacity, slot);
        file.write(slot, sizeof slot);
    }
}

std::string readFile() {
    std::ifstream file(fileName, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void printBytes(char const* bytes, unsigned int count) {
    char const digits[] = "0123456789ABCDEF";
    for (unsigned int i = 0; i < count; ++i) {
        auto const byte = static_cast<unsigned char>(bytes[i]);
        std::cout << (i % 16 == 0 ? "\n    " : " ") << digits[byte >> 4] << digits[byte & 15];
    }
    std::cout << '\n';
}

void print(ResString const& text) {
    std::string narrow;
    text.toStr(narrow);
    std::cout << text.size() << " bytes packed, \"" << narrow << "\"\n    ";
    text.id().write(std::cout) << "\n    " << Convert::toAString(text.id()) << '\n';
}

} // namespace

int main() {
    writeFile();
    std::string const bytes = readFile();
    std::remove(fileName);
    std::cout << bytes.size() << " bytes in all\n";

    char const* at = bytes.data() + 1;
    ResString texts[2];
    for (ResString& text : texts) {
        std::cout << "\npacked at " << at - bytes.data() << ": ";
        text.set(at);
        print(text);
        at += ResString::size(at);
    }
    for (int i = 0; i < 2; ++i, at += slotSize) {
        std::cout << "\nslot at " << at - bytes.data() << ": ";
        ResString text;
        text.set(at);
        print(text);
        // Both have an identifier, so a text that was cut still is the same text.
        std::cout << "    same as the packed one: " << (text == texts[i] ? "yes" : "no");
        printBytes(at, slotSize);
    }
    for (int i = 0; i < 2; ++i, at += rawSlotSize) {
        std::cout << "\nraw slot at " << at - bytes.data() << ": ";
        VarChar text;
        VarChar::set(at, text);
        std::cout << text.size() << " bytes raw, \"" << Convert::toAString(text.wstr()) << "\"\n"
                  << "    equal to \"tap\": " << (VarChar::equal(at, L"tap", 3) ? "yes" : "no");
        printBytes(at, rawSlotSize);
    }
}
