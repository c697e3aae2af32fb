// Describes a native library from its file: the system it is for, what it needs, what it exports.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/advice.h"
#include "doctor/bytes.h"

namespace doctor {

struct Finding {
  bool isProblem;  // the plug-in fails on some system; otherwise a note
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

// Joins the first names, and counts the others.
std::string Listed(const std::vector<std::string>& names, std::size_t most = 5);

enum class System { Linux, MacOS };
enum class Signature { NotNeeded, Valid, Missing, Invalid };

// A library for one processor. A universal file for macOS holds several.
struct Library {
  std::string file;  // path, relative to the package if there is one
  System system = System::Linux;
  std::string architecture;  // "x86-64", "arm64", or another name
  std::uint64_t size = 0;
  std::string minimum = "0";         // oldest version of glibc or macOS that it runs with
  std::string name;                  // soname or install name
  std::string version;               // the text after the mark "@(#)"; may be empty
  std::string buildId;               // Linux: build id, macOS: UUID; hexadecimal digits, may be empty
  std::vector<std::string> needed;   // by the names in the file
  std::vector<std::string> exports;  // sorted, with their names in C
  Signature signature = Signature::NotNeeded;
  Findings findings;
};

// Reads a library of either system. Throws DamagedFile if the file is damaged or not a library.
std::vector<Library> ReadLibraries(std::string_view file);

Library ReadElf(Bytes file);
std::vector<Library> ReadMachO(Bytes file);

// Returns the version text of a file: the printable characters after the mark "@(#)" that the program "what" looks for.
std::string FindVersion(std::string_view file);

std::string Hexadecimal(std::string_view bytes);

// Compares every page of a Mach-O library with its hash in the code signature, which follows the pages.
Signature CheckSignature(Bytes library, std::uint64_t offset, std::uint64_t size);

// Compares versions such as "2.17".
bool IsNewer(const std::string& version, const std::string& other);

// Adds the findings that apply to the library in any package.
void CheckLibrary(Library& library);

}  // namespace doctor
