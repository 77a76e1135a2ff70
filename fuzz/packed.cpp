#include <tests/support/Forms.h>

#include "Bytes.h"

using namespace Halvora;

template <typename Text>
void compare(Bytes& bytes, bool isWhole) {
    using Forms = test::Forms<Text>;
    auto const offset = bytes.ConsumeIntegralInRange(0u, 3u);
    auto const capacity = bytes.ConsumeIntegralInRange(0u, 600u);
    auto const gap = bytes.ConsumeIntegralInRange(0u, 600u);
    Forms forms{bytes.ConsumeIntegral<unsigned short>(), {}, {}};
    forms.id = bytes.ConsumeBytesAsString(Forms::head - 2);
    forms.id.resize(Forms::head - 2);
    forms.units = bytes.ConsumeRemainingBytesAsString();
    if (!isWhole) {
        assert(forms.isMeasured(forms.units.size()));
        return;
    }
    std::size_t const read = std::max<std::size_t>(capacity, Text::maxLength);
    forms.units.resize(2 * std::min<std::size_t>(forms.field, read), '?');
    assert(forms.wrongWith(offset, capacity, gap).empty());
}

void run(Bytes& bytes) {
    auto const kind = bytes.ConsumeIntegralInRange(0u, 3u);
    kind % 2 == 0 ? compare<VarChar>(bytes, kind < 2) : compare<ResString>(bytes, kind < 2);
}
