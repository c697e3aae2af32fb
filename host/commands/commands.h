// The commands of xojo-host. Each returns the exit status of the program.
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
  std::string supportedSystems;
  bool isStrict = false;
};

// Runs a script of Xojo code; `show` prints each line before what it prints. What is wrong with it goes to `errors`,
// with the file's name.
int RunScript(const std::string& plugin, const std::string& file, const std::string& script, bool show,
              std::ostream& errors);

// Runs Xojo code line by line as it is typed. Both work without a plug-in if its name is empty.
int RunRepl(const std::string& plugin);

// Prints what the plug-in declares to a host of the selected version, and what differs on hosts of other versions (0
// stands for a host that does not report its version).
int RunCatalogue(const std::string& plugin, const std::vector<double>& otherVersions);

// Runs the code examples in pages of the documentation and compares their output with the page. `update` writes the
// output to the page.
int RunExamples(const std::string& plugin, const std::vector<std::string>& files, bool update);

// Starts the stress checks, a separate program next to this one, with the arguments that follow `stress`. `name` is
// what the user typed to start this program.
int RunStress(const std::string& name, const std::string& plugin, const std::vector<std::string>& arguments);

// Lists the services that the host offers, and those that the plug-in requests in vain while it is loaded; no plug-in
// if the name is empty. Returns 1 if there are such requests.
int RunServices(const std::string& plugin);

// Splits a file of separated values and shows its records.
int RunSplit(const std::string& plugin, const SplitOptions& options);

// Inspects a plug-in package or library without loading it. Returns 1 if it has problems.
int RunDoctor(const DoctorOptions& options);

}  // namespace host
