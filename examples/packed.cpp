// Packed forms and slots, written to a file, read back from whatever address they come to lie at,
// and printed:
//
//     packed [file]
//
// Without a file, a temporary one is written and read. Exit status: 0; 1 when the file does not
// hold the forms below; 2 when it cannot be written or read.

#include <Halvora/text/Convert.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace Halvora;

namespace {

//     file := layout:byte packed packed slot slot raw-slot raw-slot
//
// The byte in front puts everything behind it at an odd offset.
constexpr char layout = 1;
constexpr unsigned int slotCapacity = 4;                   // code units
constexpr unsigned int slotSize = (slotCapacity + 9) * 2;  // bytes
constexpr unsigned int rawSlotSize = 2 + 2 * slotCapacity; // bytes
constexpr std::size_t maxFileSize = std::size_t{1} << 20;  // bytes; nothing needs more

ResString const pump(Binary16(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708), L"pump station");
ResString const valve(Binary16(7), L"tap");

std::string forms() {
    std::string bytes(1, layout);
    for (ResString const* text : {&pump, &valve}) {
        // An object begins with its packed form.
        bytes.append(reinterpret_cast<char const*>(text), text->size());
    }
    for (ResString const* text : {&pump, &valve}) {
        char slot[slotSize];
        ResString::set(text, slotCapacity, slot);
        bytes.append(slot, sizeof slot);
    }
    for (std::wstring_view const text : {L"pump station", L"tap"}) {
        char slot[rawSlotSize];
        VarChar::set(text.data(), static_cast<unsigned int>(text.size()), slotCapacity, slot);
        bytes.append(slot, sizeof slot);
    }
    return bytes;
}

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

// A file without a name, which no other process meets and which is gone when it is closed. Null
// when it could not be written.
File writeFile() {
    File file(std::tmpfile());
    std::string const bytes = forms();
    if (file == nullptr || std::fwrite(bytes.data(), bytes.size(), 1, file.get()) != 1 ||
        std::fflush(file.get()) != 0) {
        return nullptr;
    }
    std::rewind(file.get());
    return file;
}

bool readFile(std::FILE* file, std::string& bytes) {
    bytes.resize(maxFileSize);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return std::ferror(file) == 0;
}

// The bytes of the file, which anybody may have written: each form is checked before it is read.
class Input {
public:
    explicit Input(std::string_view bytes) : m_bytes(bytes), m_rest(bytes) {}

    std::size_t offset() const { return m_bytes.size() - m_rest.size(); }

    // The form in front of the rest, which then goes on behind it. They throw when no whole one is
    // there.
    char const* takePacked() { return take(ResString::sizeWithin(m_rest.data(), m_rest.size())); }
    char const* takeSlot() {
        return take(has(slotSize) && ResString::sizeWithin(m_rest.data(), slotSize) != 0 ? slotSize
                                                                                         : 0);
    }
    char const* takeRawSlot() {
        return take(has(rawSlotSize) && VarChar::sizeWithin(m_rest.data(), rawSlotSize) != 0
                        ? rawSlotSize
                        : 0);
    }
    void takeLayout() { take(has(1) && m_rest.front() == layout ? 1 : 0); }

private:
    bool has(std::size_t size) const { return m_rest.size() >= size; }

    char const* take(std::size_t size) {
        if (size == 0) {
            throw std::runtime_error("no whole form at offset " + std::to_string(offset()));
        }
        char const* const form = m_rest.data();
        m_rest.remove_prefix(size);
        return form;
    }

    std::string_view m_bytes;
    std::string_view m_rest;
};

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

void printRaw(char const* at) {
    VarChar text;
    VarChar::set(at, text);
    std::cout << text.size() << " bytes raw, \"" << Convert::toAString(text.wstr()) << "\"\n"
              << "    equal to \"tap\": " << (VarChar::equal(at, L"tap", 3) ? "yes" : "no");
    printBytes(at, rawSlotSize);
}

void printForms(Input input) {
    input.takeLayout();
    ResString texts[2];
    for (ResString& text : texts) {
        std::size_t const offset = input.offset();
        text.set(input.takePacked());
        std::cout << "\npacked at " << offset << ": ";
        print(text);
    }
    for (ResString const& packed : texts) {
        std::size_t const offset = input.offset();
        char const* const at = input.takeSlot();
        ResString text;
        text.set(at);
        std::cout << "\nslot at " << offset << ": ";
        print(text);
        // Both have an identifier, so a text that was cut still is the same text.
        std::cout << "    same as the packed one: " << (text == packed ? "yes" : "no");
        printBytes(at, slotSize);
    }
    for (int i = 0; i < 2; ++i) {
        std::size_t const offset = input.offset();
        char const* const at = input.takeRawSlot();
        std::cout << "\nraw slot at " << offset << ": ";
        printRaw(at);
    }
}

int fail(int status, std::string const& sentence) {
    std::cerr << "packed: " << sentence << '\n';
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::string const name = argc > 1 ? argv[1] : "a temporary file";
    File const file = argc > 1 ? File(std::fopen(argv[1], "rb")) : writeFile();
    std::string bytes;
    if (file == nullptr || !readFile(file.get(), bytes)) {
        return fail(2, name + " cannot be " + (argc > 1 ? "read" : "written"));
    }
    std::cout << bytes.size() << " bytes in all\n";
    try {
        printForms(Input(bytes));
    } catch (std::runtime_error const& e) {
        return fail(1, name + ": " + e.what());
    }
    return 0;
}
