#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/text/Braces.h>

#include <exception>
#include <memory>
#include <string>

namespace Halvora {

/// An exception that carries an error with its whole chain, and a trace that every layer which
/// catches it may extend before it throws on.
class HALVTYPES_API HLVErrorException : public std::exception {
public:
    /// Takes ownership of `error`, also when this constructor throws; null stands for an error with
    /// code 0. Copies `trace`.
    HLVErrorException(HLVError* error, std::string const& trace);
    /// Takes ownership of `error`, also when this constructor throws; null stands for an error with
    /// code 0. Copies `trace`.
    HLVErrorException(std::unique_ptr<HLVError> error, std::string const& trace)
        : HLVErrorException(error.release(), trace) {}
    /// Braces that were a text by accident.
    HLVErrorException(HLVError*, detail::NoText<char>) = delete;
    /// Braces that were a text by accident.
    HLVErrorException(std::unique_ptr<HLVError>, detail::NoText<char>) = delete;

    /// A copy with a deep copy of the error.
    HLVErrorException(HLVErrorException const& other);

    /// Takes the error and the texts over. The source has a null `error()` and an empty `what()`
    /// then, and may only be destroyed.
    HLVErrorException(HLVErrorException&& other) noexcept;

    HLVErrorException& operator=(HLVErrorException const&) = delete; ///< It keeps its error.
    /// Deletes the error with its chain.
    ~HLVErrorException() override;

    /// `"Error "` and the code, whatever happens to the trace; valid as long as the exception.
    char const* what() const noexcept override;

    /// The trace: the text that was given at construction, and what was added.
    std::string const& trace() const noexcept { return m_trace; }

    /// The exception keeps ownership; `HLVError::copy` makes one that outlives it.
    HLVError* error() noexcept { return m_error; }
    /// The exception keeps ownership; `HLVError::copy` makes one that outlives it.
    HLVError const* error() const noexcept { return m_error; }

    /// Appends `" -> "` and the text to the trace. A failed allocation leaves the trace as it was.
    void addTrace(std::string const& text);

private:
    std::string m_trace;
    std::string m_what;
    HLVError* m_error;
};

} // namespace Halvora
