#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>

#include <iosfwd>
#include <memory>

namespace Halvora {

/// The owner of one error with its chain, or of none. What it holds is deleted when it is replaced
/// and when the holder ends.
class HALVTYPES_API HLVError::Holder {
public:
    /// Empty.
    Holder() noexcept;

    /// Takes ownership of `error`; empty for null.
    Holder(HLVError* error) noexcept;
    /// Takes ownership of `error`; empty for null.
    Holder(std::unique_ptr<HLVError> error) noexcept : m_error(error.release()) {}

    /// A deep copy of the error that `other` holds, if any.
    Holder(Holder const& other);

    /// Replaces what is held by a deep copy. When the copy fails, this holder is unchanged.
    Holder& operator=(Holder const& other);

    /// Takes over what `other` holds, which is empty then.
    Holder(Holder&& other) noexcept : m_error(other.extractError()) {}

    /// Replaces what is held by what `other` holds, which is empty then; from itself, nothing
    /// happens.
    Holder& operator=(Holder&& other) noexcept {
        setError(other.extractError());
        return *this;
    }

    /// Deletes what is held.
    virtual ~Holder();

    /// Whether an error is held.
    explicit operator bool() const noexcept { return m_error != nullptr; }

    /// The error that is held. The holder keeps ownership; null when it is empty.
    HLVError* getError() const noexcept { return m_error; }

    /// Hands the error to the caller, who deletes it, and leaves the holder empty.
    [[nodiscard]] HLVError* extractError() noexcept;

    /// Deletes what is held and takes ownership of `error`, which may be null. The error that is
    /// held already changes nothing.
    void setError(HLVError* error) noexcept;
    /// Deletes what is held and takes ownership of `error`, which may be null.
    void setError(std::unique_ptr<HLVError> error) noexcept { setError(error.release()); }

    /// Hands this holder's error to `target`, which deletes its own, and leaves this holder empty;
    /// into itself, nothing happens.
    void move(Holder& target) noexcept;

    /// Gives `target` a deep copy of this holder's error. When the copy fails, `target` is
    /// unchanged.
    void copy(Holder& target) const;

    /// Wraps the held error, if any, in a new one with up to three values, as `HLVError::create`
    /// makes it: `holder.prepend(-20, "pump", 3)`. When memory runs out the holder is unchanged.
    template <typename... Values, typename = IfParams<Values...>>
    void prepend(int code, Values const&... values) {
        std::unique_ptr<HLVError> error = create(code, values...);
        error->m_precedingError = m_error;
        m_error = error.release();
    }

    /// Wraps the held error, if any, in a new one, whatever its code. Takes ownership of the
    /// parameters, also when the allocation of the new error fails: they are deleted then, and the
    /// holder is unchanged.
    void prependError(int code, Param* param0 = nullptr, Param* param1 = nullptr,
                      Param* param2 = nullptr);

    /// The same with a tag, which stays the caller's.
    void prependError(int code, void const* tag, Param* param0, Param* param1, Param* param2);

private:
    HLVError* m_error = nullptr;
};

} // namespace Halvora

namespace std {

/// Writes the chain of the held error; `<NONE>` for an empty holder.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError::Holder const& holder);
/// Writes the chain of the held error; `<NONE>` for an empty holder.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError::Holder const& holder);

} // namespace std
