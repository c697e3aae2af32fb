#include "projects.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <utility>

#include "core/files.h"
#include "members.h"

namespace projects {

namespace {

using Replacements = std::vector<std::pair<std::string, std::string>>;

struct Kind {
  const char* type;
  const char* oldestVersion;  // of the IDE
  const char* flags;          // the systems to build for
  const char* defaults;
  const char* display;
};
constexpr Kind kConsole{"Console", "20070100", "&h4100", "", ""};
constexpr Kind kDesktop{"Desktop", "20210300", "&h4900", "DefaultWindow=MainWindow\nAppMenuBar=MainMenu\n",
                        "HiDPI=True\nDarkMode=True\n"};

std::string Replaced(std::string text, const Replacements& replacements) {
  for (const auto& [key, value] : replacements)
    for (std::size_t at = 0; (at = text.find(key, at)) != std::string::npos; at += value.size())
      text.replace(at, key.size(), value);
  return text;
}

// Returns an ID that depends only on the name: a hash (FNV-1a).
std::string IdOf(const std::string& name) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string id = "&h";
  for (int shift = 60; shift >= 0; shift -= 4) id += kDigits[hash >> shift & 15];
  return id;
}

std::string KindOf(const std::filesystem::path& file) {
  if (file.extension() == ".xojo_menu") return "MenuBar";
  if (file.extension() == ".xojo_window") return "DesktopWindow";
  if (file.stem() == "Build Automation") return "BuildSteps";
  return file.stem() == "App" ? "Class" : "Module";
}

// A project: its templates, which may contain placeholders, and the generated items.
class Project {
 public:
  Project(const std::string& name, const std::string& templates) : name_(name), common_(templates + "/common/") {
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(templates) / name))
      Add(entry.path().filename(), host::ReadFile(entry.path()));
    Add("Build Automation.xojo_code", host::ReadFile(common_ + "Build Automation.xojo_code"));
  }

  void Add(const std::string& file, const std::string& text) { items_[file] = text; }

  void WriteTo(Files& files, const Kind& kind, const Replacements& replacements) const {
    std::ostringstream itemLines;
    for (const auto& [file, text] : items_) {
      const std::string stem = std::filesystem::path(file).stem();
      itemLines << KindOf(file) << '=' << stem << ';' << file << ';' << IdOf(stem) << ";&h0000000000000000;false\n";
      files[name_ + "/" + file] = Replaced(text, replacements);
    }
    const std::string path = name_ + "/" + name_;
    files[path + ".xojo_project"] = Replaced(host::ReadFile(common_ + "project"), {{"@TYPE@", kind.type},
                                                                                   {"@OLDEST@", kind.oldestVersion},
                                                                                   {"@ITEMS@\n", itemLines.str()},
                                                                                   {"@DEFAULTS@\n", kind.defaults},
                                                                                   {"@FLAGS@", kind.flags},
                                                                                   {"@DISPLAY@\n", kind.display},
                                                                                   {"@NAME@", name_}});
    files[path + ".xojo_resources"] = std::string("ICNS\0\0\0\10\0\0\0\0", 12);  // no icon
  }

 private:
  std::string name_, common_;
  Files items_;  // sorted, so that the order does not depend on the file system
};

// Returns the ordinary scripts, followed by the tour. The tour comes last, because it changes process-wide counters
// that another script prints.
std::vector<Script> ReadScripts(const std::string& examples) {
  std::vector<Script> scripts;
  for (const auto& entry : std::filesystem::directory_iterator(examples + "/scripts"))
    if (entry.path().extension() == ".xojo") scripts.push_back(ReadScript(entry.path()));
  std::ranges::sort(scripts, {}, &Script::name);
  scripts.push_back(ReadScript(examples + "/tour.xojo"));
  return scripts;
}

// The suffix keeps names such as "Arrays" from colliding with Xojo classes and methods.
std::string ModuleNameOf(const Script& script) { return script.name + "Example"; }

std::vector<Lines> MethodsOf(const Script& script) {
  std::vector<Lines> methods = script.methods;
  Lines run = Deeper(script.statements);
  run.insert(run.begin(), "Sub Run()");
  run.push_back("End Sub");
  methods.insert(methods.begin(), run);
  return methods;
}

// Returns the source of a Xojo method that runs an example and compares its output with the expected output.
Lines CheckOf(const Script& script) {
  Lines lines{"Sub Check" + script.name + "()", "  Var expected() As String"};
  for (const std::string& line : script.expected)
    lines.push_back("  expected.Add(\"" + Replaced(line, {{"\"", "\"\""}}) + "\")");
  for (const char* line : {"  Try", "    @EXAMPLE@.Run", "  Catch e As RuntimeException",
                           "    Collect \"stopped by an exception: \" + e.Message", "  End Try",
                           "  CompareOutput(\"@FILE@\", expected)", "End Sub"})
    lines.push_back(Replaced(line, {{"@EXAMPLE@", ModuleNameOf(script)}, {"@FILE@", script.fileName}}));
  return lines;
}

// Returns the drawing statements for a Paint event, which provides g and needs no picture.
Lines DrawingOf(const Script& script) {
  const auto StartsWith = [](const char* text) { return [text](const std::string& s) { return s.starts_with(text); }; };
  const auto begin = std::ranges::find_if(script.statements, StartsWith("Var g As Graphics"));
  const auto end = std::ranges::find_if(script.statements, StartsWith("Var file As FolderItem"));
  if (begin >= end || end == script.statements.end())
    throw std::runtime_error(script.fileName +
                             ": expected a line that declares g, and after it one that declares file");
  return {begin + 1, end};
}

}  // namespace

Files MakeProjects(const std::string& examples, const std::string& templates) {
  Files files;
  Project console("Examples", templates), selfCheck("SelfCheck", templates), window("RotatedText", templates);
  Lines runs, checks;
  std::vector<Lines> checkMethods;
  for (const Script& script : ReadScripts(examples)) {
    if (script.isForDesktop) {
      window.WriteTo(
          files, kDesktop,
          {{"@PAINT@\n", Indented(Deeper(DrawingOf(script)))}, {"@METHODS@\n", Methods(script.methods, kPrivate)}});
      continue;
    }
    const std::string name = ModuleNameOf(script);
    std::vector<Lines> methods = MethodsOf(script);
    console.Add(name + ".xojo_code", Module(name, methods));
    runs.push_back("  " + name + ".Run");
    for (Lines& lines : methods)
      lines = WithWord(WithWord(lines, "Print", "Collect"), "ConsoleExecuteZKT", "StartAndCollect");
    selfCheck.Add(name + ".xojo_code", Module(name, methods));
    checks.push_back("  Checks.Check" + script.name);
    checkMethods.push_back(CheckOf(script));
  }
  selfCheck.Add("Checks.xojo_code", Module("Checks", checkMethods));
  console.WriteTo(files, kConsole, {{"@CALLS@\n", Indented(runs)}});
  selfCheck.WriteTo(files, kConsole, {{"@CALLS@\n", Indented(checks)}});
  return files;
}

}  // namespace projects
