// Calculates ranges from indices and counts. No calculation here can overflow.
#pragma once

#include <cstdint>

namespace zkt {

// The count that means "up to the end".
inline constexpr std::int64_t kToTheEnd = -2;

// Returns the number of elements from an index up to the upper bound. The index must be between 0 and the upper bound.
constexpr std::int64_t CountToEnd(std::int64_t index, std::int64_t upperBound) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(upperBound - index) + 1);
}

// Returns whether `count` elements starting at an index extend beyond the upper bound. The index must be between 0 and
// the upper bound.
constexpr bool GoesBeyond(std::int64_t index, std::int64_t count, std::int64_t upperBound) {
  return count > 0 && count - 1 > upperBound - index;
}

}  // namespace zkt
