// Range arguments near all limits, and what every array function makes of them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace tests {

// The expected outcome of a call: an exception message, or the number of elements to process.
struct Range {
  const char* message = nullptr;
  std::int64_t count = 0;
};

// `otherSize` is the size of the second array, if the function takes two arrays.
inline Range Resolve(std::int64_t size, std::int64_t index, std::int64_t count, std::optional<std::int64_t> otherSize,
                     std::int64_t otherIndex) {
  if (count == 0 || (count == -2 && size == 0)) return {};
  if (index < 0) return {"sourceIndex < 0"};
  if (otherSize && otherIndex < 0) return {"destIndex < 0"};
  if (index >= size) return {"sourceIndex > ubound source"};
  if (otherSize && otherIndex >= *otherSize) return {"destIndex > ubound dest"};
  if (count == -2) count = size - index;
  if (static_cast<__int128>(index) + count > size) return {"count too big for source"};
  if (otherSize && static_cast<__int128>(otherIndex) + count > *otherSize) return {"count too big for destination"};
  return {nullptr, std::max<std::int64_t>(count, 0)};
}

// Returns numbers near the bounds of an array, and numbers whose sums overflow.
inline std::vector<std::int64_t> Arguments(std::int64_t size) {
  std::vector<std::int64_t> all = {INT64_MIN, INT64_MIN + 1, INT64_MAX, INT64_MAX - 1, INT64_MAX - size};
  for (std::int64_t i = -3; i <= size + 1; ++i) all.push_back(i);
  return all;
}

}  // namespace tests
