// Finds the library to load in the plug-in that the user names.
#include <sys/mman.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "doctor/doctor.h"
#include "doctor/package.h"

namespace doctor {

namespace {

namespace fs = std::filesystem;

std::string SystemOf(const Library& library) {
  return (library.system == System::MacOS ? "macOS on " : "Linux on ") + library.architecture;
}

// Copies the file into memory and returns the path of the copy, which exists until the last process closes it.
std::string KeepInMemory(const PackagedFile& file) {
  const int descriptor = ::memfd_create(fs::path(file.path).filename().c_str(), 0);
  std::string copy = "/proc/self/fd/" + std::to_string(descriptor);
  std::ofstream stream(copy, std::ios::binary);
  if (descriptor < 0 || !(stream << file.bytes << std::flush)) throw std::runtime_error("cannot unpack it into memory");
  return copy;
}

}  // namespace

std::string LoadablePlugin(const std::string& path) try {
  if (!fs::exists(path)) throw std::runtime_error("no such file");
  const bool isPackage = IsPackage(path);
  std::vector<PackagedFile> files;
  if (isPackage)
    files = ReadPackage(path);
  else
    files.push_back({path, ReadWholeFile(path), 0});
  const std::string wanted = "Linux on " + ThisMachine().architecture;
  std::string found;
  for (const PackagedFile& file : files) {
    if (isPackage && !IsInTargetFolder(file.path)) continue;
    for (const Library& library : ReadLibraries(file.bytes)) {
      if (SystemOf(library) == wanted) {
        if (!isPackage) return path;
        return fs::is_directory(path) ? path + '/' + file.path : KeepInMemory(file);
      }
      found += (found.empty() ? "" : ", ") + SystemOf(library);
    }
  }
  throw std::runtime_error("it is for " + (found.empty() ? "no known system" : found) + ", but this machine is " +
                           wanted);
} catch (const std::runtime_error& error) {
  throw std::runtime_error(path + ": " + error.what());
}

}  // namespace doctor
