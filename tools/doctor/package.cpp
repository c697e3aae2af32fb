#include "doctor/package.h"

#include <zip.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

#include "doctor/bytes.h"

namespace doctor {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestFile = 256u << 20;

PackagedFile ReadEntry(zip_t* archive, std::uint64_t index) {
  zip_stat_t about;
  zip_stat_init(&about);
  if (zip_stat_index(archive, index, 0, &about) != 0) throw DamagedFile("an entry of the archive cannot be read");
  if (about.size > kLargestFile) throw DamagedFile("an archive entry is too large to be a library");
  PackagedFile file{about.name, std::string(about.size, '\0'), about.mtime};
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> entry(zip_fopen_index(archive, index, 0), zip_fclose);
  // libzip verifies the checksum when a caller reads past the end of the entry.
  char pastEnd = 0;
  if (entry == nullptr ||
      zip_fread(entry.get(), file.bytes.data(), about.size) != static_cast<zip_int64_t>(about.size) ||
      zip_fread(entry.get(), &pastEnd, 1) != 0)
    throw DamagedFile("its entry " + file.path + " is damaged");
  return file;
}

std::vector<PackagedFile> ReadArchive(const std::string& path) {
  const std::unique_ptr<zip_t, void (*)(zip_t*)> archive(zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr),
                                                         zip_discard);
  if (archive == nullptr) throw DamagedFile("it is not a valid zip archive");
  std::vector<PackagedFile> files;
  const auto count = static_cast<std::uint64_t>(zip_get_num_entries(archive.get(), 0));
  for (std::uint64_t i = 0; i < count; ++i) files.push_back(ReadEntry(archive.get(), i));
  std::erase_if(files, [](const PackagedFile& file) { return file.path.ends_with('/'); });
  return files;
}

std::vector<PackagedFile> ReadFolder(const std::string& path) {
  std::vector<PackagedFile> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path))
    if (entry.is_regular_file())
      files.push_back({fs::relative(entry.path(), path).generic_string(), ReadWholeFile(entry.path()), 0});
  std::ranges::sort(files, {}, &PackagedFile::path);
  return files;
}

}  // namespace

bool IsPackage(const std::string& path) {
  return fs::is_directory(path) || path.ends_with(".xojo_plugin") || ReadWholeFile(path).starts_with("PK");
}

std::vector<PackagedFile> ReadPackage(const std::string& path) {
  return fs::is_directory(path) ? ReadFolder(path) : ReadArchive(path);
}

std::string ReadWholeFile(const std::string& path) {
  if (fs::file_size(path) > kLargestFile) throw DamagedFile("it is too large to be a library");
  std::ifstream file(path, std::ios::binary);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  std::string bytes(fs::file_size(path), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

}  // namespace doctor
