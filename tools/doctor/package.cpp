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

struct ArchiveDeleter {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct EntryDeleter {
  void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

PackagedFile ReadEntry(zip_t* archive, std::uint64_t index) {
  zip_stat_t about;
  zip_stat_init(&about);
  if (zip_stat_index(archive, index, 0, &about) != 0) throw DamagedFile("an entry of the zip cannot be read");
  if (about.size > kLargestFile) throw DamagedFile("an entry of the zip is larger than any library");
  PackagedFile file{about.name, std::string(about.size, '\0'), about.mtime};
  const std::unique_ptr<zip_file_t, EntryDeleter> entry(zip_fopen_index(archive, index, 0));
  // Reading to the end, one byte further than there should be, also holds the checksum against the bytes.
  char further = 0;
  if (entry == nullptr ||
      zip_fread(entry.get(), file.bytes.data(), about.size) != static_cast<zip_int64_t>(about.size) ||
      zip_fread(entry.get(), &further, 1) != 0)
    throw DamagedFile("its entry " + file.path + " is damaged");
  return file;
}

std::vector<PackagedFile> ReadZip(const std::string& path) {
  int error = 0;
  const std::unique_ptr<zip_t, ArchiveDeleter> archive(zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
  if (archive == nullptr) throw DamagedFile("it is no zip, or a damaged one");
  std::vector<PackagedFile> files;
  const auto count = static_cast<std::uint64_t>(zip_get_num_entries(archive.get(), 0));
  for (std::uint64_t i = 0; i < count; ++i) files.push_back(ReadEntry(archive.get(), i));
  std::erase_if(files, [](const PackagedFile& file) { return file.path.ends_with('/'); });
  return files;
}

// The times of a folder say nothing about the package, and stay 0.
std::vector<PackagedFile> ReadFolder(const std::string& path) {
  std::vector<PackagedFile> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file())
      files.push_back({fs::relative(entry.path(), path).generic_string(), ReadWholeFile(entry.path()), 0});
  }
  std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  return files;
}

}  // namespace

std::string ReadWholeFile(const std::string& path) {
  if (fs::file_size(path) > kLargestFile) throw DamagedFile("it is larger than any library");
  std::ifstream file(path, std::ios::binary);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  std::string bytes(fs::file_size(path), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

bool IsPackage(const std::string& path) {
  if (fs::is_directory(path) || path.ends_with(".xojo_plugin")) return true;
  char start[2] = {};
  std::ifstream(path, std::ios::binary).read(start, sizeof(start));
  return start[0] == 'P' && start[1] == 'K';
}

std::vector<PackagedFile> ReadPackage(const std::string& path) {
  return fs::is_directory(path) ? ReadFolder(path) : ReadZip(path);
}

}  // namespace doctor
