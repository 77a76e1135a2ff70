#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>

#include <iosfwd>

namespace Halvora {

// The owner of one error with its chain, or of none. What it holds is deleted when it is replaced
// and when the holder ends.
class HALVTYPES_API HLVError::Holder {
public:
    // Takes ownership of `error`, which may be null; empty without one.
    Holder() noexcept;
    explicit Holder(HLVError* error) noexcept;

    // Copies are deep. When the copy fails, this holder is unchanged.
    Holder(Holder const& other);
    Holder& operator=(Holder const& other);
    virtual ~Holder();

    // The holder keeps ownership; null when it is empty.
    HLVError* getError() const noexcept { return m_error; }

    // Hands the error to the caller, who deletes it, and leaves the holder empty.
    HLVError* extractError() noexcept;

    // Takes ownership of `error`, which may be null. The error that is held already changes
    // nothing.
    void setError(HLVError* error) noexcept;

    // Hands this holder's error to `target` and leaves this holder empty; into itself, nothing
    // happens.
    void move(Holder& target) noexcept;

    // Gives `target` a deep copy of this holder's error.
    void copy(Holder& target) const;

    // Wraps the held error, if any, in a new one. Takes ownership of the parameters, also when the
    // allocation of the new error fails: they are deleted then, and the holder is unchanged.
    void prependError(int code, Param* param0 = nullptr, Param* param1 = nullptr,
                      Param* param2 = nullptr);
    void prependError(int code, void const* tag, Param* param0, Param* param1, Param* param2);

private:
    HLVError* m_error = nullptr;
};

} // namespace Halvora

namespace std {

// The chain of the held error; "<NONE>" for an empty holder.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::HLVError::Holder const& holder);
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::HLVError::Holder const& holder);

} // namespace std
