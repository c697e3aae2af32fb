#include <algorithm>
#include <filesystem>
#include <functional>

#include "doctor/doctor.h"
#include "doctor/package.h"

namespace doctor {

namespace {

// The system and processor that the libraries in a package folder must support. A file may support more processors.
struct Target {
  std::string folder;
  System system;
  std::string architecture;
};
const Target kTargets[] = {
    {"Mac Universal", System::MacOS, "arm64"}, {"Mac Universal", System::MacOS, "x86-64"},
    {"Mac arm64", System::MacOS, "arm64"},     {"Mac x86-64", System::MacOS, "x86-64"},
    {"Linux arm64", System::Linux, "arm64"},   {"Linux x86-64", System::Linux, "x86-64"},
};

// Folders in which build machines keep source code and headers.
constexpr std::string_view kBuildFolders[] = {"/home/",        "/root/",       "/Users/",
                                              "/usr/include/", "/usr/lib/gcc", "node_modules"};

void InspectFile(const std::string& file, std::string_view bytes, const std::vector<std::string>& unwanted,
                 Report& report) try {
  for (Library& library : ReadLibraries(bytes)) {
    library.file = file;
    CheckLibrary(library);
    report.libraries.push_back(std::move(library));
  }
  for (const std::string& text : unwanted) {
    const std::size_t found = bytes.find(text);
    if (found == std::string_view::npos) continue;
    const std::string context(bytes.substr(found, 80));
    report.findings.Note(file + " contains the string " + context.c_str(), kBuildFolder);
  }
} catch (const DamagedFile& damage) {
  report.findings.Problem(file + ": " + damage.what(), kDamaged);
}

// Text files such as a license belong outside the folder from which Xojo copies files.
bool IsForReaders(const std::filesystem::path& path) {
  return path.extension() == ".txt" && std::ranges::count(path, "Build Resources") == 0;
}

// Xojo selects a library by its folder, so it never finds a library in the wrong folder.
void InspectPackagedFile(const PackagedFile& file, const std::vector<std::string>& unwanted,
                         std::vector<std::string>& ignored, Report& report) {
  const std::filesystem::path path = file.path;
  if (path.is_absolute() || std::ranges::count(path, "..") != 0)
    return report.findings.Problem("the path of its entry " + file.path + " leaves the package", kPath);
  if (IsForReaders(path)) return;
  if (!IsInTargetFolder(path)) return ignored.push_back(file.path);
  InspectFile(file.path, file.bytes, unwanted, report);
  for (const Target& target : kTargets)
    if (target.folder == path.parent_path().filename() &&
        report.Find(file.path, target.system, target.architecture) == nullptr)
      report.findings.Problem(file.path + " does not support " + target.architecture + ", which its folder requires",
                              kUnsupported);
}

void InspectPackage(const std::vector<PackagedFile>& files, const std::vector<std::string>& unwanted, Report& report) {
  std::vector<std::string> ignored;
  for (const PackagedFile& file : files) InspectPackagedFile(file, unwanted, ignored, report);
  report.findings.NoteIf(!ignored.empty(), "Xojo ignores " + Listed(ignored), kIgnored);
  report.findings.ProblemIf(report.libraries.empty(), "it contains no library", kNoLibrary);
  const auto differ = [](const auto& items, auto member) {
    return std::ranges::adjacent_find(items, std::not_equal_to(), member) != items.end();
  };
  report.findings.NoteIf(differ(report.libraries, &Library::version), "its libraries have different versions",
                         kVersion);
  report.findings.NoteIf(differ(files, &PackagedFile::time), "its files have different modification times", kTimes);
}

}  // namespace

bool IsInTargetFolder(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().filename();
  return std::ranges::count(kTargets, folder, &Target::folder) != 0;
}

const Library* Report::Find(std::string_view file, System system, std::string_view architecture) const {
  const auto found = std::ranges::find_if(libraries, [&](const Library& library) {
    return library.file == file && library.system == system && library.architecture == architecture;
  });
  return found != libraries.end() ? &*found : nullptr;
}

Report Inspect(const std::string& path, std::vector<std::string> unwanted) {
  unwanted.insert(unwanted.begin(), std::begin(kBuildFolders), std::end(kBuildFolders));
  Report report;
  try {
    if (IsPackage(path)) {
      InspectPackage(ReadPackage(path), unwanted, report);
      report.findings.NoteIf(!path.ends_with(".xojo_plugin"), "its name does not end in .xojo_plugin", kName);
    } else {
      InspectFile(std::filesystem::path(path).filename(), ReadWholeFile(path), unwanted, report);
    }
  } catch (const DamagedFile& damage) {
    report.findings.Problem(damage.what(), kDamaged);
  }
  return report;
}

}  // namespace doctor
