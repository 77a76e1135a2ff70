#pragma once

#include <Halvora/error/Describe.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <Halvora/types/Binary16.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <iterator>
#include <string>
#include <utility>

// Error codes with names and sentences, as a component writes them down, one table a language:
//
//     inline constexpr CatalogueRow pumpErrors[] = {
//         {-20, L"pumpFailed", L"A pump does not start.", {L"pump"}},
//         {-10, L"sensorSilent", L"A sensor does not answer.", {L"sensor", L"reason"}},
//     };
//
//     CatalogueTranslator const translator(catalogue<pumpErrors>, "en");
//     describe(std::cerr, error, translator);

namespace Halvora {

/// What a component says about one of its error codes. Texts are zero-terminated and live as long
/// as every catalogue with the row: literals.
struct CatalogueRow {
    int code;                      ///< As in `HLVError::getCode`.
    wchar_t const* name;           ///< For logs and searches: `L"pumpFailed"`.
    wchar_t const* description;    ///< A sentence, at most 128 characters, none above U+FFFF.
    wchar_t const* params[3] = {}; ///< The names of the parameters, likewise short; null for none.
};

/// The rows of one table or several, found by their codes. A view of them: cheap to copy.
class Catalogue {
public:
    /// Without rows.
    constexpr Catalogue() noexcept = default;

    /// The rows that `count` pointers from `rows` on lead to, sorted by rising code. See
    /// `catalogue`, which makes and checks them.
    constexpr Catalogue(CatalogueRow const* const* rows, std::size_t count) noexcept
        : m_rows(rows), m_count(count) {}

    /// The row of the code, null if there is none. Takes the logarithm of the count in steps.
    constexpr CatalogueRow const* find(int code) const noexcept {
        std::size_t first = 0;
        for (std::size_t count = m_count; count != 0;) {
            std::size_t const half = count / 2;
            bool const isBehind = m_rows[first + half]->code < code;
            first += isBehind ? half + 1 : 0;
            count = isBehind ? count - half - 1 : half;
        }
        return first < m_count && m_rows[first]->code == code ? m_rows[first] : nullptr;
    }

