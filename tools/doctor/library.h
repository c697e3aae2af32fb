// Describes a native library, as read from its file: the target system, dependencies and exports.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/advice.h"
#include "doctor/bytes.h"

namespace doctor {

struct Finding {
  bool isProblem;  // true if the plug-in fails on some system; false for a note
  std::string text;
  Advice advice;
};

struct Findings : std::vector<Finding> {
  void Problem(std::string text, const Advice& advice) { push_back({true, std::move(text), advice}); }
  void Note(std::string text, const Advice& advice) { push_back({false, std::move(text), advice}); }
  void ProblemIf(bool condition, std::string text, const Advice& advice) {
    if (condition) Problem(std::move(text), advice);
  }
  void NoteIf(bool condition, std::string text, const Advice& advice) {
    if (condition) Note(std::move(text), advice);
  }
};

// Joins the first `most` names, and counts the others.
std::string Listed(const std::vector<std::string>& names, std::size_t most = 5);

enum class System { Linux, MacOS };
enum class Signature { NotNeeded, Valid, Missing, Invalid };

// A library for one processor. A universal macOS file holds several libraries.
struct Library {
  std::string file;  // path, relative to the package if there is one
  System system = System::Linux;
  std::string architecture;  // "x86-64", "arm64", or another name
  std::uint64_t size = 0;
  std::string minimum = "0";         // oldest glibc or macOS version that the library runs with
  std::string name;                  // soname or install name
  std::string version;               // the string after the marker "@(#)"; may be empty
  std::string buildId;               // Linux: build id, macOS: UUID; hexadecimal digits, may be empty
  std::vector<std::string> needed;   // the libraries that it needs, as named in the file
  std::vector<std::string> exports;  // C names, sorted
  Signature signature = Signature::NotNeeded;
  Findings findings;
};

// The Linux machine that this program runs on.
struct Machine {
  std::string architecture;
  std::string libc;
};
Machine ThisMachine();

// Reads a Linux or macOS library. Throws DamagedFile if the file is damaged or not a library.
std::vector<Library> ReadLibraries(std::string_view file);

Library ReadElf(Bytes file);
std::vector<Library> ReadMachO(Bytes file);

// Returns the version string of a file: the printable characters after the marker "@(#)", which the `what`
// program looks for.
std::string FindVersion(std::string_view file);

std::string Hexadecimal(std::string_view bytes);

// Compares every page of a Mach-O library with its hash in the code signature, which follows the pages.
Signature CheckSignature(Bytes library, std::uint64_t offset, std::uint64_t size);

// Whether `version` is newer than `other`. Both are version numbers such as "2.17".
bool IsNewer(const std::string& version, const std::string& other);

// Adds the findings that do not depend on the package.
void CheckLibrary(Library& library);

}  // namespace doctor
