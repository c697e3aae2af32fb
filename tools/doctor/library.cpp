#include "doctor/library.h"

#include <dlfcn.h>
#include <elf.h>
#include <gnu/libc-version.h>
#include <sys/utsname.h>

#include <algorithm>

namespace doctor {

namespace {

const std::string kEntryPoint = "REALPluginMain";

// Every Linux system has these libraries, because they belong to the C library or the compiler's runtime.
const std::string_view kLinuxLibraries[] = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "libgcc_s.so.1"};

bool IsPartOfLinux(const std::string& name) {
  return std::ranges::count(kLinuxLibraries, name) != 0 || name.starts_with("ld-linux-");
}

bool IsPartOfMacOS(const std::string& path) {
  return path.starts_with("/usr/lib/") || path.starts_with("/System/Library/");
}

// Asks the loader to find the library, because the loader knows the search path. A name with a slash is a path that
// other machines may lack.
bool IsOnThisMachine(const std::string& name) {
  if (name.find('/') != std::string::npos) return false;
  void* const library = ::dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL);
  if (library != nullptr) ::dlclose(library);
  return library != nullptr;
}

}  // namespace

Machine ThisMachine() {
  utsname names{};
  ::uname(&names);
  const std::string machine = names.machine;
  return {machine == "x86_64" ? "x86-64" : machine == "aarch64" ? "arm64" : machine, ::gnu_get_libc_version()};
}

bool IsNewer(const std::string& version, const std::string& other) {
  return ::strverscmp(version.c_str(), other.c_str()) > 0;
}

std::vector<Library> ReadLibraries(std::string_view file) {
  if (file.starts_with(ELFMAG)) return {ReadElf(Bytes(file))};
  if (file.starts_with("\xCF\xFA\xED\xFE") || file.starts_with("\xCA\xFE\xBA\xBE")) return ReadMachO(Bytes(file));
  throw DamagedFile("it is not a library for Linux or macOS");
}

std::string FindVersion(std::string_view file) {
  constexpr std::string_view kMark = "@(#)";
  const std::size_t mark = file.find(kMark);
  if (mark == std::string_view::npos) return "";
  const std::string_view text = file.substr(mark + kMark.size());
  const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
  return std::string(text.begin(), std::ranges::find_if_not(text, isPrintable));
}

std::string Hexadecimal(std::string_view bytes) {
  std::string digits;
  for (const char byte : bytes)
    for (const int shift : {4, 0}) digits += "0123456789abcdef"[static_cast<unsigned char>(byte) >> shift & 0xF];
  return digits;
}

std::string Listed(const std::vector<std::string>& names, std::size_t most) {
  const std::size_t count = std::min(names.size(), most);
  std::string list;
  for (std::size_t i = 0; i < count; ++i) list += (i == 0 ? "" : ", ") + names[i];
  return count == names.size() ? list : list + " and " + std::to_string(names.size() - count) + " more";
}

void CheckLibrary(Library& library) {
  Findings& findings = library.findings;
  const Machine machine = ThisMachine();
  const bool isForMacOS = library.system == System::MacOS;
  const bool isForThisMachine = !isForMacOS && library.architecture == machine.architecture;
  std::vector<std::string> others = library.exports;
  std::erase(others, kEntryPoint);
  findings.NoteIf(!others.empty(), "it exports more than REALPluginMain: " + Listed(others), kExports);
  findings.ProblemIf(others.size() == library.exports.size(), "it does not export REALPluginMain", kNoEntryPoint);
  std::vector<std::string> foreign, missing,
      optional;  // needed libraries that macOS, this machine or some Linux systems lack, respectively
  for (const std::string& name : library.needed) {
    if (isForMacOS && !IsPartOfMacOS(name)) foreign.push_back(name);
    if (isForThisMachine && !IsOnThisMachine(name))
      missing.push_back(name);
    else if (!isForMacOS && !IsPartOfLinux(name))
      optional.push_back(name);
  }
  findings.ProblemIf(!foreign.empty(), "it needs libraries that are not part of macOS: " + Listed(foreign),
                     kNeedsLibrary);
  findings.ProblemIf(!missing.empty(), "it needs libraries that this machine lacks: " + Listed(missing), kNeedsLibrary);
  findings.NoteIf(!optional.empty(), "it needs libraries that some systems lack: " + Listed(optional), kNeedsLibrary);
  findings.ProblemIf(isForThisMachine && IsNewer(library.minimum, machine.libc),
                     "this machine's C library is too old: glibc " + machine.libc, kOldLibrary);
  findings.ProblemIf(library.signature == Signature::Invalid, "its signature does not match its content", kSignature);
  // Only Apple silicon requires a signature.
  const bool isUnsigned = library.signature == Signature::Missing;
  findings.ProblemIf(isUnsigned && library.architecture == "arm64", "it is not signed", kSignature);
  findings.NoteIf(isUnsigned && library.architecture != "arm64", "it is not signed", kSignature);
}

}  // namespace doctor
