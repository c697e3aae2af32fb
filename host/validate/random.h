// Numbers that look random and follow from a seed, the same with every library and compiler.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace host::validate {

// Makes one seed of two numbers.
constexpr std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  std::uint64_t z = a + 0x9E3779B97F4A7C15 * (b + 1);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
  return z ^ (z >> 31);
}

constexpr std::uint64_t Mix(std::uint64_t seed, std::string_view text) {
  for (const char c : text) seed = Mix(seed, static_cast<unsigned char>(c));
  return seed;
}

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Bits() { return Mix(state_, ++drawn_); }

  // 0 to count - 1; count is not 0.
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(Bits() % count); }

  std::int64_t Between(std::int64_t least, std::int64_t most) {
    return least + static_cast<std::int64_t>(Below(static_cast<std::size_t>(most - least) + 1));
  }

  bool Percent(unsigned percent) { return Below(100) < percent; }

  template <class Item>
  const Item& OneOf(std::span<const Item> items) {
    return items[Below(items.size())];
  }
  template <class Item, std::size_t kCount>
  const Item& OneOf(const Item (&items)[kCount]) {
    return items[Below(kCount)];
  }

 private:
  std::uint64_t state_;
  std::uint64_t drawn_ = 0;
};

}  // namespace host::validate
