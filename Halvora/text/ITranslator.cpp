#include <Halvora/text/ITranslator.h>

#include <Halvora/text/ITranslatable.h>

namespace Halvora {

// Defined here, so that the virtual tables and type records stand in the library alone.
ITranslator::~ITranslator() = default;
ITranslatable::~ITranslatable() = default;

} // namespace Halvora
