#include "doctor/library.h"

#include <charconv>

namespace doctor {

std::string ToText(Version version) { return std::to_string(version.major) + "." + std::to_string(version.minor); }

Version VersionOf(std::string_view text) {
  Version version;
  const char* const end = text.data() + text.size();
  const auto [point, error] = std::from_chars(text.data(), end, version.major);
  if (error == std::errc() && point != end && *point == '.') std::from_chars(point + 1, end, version.minor);
  return version;
}

std::vector<Library> ReadLibraries(Bytes file) {
  if (IsElf(file)) return ReadElf(file);
  if (IsMachO(file)) return ReadMachO(file);
  throw DamagedFile("this is no library of Linux or macOS");
}

}  // namespace doctor
