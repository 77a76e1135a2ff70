#pragma once

#include <Halvora/Export.h>

#include <exception>
#include <string>

namespace Halvora {

class HLVError;

// An exception that carries an error with its whole chain, and a trace that every layer which
// catches it may extend before it throws on.
class HALVTYPES_API HLVErrorException : public std::exception {
public:
    // Takes ownership of `error`, also when this constructor throws. Null stands for an error with
    // code 0.
    HLVErrorException(HLVError* error, std::string const& trace);

    // Copies the error deeply. Moving hands it over: the source has a null error() and an empty
    // what() then, and may only be destroyed.
    HLVErrorException(HLVErrorException const& other);
    HLVErrorException(HLVErrorException&& other) noexcept;
    HLVErrorException& operator=(HLVErrorException const&) = delete;
    ~HLVErrorException() override;

    // "Error " and the code, whatever happens to the trace.
    char const* what() const noexcept override;

    // The text given at construction, and what was added.
    std::string const& trace() const noexcept { return m_trace; }

    // The exception keeps ownership; HLVError::copy makes one that outlives it.
    HLVError* error() noexcept { return m_error; }
    HLVError const* error() const noexcept { return m_error; }

    // Appends " -> " and the text to the trace.
    void addTrace(std::string const& text);

private:
    std::string m_trace;
    std::string m_what;
    HLVError* m_error;
};

} // namespace Halvora
