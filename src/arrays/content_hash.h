// Hashes memory to detect changes. The hash depends on all bytes and their order. Different contents have the same hash
// with a probability of about 1 in 2^64.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zkt {

inline std::uint64_t HashOf(const void* memory, std::size_t size) {
  // Multiplication moves bits only to higher positions, so the shift moves high bits back down.
  const auto mix = [](std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0x9FB21C651E98DF25;
    return hash ^ (hash >> 32);
  };
  // The processor can compute four independent lanes in parallel. Within a lane, each step must wait for the result of
  // the previous step.
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
