// Which elements of an array an index and a count mean. Knows numbers only; no sum in here can wrap.
#pragma once

#include <cstdint>

namespace zkt {

// The count that means "to the end".
inline constexpr std::int64_t kToTheEnd = -2;

// The number of elements from an index up to the upper bound. The index lies between 0 and the bound.
constexpr std::int64_t CountToEnd(std::int64_t index, std::int64_t upperBound) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(upperBound - index) + 1);
}

// Whether `count` elements from an index on go beyond the upper bound. The index lies between 0 and the bound.
constexpr bool GoesBeyond(std::int64_t index, std::int64_t count, std::int64_t upperBound) {
  return count > 0 && count - 1 > upperBound - index;
}

}  // namespace zkt
