// Makes libraries and packages for the doctor to inspect.
#pragma once

#include <gtest/gtest.h>
#include <zip.h>

#include <cstddef>
#include <filesystem>
#include <fstream>

#include "doctor/doctor.h"
#include "doctor/package.h"

namespace tests {

using doctor::PackagedFile;
using doctor::Report;
using namespace std::literals;

inline const std::string kLinuxFile = "ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so";
inline const std::string kMacFile = "ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib";

inline std::string Careless() { return doctor::ReadWholeFile(ZKT_CARELESS); }
inline std::string MacLibrary(const std::string& name) { return doctor::ReadWholeFile(ZKT_MAC_LIBRARIES + name); }

// Returns a universal macOS file that contains libraries for two processors.
inline std::string Universal(const std::string& arm, const std::string& intel) {
  std::string file;
  const auto append = [&file](std::initializer_list<std::size_t> numbers) {
    for (const std::size_t number : numbers)
      for (int shift = 24; shift >= 0; shift -= 8) file += static_cast<char>(number >> shift);
  };
  append({0xCAFEBABE, 2, 0x0100000C, 0, 48, arm.size(), 0, 0x01000007, 0, 48 + arm.size(), intel.size(), 0});
  return file + arm + intel;
}

inline std::string With(std::string bytes, std::string_view text, std::string_view other) {
  const std::size_t found = bytes.find(text);
  EXPECT_NE(found, std::string::npos) << text;
  return found != std::string::npos ? bytes.replace(found, other.size(), other) : bytes;
}

inline std::string With(std::string bytes, std::size_t offset, unsigned byte) {
  bytes[offset] = static_cast<char>(byte);
  return bytes;
}

// Replaces the load command that lists exports and other data with a command for the exports alone, as newer macOS
// linkers do.
inline std::string WithExportCommand(const std::string& bytes) {
  constexpr std::string_view kLoadingInfo("\x22\0\0\x80\x30\0\0\0", 8);
  const std::size_t command = bytes.find(kLoadingInfo);
  return With(bytes, kLoadingInfo, "\x33\0\0\x80\x30\0\0\0"s + bytes.substr(command + 40, 8));
}

// Returns the folder for the current test's files. Each test has its own folder, because ctest runs several tests at
// once.
inline std::string Folder() {
  const std::string folder =
      testing::TempDir() + "doctor_" + testing::UnitTest::GetInstance()->current_test_info()->name() + "/";
  std::filesystem::create_directories(folder);
  return folder;
}

inline std::string Saved(const std::string& name, const std::string& bytes) {
  const std::string path = Folder() + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// Writes a package of these files as a zip archive and returns its path.
inline std::string Archive(const std::vector<PackagedFile>& files, const std::string& name = "Test.xojo_plugin") {
  const std::string path = Folder() + name;
  std::filesystem::remove(path);
  zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE, nullptr);
  for (const PackagedFile& file : files) {
    zip_source_t* const source = zip_source_buffer(archive, file.bytes.data(), file.bytes.size(), 0);
    const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, file.path.c_str(), source, 0));
    zip_set_file_compression(archive, index, ZIP_CM_STORE, 0);
    zip_file_set_mtime(archive, index, file.time, 0);
  }
  EXPECT_EQ(zip_close(archive), 0);
  return path;
}

inline std::string InWords(const Report& report) {
  std::string text;
  const auto append = [&text](const doctor::Findings& findings) {
    for (const doctor::Finding& finding : findings)
      text += (finding.isProblem ? "problem: " : "note: ") + finding.text + '\n';
  };
  for (const doctor::Library& library : report.libraries) append(library.findings);
  append(report.findings);
  return text;
}

inline std::string Inspected(const std::string& path, const std::vector<std::string>& unwanted = {}) {
  return InWords(doctor::Inspect(path, unwanted));
}

}  // namespace tests
