#include "Output.h"

#include <cstdio>
#include <ostream>

#include <Halvora/text/Convert.h>

#include "../../examples/support/Utf8.h"

using namespace Halvora;

namespace {

// What steers terminals (U+007F and up do that too), and a surrogate without its other half.
bool needsEscape(std::uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xD800 && code < 0xE000);
}

std::string quoted(std::wstring const& units) {
    std::string out = "\"";
    for (std::size_t i = 0; i < units.size(); ++i) {
        auto code = static_cast<std::uint32_t>(units[i]);
        auto const next = static_cast<std::uint32_t>(units.c_str()[i + 1]);
        if ((code & 0xFC00) == 0xD800 && (next & 0xFC00) == 0xDC00) {
            code = 0x10000 + ((code & 0x3FF) << 10) + (next & 0x3FF);
            ++i;
        }
        if (needsEscape(code)) {
            char escape[16];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(code));
            out += escape;
            continue;
        }
        if (code == '"' || code == '\\') {
            out += '\\';
        }
        out += toUtf8(std::wstring(1, static_cast<wchar_t>(code)));
    }
    return out += '"';
}

} // namespace

void writeText(std::ostream& stream, Kind const& kind, Record const& record) {
    stream << "offset " << record.offset << " (0x" << std::hex << record.offset << std::dec
           << "): " << kind.name << ", " << record.size << " bytes\n";
    if (kind.idSize != 0) {
        record.id.write(stream << "  id    ") << '\n';
        stream << "        " << Convert::toAString(record.id) << '\n';
    }
    if (kind.maxLength != 0) {
        stream << "  text  " << quoted(record.text) << "\n  units " << record.text.size() << '\n';
    }
    if (kind.isSlot) {
        stream << "  fill  " << (record.isFillIntact ? "intact" : "not intact") << '\n';
    }
}

void writeJson(std::ostream& stream, Kind const& kind, Record const& record) {
    stream << "{\"offset\":" << record.offset << ",\"kind\":\"" << kind.name
           << "\",\"size\":" << record.size;
    if (kind.idSize != 0) {
        record.id.write(stream << ",\"id\":\"");
        stream << "\",\"grouped\":\"" << Convert::toAString(record.id) << '"';
    }
    if (kind.maxLength != 0) {
        stream << ",\"length\":" << record.text.size() << ",\"text\":" << quoted(record.text);
    }
    if (kind.isSlot) {
        stream << ",\"fillIntact\":" << (record.isFillIntact ? "true" : "false");
    }
    stream << "}\n";
}
