// Checks that the Xojo projects are complete and contain the code and the expected output of the example scripts.
#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

#include "project_reader.h"

namespace {

using namespace reader;
namespace fs = std::filesystem;

const std::string kExamples = ZKT_EXAMPLES;

std::string PathOf(const std::string& project, const std::string& file) {
  return kExamples + "/xojo/" + project + "/" + file;
}

// For each kind of item, the line that must occur once in the item's file, without the item's name at the end of the
// line.
const std::map<std::string, std::string> kHeaders = {{"Class", "Protected Class "},
                                                     {"Module", "Protected Module "},
                                                     {"DesktopWindow", "Begin DesktopWindow "},
                                                     {"MenuBar", "Begin Menu "},
                                                     {"BuildSteps", ""}};

// Returns the scripts for desktop projects or for console projects. Scripts that draw need a desktop project, which has
// windows.
std::vector<std::string> Scripts(bool forDesktop) {
  std::vector<std::string> scripts;
  for (const auto& entry : fs::directory_iterator(kExamples + "/scripts"))
    if (entry.path().extension() == ".xojo") scripts.push_back(entry.path());
  scripts.push_back(kExamples + "/tour.xojo");
  std::erase_if(scripts, [&](const std::string& script) {
    return host::ReadFile(script).find("As Graphics") != std::string::npos ? !forDesktop : forDesktop;
  });
  return scripts;
}

// Converts a script's path to a name in camel case: scripts/crash_safe_call.xojo becomes CrashSafeCall.
std::string NameOf(const std::string& script) {
  std::string name;
  std::istringstream words(fs::path(script).stem().string());
  for (std::string word; std::getline(words, word, '_'); name += word) word[0] = static_cast<char>(word[0] - 'a' + 'A');
  return name;
}

Lines WithoutEmpty(Lines lines) {
  std::erase(lines, "");
  return lines;
}

// The lines of each method of a script, by declaration. The lines at the top level have an empty declaration.
using Parts = std::map<std::string, Lines>;

Parts ReadScript(const std::string& path) {
  Parts parts;
  std::string method;
  for (const std::string& line : ReadLines(path)) {
    const bool isEnd = line.starts_with("End Sub") || line.starts_with("End Function");
    if (line.starts_with("Sub ") || line.starts_with("Function ")) {
      parts[method = line];
    } else if (!isEnd && !line.empty()) {
      parts[method].push_back(method.empty() ? line : line.substr(2));
    }
    if (isEnd) method.clear();
  }
  return parts;
}

// Reads the parts of an item. The item's Run method or its event corresponds to the top level of a script.
Parts ReadItem(const std::string& path) {
  Parts parts;
  for (const Member& member : ReadMembers(path)) {
    std::string declaration = std::regex_replace(member.declaration, std::regex("^(Protected|Private) "), "");
    if (declaration == "Sub Run()" || member.tag == "#tag Event") declaration.clear();
    EXPECT_FALSE(parts.contains(declaration)) << path << ": " << declaration;
    parts[declaration] = WithoutEmpty(member.body);
  }
  return parts;
}

std::string Replaced(const std::string& text, const char* word, const char* replacement) {
  return std::regex_replace(text, std::regex(std::string("\\b") + word + "\\b"), replacement);
}

TEST(XojoProjects, AreComplete) {
  for (const char* name : {"Examples", "RotatedText", "SelfCheck"}) {
    SCOPED_TRACE(name);
    const Project project = ReadProject(PathOf(name, name + std::string(".xojo_project")));
    std::set<std::string> ids, listed{name + std::string(".xojo_project"), name + std::string(".xojo_resources")},
        present;
    for (const Item& item : project.items) {
      SCOPED_TRACE(item.name);
      EXPECT_TRUE(std::regex_match(item.id, std::regex("&h[0-9A-F]{16}"))) << item.id;
      EXPECT_TRUE(ids.insert(item.id).second) << item.id;
      EXPECT_EQ(item.parent, "&h0000000000000000");
      listed.insert(item.path);
      const Lines lines = ReadLines(PathOf(name, item.path));
      const std::string header = kHeaders.at(item.kind);
      EXPECT_TRUE(header.empty() || std::ranges::count(lines, header + item.name) == 1) << header << item.name;
      for (const std::string& line : lines) EXPECT_FALSE(std::regex_search(line, std::regex("@[A-Z]+@"))) << line;
      ReadMembers(PathOf(name, item.path));
    }
    for (const auto& entry : fs::directory_iterator(PathOf(name, ""))) present.insert(entry.path().filename());
    EXPECT_EQ(listed, present);

    const auto& settings = project.settings;
    const bool isDesktop = settings.at("Type") == "Desktop";
    EXPECT_EQ(settings.at("AppIcon"), name + std::string(".xojo_resources;&h0"));
    EXPECT_EQ(host::ReadFile(PathOf(name, name + std::string(".xojo_resources"))),
              std::string("ICNS\0\0\0\x8\0\0\0\0", 12));
    for (const auto& setting : {std::pair{"DefaultWindow", "DesktopWindow"}, std::pair{"AppMenuBar", "MenuBar"}}) {
      ASSERT_EQ(settings.contains(setting.first), isDesktop) << setting.first;
      const auto isNamed = [&](const Item& item) {
        return isDesktop && item.kind == setting.second && item.name == settings.at(setting.first);
      };
      EXPECT_EQ(std::ranges::count_if(project.items, isNamed), isDesktop);
    }
  }
}

TEST(XojoProjects, HaveTheCodeOfTheScripts) {
  const std::vector<std::string> scripts = Scripts(false);
  EXPECT_GE(scripts.size(), 6u);
  for (const std::string& script : scripts) {
    SCOPED_TRACE(script);
    const Parts wanted = ReadScript(script);
    const std::string file = NameOf(script) + "Example.xojo_code";
    EXPECT_EQ(ReadItem(PathOf("Examples", file)), wanted);
    // Instead of Print and ConsoleExecuteZKT, the self-check calls methods that collect the output.
    Parts collecting = ReadItem(PathOf("SelfCheck", file));
    for (auto& [declaration, lines] : collecting) {
      for (std::string& line : lines) {
        const std::string code = std::regex_replace(line, std::regex("\"[^\"]*\"|'.*"), "");
        EXPECT_FALSE(std::regex_search(code, std::regex("\\b(Print|ConsoleExecuteZKT)\\b", std::regex::icase))) << line;
        line = Replaced(Replaced(line, "Collect", "Print"), "StartAndCollect", "ConsoleExecuteZKT");
      }
    }
    EXPECT_EQ(collecting, wanted);
  }
}

TEST(XojoProjects, DrawInTheWindowWhatTheScriptDraws) {
  const std::vector<std::string> scripts = Scripts(true);
  ASSERT_EQ(scripts.size(), 1u);
  Parts wanted = ReadScript(scripts.front());
  // The script creates a picture before drawing and saves it afterward. The project draws in the window instead.
  Lines& lines = wanted[""];
  const auto makesPicture = std::ranges::find(lines, "Var g As Graphics = sheet.Graphics");
  ASSERT_NE(makesPicture, lines.end());
  for (auto line = lines.begin(); line != makesPicture; ++line)
    EXPECT_TRUE(line->starts_with("' ") || line->starts_with("Var sheet ")) << *line;
  lines.erase(lines.begin(), makesPicture + 1);
  std::erase_if(lines, [](const std::string& line) {
    return line.starts_with("Var file ") || line.starts_with("sheet.Save(") || line.starts_with("MessageBox(");
  });
  EXPECT_EQ(ReadItem(PathOf("RotatedText", "MainWindow.xojo_window")), wanted);
}

TEST(XojoProjects, RunAndCompareEveryExample) {
  Lines runs, checks;
  Parts wantedChecks;
  for (const std::string& script : Scripts(false)) {
    const std::string name = NameOf(script);
    runs.push_back(name + "Example.Run");
    checks.push_back("Checks.Check" + name);
    Lines& check = wantedChecks["Sub Check" + name + "()"] = {"Var expected() As String"};
    for (const std::string& line : ReadLines(fs::path(script).replace_extension(".txt")))
      check.push_back("expected.Add(\"" + std::regex_replace(line, std::regex("\""), "\"\"") + "\")");
    for (const std::string& line :
         {std::string("Try"), "  " + name + "Example.Run", std::string("Catch e As RuntimeException"),
          std::string("  Collect \"stopped by an exception: \" + e.Message"), std::string("End Try"),
          "CompareOutput(\"" + fs::path(script).filename().string() + "\", expected)"})
      check.push_back(line);
  }
  EXPECT_EQ(ReadItem(PathOf("SelfCheck", "Checks.xojo_code")), wantedChecks);
  // The tour must run last, because it changes counters that another example prints.
  for (const auto& [project, calls, last] :
       {std::tuple{"Examples", &runs, "TourExample.Run"}, std::tuple{"SelfCheck", &checks, "Checks.CheckTour"}}) {
    Lines found = ReadItem(PathOf(project, "App.xojo_code"))[""];
    std::erase_if(found, [](const std::string& line) { return line.starts_with("' ") || line.starts_with("Return "); });
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.back(), last);
    std::ranges::sort(found);
    std::ranges::sort(*calls);
    EXPECT_EQ(found, *calls) << project;
  }
}

}  // namespace
