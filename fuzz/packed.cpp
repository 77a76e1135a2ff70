#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include "Bytes.h"

using namespace Halvora;

// The bytes alone on the heap: a sanitizer sees what is read or written beyond them.
std::vector<char> alone(std::string const& bytes) {
    return {bytes.begin(), bytes.end()};
}

// Forms and slots at any address.
template <typename Text>
void compare(Bytes& bytes) {
    constexpr bool packed = std::is_same_v<Text, ResString>;
    constexpr unsigned idSize = packed ? 16 : 0;
    auto const at = bytes.ConsumeIntegralInRange(0u, 3u);
    auto const capacity = bytes.ConsumeIntegralInRange(0u, 600u);
    unsigned const field = bytes.ConsumeIntegral<unsigned short>();
    unsigned const length = std::min<unsigned>(field, Text::maxLength); // in an object
    unsigned const kept = std::min(packed ? field : length, capacity);  // in a slot
    unsigned const present = std::max(length, kept);
    std::string content = bytes.ConsumeRemainingBytesAsString();
    content.resize(idSize + 2 * present, '?');
    auto const form = [&](unsigned number, unsigned units) {
        std::string const head = content.substr(0, idSize) + static_cast<char>(number);
        return head + static_cast<char>(number >> 8u) + content.substr(idSize, 2 * units);
    };
    std::vector<char> const memory = alone(std::string(at, '#') + form(field, present));
    std::string const slot = form(kept, kept).append(2 * (capacity - kept), packed ? '\0' : '0');
    std::vector<char> written(at + slot.size());
    Text object(std::wstring(600, L'x'));
    if constexpr (packed) {
        assert(ResString::size(&memory[at]) == 18 + 2 * field);
        object.set(&memory[at]);
        ResString::set(&memory[at], capacity, &written[at]);
    } else {
        assert(VarChar::size(&memory[at]) == static_cast<unsigned short>(2 + 2 * field));
        VarChar::set(&memory[at], object);
        bool const isValid = field == length;
        assert(VarChar::equal(&memory[at], object.wstr().c_str(), length) == isValid);
        VarChar::set(object.wstr().c_str(), length, capacity, &written[at]);
    }
    assert(std::equal(slot.begin(), slot.end(), &written[at]));
    std::string const whole(reinterpret_cast<char const*>(&object), object.size());
    assert(whole == form(length, length) && object == Text(object.wstr()));
}

// Whatever bytes there are: a form is whole when they do not end before it does.
template <typename Text>
void measure(Bytes& bytes) {
    constexpr std::size_t head = std::is_same_v<Text, ResString> ? 18 : 2;
    std::vector<char> const memory = alone(bytes.ConsumeRemainingBytesAsString());
    std::size_t size = 0;
    if (memory.size() >= head) {
        size = head + 2 * static_cast<unsigned char>(memory[head - 2]) +
               512 * static_cast<unsigned char>(memory[head - 1]);
    }
    std::size_t const expected = size <= memory.size() ? size : 0;
    assert(Text::sizeWithin(memory.data(), memory.size()) == expected);
}

void run(Bytes& bytes) {
    auto const kind = bytes.ConsumeIntegralInRange(0u, 3u);
    kind < 2    ? kind == 0 ? compare<VarChar>(bytes) : compare<ResString>(bytes)
       : kind == 2 ? measure<VarChar>(bytes)
                : measure<ResString>(bytes);
}
