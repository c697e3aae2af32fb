// A hash of memory, to notice that it has changed. It depends on the order of all bytes; two contents have the same one
// in 1 of 2^64 cases.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zkt {

inline std::uint64_t HashOf(const void* memory, std::size_t size) {
  // The shift brings high bits down: multiplications alone would never let them reach the low ones.
  const auto mix = [](std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9FB21C651E98DF25;
    return hash ^ (hash >> 32);
  };
  // Four at a time, because each step waits for the one before.
  std::array<std::uint64_t, 4> lanes = {1, 2, 3, 4};
  const auto* bytes = static_cast<const std::byte*>(memory);
  for (; size > 0; bytes += sizeof lanes) {
    std::array<std::uint64_t, 4> words{};
    const std::size_t part = size < sizeof words ? size : sizeof words;
    std::memcpy(words.data(), bytes, part);
    for (std::size_t i = 0; i < lanes.size(); ++i) lanes[i] = mix(lanes[i], words[i]);
    size -= part;
  }
  return mix(mix(mix(lanes[0], lanes[1]), lanes[2]), lanes[3]);
}

}  // namespace zkt
