// A counting sort for bytes, which have only 256 possible values.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace zkt {

inline void SortBytes(std::span<std::int8_t> bytes, bool descending) {
  constexpr std::size_t kEnoughToCount = 64;
  if (bytes.size() < kEnoughToCount) {
    if (descending) return std::sort(bytes.begin(), bytes.end(), std::greater<>());
    return std::sort(bytes.begin(), bytes.end());
  }
  // Alternates between two tables, because the processor must wait before it can read a counter that it has just
  // written.
  std::array<std::array<std::size_t, 256>, 2> counts{};
  const auto indexOf = [](int byte) { return static_cast<std::size_t>(byte) + 128; };
  std::size_t next = 0;
  for (; next + 1 < bytes.size(); next += 2) {
    ++counts[0][indexOf(bytes[next])];
    ++counts[1][indexOf(bytes[next + 1])];
  }
  if (next < bytes.size()) ++counts[0][indexOf(bytes[next])];
  auto* end = bytes.data();
  for (int i = -128; i <= 127; ++i) {
    const int byte = descending ? -1 - i : i;
    end = std::fill_n(end, counts[0][indexOf(byte)] + counts[1][indexOf(byte)], static_cast<std::int8_t>(byte));
  }
}

}  // namespace zkt
