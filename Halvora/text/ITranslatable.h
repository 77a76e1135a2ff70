#pragma once

#include <Halvora/Export.h>

#include <iosfwd>

namespace Halvora {

class ITranslator;

/// An object that can write its own text in the user's language.
class HALVTYPES_API ITranslatable {
public:
    /// Holds nothing.
    ITranslatable() = default;
    /// Copies nothing: the interface has no data.
    ITranslatable(ITranslatable const&) = default;
    /// Copies nothing: the interface has no data.
    ITranslatable& operator=(ITranslatable const&) = default;
    /// An object may be deleted through this interface.
    virtual ~ITranslatable();

    /// Writes the object's text to `stream`, translated by `translator`.
    virtual void ToString(std::wostream& stream, ITranslator const& translator) const = 0;
};

} // namespace Halvora
