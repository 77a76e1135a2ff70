#include <Halvora/error/HLVError.h>

#include <charconv>
#include <iterator>
#include <memory>
#include <ostream>
#include <string_view>
#include <utility>

#include <Halvora/error/detail/Literal.h>

namespace Halvora {

namespace {

// The heads of errors and parameters; each error but the first of a chain begins with a line.
constexpr std::string_view narrowHead = "Error ";
constexpr std::wstring_view wideHead = L"Error ";
constexpr std::string_view narrowNextHead =
    "\n---------------------------------------------------\nError ";
constexpr std::wstring_view wideNextHead =
    L"\n---------------------------------------------------\nError ";
constexpr std::string_view narrowParamHeads[] = {"\n  P1: ", "\n  P2: ", "\n  P3: "};
constexpr std::wstring_view wideParamHeads[] = {L"\n  P1: ", L"\n  P2: ", L"\n  P3: "};

template <typename Char>
void writeError(std::basic_ostream<Char>& stream, std::basic_string_view<Char> head,
                HLVError const& error) {
    stream << head << error.getCode();
    HLVError::Param const* const params[] = {error.getParam0(), error.getParam1(),
                                             error.getParam2()};
    for (int i = 0; i < 3; ++i) {
        if (params[i] != nullptr) {
            stream << detail::literal<Char>(narrowParamHeads[i], wideParamHeads[i]) << *params[i];
        }
    }
}

template <typename Char>
std::basic_ostream<Char>& writeFirst(std::basic_ostream<Char>& stream, HLVError const& error) {
    writeError(stream, detail::literal<Char>(narrowHead, wideHead), error);
    return stream;
}

template <typename Char>
std::basic_ostream<Char>& writeChain(std::basic_ostream<Char>& stream, HLVError const* error) {
    if (error == nullptr) {
        return stream << detail::literal<Char>("<NONE>", L"<NONE>");
    }
    writeFirst(stream, *error);
    while ((error = error->getPrecedingError()) != nullptr) {
        writeError(stream, detail::literal<Char>(narrowNextHead, wideNextHead), *error);
    }
    return stream;
}

template <typename String>
String shortMessage(int code) {
    char text[24] = "Error ";
    char* const end = std::to_chars(text + 6, std::end(text), code).ptr;
    return String(text, end);
}

} // namespace

// Here and not in Param.cpp: what copies and ends chains calls them, and takes them in.
HLVError::Param::Param(Param const& other) : m_type(other.m_type), m_data(other.m_data) {
    if (!other.m_dataString.empty()) {
        m_dataString = other.m_dataString;
    }
}
HLVError::Param::~Param() = default;

HLVError::HLVError() noexcept = default;

HLVError::HLVError(int code, Param* param0, Param* param1, Param* param2) noexcept
    : HLVError(code, nullptr, nullptr, param0, param1, param2) {}

// Owned from here on, and so deleted one day: not const any more.
HLVError::HLVError(int code, void const* tag, HLVError const* precedingError, Param* param0,
                   Param* param1, Param* param2) noexcept
    : m_code(code),
      m_tag(tag),
      m_precedingError(const_cast<HLVError*>(precedingError)),
      m_params{param0, param1, param2} {}

HLVError::HLVError(std::exception const& e) : HLVError(-1, new Param(e.what())) {}

// Delegates, so that the destructor frees the part that stands when an allocation fails.
HLVError::HLVError(HLVError const& other) : HLVError(other.m_code) {
    m_tag = other.m_tag;
    copyParams(other);
    HLVError* end = this;
    for (auto const* next = other.m_precedingError; next != nullptr;
         next = next->m_precedingError) {
        end->m_precedingError =
            new HLVError(next->m_code, next->m_tag, nullptr, nullptr, nullptr, nullptr);
        end = end->m_precedingError;
        end->copyParams(*next);
    }
}

HLVError::~HLVError() {
    HLVError* next = m_precedingError;
    while (next != nullptr) {
        std::unique_ptr<HLVError> const current(next);
        next = std::exchange(current->m_precedingError, nullptr);
    }
    for (Param* param : m_params) {
        delete param;
    }
}

void HLVError::copyParams(HLVError const& other) {
    for (int i = 0; i < 3; ++i) {
        if (other.m_params[i] != nullptr) {
            m_params[i] = new Param(*other.m_params[i]);
        }
    }
}

HLVError const* HLVError::getBaseError() const noexcept {
    auto const* error = this;
    while (error->m_precedingError != nullptr) {
        error = error->m_precedingError;
    }
    return error;
}

HLVError const* HLVError::getByCode(int code) const noexcept {
    auto const* error = this;
    while (error != nullptr && error->m_code != code) {
        error = error->m_precedingError;
    }
    return error;
}

bool HLVError::isError(HLVError const* error) noexcept {
    return error != nullptr && error->m_code < 0;
}

bool HLVError::isWarning(HLVError const* error) noexcept {
    return error != nullptr && error->m_code > 0;
}

HLVError* HLVError::makeError(int code) {
    return code < 0 ? new HLVError(code) : nullptr;
}

HLVError* HLVError::copy(HLVError const* error) {
    return error != nullptr ? new HLVError(*error) : nullptr;
}

std::ostream& HLVError::singleOutput(std::ostream& stream) const {
    return writeFirst(stream, *this);
}

std::wostream& HLVError::singleOutput(std::wostream& stream) const {
    return writeFirst(stream, *this);
}

std::ostream& HLVError::operator<<(std::ostream& stream) const {
    return writeChain(stream, this);
}

std::wostream& HLVError::operator<<(std::wostream& stream) const {
    return writeChain(stream, this);
}

std::wstring HLVError::message() const {
    return shortMessage<std::wstring>(m_code);
}

std::string HLVError::messageA() const {
    return shortMessage<std::string>(m_code);
}

} // namespace Halvora

std::ostream& std::operator<<(std::ostream& stream, Halvora::HLVError const& error) {
    return Halvora::writeChain(stream, &error);
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::HLVError const& error) {
    return Halvora::writeChain(stream, &error);
}

std::ostream& std::operator<<(std::ostream& stream, Halvora::HLVError const* error) {
    return Halvora::writeChain(stream, error);
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::HLVError const* error) {
    return Halvora::writeChain(stream, error);
}

std::ostream& std::operator<<(std::ostream& stream, Halvora::HLVError::Holder const& holder) {
    return Halvora::writeChain(stream, holder.getError());
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::HLVError::Holder const& holder) {
    return Halvora::writeChain(stream, holder.getError());
}
