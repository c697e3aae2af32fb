// Generates call arguments: random values, or data of one shape and size.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "stress/entries.h"

namespace stress {

// The shape of generated strings, which repeat one pattern, and of arrays, which have one order. Their size is a base
// size that is doubled `doublings` times.
struct Shape {
  static constexpr std::int64_t kCount = 12;  // number of patterns; the last pattern is combining marks
  static constexpr std::int64_t kOrders = 6;  // number of orders

  std::int64_t index;
  int doublings;
};

// Generates the arguments from a seed, with the given shape if there is one. They start with the instance, if there is
// one. An argument that is passed by reference points to its own value.
std::vector<host::Argument> MakeArguments(const Declared& declared, const Entry& entry, std::uint64_t seed,
                                          const std::optional<Shape>& shape = {});

// Formats a value for reports and for the comparison of results, with the length and encoding of a string and the size
// of an array.
std::string TextOf(const host::Value& value);

}  // namespace stress
