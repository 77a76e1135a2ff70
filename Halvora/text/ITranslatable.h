#pragma once

#include <Halvora/Export.h>

#include <iosfwd>

namespace Halvora {

class ITranslator;

// An object that can write its own text in the user's language.
class HALVTYPES_API ITranslatable {
public:
    ITranslatable() = default;
    ITranslatable(ITranslatable const&) = default;
    ITranslatable& operator=(ITranslatable const&) = default;
    virtual ~ITranslatable();

    // Writes the object's text, translated by `translator`.
    virtual void ToString(std::wostream& stream, ITranslator const& translator) const = 0;
};

} // namespace Halvora
