#include <Halvora/error/Exception.h>
#include <Halvora/error/HLVErrorException.h>

#include <memory>
#include <utility>

#include <Halvora/error/HLVError.h>

namespace Halvora {

namespace {

// A failed allocation leaves the trace as it was.
void extendTrace(std::string& trace, std::string const& text) {
    std::string extended;
    extended.reserve(trace.size() + 4 + text.size());
    extended.append(trace).append(" -> ").append(text);
    trace.swap(extended);
}

} // namespace

HLVErrorException::HLVErrorException(HLVError* error, std::string const& trace) {
    std::unique_ptr<HLVError> owned(error != nullptr ? error : new HLVError);
    m_trace = trace;
    m_what = owned->messageA();
    m_error = owned.release();
}

HLVErrorException::HLVErrorException(HLVErrorException const& other)
    : std::exception(other),
      m_trace(other.m_trace),
      m_what(other.m_what),
      m_error(HLVError::copy(other.m_error)) {}

HLVErrorException::HLVErrorException(HLVErrorException&& other) noexcept
    : m_trace(std::exchange(other.m_trace, {})),
      m_what(std::exchange(other.m_what, {})),
      m_error(std::exchange(other.m_error, nullptr)) {}

HLVErrorException::~HLVErrorException() {
    delete m_error;
}

char const* HLVErrorException::what() const noexcept {
    return m_what.c_str();
}

void HLVErrorException::addTrace(std::string const& text) {
    extendTrace(m_trace, text);
}

Exception::Exception(int const& code, std::string const& message, std::string const& trace)
    : m_code(code), m_message(message), m_trace(trace) {}

Exception::Exception(Exception const& other) = default;

Exception& Exception::operator=(Exception const&) noexcept {
    return *this;
}

Exception::~Exception() = default;

char const* Exception::what() const noexcept {
    return m_message.c_str();
}

void Exception::addTrace(std::string const& text) {
    extendTrace(m_trace, text);
}

} // namespace Halvora
