#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Halvora {

namespace detail {
class CsvFields;
}

/// Reads comma-separated values, record by record, as RFC 4180 writes them and programs read them.
///
/// Fields are separated by one byte, a comma by default. A record ends at a line's end (LF, CR LF
/// or CR, also mixed) or at the end of the text. An empty last field is a field: `a,` has two. A
/// blank line, one without any byte, is counted and is no record. A field that begins with a double
/// quote ends at the next one; between them separators and line ends stay as they are, and two
/// quotes stand for one. Nothing else is changed: blanks around a field belong to it. The bytes may
/// be of any encoding that keeps ASCII as it is, such as UTF-8 or ISO 8859-1; a UTF-8 byte order
/// mark at the start is skipped. A separator that is a quote, LF or CR never separates.
///
/// What is no record is a `Fault`: reported, counted and skipped. The next record then begins
/// - `strayQuote`: behind the line of the quote, which stands in a field not begun by one, or is
///   followed by other text on the line where its field began;
/// - `openQuote`: behind the line where the quoted field begins. Its closing quote is missing, lies
///   beyond `maxRecordLength()`, or stands on a later line with other text behind it. A forgotten
///   quote costs its line and not the rest of the text;
/// - `recordTooLong`: behind the line that goes beyond `maxRecordLength()`.
///
/// Each line is a blank one or belongs to one record or one fault, and `Counts` adds up.
///
/// @code
/// CsvReader reader("pump,\"3, north\"\nval\"ve,4\n");
/// reader.onFault([](CsvReader::Fault const& fault) {
///     std::cout << "line " << fault.line << ", column " << fault.column << ": " << fault.what()
///               << '\n';
/// });
/// for (std::vector<std::string> record; reader.next(record);) {
///     std::cout << record.size() << " fields, the last: " << record.back() << '\n';
/// }
/// @endcode
///
/// A text is read where it lies. A stream is read in pieces, and no further than to what it has at
/// hand; memory grows with the longest record, up to a small multiple of `maxRecordLength()`, and
/// not with the stream. Open files as binary. `std::cin` takes a fraction of the time after
/// `std::ios::sync_with_stdio(false)`.
///
/// Any exception (memory that runs out, a stream told to throw) leaves the reader where it stood:
/// the next call reads the same record again. All code is inline, none lies in the library.
class CsvReader {
public:
    /// Why a record was refused.
    enum class FaultKind {
        strayQuote,    ///< a quote stands where none may
        openQuote,     ///< nothing closes the quote that begins a field
        recordTooLong, ///< the record is longer than `maxRecordLength()`
        streamFailed,  ///< the stream failed before its end; nothing more is read
    };

    /// A record that was refused. Lines end at LF, CR LF or CR, inside quotes too.
    struct Fault {
        FaultKind kind;          ///< why
        std::uint64_t line;      ///< of the quote, or of where reading stopped; from 1
        std::uint64_t column;    ///< in that line, in bytes; from 1, a byte order mark not counted
        std::uint64_t firstLine; ///< where the refused record begins
        std::uint64_t lineCount; ///< lines skipped with it, from `firstLine` on

        /// The kind as a text, such as "a quote where none may stand".
        char const* what() const noexcept;
    };

    /// What was read so far. `lines` is the sum of `recordLines`, `faultLines` and `blankLines`.
    struct Counts {
        std::uint64_t lines = 0;       ///< all
        std::uint64_t records = 0;     ///< given by `next`
        std::uint64_t recordLines = 0; ///< lines of these records
        std::uint64_t faults = 0;      ///< reported
        std::uint64_t faultLines = 0;  ///< lines skipped with them
        std::uint64_t blankLines = 0;  ///< lines without any byte
    };

    /// The limit that a new reader has, in bytes: 16 MiB.
    static constexpr std::size_t defaultMaxRecordLength = std::size_t(16) << 20;

