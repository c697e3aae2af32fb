// The entry point that every fuzz target defines, and helper functions for the targets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// Runs the target on one input. Always returns 0. A failure ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace fuzz {

inline std::string_view Text(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

// Removes and returns the first byte of an input. Returns zero if the input is empty.
inline char TakeByte(std::string_view& input) {
  if (input.empty()) return '\0';
  const char byte = input.front();
  input.remove_prefix(1);
  return byte;
}

// Removes the first line of an input, including its line feed. Returns the line without the line feed.
inline std::string_view TakeLine(std::string_view& input) {
  const std::string_view line = input.substr(0, input.find('\n'));
  input.remove_prefix(line.size() < input.size() ? line.size() + 1 : line.size());
  return line;
}

inline void Require(bool condition, const char* promise) {
  if (condition) return;
  std::fprintf(stderr, "violated: %s\n", promise);
  std::abort();
}

}  // namespace fuzz
