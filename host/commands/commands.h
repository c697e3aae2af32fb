// The commands of xojo-host. Each gives the exit status of the program.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace host {

struct SplitOptions {
  std::string file;
  std::string delimiter;
  std::string quote;
  std::size_t records = 5;
  bool showFields = false;
};

struct DoctorOptions {
  std::string file;
  std::vector<std::string> unwanted;
  std::string promises;
  bool isStrict = false;
};

// Runs a script of Xojo code; `show` prints each line before what it prints. What is wrong with it goes to `errors`.
int RunScript(const std::string& plugin, const std::string& script, bool show, std::ostream& errors);

// Runs Xojo code line by line as it is typed.
int RunRepl(const std::string& plugin);

// Prints what the plug-in declares to a host of the version that was chosen, and what differs on hosts of other
// versions (0: a host that does not tell its version).
int RunCatalogue(const std::string& plugin, const std::vector<double>& otherVersions);

// Runs the code in pages of the documentation and compares what it prints with what they show. Updating writes it
// there.
int RunExamples(const std::string& plugin, const std::vector<std::string>& files, bool update);

// Starts the stress checks, a program of its own next to this one. The arguments that follow `stress` are theirs.
int RunStress(const std::string& plugin, const std::vector<std::string>& arguments);

// Splits a file of separated values and shows its records.
int RunSplit(const std::string& plugin, const SplitOptions& options);

// Inspects a plug-in package or library without loading it. Returns 1 if it has problems.
int RunDoctor(const DoctorOptions& options);

}  // namespace host
