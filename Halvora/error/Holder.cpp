#include <Halvora/error/Holder.h>

#include <memory>
#include <utility>

namespace Halvora {

HLVError::Holder::Holder() noexcept = default;

HLVError::Holder::Holder(HLVError* error) noexcept : m_error(error) {}

HLVError::Holder::Holder(Holder const& other) : m_error(HLVError::copy(other.m_error)) {}

HLVError::Holder& HLVError::Holder::operator=(Holder const& other) {
    setError(HLVError::copy(other.m_error));
    return *this;
}

HLVError::Holder::~Holder() {
    delete m_error;
}

HLVError* HLVError::Holder::extractError() noexcept {
    return std::exchange(m_error, nullptr);
}

void HLVError::Holder::setError(HLVError* error) noexcept {
    if (error != m_error) {
        delete std::exchange(m_error, error);
    }
}

void HLVError::Holder::move(Holder& target) noexcept {
    if (this != &target) {
        target.setError(extractError());
    }
}

void HLVError::Holder::copy(Holder& target) const {
    target.setError(HLVError::copy(m_error));
}

void HLVError::Holder::prependError(int code, Param* param0, Param* param1, Param* param2) {
    prependError(code, nullptr, param0, param1, param2);
}

void HLVError::Holder::prependError(int code, void const* tag, Param* param0, Param* param1,
                                    Param* param2) {
    std::unique_ptr<Param> guard0(param0);
    std::unique_ptr<Param> guard1(param1);
    std::unique_ptr<Param> guard2(param2);
    m_error = new HLVError(code, tag, m_error, param0, param1, param2);
    guard0.release();
    guard1.release();
    guard2.release();
}

} // namespace Halvora
