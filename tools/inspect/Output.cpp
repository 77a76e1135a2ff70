#include "Output.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <ostream>
#include <sstream>

#include <Halvora/error/Json.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/Utf8.h>

#include "Errors.h"

using namespace Halvora;

namespace {

bool steers(std::uint32_t code) {
    return (detail::isControl(code) && code != '\n') || code == 0x061C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

void appendEscape(std::wstring& out, std::uint32_t code) {
    wchar_t escape[16];
    std::swprintf(escape, std::size(escape), L"\\u%04x", static_cast<unsigned int>(code));
    out += escape;
}

// What the stream holds, fit for a terminal.
std::string printable(std::ostringstream const& stream) {
    std::wstring text;
    std::wstring out;
    Utf8::toWString(text, stream.str());
    detail::forEachCharacter(text, [&out](std::uint32_t code) {
        steers(code) ? appendEscape(out, code) : detail::appendCharacter(out, code);
    });
    std::string utf8;
    Utf8::fromWString(utf8, out);
    return utf8;
}

std::string quoted(std::wstring const& units) {
    std::wstring out = L"\"";
    detail::forEachCharacter(units, [&out](std::uint32_t code) {
        if (detail::isControl(code) || detail::isNone(code)) {
            return appendEscape(out, code);
        }
        out += code == '"' || code == '\\' ? L"\\" : L"";
        detail::appendCharacter(out, code);
    });
    std::string utf8;
    Utf8::fromWString(utf8, out + L'"');
    return utf8;
}

void writeJsonText(std::ostream& stream, std::wstring const& text) {
    std::string json;
    detail::appendJson(json, text);
    stream << ",\"length\":" << text.size() << ",\"text\":" << json;
    bool isExact = true;
    detail::forEachCharacter(
        text, [&](std::uint32_t code) { isExact = isExact && !detail::isNone(code); });
    if (!isExact) {
        char const* separator = ",\"units\":[";
        for (wchar_t const unit : text) {
            stream << separator << static_cast<unsigned int>(unit);
            separator = ",";
        }
        stream << ']';
    }
}

} // namespace

void printText(std::ostream& stream, Kind const& kind, Record const& record) {
    std::ostringstream out;
    out << "offset " << record.offset << " (0x" << std::hex << record.offset << std::dec
        << "): " << kind.name << ", " << record.size << " bytes\n";
    if (kind.idSize != 0) {
        record.id.write(out << "  id    ") << '\n';
        out << "        " << Convert::toAString(record.id) << '\n';
    }
    if (kind.maxLength != 0) {
        out << "  text  " << quoted(record.text) << "\n  units " << record.text.size() << '\n';
    }
    if (kind.isSlot) {
        out << "  fill  " << (record.isFillIntact ? "intact" : "not intact") << '\n';
    }
    stream << printable(out);
}

void printText(std::ostream& stream, HLVError const& error) {
    static CatalogueTranslator const translator(catalogue<reports>, "en");
    std::ostringstream out;
    describe(out, error, translator);
    stream << printable(out);
}

void printJson(std::ostream& stream, Kind const& kind, Record const& record) {
    std::ostringstream out;
    out << "{\"offset\":" << record.offset << ",\"kind\":\"" << kind.name
        << "\",\"size\":" << record.size;
    if (kind.idSize != 0) {
        std::string id;
        detail::appendJson(id, record.id);
        out << ",\"id\":" << id;
    }
    if (kind.maxLength != 0) {
        writeJsonText(out, record.text);
    }
    if (kind.isSlot) {
        out << ",\"fillIntact\":" << (record.isFillIntact ? "true" : "false");
    }
    out << "}\n";
    stream << printable(out);
}

void printJson(std::ostream& stream, HLVError const& error) {
    std::ostringstream out;
    writeJson(out, error);
    stream << printable(out);
}
