// What every fuzz target is made of: its entry, and how it complains.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// Runs the target on one input; comes back always with 0. What is wrong ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace fuzz {

inline std::string_view Text(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

// Takes the first byte of an input, zero of an empty one.
inline char TakeByte(std::string_view& input) {
  if (input.empty()) return '\0';
  const char byte = input.front();
  input.remove_prefix(1);
  return byte;
}

// Takes what stands before the next line feed, and the line feed.
inline std::string_view TakeLine(std::string_view& input) {
  const std::string_view line = input.substr(0, input.find('\n'));
  input.remove_prefix(line.size() < input.size() ? line.size() + 1 : line.size());
  return line;
}

inline void Require(bool condition, const char* promise) {
  if (condition) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

}  // namespace fuzz
