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

// Runs a script of Xojo code. With `show`, prints each line of code before its output. Writes error messages, with the
// file name, to `errors`.
int RunScript(const std::string& plugin, const std::string& file, const std::string& script, bool show,
              std::ostream& errors);

// Runs Xojo code line by line as it is typed. RunScript and RunRepl work without a plug-in if `plugin` is empty.
int RunRepl(const std::string& plugin);

// Prints what the plug-in declares to a host of the selected version, and what it declares differently to other host
// versions. Version 0 means a host that does not report its version.
int RunCatalogue(const std::string& plugin, const std::vector<double>& otherVersions);

// Runs the code examples in documentation pages and compares their output with the output that the pages show. With
// `update`, writes the actual output to the pages.
int RunExamples(const std::string& plugin, const std::vector<std::string>& files, bool update);

// Replaces this process with xojo-stress and passes on the arguments that follow `stress`. `name` is the command that
// started this program.
int RunStress(const std::string& name, const std::string& plugin, const std::vector<std::string>& arguments);

// Lists the services that the host offers and the missing services that the plug-in requests while it loads. Loads no
// plug-in if `plugin` is empty. Returns 1 if services are missing.
int RunServices(const std::string& plugin);

// Splits a file of separated values and shows its records.
int RunSplit(const std::string& plugin, const SplitOptions& options);

// Inspects a plug-in package or library without loading it. Returns 1 if there are problems or, with `isStrict`, notes.
int RunDoctor(const DoctorOptions& options);

}  // namespace host
