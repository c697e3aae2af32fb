// A plug-in package: a zip, or a folder of the same shape, with the libraries under "NAME/Build Resources/TARGET/".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace doctor {

struct PackagedFile {
  std::string path;       // inside the package, with slashes
  std::string bytes;      // what is in it
  std::int64_t time = 0;  // when it was changed, as the package tells; seconds since 1970
};

// Reads the files of a package in their order, a folder's by name. Throws DamagedFile if the zip is damaged.
std::vector<PackagedFile> ReadPackage(const std::string& path);

// Whether a path leads to a package rather than to a library.
bool IsPackage(const std::string& path);

// Reads a whole file. Throws if it cannot be read, or is larger than any plug-in.
std::string ReadWholeFile(const std::string& path);

}  // namespace doctor
