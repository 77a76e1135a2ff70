#pragma once

namespace Halvora {

/// @name Result codes
/// What an operation returns that can meet a bad argument; 0 is success. After any other result the
/// object is unchanged. Stored and printed: never renumber.
/// @{

inline constexpr int ERR_OUT_OF_RANGE = -1004996; ///< an index or range lies outside the object
inline constexpr int ERR_WRONG_TYPE = -1004997;   ///< a value of another type than the array's
inline constexpr int ERR_NULL_POINTER = -1004999; ///< a null source for a non-empty run of values
/// @}

} // namespace Halvora
