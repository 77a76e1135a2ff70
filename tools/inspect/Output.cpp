#include "Output.h"

#include <cwchar>
#include <iterator>
#include <ostream>

#include <Halvora/error/Json.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/Utf8.h>

using namespace Halvora;

namespace {

std::string quoted(std::wstring const& units) {
    std::wstring out = L"\"";
    detail::forEachCharacter(units, [&out](std::uint32_t code) {
        if (detail::isControl(code) || detail::isNone(code)) {
            wchar_t escape[16];
            std::swprintf(escape, std::size(escape), L"\\u%04x", static_cast<unsigned int>(code));
            out += escape;
            return;
        }
        out += code == '"' || code == '\\' ? L"\\" : L"";
        out += static_cast<wchar_t>(code);
    });
    std::string utf8;
    Utf8::fromWString(utf8, out + L'"');
    return utf8;
}

} // namespace

void printText(std::ostream& stream, Kind const& kind, Record const& record) {
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

void printJson(std::ostream& stream, Kind const& kind, Record const& record) {
    std::string line = "{\"offset\":" + std::to_string(record.offset) + ",\"kind\":\"" + kind.name +
                       "\",\"size\":" + std::to_string(record.size);
    if (kind.idSize != 0) {
        line += ",\"id\":";
        detail::appendJsonId(line, record.id);
    }
    if (kind.maxLength != 0) {
        line += ",\"length\":" + std::to_string(record.text.size()) + ",\"text\":";
        detail::appendJsonText(line, record.text);
    }
    if (kind.isSlot) {
        line += ",\"fillIntact\":";
        line += record.isFillIntact ? "true" : "false";
    }
    stream << line << "}\n";
}
