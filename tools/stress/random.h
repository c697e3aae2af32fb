// Pseudorandom numbers and strings generated from a seed.
#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

namespace stress {

// Combines two numbers into one seed.
constexpr std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  std::uint64_t z = a + 0x9E3779B97F4A7C15 * (b + 1);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
  return z ^ (z >> 31);
}

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Bits() { return Mix(state_, ++drawn_); }

  // Returns a number from 0 to count - 1. The count must not be 0.
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(Bits() % count); }

  std::int64_t Between(std::int64_t least, std::int64_t most) {
    return least + static_cast<std::int64_t>(Below(static_cast<std::size_t>(most - least) + 1));
  }

  bool Percent(unsigned percent) { return Below(100) < percent; }

  template <class Items>
  const auto& OneOf(const Items& items) {
    return items[Below(std::size(items))];
  }

 private:
  std::uint64_t state_;
  std::uint64_t drawn_ = 0;
};

// Returns noise or one of the words, sometimes with small changes. If there are no words, chooses from strings that are
// likely to cause faults.
std::string RandomText(Random& random, const std::vector<std::string>& words);

// Returns the path of a program that does nothing, or an invalid path. The checks must never start anything else.
std::string RandomProgram(Random& random);

}  // namespace stress
