// A plug-in package: a zip archive, or a folder with the same structure. The libraries are in
// "NAME/Build Resources/TARGET/".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace doctor {

struct PackagedFile {
  std::string path;  // within the package, with slashes
  std::string bytes;
  std::int64_t time;  // modification time in seconds since 1970; 0 if the package is a folder
};

// Whether the path leads to a package rather than a library.
bool IsPackage(const std::string& path);

// Reads the files of an archive in archive order, or the files of a folder sorted by path. Throws DamagedFile if the
// archive is damaged.
std::vector<PackagedFile> ReadPackage(const std::string& path);

// Throws DamagedFile if the file is too large to be a library, and another exception if it cannot be read.
std::string ReadWholeFile(const std::string& path);

}  // namespace doctor
