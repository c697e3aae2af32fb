#include "doctor/diagnosis.h"

#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <sys/utsname.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace doctor {

namespace {

constexpr std::string_view kEntryPoint = "REALPluginMain";

// The folders of a package, and for whom the libraries in them must be. Further processors in one file do no harm.
struct Target {
  std::string_view folder;
  System system;
  std::array<std::string_view, 2> architectures;
};
constexpr Target kTargets[] = {
    {"Mac Universal", System::MacOS, {"arm64", "x86-64"}}, {"Mac arm64", System::MacOS, {"arm64", ""}},
    {"Mac x86-64", System::MacOS, {"x86-64", ""}},         {"Linux x86-64", System::Linux, {"x86-64", ""}},
    {"Linux arm64", System::Linux, {"arm64", ""}},
};

// Where machines that build software keep it.
constexpr std::string_view kBuildersPlaces[] = {"/home/",        "/root/",       "/Users/",
                                                "/usr/include/", "/usr/lib/gcc", "node_modules"};

// Libraries that every Linux system has because its C library and its compiler bring them.
bool IsPartOfEveryLinux(std::string_view name) {
  constexpr std::string_view kNames[] = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "libgcc_s.so.1"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames) || name.starts_with("ld-linux-");
}

bool IsPartOfMacOS(std::string_view path) {
  return path.starts_with("/usr/lib/") || path.starts_with("/System/Library/");
}

// Asks the loader, which knows where to look. A name with a slash is a path of somebody else's machine.
bool IsOnThisMachine(const std::string& name) {
  if (name.find('/') != std::string::npos) return false;
  void* const library = ::dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) return false;
  ::dlclose(library);
  return true;
}

class LibraryExaminer {
 public:
  LibraryExaminer(const Library& library, std::vector<Finding>& findings) : library_(library), findings_(findings) {}

  void Examine() {
    ExamineExports();
    for (const std::string& name : library_.needed) ExamineNeeded(name);
    const Machine machine = ThisMachine();
    if (RunsOn(machine) && library_.minimum > machine.libc)
      Fault("this machine's C library is older: " + ToText(machine.libc));
    for (const std::string& weakness : library_.weaknesses) Weakness(weakness);
    ExamineSignature();
  }

 private:
  bool RunsOn(const Machine& machine) const {
    return library_.system == machine.system && library_.architecture == machine.architecture;
  }

  void ExamineExports() {
    bool isThere = false;
    for (const std::string& name : library_.exports) {
      if (name == kEntryPoint) {
        isThere = true;
      } else {
        Weakness("it exports " + name + ", which other libraries of the process may get in place of their own");
      }
    }
    if (!isThere) Fault("it does not export REALPluginMain: Xojo will not take it for a plug-in");
  }

  void ExamineNeeded(const std::string& name) {
    if (library_.system == System::MacOS) {
      if (!IsPartOfMacOS(name)) Fault("it needs " + name + ", which is not part of macOS");
    } else if (RunsOn(ThisMachine()) && !IsOnThisMachine(name)) {
      Fault("it needs " + name + ", which this machine does not have");
    } else if (!IsPartOfEveryLinux(name)) {
      Weakness("it needs " + name + ", which not every system has");
    }
  }

  void ExamineSignature() {
    if (library_.signature == CodeSignature::Wrong)
      Fault("its signature does not fit its content: macOS will refuse it");
    if (library_.signature != CodeSignature::Missing) return;
    // Only Apple's own processors insist.
    if (library_.architecture == "arm64") {
      Fault("it is not signed: macOS will refuse it");
    } else {
      Weakness("it is not signed");
    }
  }

  void Fault(std::string text) { findings_.push_back({true, std::move(text)}); }
  void Weakness(std::string text) { findings_.push_back({false, std::move(text)}); }

  const Library& library_;
  std::vector<Finding>& findings_;
};

