// Finds all positions of a byte in a block of 64 bytes at once. Uses SSE2 on x86-64 and NEON on 64-bit ARM, and
// portable code on other processors.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace zkt::csv {

inline constexpr std::size_t kBlockSize = 64;

#if defined(__SSE2__)

class Block {
 public:
  explicit Block(const char* bytes) {
    for (int i = 0; i < 4; ++i) parts_[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes) + i);
  }

  // Returns a mask whose bit i is set if byte i equals `byte`.
  std::uint64_t Equal(char byte) const {
    const __m128i wanted = _mm_set1_epi8(byte);
    std::uint64_t mask = 0;
    for (int i = 0; i < 4; ++i) {
      const int part = _mm_movemask_epi8(_mm_cmpeq_epi8(parts_[i], wanted));
      mask |= static_cast<std::uint64_t>(static_cast<std::uint32_t>(part)) << (16 * i);
    }
    return mask;
  }

 private:
  __m128i parts_[4];
};

#elif defined(__ARM_NEON) && defined(__aarch64__)

class Block {
 public:
  explicit Block(const char* bytes) {
    for (int i = 0; i < 4; ++i) parts_[i] = vld1q_u8(reinterpret_cast<const std::uint8_t*>(bytes) + 16 * i);
  }

  // Returns a mask whose bit i is set if byte i equals `byte`.
  std::uint64_t Equal(char byte) const {
    const uint8x16_t wanted = vdupq_n_u8(static_cast<std::uint8_t>(byte));
    const uint8x16_t bits = vreinterpretq_u8_u64(vdupq_n_u64(0x8040201008040201));
    uint8x16_t matches[4];
    for (int i = 0; i < 4; ++i) matches[i] = vandq_u8(vceqq_u8(parts_[i], wanted), bits);
    // Three pairwise additions combine the bits of eight bytes into one byte.
    const uint8x16_t low = vpaddq_u8(matches[0], matches[1]);
    const uint8x16_t high = vpaddq_u8(matches[2], matches[3]);
    const uint8x16_t all = vpaddq_u8(low, high);
    return vgetq_lane_u64(vreinterpretq_u64_u8(vpaddq_u8(all, all)), 0);
  }

 private:
  uint8x16_t parts_[4];
};

#else

class Block {
 public:
  explicit Block(const char* bytes) : bytes_(bytes) {}

  // Returns a mask whose bit i is set if byte i equals `byte`.
  std::uint64_t Equal(char byte) const {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < kBlockSize; ++i) mask |= static_cast<std::uint64_t>(bytes_[i] == byte) << i;
    return mask;
  }

 private:
  const char* bytes_;
};

#endif

}  // namespace zkt::csv
