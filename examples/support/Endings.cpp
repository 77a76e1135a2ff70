#include "Endings.h"

namespace {

Endings const endings(2); // of every example: made before `main`, destroyed when it has ended

} // namespace
