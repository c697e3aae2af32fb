// What the head of a native library tells: for whom it was built, what it needs, what it offers.
#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

#include "doctor/bytes.h"

namespace doctor {

// A version of a system or of its C library.
struct Version {
  unsigned major = 0;
  unsigned minor = 0;
  // clang-tidy 14 takes the comparison with 0 in it for one with a pointer.
  auto operator<=>(const Version&) const = default;  // NOLINT(modernize-use-nullptr)
};

std::string ToText(Version version);

// Reads "2.14"; what is no number counts as 0.
Version VersionOf(std::string_view text);

enum class System { Linux, MacOS };
enum class CodeSignature { NotNeeded, Intact, Missing, Wrong };

// A library for one processor. A universal file of macOS holds several.
struct Library {
  System system = System::Linux;
  std::string architecture;          // "x86-64", "arm64", or another name
  std::uint64_t size = 0;            // in bytes
  Version minimum;                   // glibc on Linux, else macOS
  std::string name;                  // soname or install name
  std::vector<std::string> needed;   // libraries, by the names in the file
  std::vector<std::string> exports;  // as C sees them
  CodeSignature signature = CodeSignature::NotNeeded;
  std::vector<std::string> weaknesses;  // it loads in spite of them
};

// Reads a file of either system. Throws DamagedFile if it is none, damaged, or not a library.
std::vector<Library> ReadLibraries(Bytes file);

std::vector<Library> ReadElf(Bytes file);
std::vector<Library> ReadMachO(Bytes file);

// Whether a file begins as one of that kind does.
bool IsElf(Bytes file);
bool IsMachO(Bytes file);

// The exported names in the tree of a Mach-O library.
std::vector<std::string> ReadExportTree(Bytes tree);

// Holds every page of a slice against the hash in its signature, which lies at `offset`.
CodeSignature CheckSignature(Bytes slice, std::uint64_t offset, std::uint64_t size);

}  // namespace doctor