    /// Reads `text`, which has to outlive the reader.
    explicit CsvReader(std::string_view text, char separator = ',') noexcept
        : m_data(text.data()), m_size(text.size()), m_separator(separator) {}
    /// Reads `text` up to its first zero; null is the empty text. It has to outlive the reader.
    explicit CsvReader(char const* text, char separator = ',') noexcept
        : CsvReader(text != nullptr ? std::string_view(text) : std::string_view(), separator) {}
    /// Reads `stream`, which has to outlive the reader, and which nobody else may read meanwhile.
    explicit CsvReader(std::istream& stream, char separator = ',') noexcept
        : m_stream(&stream), m_separator(separator) {}
    /// A temporary string would be gone before it is read.
    template <typename Text,
              typename = std::enable_if_t<std::is_same_v<std::remove_const_t<Text>, std::string>>>
    explicit CsvReader(Text&& text, char separator = ',') = delete;

    CsvReader(CsvReader const&) = delete;
    CsvReader& operator=(CsvReader const&) = delete;

    /// Replaces `fields` by those of the next record, reusing the elements and their memory. False,
    /// with `fields` empty, at the end of the text or stream, and when the stream fails, which is a
    /// fault. After an exception `fields` holds anything.
    bool next(std::vector<std::string>& fields);

    /// From now on `next` calls `handler` for each fault, in the order of the lines. It must not
    /// call `next`. What it throws passes through `next`, which goes on behind the fault when
    /// called again. An empty `handler` is not called.
    void onFault(std::function<void(Fault const&)> handler) { m_handler = std::move(handler); }

    /// The line in which the record last given begins, counted from 1; 0 before the first.
    std::uint64_t line() const noexcept { return m_line; }
    /// The number of lines that this record takes.
    std::uint64_t lineCount() const noexcept { return m_lineCount; }
    /// What was read so far.
    Counts const& counts() const noexcept { return m_counts; }

    /// The length of the longest record taken, in bytes, with its quotes and without its line end.
    std::size_t maxRecordLength() const noexcept { return m_maxLength; }
    /// Sets that length for the records to come. 0 takes none.
    void setMaxRecordLength(std::size_t bytes) noexcept {
        m_maxLength = bytes;
        moveTo(m_record);
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    // the bytes at hand

    void moveTo(std::size_t record) noexcept;
    bool isWithinLimit(std::size_t at) const noexcept { return at - m_record <= m_maxLength; }
    bool has(std::size_t at);
    bool fill();
    void dropFront() noexcept;
    bool isFailed() const;
    bool isLineEnd(std::size_t at) const noexcept {
        return m_data[at] == '\n' || m_data[at] == '\r';
    }
    std::size_t findSpecial(std::size_t at) const noexcept;
    std::pair<std::uint64_t, std::size_t> lineOf(std::size_t at) const noexcept;

    // records

    bool startRecord();
    void skipByteOrderMark();
    void passLineEnd() noexcept;
    bool readRecord(std::vector<std::string>& fields);
    std::size_t takePlain(detail::CsvFields& out, std::size_t begin);
    std::size_t takeQuoted(detail::CsvFields& out, std::size_t begin);
    std::size_t findClosing(std::size_t at, bool& hasPairs, bool& hasLines);
    void accept(std::size_t end) noexcept;

    // faults

    std::size_t refuse(FaultKind kind, std::size_t at, std::size_t last) noexcept;
    std::size_t refuseOpen(std::size_t begin, std::size_t end);
    void skipRefused();
    void report(Fault const& fault);

    char const* m_data = nullptr; // the text, or the buffer
    std::size_t m_size = 0;       // of the text, or of what the buffer holds
    std::size_t m_record = 0;     // where the record begins
    std::size_t m_end = 0;        // behind the bytes that the record may have
    std::size_t m_maxLength = defaultMaxRecordLength;
    std::istream* m_stream = nullptr; // null for a text
    std::vector<char> m_buffer;
    char m_separator;
    bool m_isStarted = false;     // the byte order mark is passed
    bool m_isBehindCr = false;    // an LF here belongs to the line end before it
    bool m_hasInnerLines = false; // the record has line ends in quotes
    bool m_isRefused = false;     // m_fault waits for its last line's end
    bool m_hasFailed = false;     // the stream, and that is reported
    Fault m_fault{};
    Counts m_counts;
    std::uint64_t m_line = 0;
    std::uint64_t m_lineCount = 0;
    std::function<void(Fault const&)> m_handler;
};

} // namespace Halvora

#include <Halvora/text/CsvReaderInline.h>