    /// The number of rows.
    constexpr std::size_t getCount() const noexcept { return m_count; }

private:
    CatalogueRow const* const* m_rows = nullptr;
    std::size_t m_count = 0;
};

namespace detail {

template <std::size_t count>
using CatalogueRows = std::array<CatalogueRow const*, count>;

// By rising code. Tables that stand in order already need one pass of it.
template <std::size_t count>
constexpr CatalogueRows<count> sorted(CatalogueRows<count> rows) {
    for (std::size_t const gap : {701u, 301u, 132u, 57u, 23u, 10u, 4u, 1u}) {
        for (std::size_t i = gap; i < count; ++i) {
            CatalogueRow const* const row = rows[i];
            std::size_t at = i;
            for (; at >= gap && rows[at - gap]->code > row->code; at -= gap) {
                rows[at] = rows[at - gap];
            }
            rows[at] = row;
        }
    }
    return rows;
}

template <auto const&... tables>
constexpr auto joined() {
    CatalogueRows<(std::size(tables) + ...)> rows{};
    std::size_t at = 0;
    auto const take = [&](auto const& table) {
        for (CatalogueRow const& row : table) {
            rows[at++] = &row;
        }
    };
    (take(tables), ...);
    return sorted(rows);
}

template <std::size_t count>
constexpr bool hasEachCodeOnce(CatalogueRows<count> const& rows) {
    for (std::size_t i = 1; i < count; ++i) {
        if (rows[i - 1]->code == rows[i]->code) {
            return false;
        }
    }
    return true;
}

// Whether a ResString keeps the text as it is, on every machine.
constexpr bool isKept(wchar_t const* text) {
    std::size_t length = 0;
    for (; text != nullptr && text[length] != L'\0'; ++length) {
        auto const code = static_cast<char32_t>(text[length]);
        bool const isAbove = code > 0xFFFF || (sizeof(wchar_t) == 2 && code >> 11 == 0x1B);
        if (isAbove || length == ResString::maxLength) {
            return false;
        }
    }
    return true;
}

template <std::size_t count>
constexpr bool areWhole(CatalogueRows<count> const& rows) {
    for (CatalogueRow const* row : rows) {
        if (row->name == nullptr || row->description == nullptr) {
            return false;
        }
    }
    return true;
}

template <std::size_t count>
constexpr bool areKept(CatalogueRows<count> const& rows) {
    for (CatalogueRow const* row : rows) {
        bool isRowKept = isKept(row->description);
        for (wchar_t const* param : row->params) {
            isRowKept = isRowKept && isKept(param);
        }
        if (!isRowKept) {
            return false;
        }
    }
    return true;
}

template <auto const&... tables>
struct CheckedRows {
    static constexpr auto rows = joined<tables...>();
    static_assert(hasEachCodeOnce(rows), "two rows have the same code");
    static_assert(areWhole(rows), "a row has no name or no description");
    static_assert(areKept(rows), "a text is longer than 128 characters or has one above U+FFFF");
};

} // namespace detail

/// The catalogue of one table or of several joined ones, each a `constexpr` array of
/// `CatalogueRow`: `catalogue<pumpErrors, valveErrors>`. Made and checked when it is compiled: two
/// rows with one code, a row without name or description, or a text that `ResString` would cut do
/// not compile.
template <auto const&... tables>
inline constexpr Catalogue catalogue(detail::CheckedRows<tables...>::rows.data(),
                                     detail::CheckedRows<tables...>::rows.size());

/// Answers names, descriptions and parameter names from a catalogue. Everything else goes to the
/// next translator: unknown codes, parameters without a name, and the texts under an identifier. So
/// catalogues can be joined when they are compiled, and translators at run time. A lookup allocates
/// nothing but its result.
class CatalogueTranslator : public ITranslator {
public:
    /// `language` is what `getLanguage` answers. `next` stays the caller's and has to live as long;
    /// for null there is a `ResString::DummyTranslator`.
    explicit CatalogueTranslator(Catalogue const& rows, std::string language = {},
                                 ITranslator const* next = nullptr)
        : m_rows(rows), m_language(std::move(language)), m_next(next) {}

    /// What the next translator writes.
    void getTranslation(std::wostream& stream, ResString const& text) const override {
        next().getTranslation(stream, text);
    }
    /// What the next translator writes.
    void getTranslation(std::wostream& stream, Binary16 const& id,
                        wchar_t const* defaultText) const override {
        next().getTranslation(stream, id, defaultText);
    }

    /// The description of the code, without an identifier. The caller deletes the result.
    ResString* getErrorDescription(int code) const override {
        CatalogueRow const* const row = m_rows.find(code);
        return row != nullptr ? new ResString(row->description) : next().getErrorDescription(code);
    }

    /// The name of the code, zero-terminated. The caller deletes the result, an array.
    wchar_t* getErrorName(int code) const override {
        CatalogueRow const* const row = m_rows.find(code);
        if (row == nullptr) {
            return next().getErrorName(code);
        }
        std::size_t const size = std::char_traits<wchar_t>::length(row->name) + 1;
        return std::char_traits<wchar_t>::copy(new wchar_t[size], row->name, size);
    }

    /// The name of parameter `param` of the code, counted from 1 as an error prints them. The
    /// caller deletes the result.
    ResString* getErrorParamDesc(int code, int param) const override {
        CatalogueRow const* const row = m_rows.find(code);
        wchar_t const* const name =
            row != nullptr && param >= 1 && param <= 3 ? row->params[param - 1] : nullptr;
        return name != nullptr ? new ResString(name) : next().getErrorParamDesc(code, param);
    }

    /// The name that was given at construction.
    std::string const& getLanguage() const override { return m_language; }

private:
    ITranslator const& next() const { return m_next != nullptr ? *m_next : m_default; }

    Catalogue m_rows;
    std::string m_language;
    ITranslator const* m_next;
    ResString::DummyTranslator m_default;
};

} // namespace Halvora
