#pragma once

#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Halvora::test {

// What packed (ResString) and raw (VarChar) forms have to be, byte by byte. Each lies alone on the
// heap, where a sanitizer sees what is read or written beyond it.
template <typename Text>
struct Forms {
    static constexpr bool packed = std::is_same_v<Text, ResString>;
    static constexpr unsigned head = packed ? 18 : 2; // bytes before the units
    unsigned field;                                   // what the length field says, true or not
    std::string id, units;                            // two bytes a unit

    // The form that says `length` and has so many units.
    std::string form(unsigned length, std::size_t count) const {
        std::string const bytes = {static_cast<char>(length), static_cast<char>(length >> 8)};
        return id + bytes + units.substr(0, 2 * count);
    }
    std::string all() const { return form(field, units.size() / 2); }

    // What sizeWithin answers for the first bytes of the form.
    bool isMeasured(std::size_t available) const {
        std::string const bytes = all().substr(0, available);
        std::vector<char> const memory(bytes.begin(), bytes.end());
        std::size_t const whole = head + std::size_t{2} * field;
        return Text::sizeWithin(memory.data(), memory.size()) ==
               (memory.size() >= std::max<std::size_t>(head, whole) ? whole : 0);
    }
    // Every way to read the form; `expect` takes what is right.
    template <typename Expect>
    void read(char const* from, Text& text, Expect expect) const {
        if constexpr (packed) {
            expect(ResString::size(from) == head + 2 * field, "size()");
            text.set(from);
        } else {
            std::wstring wide = L"old";
            unsigned short length = 9;
            VarChar::set(from, text);
            VarChar::set(from, wide, length);
            expect(VarChar::size(from) == static_cast<unsigned short>(head + 2 * field), "size()");
            expect(wide == text.wstr() && length == text.length(), "set() of a wide string");
            expect(VarChar::equal(from, wide.c_str(), length) == (field == length) &&
                       !VarChar::equal(from, wide.c_str(), length + 1u),
                   "equal()");
        }
    }
    // The form that begins at an offset is read, and written to a slot `gap` bytes behind: what is
    // wrong then, empty if nothing is.
    std::string wrongWith(unsigned offset, unsigned capacity, unsigned gap) const {
        std::string const bytes = std::string(offset, '#') + all();
        std::vector<char> memory(bytes.begin(), bytes.end());
        unsigned const length = std::min<unsigned>(field, Text::maxLength);
        Text text(std::wstring(600, L'x'));
        std::string wrong;
        auto const expect = [&wrong](bool isRight, char const* what) {
            wrong += isRight ? "" : std::string(wrong.empty() ? "" : " and ") + what;
        };
        read(memory.data() + offset, text, expect);
        std::string const object(reinterpret_cast<char const*>(&text), text.size());
        expect(object == form(length, Text::maxLength).substr(0, head + 2 * text.length()),
               "the object that reads it");
        std::size_t const whole = packed ? all().size() : 0; // the packed form itself is copied
        memory.resize(offset + gap + std::max<std::size_t>(whole, head + 2 * capacity));
        unsigned const kept = std::min<unsigned>(packed ? field : text.length(), capacity);
        if constexpr (packed) {
            ResString::set(&memory[offset], capacity, &memory[offset + gap]);
        } else {
            VarChar::set(text.wstr().c_str(), text.length(), capacity, &memory[offset + gap]);
        }
        std::string slot = form(kept, kept);
        slot.resize(head + 2 * capacity, packed ? '\0' : '0');
        expect(std::equal(slot.begin(), slot.end(), &memory[offset + gap]), "the slot");
        return wrong;
    }
};

// Forms of many lengths, whole and cut off, at an odd address, put into slots of many sizes.
template <typename Text>
std::string wrongForms(std::string const& id) {
    constexpr unsigned most = Text::maxLength;
    for (unsigned const field :
         {0u, 1u, 10u, most - 1, most, most + 1, 768u, 1024u, 32767u, 65535u}) {
        Forms<Text> const forms{field, id, std::string(2 * field, 'u')};
        std::string const units = std::to_string(field) + " units, ";
        for (unsigned const more : {0u, 1u, 2u, 3u, 17u, 18u, 19u}) {
            if (!forms.isMeasured(more) || !forms.isMeasured(2 * field + more)) {
                return units + std::to_string(more) +
                       " bytes of the form or behind its units: sizeWithin()";
            }
        }
        for (unsigned const capacity : {0u, 1u, 9u, 10u, most - 1, most, most + 1, 600u}) {
            for (unsigned const gap : {0u, 1u, 17u, 40u, 600u}) {
                std::string const wrong = forms.wrongWith(1, capacity, gap);
                if (!wrong.empty()) {
                    return units + "a slot of " + std::to_string(capacity) + ' ' +
                           std::to_string(gap) + " bytes behind: " + wrong;
                }
            }
        }
    }
    return "";
}

} // namespace Halvora::test
