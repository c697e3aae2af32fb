// Tests the doctor's reports about packages, and which library of a package it finds for this machine.
#include <elf.h>

#include <algorithm>
#include <filesystem>

#include "tools/doctor/doctor_files.h"

namespace {

using namespace tests;

// xojo-host loads a library from a library file, a package, or an unpacked package.
TEST(Doctor, FindsTheLibraryToLoad) {
  const std::string sound = doctor::ReadWholeFile(ZKT_SOUND), arm = MacLibrary("arm64.dylib");
  const std::string package = Archive({{"ZKTUtil/LICENSE.txt", "", 0}, {kMacFile, arm, 0}, {kLinuxFile, sound, 0}});
  EXPECT_EQ(doctor::LoadablePlugin(ZKT_SOUND), ZKT_SOUND);
  EXPECT_EQ(doctor::ReadWholeFile(doctor::LoadablePlugin(package)), sound);
  const std::string folder = Folder() + "Unpacked.xojo_plugin", file = "Build Resources/Linux x86-64/ZKTUtil.so";
  std::filesystem::create_directories(std::filesystem::path(folder + '/' + file).parent_path());
  Saved("Unpacked.xojo_plugin/" + file, sound);
  EXPECT_EQ(doctor::LoadablePlugin(folder), folder + '/' + file);

  const struct {
    std::string path;
    const char* want;
  } cases[] = {
      {Saved("mac.dylib", Universal(arm, MacLibrary("x86_64.dylib"))),
       "it is for macOS on arm64, macOS on x86-64, but this machine is Linux on "},
      {Saved("other.so", With(sound, offsetof(Elf64_Ehdr, e_machine), 243)),
       "it is for Linux on machine 243, but this machine is Linux on "},
      {Archive({{kMacFile, arm, 0}}), "it is for macOS on arm64, but this machine"},
      {Archive({{"ZKTUtil/notes", sound, 0}}, "Notes.xojo_plugin"), "it is for no known system, but"},
      {Saved("text.so", "text"), "it is not a library for Linux or macOS"},
      {Folder() + "missing", "no such file"},
  };
  for (const auto& c : cases) {
    try {
      ADD_FAILURE() << c.path << " is loaded from " << doctor::LoadablePlugin(c.path);
    } catch (const std::runtime_error& error) {
      EXPECT_TRUE(std::string(error.what()).starts_with(c.path + ": " + c.want)) << error.what();
    }
  }
}

TEST(Doctor, ReportsProblemsOfPackages) {
  const std::string arm = MacLibrary("arm64.dylib"), sound = doctor::ReadWholeFile(ZKT_SOUND);
  const struct {
    const char* note;
    std::vector<PackagedFile> files;
    const char* want;
  } cases[] = {
      {"empty", {{"Test/", "", 0}}, "problem: it contains no library"},
      {"wrong system",
       {{kLinuxFile, arm, 0}},
       "Linux x86-64/ZKTUtil.so does not support x86-64, which its folder requires"},
      {"missing processor", {{kMacFile, arm, 0}}, "ZKTUtil.dylib does not support x86-64, which its folder requires"},
      {"unknown folder", {{"ZKTUtil/Build Resources/Mac/a.dylib", arm, 0}}, "note: Xojo ignores ZKTUtil/"},
      {"outside", {{"../Linux arm64/a.so", arm, 0}}, "problem: the path of its entry ../Linux arm64/a.so leaves"},
      {"absolute", {{"/Linux arm64/a.so", arm, 0}}, "problem: the path of its entry /Linux arm64/a.so leaves"},
      {"not a library", {{kLinuxFile, "text", 0}}, "Linux x86-64/ZKTUtil.so: it is not a library for"},
      {"license in a folder", {{"ZKTUtil/Build Resources/LICENSE.txt", "", 0}}, "note: Xojo ignores ZKTUtil/"},
      {"versions",
       {{kLinuxFile, sound, 0}, {"a/Mac arm64/a.dylib", With(arm, "1.2.3", "1.2.4"), 0}},
       "note: its libraries have different versions"},
      {"times",
       {{"a/b", "", 2'000'000'000}, {"a/c", "", 2'000'000'002}},
       "note: its files have different modification times"},
  };
  for (const auto& c : cases) {
    const std::string found = Inspected(Archive(c.files));
    EXPECT_NE(found.find(c.want), std::string::npos) << c.note << '\n' << found;
  }
}

TEST(Doctor, ReadsArchivesAndFolders) {
  const std::string name = "Test/Build Resources/Mac arm64/Test.dylib", arm = MacLibrary("arm64.dylib");
  const std::string path = Archive({{"Test/LICENSE.txt", "", 0}, {name, arm, 0}});
  EXPECT_EQ(Inspected(path), "");
  const std::string otherName = "note: its name does not end in .xojo_plugin\n";
  EXPECT_EQ(Inspected(Saved("archive", doctor::ReadWholeFile(path))), otherName);
  EXPECT_EQ(Inspected(path, {"libSystem"}), "note: " + name + " contains the string libSystem.B.dylib\n");
  const std::string whole = doctor::ReadWholeFile(path);
  EXPECT_EQ(Inspected(Saved("Test.xojo_plugin", With(whole, "libSystem", "libsystem"))),
            "problem: its entry " + name + " is damaged\n");
  for (const std::string& damaged : {whole.substr(0, whole.size() / 2), "text"s})
    EXPECT_EQ(Inspected(Saved("Test.xojo_plugin", damaged)), "problem: it is not a valid zip archive\n");

  const std::filesystem::path folder = Folder() + "Test.d";
  std::filesystem::create_directories((folder / name).parent_path());
  Saved("Test.d/" + name, arm.substr(0, 100));
  EXPECT_EQ(Inspected(folder), "problem: " + name + ": the file is truncated\nproblem: " + name +
                                   " does not support arm64, which its folder requires\n"
                                   "problem: it contains no library\n" +
                                   otherName);
}

TEST(Doctor, ComparesAPackageWithTheSupportedSystems) {
  const std::string arm = MacLibrary("arm64.dylib"), row = "| `" + kMacFile + "` | ";
  const auto compared = [&](const std::string& table, const std::string& name) {
    Report report = doctor::Inspect(Archive({{kMacFile, With(arm, "ZKTUtil", name), 0}}), {});
    report.libraries[0].findings.clear();
    report.findings.clear();
    doctor::CompareSupportedSystems(Saved("page.md", "# The package\n\n" + table), report);
    return InWords(report);
  };
  EXPECT_EQ(compared(row + "arm64 | macOS 11.0 | 1 MB |\n", "ZKTUtil"), "");
  EXPECT_EQ(compared(row + "arm64 | macOS 10.15 and newer | 1 MB |\n", "Utility"),
            "note: " + kMacFile + " for arm64 requires version 11.0, but the page states 10.15\nnote: " + kMacFile +
                " for arm64 has the unexpected name @rpath/Utility.dylib\n");
  EXPECT_EQ(
      compared(row + "x86-64 | macOS 10.13 |\n", "ZKTUtil"),
      "problem: " + kMacFile + " for x86-64 is missing\nnote: it contains libraries that the page does not list\n");
  EXPECT_EQ(compared("| `a/b.so` | arm64 | glibc 2.17 |\n" + row + "arm64 | macOS 11.0 |\n", "ZKTUtil"),
            "problem: a/b.so for arm64 is missing\n");
  EXPECT_THROW(compared("| Library | Processor |\n", "ZKTUtil"), std::runtime_error);

  // The table in docs/packaging.md has four rows: one for each combination of library and processor.
  Report empty;
  doctor::CompareSupportedSystems(ZKT_SUPPORTED_SYSTEMS, empty);
  EXPECT_EQ(std::ranges::count(empty.findings, true, &doctor::Finding::isProblem), 4) << InWords(empty);
}

}  // namespace
