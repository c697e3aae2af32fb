// Reads and writes whole files. Both functions throw std::runtime_error on failure.
#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace host {

inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  if (!file) throw std::runtime_error("cannot read " + path);
  return text;
}

inline void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  if (!(file << text).flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace host
