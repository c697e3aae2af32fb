// xojo-host doctor: reports which systems a plug-in package or library supports, and any problems.
#include "doctor/doctor.h"

#include <iostream>

#include "commands/commands.h"

namespace host {

namespace {

constexpr const char* kSignatures[] = {"not needed", "valid", "none", "does not match the content"};

std::string Listed(const std::vector<std::string>& names, std::size_t most) {
  return names.empty() ? "nothing" : doctor::Listed(names, most);
}

struct Count {
  std::size_t problems = 0;
  std::size_t notes = 0;
};

void Print(const doctor::Findings& findings, Count& count) {
  for (const doctor::Finding& finding : findings) {
    ++(finding.isProblem ? count.problems : count.notes);
    std::cout << (finding.isProblem ? "  problem: " : "  note: ") << finding.text << '\n'
              << "    meaning  " << finding.advice.meaning << "\n    remedy   " << finding.advice.remedy << '\n';
  }
}

void Print(const doctor::Library& library, Count& count) {
  const bool isForMacOS = library.system == doctor::System::MacOS;
  std::cout << library.file << '\n'
            << "  system     " << (isForMacOS ? "macOS" : "Linux") << " on " << library.architecture << '\n'
            << "  requires   " << (isForMacOS ? "macOS " : "glibc ") << library.minimum << " or newer\n"
            << "  size       " << library.size << " bytes\n"
            << "  name       " << library.name << '\n'
            << "  version    " << (library.version.empty() ? "not given" : library.version) << '\n'
            << "  build id   " << (library.buildId.empty() ? "none" : library.buildId) << '\n'
            << "  needs      " << Listed(library.needed, library.needed.size()) << '\n'
            << "  exports    " << Listed(library.exports, 5) << '\n';
  if (isForMacOS) std::cout << "  signature  " << kSignatures[static_cast<int>(library.signature)] << '\n';
  Print(library.findings, count);
}

}  // namespace

int RunDoctor(const DoctorOptions& options) {
  doctor::Report report = doctor::Inspect(options.file, options.unwanted);
  if (!options.supportedSystems.empty()) doctor::CompareSupportedSystems(options.supportedSystems, report);
  Count count;
  for (const doctor::Library& library : report.libraries) Print(library, count);
  std::cout << options.file << '\n';
  Print(report.findings, count);
  const doctor::Machine machine = doctor::ThisMachine();
  std::cout << "  " << count.problems << " problems, " << count.notes << " notes; this machine is Linux on "
            << machine.architecture << " with glibc " << machine.libc << '\n';
  return count.problems == 0 && (!options.isStrict || count.notes == 0) ? 0 : 1;
}

}  // namespace host
