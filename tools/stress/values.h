// Arguments of calls: random ones, or data of one shape and size.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "stress/plugin.h"

namespace stress {

// Texts of one repeated word, and arrays in one order, whose size doubles.
struct Shape {
  static constexpr std::int64_t kCount = 12;  // of words, of which the last is combining marks,
  static constexpr std::int64_t kOrders = 6;  // and of orders

  std::int64_t index;
  int doublings;
};

struct Arguments {
  std::vector<host::Argument> list;   // the instance first
  std::deque<host::Value> variables;  // that are passed by reference
};

// The arguments that follow from a seed, or, given a shape, that have it.
Arguments MakeArguments(const Plugin& plugin, const Entry& entry, std::uint64_t seed,
                        const std::optional<Shape>& shape = {});

// A value as text, for reports and to compare results: with the length and encoding of a text and the size of an array.
std::string TextOf(const host::Value& value);

}  // namespace stress
