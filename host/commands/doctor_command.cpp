// xojo-host doctor: says in words whether a plug-in package or library will load, where, and what ails it.
#include <iostream>

#include "commands/commands.h"
#include "doctor/diagnosis.h"

namespace host {

namespace {

using doctor::CodeSignature;
using doctor::Diagnosis;
using doctor::Finding;
using doctor::Library;
using doctor::Machine;
using doctor::Patient;
using doctor::System;

std::string Listed(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : ", ") + text;
  return list.empty() ? "nothing" : list;
}

std::string MinimumOf(const Library& library) {
  return (library.system == System::MacOS ? "macOS " : "glibc ") + ToText(library.minimum) + " or newer";
}

const char* InWords(CodeSignature signature) {
  switch (signature) {
    case CodeSignature::Intact:
      return "intact";
    case CodeSignature::Missing:
      return "none";
    case CodeSignature::Wrong:
      return "does not fit the content";
    default:
      return "";
  }
}

void Print(const std::vector<Finding>& findings) {
  for (const Finding& finding : findings)
    std::cout << (finding.isFault ? "  FAULT: " : "  note: ") << finding.text << '\n';
}

void Print(const Patient& patient) {
  const Library& library = patient.library;
  std::cout << patient.file << '\n'
            << "  made for   " << (library.system == System::MacOS ? "macOS on " : "Linux on ") << library.architecture
            << '\n'
            << "  runs with  " << MinimumOf(library) << '\n'
            << "  size       " << library.size << " bytes\n"
            << "  its name   " << library.name << '\n'
            << "  needs      " << Listed(library.needed) << '\n'
            << "  exports    " << Listed(library.exports) << '\n';
  if (library.signature != CodeSignature::NotNeeded) std::cout << "  signature  " << InWords(library.signature) << '\n';
  Print(patient.findings);
}

struct Count {
  std::size_t faults = 0;
  std::size_t notes = 0;
  void Add(const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) ++(finding.isFault ? faults : notes);
  }
};

}  // namespace

int RunDoctor(const DoctorOptions& options) {
  Diagnosis diagnosis = doctor::Diagnose(options.file, options.unwanted);
  if (options.isStrict) {
    for (Finding& finding : doctor::CheckPromises(diagnosis)) diagnosis.findings.push_back(std::move(finding));
  }
  Count count;
  for (const Patient& patient : diagnosis.patients) {
    Print(patient);
    count.Add(patient.findings);
  }
  std::cout << options.file << '\n';
  Print(diagnosis.findings);
  count.Add(diagnosis.findings);
  const Machine machine = doctor::ThisMachine();
  std::cout << "  " << count.faults << " faults, " << count.notes << " notes; this machine is Linux on "
            << machine.architecture << " with glibc " << ToText(machine.libc) << '\n';
  return count.faults == 0 && (!options.isStrict || count.notes == 0) ? 0 : 1;
}

}  // namespace host
