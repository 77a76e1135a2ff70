#pragma once

#include <Halvora/Export.h>
#include <Halvora/text/Braces.h>

#include <exception>
#include <string>

namespace Halvora {

/// An exception with a code, a message and a trace that every layer may extend.
class HALVTYPES_API Exception : public std::exception {
public:
    /// Keeps copies of the texts; `what()` answers `message`.
    Exception(int const& code, std::string const& message, std::string const& trace);
    /// Braces that were a text by accident.
    Exception(int const&, detail::NoText<char>, std::string const&) = delete;
    /// Braces that were a text by accident.
    Exception(int const&, std::string const&, detail::NoText<char>) = delete;

    /// A copy with the same code and texts.
    Exception(Exception const& other);

    /// Changes nothing: an exception keeps what it was constructed with.
    Exception& operator=(Exception const& other) noexcept;
    /// Ends the texts that `what()` and `trace()` gave.
    ~Exception() override;

    /// The code that was given at construction.
    int const& code() const noexcept { return m_code; }

    /// The message that was given at construction, zero-terminated, valid as long as the exception.
    char const* what() const noexcept override;

    /// The trace: the text that was given at construction, and what was added.
    std::string const& trace() const noexcept { return m_trace; }

    /// Appends `" -> "` and the text to the trace. A failed allocation leaves the trace as it was.
    void addTrace(std::string const& text);

private:
    int m_code;
    std::string m_message;
    std::string m_trace;
};

} // namespace Halvora
