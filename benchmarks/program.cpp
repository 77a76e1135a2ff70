// A whole program: the makers of network cards read from the IEEE's file into columns and an index,
// several registries at once, and one maker looked up in each. What it prints: seconds of the
// processor, bytes of memory at the highest point, bytes and blocks allocated, counted where the
// counter is preloaded.
//   bench_program ours|standard|Qt <file> <registries>

#include "Bench.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <examples/registry/Registry.h>
#include <examples/support/Text.h>

#ifdef HALVTYPES_WITH_QT
#    include <QFile>
#    include <QHash>
#    include <QStringList>
#    include <QTextStream>
#    include <QVector>
#endif

namespace {

// One row as the programs have to agree on it. Long addresses are cut by one and kept by others.
using Row = std::string;

Row rowOf(unsigned int line, std::string const& maker, std::string const& address) {
    return std::to_string(line) + '|' + maker + '|' + (address.size() < 128 ? address : "");
}

// The demonstration program of this library.
class Ours {
public:
    bool load(std::string const& file) {
        return m_registry.load(file, m_reports, [](std::uint64_t, std::streamoff) {}) == nullptr;
    }

    int find(std::string const& assignment) const {
        std::unique_ptr<Halvora::HLVError> error;
        return m_registry.find(assignment, error);
    }

    std::size_t count() const { return m_registry.ids.getCount(); }

    Row row(std::size_t i) const {
        unsigned short count = 0;
        std::wstring const* makers = nullptr;
        Halvora::ResString const* addresses = nullptr;
        unsigned int const* lines = nullptr;
        m_registry.makers.getString(count, makers);
        m_registry.addresses.getResString(count, addresses);
        m_registry.lineNumbers.getUInt32(count, lines);
        Halvora::HLVString const address(addresses[i].hlv_str(), addresses[i].length());
        return rowOf(lines[i], toUtf8(makers[i]), toUtf8(address));
    }

private:
    Registry m_registry;
    Reports m_reports;
};

constexpr std::pair<char const*, std::size_t> kinds[] = {
    {"MA-L", 6},
    {"MA-M", 7},
    {"MA-S", 9},
    {"IAB",  9}
};

// 0 when it is no assignment.
std::uint64_t numberOf(char const* digits, std::size_t count) {
    char* end = nullptr;
    std::uint64_t const number = std::strtoull(digits, &end, 16);
    return end == digits + count ? number << 8 | count : 0;
}

// The same, as programs do without a library: bytes stay as they are.
class Standard {
public:
    bool load(std::string const& file) {
        std::ifstream stream(file, std::ios::binary);
        std::string record, more;
        std::vector<std::string> fields;
        unsigned int lines = 0;
        while (std::getline(stream, record)) {
            unsigned int const first = ++lines;
            while (std::count(record.begin(), record.end(), '"') % 2 != 0 &&
                   std::getline(stream, more)) {
                record += '\n' + more;
                ++lines;
            }
            split(record, fields);
            take(fields, first);
        }
        return !m_makers.empty();
    }

    int find(std::string const& assignment) const {
        auto const found = m_rows.find(numberOf(assignment.c_str(), assignment.size()));
        return found == m_rows.end() ? -1 : found->second;
    }

    std::size_t count() const { return m_makers.size(); }
    Row row(std::size_t i) const { return rowOf(m_lines[i], m_makers[i], m_addresses[i]); }

private:
    static void split(std::string const& record, std::vector<std::string>& fields) {
        fields.assign(1, "");
        bool isQuoted = false;
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (record[i] == '"') {
                if (isQuoted && record[i + 1] == '"') {
                    fields.back() += record[++i];
                } else {
                    isQuoted = !isQuoted;
                }
            } else if (record[i] == ',' && !isQuoted) {
                fields.emplace_back();
            } else if (record[i] != '\r' || isQuoted) {
                fields.back() += record[i];
            }
        }
    }

    // Blanks alone stay.
    static std::string trimmed(std::string const& text) {
        auto const first = text.find_first_not_of(" \t\r\n");
        return first == std::string::npos
                   ? text
                   : text.substr(first, text.find_last_not_of(" \t\r\n") + 1 - first);
    }

    void take(std::vector<std::string> const& fields, unsigned int line) {
        if (fields.size() != 4) {
            return;
        }
        auto const* const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                              [&](auto const& k) { return fields[0] == k.first; });
        std::uint64_t const number = numberOf(fields[1].c_str(), fields[1].size());
        if (kind == std::end(kinds) || number == 0 || fields[1].size() != kind->second) {
            return;
        }
        m_rows.emplace(number, static_cast<int>(m_makers.size()));
        m_numbers.push_back(number);
        m_makers.push_back(trimmed(fields[2]));
        m_addresses.push_back(trimmed(fields[3]));
        m_lines.push_back(line);
    }

    std::vector<std::uint64_t> m_numbers;
    std::vector<std::string> m_makers, m_addresses;
    std::vector<unsigned int> m_lines;
    std::unordered_map<std::uint64_t, int> m_rows;
};

