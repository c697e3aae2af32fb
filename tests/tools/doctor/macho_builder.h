// Makes small libraries of macOS, whose parts a test can leave out or spoil. No compiler for macOS is needed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tests {

struct MachO {
  std::uint32_t processor = 0x0100000C;  // Apple's
  std::uint32_t fileType = 6;            // a dynamic library
  std::uint32_t flags = 0x80;            // two-level name space
  std::uint32_t minimum = 11 << 16;
  std::string name = "@rpath/ZKTUtil.dylib";
  std::vector<std::string> needed = {"/usr/lib/libSystem.B.dylib"};
  std::vector<std::string> exports = {"_REALPluginMain"};
  bool hasIdentity = true;
  bool isSigned = true;

  std::string Build() const;
};

// Both in one file.
std::string Universal(const std::string& first, const std::string& second);

}  // namespace tests
