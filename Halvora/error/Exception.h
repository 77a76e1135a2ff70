#pragma once

#include <Halvora/Export.h>

#include <exception>
#include <string>

namespace Halvora {

// An exception with a code, a message and a trace that every layer may extend.
class HALVTYPES_API Exception : public std::exception {
public:
    // Keeps copies of the texts.
    Exception(int const& code, std::string const& message, std::string const& trace);
    Exception(Exception const& other);

    // Changes nothing: an exception keeps what it was constructed with.
    Exception& operator=(Exception const& other) noexcept;
    ~Exception() override;

    // What the exception was constructed with, and what was added to the trace.
    int const& code() const noexcept { return m_code; }
    char const* what() const noexcept override; // the message
    std::string const& trace() const noexcept { return m_trace; }

    // Appends " -> " and the text to the trace.
    void addTrace(std::string const& text);

private:
    int m_code;
    std::string m_message;
    std::string m_trace;
};

} // namespace Halvora
