#include "doctor/library.h"

#include <dlfcn.h>
#include <gnu/libc-version.h>
#include <sys/utsname.h>

#include <algorithm>

#include "doctor/doctor.h"

namespace doctor {

namespace {

const std::string kEntryPoint = "REALPluginMain";

// Libraries on every Linux system, because they belong to the C library and the compiler.
const std::string_view kLinuxLibraries[] = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "libgcc_s.so.1"};

bool IsPartOfLinux(const std::string& name) {
  return std::ranges::count(kLinuxLibraries, name) != 0 || name.starts_with("ld-linux-");
}

bool IsPartOfMacOS(const std::string& path) {
  return path.starts_with("/usr/lib/") || path.starts_with("/System/Library/");
}

// Asks the loader, which knows the search path. A name with a slash is a path, which another machine may not have.
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
  if (file.starts_with("\x7F"
                       "ELF"))
    return {ReadElf(Bytes(file))};
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

void CheckLibrary(Library& library) {
  Findings& findings = library.findings;
  const Machine machine = ThisMachine();
  const bool isForMacOS = library.system == System::MacOS;
  const bool isForThisMachine = !isForMacOS && library.architecture == machine.architecture;
  for (const std::string& name : library.exports)
    findings.NoteIf(name != kEntryPoint, "it exports " + name + ", which can clash with a symbol of another library");
  findings.ProblemIf(std::ranges::count(library.exports, kEntryPoint) == 0,
                     "it does not export REALPluginMain: Xojo does not recognize it as a plug-in");
  for (const std::string& name : library.needed) {
    const bool isMissing = isForThisMachine && !IsOnThisMachine(name);
    findings.ProblemIf(isForMacOS && !IsPartOfMacOS(name), "it needs " + name + ", which is not part of macOS");
    findings.ProblemIf(isMissing, "it needs " + name + ", which this machine does not have");
    findings.NoteIf(!isForMacOS && !isMissing && !IsPartOfLinux(name),
                    "it needs " + name + ", which some systems do not have");
  }
  findings.ProblemIf(isForThisMachine && IsNewer(library.minimum, machine.libc),
                     "this machine's C library is too old: glibc " + machine.libc);
  findings.ProblemIf(library.signature == Signature::Invalid,
                     "its signature does not match its content: macOS will reject it");
  // Only Apple silicon requires a signature.
  const bool isUnsigned = library.signature == Signature::Missing;
  findings.ProblemIf(isUnsigned && library.architecture == "arm64", "it is not signed: macOS will reject it");
  findings.NoteIf(isUnsigned && library.architecture != "arm64", "it is not signed");
}

}  // namespace doctor
