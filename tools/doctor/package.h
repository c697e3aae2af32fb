// A plug-in package: a zip archive, or a folder of the same structure, with its libraries in
// "NAME/Build Resources/TARGET/".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace doctor {

struct PackagedFile {
  std::string path;  // within the package, with slashes
  std::string bytes;
  std::int64_t time;  // of the last change, in seconds since 1970; 0 in a folder
};

// Whether a path leads to a package rather than to a library.
bool IsPackage(const std::string& path);

// Reads the files of a package in its order, those of a folder by path. Throws DamagedFile if the archive is damaged.
std::vector<PackagedFile> ReadPackage(const std::string& path);

// Throws DamagedFile if the file is larger than any library, and another exception if it cannot be read.
std::string ReadWholeFile(const std::string& path);

}  // namespace doctor