#ifdef HALVTYPES_WITH_QT
class WithQt {
public:
    bool load(std::string const& name) {
        QFile file(QString::fromStdString(name));
        file.open(QIODevice::ReadOnly);
        QTextStream stream(&file);
        stream.setCodec("UTF-8");
        unsigned int lines = 0;
        QString record;
        while (stream.readLineInto(&record)) {
            unsigned int const first = ++lines;
            QString more;
            while (record.count('"') % 2 != 0 && stream.readLineInto(&more)) {
                record += '\n' + more;
                ++lines;
            }
            take(fieldsOf(record), first);
        }
        return !m_makers.isEmpty();
    }

    int find(std::string const& assignment) const {
        return m_rows.value(numberOf(assignment.c_str(), assignment.size()), -1);
    }

    std::size_t count() const { return static_cast<std::size_t>(m_makers.size()); }
    Row row(std::size_t index) const {
        int const i = static_cast<int>(index);
        return rowOf(m_lines[i], m_makers[i].toStdString(), m_addresses[i].toStdString());
    }

private:
    static QStringList fieldsOf(QString const& record) {
        QStringList fields("");
        bool isQuoted = false;
        for (int i = 0; i < record.size(); ++i) {
            QChar const c = record[i];
            if (c == '"' && isQuoted && i + 1 < record.size() && record[i + 1] == '"') {
                fields.back() += record[++i];
            } else if (c == '"') {
                isQuoted = !isQuoted;
            } else if (c == ',' && !isQuoted) {
                fields.append("");
            } else {
                fields.back() += c;
            }
        }
        return fields;
    }

    static QString trimmed(QString const& text) {
        QString const rest = text.trimmed();
        return rest.isEmpty() ? text : rest;
    }

    void take(QStringList const& fields, unsigned int line) {
        if (fields.size() != 4) {
            return;
        }
        QByteArray const digits = fields[1].toLatin1();
        std::size_t const count = static_cast<std::size_t>(digits.size());
        auto const* const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                              [&](auto const& k) { return fields[0] == k.first; });
        std::uint64_t const number = numberOf(digits.constData(), count);
        if (kind == std::end(kinds) || number == 0 || count != kind->second) {
            return;
        }
        if (!m_rows.contains(number)) {
            m_rows.insert(number, m_makers.size());
        }
        m_numbers.append(number);
        m_makers.append(trimmed(fields[2]));
        m_addresses.append(trimmed(fields[3]));
        m_lines.append(line);
    }

    QVector<quint64> m_numbers;
    QVector<QString> m_makers, m_addresses;
    QVector<unsigned int> m_lines;
    QHash<quint64, int> m_rows;
};
#endif

// A field of /proc/self/status, in bytes: the C library's figure remembers who started the program.
double memory(std::string const& field) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == field) {
            double kilobytes = 0;
            status >> kilobytes;
            return 1024 * kilobytes;
        }
    }
    return 0;
}

template <typename Program>
std::uint64_t digest(Program const& program) {
    std::uint64_t sum = program.count();
    for (std::size_t i = 0; i < program.count(); ++i) {
        sum = 31 * sum + std::hash<Row>()(program.row(i));
    }
    return sum;
}

template <typename Program>
std::uint64_t run(std::string const& file, int registries) {
    double const before = memory("VmRSS:");
    bench::Memory const given = bench::memory();
    std::clock_t const start = std::clock();
    std::list<Program> all(static_cast<std::size_t>(registries));
    for (Program& program : all) {
        bench::stopUnless(program.load(file) && program.find("00D0EF") >= 0, "a program");
    }
    double const time = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    bench::Memory const now = bench::memory();
    std::printf("%.6f %.0f %zu %zu\n", time, memory("VmHWM:") - before, now.bytes - given.bytes,
                now.allocations - given.allocations);
    std::uint64_t const first = digest(all.front());
    bench::stopUnless(first == digest(all.back()), "the last registry");
    return first;
}

} // namespace

int main(int argc, char** argv) {
    std::string const who = argc == 4 ? argv[1] : "";
    std::uint64_t sum = 0;
    if (who == "ours") {
        sum = run<Ours>(argv[2], std::atoi(argv[3]));
    } else if (who == "standard") {
        sum = run<Standard>(argv[2], std::atoi(argv[3]));
#ifdef HALVTYPES_WITH_QT
    } else if (who == "Qt") {
        sum = run<WithQt>(argv[2], std::atoi(argv[3]));
#endif
    } else {
        return 2;
    }
    Standard expected;
    expected.load(argv[2]);
    bench::stopUnless(sum == digest(expected), who);
}
