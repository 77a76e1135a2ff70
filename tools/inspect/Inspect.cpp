#include "Inspect.h"

#include <ostream>

#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/Utf8.h>

#include "Errors.h"
#include "Output.h"

using namespace Halvora;

namespace {

// Goes from record to record.
class Inspection {
public:
    Inspection(Options const& options, Input& input, std::ostream& out, std::ostream& errors)
        : m_options(options),
          m_input(input),
          m_out(out),
          m_errors(errors),
          m_reader(input, *options.kind, capacityOf(options)) {}

    bool run() {
        std::uint64_t offset = first();
        bool areWhole = true;
        for (std::uint64_t left = m_options.count.value_or(UINT64_MAX); left != 0 && m_out;) {
            bool const isEmpty = m_input.at(offset, 1).empty();
            bool const isEnd = isEmpty && m_input.next() == 0;
            if (isEnd && m_isEndFine) {
                break;
            }
            m_isEndFine = !m_options.count;
            std::size_t const size = print(offset);
            areWhole = areWhole && size != 0;
            if (size == 0 && (isEnd || !m_options.stride)) {
                break;
            }
            std::uint64_t const step = m_options.stride.value_or(size);
            // None that lies among bytes left out is told of behind the first one.
            std::uint64_t const passed = isEmpty ? (m_input.next() - offset - 1) / step : 0;
            offset += (passed + 1) * step;
            left -= std::min(left, passed + 1);
        }
        return areWhole;
    }

private:
    static std::size_t capacityOf(Options const& options) {
        return static_cast<std::size_t>(options.capacity.value_or(options.kind->maxLength));
    }

    // A dump begins at its first address.
    std::uint64_t first() {
        if (m_options.offset) {
            return *m_options.offset;
        }
        return m_input.at(0, 1).empty() ? m_input.next() : 0;
    }

    // The record's size in bytes; 0 for one that cannot be right, which was reported.
    std::size_t print(std::uint64_t offset) {
        try {
            Record const record = m_reader.read(offset);
            m_options.isJson ? printJson(m_out, *m_options.kind, record)
                             : printText(m_out, *m_options.kind, record);
            return record.size;
        } catch (HLVErrorException const& e) {
            int const code = e.error()->getCode();
            if (code == unreadable || code == badDump) {
                throw;
            }
            reportFile(m_options, *e.error(), m_errors);
            return 0;
        }
    }

    Options const& m_options;
    Input& m_input;
    std::ostream& m_out;
    std::ostream& m_errors;
    RecordReader m_reader;
    bool m_isEndFine = !m_options.count && m_options.offset.value_or(0) == 0;
};

} // namespace

bool inspect(Options const& options, Input& input, std::ostream& out, std::ostream& errors) {
    return Inspection(options, input, out, errors).run();
}

void report(Options const& options, HLVError const& error, std::ostream& errors) {
    options.isJson ? printJson(errors, error) : printText(errors, error);
}

void reportFile(Options const& options, HLVError const& error, std::ostream& errors) {
    HLVError::Holder holder = HLVError::copy(&error);
    std::wstring path = L"standard input";
    if (options.path != "-") {
        Utf8::toWString(path, options.path);
    }
    holder.prepend(badInput, path);
    report(options, *holder.getError(), errors);
}
