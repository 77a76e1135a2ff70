#include <Halvora/text/ResString.h>
#include <Halvora/text/VarChar.h>

#include "Bytes.h"

using namespace Halvora;

// Forms and slots at any address, with not a byte behind what may be read or written.
template <typename Text>
void compare(Bytes& bytes) {
    constexpr bool packed = std::is_same_v<Text, ResString>;
    constexpr unsigned idSize = packed ? 16 : 0;
    auto const at = bytes.ConsumeIntegralInRange(0u, 3u);
    auto const capacity = bytes.ConsumeIntegralInRange(0u, 600u);
    unsigned const field = bytes.ConsumeIntegral<unsigned short>();
    unsigned const length = std::min<unsigned>(field, Text::maxLength);
    unsigned const kept = std::min(length, capacity);
    std::string content = bytes.ConsumeRemainingBytesAsString();
    content.resize(idSize + 2 * length, '?');
    auto const form = [&](unsigned number, unsigned units) {
        std::string const head = content.substr(0, idSize) + static_cast<char>(number);
        return head + static_cast<char>(number >> 8u) + content.substr(idSize, 2 * units);
    };
    std::string const source = std::string(at, '#') + form(field, length);
    std::vector<char> const memory(source.begin(), source.end());
    std::string const slot = form(kept, kept).append(2 * (capacity - kept), packed ? '\0' : '0');
    std::vector<char> written(at + slot.size());
    Text object(std::wstring(600, L'x'));
    if constexpr (packed) {
        assert(ResString::size(&memory[at]) == 18 + 2 * field);
        object.set(&memory[at]);
        ResString::set(&memory[at], capacity, &written[at]);
    } else {
        VarChar::set(&memory[at], object);
        bool const isValid = field == length;
        assert(VarChar::equal(&memory[at], object.wstr().c_str(), length) == isValid);
        VarChar::set(object.wstr().c_str(), length, capacity, &written[at]);
    }
    assert(std::equal(slot.begin(), slot.end(), &written[at]));
    std::string const whole(reinterpret_cast<char const*>(&object), object.size());
    assert(whole == form(length, length) && object == Text(object.wstr()));
}

void run(Bytes& bytes) {
    bytes.ConsumeBool() ? compare<ResString>(bytes) : compare<VarChar>(bytes);
}
