// xojo-host: loads a plug-in library as Xojo does, and runs, lists or tests its functions.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "commands/commands.h"
#include "core/files.h"
#include "core/host.h"
#include "doctor/doctor.h"
#include "services/crash_report.h"
#include "services/missing.h"
#include "services/plugin_library.h"
#include "version/version.h"

int main(int argumentCount, char** arguments) try {
  CLI::App app("Loads a plug-in library as Xojo does, and runs, lists or tests its functions.", "xojo-host");
  app.set_version_flag("--version", zkt::Version(), "Show the version of the plug-in and xojo-host");
  app.require_subcommand(1);
  app.fallthrough();  // options may also follow the command
  host::Host& host = host::Host::Current();
  std::string plugin = host::DefaultPlugin();
  std::vector<std::string> withheld;
  app.add_option("--plugin", plugin,
                 "Library, package or unpacked package to load (default: ZKTUtil.so next to xojo-host)");
  app.add_option("--host-version", host.version, "Xojo version to emulate; 2019.02 is 2019 release 2")
      ->capture_default_str();
  app.add_option("--withhold", withheld, "Host services to withhold, by name");
  app.add_flag("--trap-missing", host::gMissing.areTrapped,
               "Name a missing service when it is called; the plug-in cannot detect that it is missing");

  host::SplitOptions split;
  CLI::App* const splitCommand = app.add_subcommand("split", "Split a file of separated values and show its records");
  splitCommand->add_option("file", split.file, "File to split")->required()->check(CLI::ExistingFile);
  splitCommand->add_option("--delimiter", split.delimiter, "Delimiter (default: detected)");
  splitCommand->add_option("--quote", split.quote, "Quote character (default: the double quote)");
  splitCommand->add_option("--records", split.records, "Number of records to show")->capture_default_str();
  splitCommand->add_flag("--fields", split.showFields, "Show each field on its own line instead of a table");

  std::string script;
  CLI::App* const runCommand = app.add_subcommand("run", "Run a script of Xojo code");
  runCommand->add_option("file", script, "Script to run")->required()->check(CLI::ExistingFile);
  bool show = false;
  runCommand->add_flag("--show", show, "Print each line of code before its output");
  const CLI::App* const servicesCommand = app.add_subcommand(
      "services", "List the services of this host, and the missing services that the plug-in requests");
  const CLI::App* const replCommand = app.add_subcommand("repl", "Run Xojo code line by line");

  std::vector<double> otherVersions;
  CLI::App* const catalogueCommand = app.add_subcommand("catalogue", "List the plug-in's declarations");
  catalogueCommand->add_option(
      "--compare", otherVersions,
      "Also show the differences for these host versions (0: a host that does not report its version)");

  bool update = false;
  std::vector<std::string> pages;
  CLI::App* const examplesCommand = app.add_subcommand("examples", "Check the examples in documentation pages");
  examplesCommand->add_option("pages", pages, "Pages to check")->required()->check(CLI::ExistingFile);
  examplesCommand->add_flag("--update", update, "Write the output of the examples into the pages");
  host::DoctorOptions doctor;
  CLI::App* const doctorCommand =
      app.add_subcommand("doctor", "Report which systems a plug-in package or library supports, and any problems");
  doctorCommand->add_option("file", doctor.file, "Package, unpacked package, or library for Linux or macOS")
      ->required()
      ->check(CLI::ExistingPath);
  doctorCommand->add_flag("--strict", doctor.isStrict, "Also fail on notes");
  doctorCommand
      ->add_option("--supported-systems", doctor.supportedSystems,
                   "Markdown page with a table of the libraries that the package must contain")
      ->check(CLI::ExistingFile);
  doctorCommand->add_option("--unwanted", doctor.unwanted, "Strings that must not occur in a library")->expected(1);

  CLI::App* const stressCommand = app.add_subcommand("stress", "Look for crashes, leaks and hangs in the plug-in");
  stressCommand->set_help_flag();
  stressCommand->fallthrough(false)->prefix_command();  // xojo-stress parses the options

  CLI11_PARSE(app, argumentCount, arguments);
  host.withheld.insert(withheld.begin(), withheld.end());
  if (*doctorCommand) return host::RunDoctor(doctor);
  if (*stressCommand) return host::RunStress(*arguments, plugin, stressCommand->remaining());
  // If ZKTUtil is not next to this program, code that needs no plug-in can still run.
  const bool hasPlugin = plugin != host::DefaultPlugin() || std::filesystem::exists(plugin);
  plugin = hasPlugin ? doctor::LoadablePlugin(plugin) : "";
  host::ReportCrashes();
  if (*runCommand) return host::RunScript(plugin, script, host::ReadFile(script), show, std::cerr);
  if (*replCommand) return host::RunRepl(plugin);
  if (*servicesCommand) return host::RunServices(plugin);
  if (*examplesCommand) return host::RunExamples(plugin, pages, update);
  if (plugin.empty()) throw std::runtime_error("no plug-in to load; name one with --plugin FILE");
  if (*catalogueCommand) return host::RunCatalogue(plugin, otherVersions);
  return host::RunSplit(plugin, split);
} catch (const std::exception& error) {
  std::cerr << "xojo-host: " << error.what() << '\n';
  return 1;
}