void FindUnwantedTexts(std::string_view bytes, const std::vector<std::string>& unwanted, Diagnosis& diagnosis,
                       const std::string& name) {
  std::vector<std::string_view> texts(std::begin(kBuildersPlaces), std::end(kBuildersPlaces));
  texts.insert(texts.end(), unwanted.begin(), unwanted.end());
  for (const std::string_view text : texts) {
    const std::size_t found = bytes.find(text);
    if (found == std::string_view::npos) continue;
    const std::string_view whole = bytes.substr(found, bytes.substr(found, 80).find('\0'));
    diagnosis.findings.push_back({false, name + " holds the text " + std::string(whole.substr(0, 80))});
  }
}

void ExamineFile(const std::string& name, std::string_view bytes, const std::vector<std::string>& unwanted,
                 Diagnosis& diagnosis) {
  try {
    for (Library& library : ReadLibraries(Bytes(bytes))) {
      Patient& patient = diagnosis.patients.emplace_back(Patient{name, std::move(library), {}});
      LibraryExaminer(patient.library, patient.findings).Examine();
    }
    FindUnwantedTexts(bytes, unwanted, diagnosis, name);
  } catch (const DamagedFile& damage) {
    diagnosis.findings.push_back({true, name + ": " + damage.what()});
  }
}

const Target* TargetOf(const std::filesystem::path& file) {
  const std::string folder = file.parent_path().filename();
  const Target* const found = std::find_if(std::begin(kTargets), std::end(kTargets),
                                           [&folder](const Target& target) { return target.folder == folder; });
  return found != std::end(kTargets) ? found : nullptr;
}

// Xojo goes by the folder: what lies in the wrong one is never found.
void ExaminePlace(const std::string& file, const Target& target, Diagnosis& diagnosis) {
  for (const std::string_view architecture : target.architectures) {
    if (architecture.empty()) continue;
    const bool isThere = std::any_of(diagnosis.patients.begin(), diagnosis.patients.end(), [&](const Patient& patient) {
      return patient.file == file && patient.library.system == target.system &&
             patient.library.architecture == architecture;
    });
    if (!isThere)
      diagnosis.findings.push_back(
          {true, file + " is not for " + std::string(architecture) + ", as the name of its folder says"});
  }
}

}  // namespace

Machine ThisMachine() {
  utsname names{};
  ::uname(&names);
  const std::string_view machine = names.machine;
  const std::string architecture(machine == "x86_64" ? "x86-64" : machine == "aarch64" ? "arm64" : machine);
  return {System::Linux, architecture, VersionOf(::gnu_get_libc_version())};
}

Diagnosis DiagnosePackage(const std::vector<PackagedFile>& files, const std::vector<std::string>& unwanted) {
  Diagnosis diagnosis{true, {}, {}};
  for (const PackagedFile& file : files) {
    const std::filesystem::path path = file.path;
    if (path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end()) {
      diagnosis.findings.push_back({true, "its entry " + file.path + " leads out of the package"});
    } else if (const Target* const target = TargetOf(path); target == nullptr) {
      diagnosis.findings.push_back({false, "nobody looks at " + file.path});
    } else {
      ExamineFile(file.path, file.bytes, unwanted, diagnosis);
      ExaminePlace(file.path, *target, diagnosis);
    }
  }
  if (diagnosis.patients.empty()) diagnosis.findings.push_back({true, "it holds no library"});
  const auto isLater = [&files](const PackagedFile& file) { return file.time != files.front().time; };
  if (std::any_of(files.begin(), files.end(), isLater))
    diagnosis.findings.push_back({false, "its files have different times: no two builds are the same"});
  return diagnosis;
}

Diagnosis Diagnose(const std::string& path, const std::vector<std::string>& unwanted) {
  Diagnosis diagnosis;
  try {
    if (IsPackage(path)) return DiagnosePackage(ReadPackage(path), unwanted);
    ExamineFile(std::filesystem::path(path).filename(), ReadWholeFile(path), unwanted, diagnosis);
  } catch (const DamagedFile& damage) {
    diagnosis.findings.push_back({true, damage.what()});
  }
  return diagnosis;
}

}  // namespace doctor
