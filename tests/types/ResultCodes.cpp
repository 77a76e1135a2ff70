// Numbers that programs store and print.

#include <Halvora/types/ParseBinary16.h>
#include <Halvora/types/ResultCodes.h>

using namespace Halvora;

static_assert(ERR_OUT_OF_RANGE == -1004996 && ERR_WRONG_TYPE == -1004997 &&
              ERR_NULL_POINTER == -1004999);
static_assert(PARSE_DONE == 0 && PARSE_BAD_CHARACTER == 1 && PARSE_TOO_SHORT == 2 &&
              PARSE_TOO_LONG == 3);
