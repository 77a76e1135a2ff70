// The operations of this folder's other program by other libraries, as far as they have them, and
// ours done their way: each makes a new value. A row's name is "operation|who".
#include "Measure.h"

#include <Halvora/Halvora.h>

#include <QString>
#include <QStringList>
#include <QUuid>
#include <QVector>
#include <absl/status/status.h>
#include <absl/strings/ascii.h>
#include <absl/strings/cord.h>
#include <absl/strings/str_split.h>
#include <fmt/format.h>
#include <glib.h>

using namespace Halvora;

namespace {

template <typename Made>
void keep(Made const& made) {
    asm volatile("" : : "r"(&made) : "memory");
}

void measureLatin1(std::size_t size) {
    std::string const narrow = textOf(size, "quick \xE9lan ");
    std::wstring const wide = Convert::toWString(narrow);
    HLVString units;
    Convert::toHLVString(units, narrow);
    auto const length = static_cast<int>(size);
    QString const text = QString::fromLatin1(narrow.data(), length);

    measure("Latin-1 to 16-bit|ours", size, [&] {
        HLVString made;
        Convert::toHLVString(made, narrow);
        keep(made);
    });
    measure("Latin-1 to 16-bit|Qt", size,
            [&] { keep(QString::fromLatin1(narrow.data(), length)); });
    measure("16-bit to Latin-1|ours", size, [&] { keep(Convert::toAString(units)); });
    measure("16-bit to Latin-1|Qt", size, [&] { keep(text.toLatin1()); });
    measure("16-bit to wide|ours", size, [&] { keep(Convert::toWString(units)); });
    measure("16-bit to wide|Qt", size, [&] { keep(text.toStdWString()); });
    measure("wide to 16-bit|ours", size, [&] {
        HLVString made;
        Convert::toHLVString(made, wide);
        keep(made);
    });
    measure("wide to 16-bit|Qt", size, [&] { keep(QString::fromStdWString(wide)); });
}

void measureUtf8(std::size_t size, char const* what, std::string const& latin1) {
    std::wstring const wide = Convert::toWString(latin1);
    std::string utf8;
    Utf8::fromWString(utf8, wide);
    auto const length = static_cast<glong>(utf8.size()), count = static_cast<glong>(size);
    auto const* const ucs4 = reinterpret_cast<gunichar const*>(wide.data());
    auto const named = [what](char const* name, char const* who) {
        static std::string row;
        row = std::string(name) + what + "|" + who;
        return row.c_str();
    };

    measure(named("UTF-8 to wide", "ours"), size, [&] {
        std::wstring made;
        Utf8::toWString(made, utf8);
        keep(made);
    });
    measure(named("UTF-8 to wide", "GLib"), size,
            [&] { g_free(g_utf8_to_ucs4(utf8.data(), length, nullptr, nullptr, nullptr)); });
    measure(named("UTF-8 to wide", "Qt"), size,
            [&] { keep(QString::fromUtf8(utf8.data(), int(length)).toStdWString()); });
    measure(named("wide to UTF-8", "ours"), size, [&] {
        std::string made;
        Utf8::fromWString(made, wide);
        keep(made);
    });
    measure(named("wide to UTF-8", "GLib"), size,
            [&] { g_free(g_ucs4_to_utf8(ucs4, count, nullptr, nullptr, nullptr)); });
    measure(named("wide to UTF-8", "Qt"), size,
            [&] { keep(QString::fromStdWString(wide).toUtf8()); });
}

void measureFields(std::size_t size) {
    std::string const line = textOf(size, "ab,\"c,d\",efgh,,"),
                      padded = "  " + textOf(size, "quick brown ") + "  ";
    QString const text = QString::fromLatin1(line.data(), static_cast<int>(size));

    measure("split|ours", size, [&] {
        std::vector<std::string> fields;
        keep(Convert::split(line, ',', fields));
    });
    measure("split|abseil", size,
            [&] { keep(std::vector<std::string>(absl::StrSplit(line, ','))); });
    measure("split|GLib", size, [&] { g_strfreev(g_strsplit(line.c_str(), ",", -1)); });
    measure("split|Qt", size, [&] { keep(text.split(QLatin1Char(','))); });
    std::string trimmed;
    measure("trim a copy|ours", size,
            [&] { Convert::trim(trimmed = padded, Convert::ms_strTrim); });
    measure("trim a copy|abseil", size, [&] { absl::StripAsciiWhitespace(&(trimmed = padded)); });
    measure("trim a copy|GLib", size, [&] { g_free(g_strstrip(g_strdup(padded.c_str()))); });
}

void measureAppends(std::size_t size) {
    auto const count = static_cast<int>(size);
    measure("append numbers|ours", size, [count] {
        HLVArray array(DT_INT32);
        for (int i = 0; i < count; ++i) {
            array.addInt32(i);
        }
    });
    measure("append numbers|GLib", size, [count] {
        GArray* const array = g_array_new(FALSE, FALSE, sizeof(int));
        for (int i = 0; i < count; ++i) {
            g_array_append_val(array, i);
        }
        g_array_free(array, TRUE);
    });
    measure("append numbers|Qt", size, [count] {
        QVector<int> array;
        for (int i = 0; i < count; ++i) {
            array.append(i);
        }
    });
}

void measureSingles() {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    std::string const grouped = Convert::toAString(id);
    QUuid const uuid{QString::fromStdString(grouped)};
    Binary16 parsed;
    measure("identifier to text|ours", 1, [&] { keep(Convert::toAString(id)); });
    measure("identifier to text|Qt", 1, [&] { keep(uuid.toByteArray(QUuid::WithoutBraces)); });
    measure("identifier to text|fmt", 1, [&] {
        unsigned char b[16];
        std::memcpy(b, &id, sizeof b);
        keep(fmt::format("{:02x}{:02x}{:02x}{:02x}-{:02x}{:02x}-{:02x}{:02x}-{:02x}{:02x}-"
                         "{:02x}{:02x}{:02x}{:02x}{:02x}{:02x}",
                         b[3], b[2], b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11],
                         b[12], b[13], b[14], b[15]));
    });
    measure("identifier from text|ours", 1,
            [&] { static_cast<void>(parseBinary16(std::string_view(grouped), parsed)); });
    measure("identifier from text|Qt", 1,
            [&] { keep(QUuid(QLatin1String(grouped.data(), int(grouped.size())))); });
    measure("error, three numbers|ours", 3,
            [] { static_cast<void>(HLVError::create(-1, 1, 2, 3)); });
    measure("error, three numbers|GLib", 3, [] {
        GError* error = nullptr;
        g_set_error(&error, 1, -1, "Error %d\n  P1: %d\n  P2: %d\n  P3: %d", -1, 1, 2, 3);
        g_error_free(error);
    });
    measure("error, three numbers|abseil", 3, [] {
        absl::Status status(absl::StatusCode::kInternal, "Error -1");
        for (char const* const name : {"P1", "P2", "P3"}) {
            status.SetPayload(name, absl::Cord(std::to_string(*name)));
        }
    });
}

} // namespace

int main(int count, char**) {
    isCounted = count > 1;
    for (std::size_t const size : {16u, 256u, 4096u}) {
        measureLatin1(size);
        measureUtf8(size, ", ASCII", textOf(size, "quick brown "));
        measureUtf8(size, "", textOf(size, "quick \xE9lan "));
        if (size <= 256) {
            measureFields(size);
            measureAppends(size);
        }
    }
    measureSingles();
}
