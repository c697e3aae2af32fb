// Tests the doctor's reports about good, careless, damaged, and unrelated files.
#include "doctor/doctor.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <random>

#include "doctor/package.h"

namespace {

using doctor::PackagedFile;
using doctor::Report;
using namespace std::literals;

const std::string kLinuxFile = "ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so";
const std::string kMacFile = "ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib";

std::string Careless() { return doctor::ReadWholeFile(ZKT_CARELESS); }
std::string MacLibrary(const std::string& name) { return doctor::ReadWholeFile(ZKT_MAC_LIBRARIES + name); }

// Returns a universal macOS file that contains libraries for two processors.
std::string Universal(const std::string& arm, const std::string& intel) {
  std::string file;
  const auto append = [&file](std::initializer_list<std::size_t> numbers) {
    for (const std::size_t number : numbers)
      for (int shift = 24; shift >= 0; shift -= 8) file += static_cast<char>(number >> shift);
  };
  append({0xCAFEBABE, 2, 0x0100000C, 0, 48, arm.size(), 0, 0x01000007, 0, 48 + arm.size(), intel.size(), 0});
  return file + arm + intel;
}

std::string With(std::string bytes, std::string_view text, std::string_view other) {
  const std::size_t found = bytes.find(text);
  EXPECT_NE(found, std::string::npos) << text;
  return found != std::string::npos ? bytes.replace(found, other.size(), other) : bytes;
}

std::string With(std::string bytes, std::size_t offset, unsigned byte) {
  bytes[offset] = static_cast<char>(byte);
  return bytes;
}

// Replaces the load command that lists exports and other data with a command for the exports alone, as newer macOS
// linkers do.
std::string WithExportCommand(const std::string& bytes) {
  constexpr std::string_view kLoadingInfo("\x22\0\0\x80\x30\0\0\0", 8);
  const std::size_t command = bytes.find(kLoadingInfo);
  return With(bytes, kLoadingInfo, "\x33\0\0\x80\x30\0\0\0"s + bytes.substr(command + 40, 8));
}

// Returns the folder for the current test's files. Each test has its own folder, because ctest runs several tests at
// once.
std::string Folder() {
  const std::string folder =
      testing::TempDir() + "doctor_" + testing::UnitTest::GetInstance()->current_test_info()->name() + "/";
  std::filesystem::create_directories(folder);
  return folder;
}

std::string Saved(const std::string& name, const std::string& bytes) {
  const std::string path = Folder() + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// Writes a package of these files as a zip archive and returns its path.
std::string Archive(const std::vector<PackagedFile>& files, const std::string& name = "Test.xojo_plugin") {
  const std::string path = Folder() + name;
  std::filesystem::remove(path);
  zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE, nullptr);
  for (const PackagedFile& file : files) {
    zip_source_t* const source = zip_source_buffer(archive, file.bytes.data(), file.bytes.size(), 0);
    const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, file.path.c_str(), source, 0));
    zip_set_file_compression(archive, index, ZIP_CM_STORE, 0);
    zip_file_set_mtime(archive, index, file.time, 0);
  }
  EXPECT_EQ(zip_close(archive), 0);
  return path;
}

std::string InWords(const Report& report) {
  std::string text;
  const auto append = [&text](const doctor::Findings& findings) {
    for (const doctor::Finding& finding : findings)
      text += (finding.isProblem ? "problem: " : "note: ") + finding.text + '\n';
  };
  for (const doctor::Library& library : report.libraries) append(library.findings);
  append(report.findings);
  return text;
}

std::string Inspected(const std::string& path, const std::vector<std::string>& unwanted = {}) {
  return InWords(doctor::Inspect(path, unwanted));
}

TEST(Doctor, ReadsALinuxLibrary) {
  const Report report = doctor::Inspect(ZKT_PLUGIN, {});
  ASSERT_EQ(report.libraries.size(), 1u);
  const doctor::Library& library = report.libraries[0];
  EXPECT_EQ(library.system, doctor::System::Linux);
  EXPECT_EQ(library.architecture, doctor::ThisMachine().architecture);
  EXPECT_EQ(library.name, "ZKTUtil.so");
  EXPECT_EQ(library.exports, std::vector<std::string>{"REALPluginMain"});
  EXPECT_EQ(std::ranges::count(library.needed, "libc.so.6"), 1);
  // The library contains the names of the required symbol versions as text.
  const std::string bytes = doctor::ReadWholeFile(ZKT_PLUGIN);
  std::string newest = "2.0";
  for (std::size_t at = 0; (at = bytes.find("GLIBC_2.", at)) != std::string::npos; ++at) {
    const std::string version = bytes.substr(at + 6, bytes.find_first_not_of("0123456789.", at + 6) - at - 6);
    if (doctor::IsNewer(version, newest)) newest = version;
  }
  EXPECT_EQ(library.minimum, newest);
  EXPECT_TRUE(doctor::IsNewer("2.10", "2.9"));
  EXPECT_EQ(Inspected(ZKT_SOUND), "");
}

// The sound library is built with a fixed build ID, and the careless library is built without a build ID.
TEST(Doctor, ReadsVersionsAndBuildIds) {
  const doctor::Library sound = doctor::Inspect(ZKT_SOUND, {}).libraries.at(0);
  EXPECT_EQ(sound.version, "Test 1.2.3, commit 0123456789ab");
  EXPECT_EQ(sound.buildId, "0123456789abcdef0123456789abcdef01234567");
  const doctor::Library mac = doctor::Inspect(ZKT_MAC_LIBRARIES "arm64.dylib", {}).libraries.at(0);
  EXPECT_EQ(mac.version, sound.version);
  EXPECT_EQ(mac.buildId.size(), 32u);
  const doctor::Library careless = doctor::Inspect(ZKT_CARELESS, {}).libraries.at(0);
  EXPECT_EQ(careless.version + careless.buildId, "");
}

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

TEST(Doctor, ReadsAUniversalLibrary) {
  const std::string arm = MacLibrary("arm64.dylib");
  const Report report = doctor::Inspect(Saved("library", Universal(arm, MacLibrary("x86_64.dylib"))), {});
  EXPECT_EQ(InWords(report), "");
  ASSERT_EQ(report.libraries.size(), 2u);
  EXPECT_EQ(report.libraries[0].architecture + " " + report.libraries[0].minimum, "arm64 11.0");
  EXPECT_EQ(report.libraries[0].size, arm.size());
  EXPECT_EQ(report.libraries[1].architecture + " " + report.libraries[1].minimum, "x86-64 10.13");
  for (const doctor::Library& library : report.libraries) {
    EXPECT_EQ(library.name, "@rpath/ZKTUtil.dylib");
    EXPECT_EQ(library.exports, std::vector<std::string>{"REALPluginMain"});
    EXPECT_EQ(library.needed, std::vector<std::string>{"/usr/lib/libSystem.B.dylib"});
    EXPECT_EQ(library.signature, doctor::Signature::Valid);
  }
}

TEST(Doctor, ReportsCarelessLibraries) {
  const std::string exports =
      "note: it exports more than REALPluginMain: FunctionWithANameSoLongThatTheOffsetsAfterItInATableOfExports"
      "TakeMoreThanOneByteEachBecauseTheyAreAbove127, kBuiltAt\n";
  EXPECT_EQ(Inspected(ZKT_CARELESS),
            "note: it requires an executable stack\n"
            "note: its relocated tables stay writable after loading (no RELRO)\n"
            "note: it has its own search path for libraries (RUNPATH)\n"
            "note: its symbols are bound on the first call, not at load time (no BIND_NOW)\n" +
                exports + "note: careless.so contains the string /home/somebody/plugin.cpp\n");
  EXPECT_EQ(Inspected(ZKT_MAC_LIBRARIES "careless.dylib"),
            "note: its symbols are looked up in every library (flat namespace)\n"
            "note: it has its own search path for libraries (LC_RPATH)\n" +
                exports +
                "problem: it needs libraries that are not part of macOS: /opt/lib/libx.dylib\n"
                "note: it is not signed\n"
                "note: careless.dylib contains the string /home/somebody/plugin.cpp\n");
}

// The first version of glibc for this processor, and a later version with a name of the same length.
#if defined(__aarch64__)
constexpr const char* kFirstGlibc = "GLIBC_2.17";
constexpr const char* kLaterGlibc = "GLIBC_2.99";
#else
constexpr const char* kFirstGlibc = "GLIBC_2.2.5";
constexpr const char* kLaterGlibc = "GLIBC_2.999";
#endif

TEST(Doctor, ReportsProblemsOfLibraries) {
  const std::string careless = Careless(), arm = MacLibrary("arm64.dylib"), intel = MacLibrary("careless.dylib");
  const std::size_t trieLabel = arm.find("_REALPluginMain");
  const std::size_t firstSegment = sizeof(Elf64_Ehdr), directory = arm.find("\xFA\xDE\x0C\x02");
  const struct {
    const char* note;
    std::string bytes;
    const char* want;
  } cases[] = {
      {"empty", "", "problem: library: it is not a library for"},
      {"text", "Readme\nfirst", "problem: library: it is not a library for"},
      {"Java class", "\xCA\xFE\xBA\xBE\0\0\0\x34"s, "problem: library: it is not a library for"},
      {"program", With(careless, offsetof(Elf64_Ehdr, e_type), ET_EXEC), "problem: library: it is not a shared"},
      {"32 bits", With(careless, EI_CLASS, ELFCLASS32), "problem: library: it is not for a 64-bit"},
      {"older search path", With(careless, "\x1D\0\0\0\0\0\0\0"sv, "\x0F"), "note: it has its own search path"},
      {"writable code", With(careless, firstSegment + offsetof(Elf64_Phdr, p_flags), PF_R | PF_W | PF_X),
       "note: it has memory that is both writable and executable"},
      {"relocated code", With(careless, "\x1D\0\0\0\0\0\0\0"sv, "\x16"), "note: it has text relocations"},
      {"missing library", With(careless, "libc.so.6", "libx.so.6"),
       "problem: it needs libraries that this machine lacks: libx.so.6"},
      {"newer system", With(careless, kFirstGlibc, kLaterGlibc), "problem: this machine's C library is too old: glibc"},
      {"no entry point", With(careless, "REALPluginMain", "REALPluginMaim"), "problem: it does not export REALPlu"},
      {"macOS: no entry point", With(arm, trieLabel, '-'), "problem: it does not export REALPluginMain"},
      {"macOS: export command", With(WithExportCommand(intel), "kBuiltAt", "kBuiltIn"), "kBuiltIn\n"},
      {"macOS: endless exports", With(arm, trieLabel + 16, 0), "problem: library: its export table refers to itself"},
      {"macOS: weak library", With(intel, "\x0C\0\0\0\x30\0\0\0"sv, "\x18\0\0\x80"sv),
       "problem: it needs libraries that are not part of macOS: /opt/lib"},
      {"macOS: other library", With(intel, "\x0C\0\0\0\x30\0\0\0"sv, "\x1F\0\0\x80"sv),
       "problem: it needs libraries that are not part of macOS: /opt/lib"},
      {"macOS: not signed", With(arm, "\x1D\0\0\0\x10\0\0\0"sv, "\x7D"), "problem: it is not signed"},
      {"macOS: changed later", With(arm, "libSystem", "libsystem"), "problem: its signature does not match"},
      {"macOS: no signature", With(arm, "\xFA\xDE\x0C\xC0", "\xFA\xDE\x0C\xC1"), "problem: its signature does not"},
      {"macOS: hash", With(arm, arm.size() - 1, static_cast<unsigned char>(~arm.back())),
       "problem: its signature does not match"},
      {"macOS: code size", With(arm, directory + 35, 1), "problem: its signature does not match"},
      {"macOS: kind of hash", With(arm, directory + 37, 1), "problem: its signature does not match"},
      {"macOS: page size", With(arm, directory + 39, 0xFF), "problem: its signature does not match"},
      {"macOS: identity", With(arm, "\x1B\0\0\0\x18\0\0\0"sv, "\x7B"), "note: it has no UUID"},
      {"macOS: other version", With(arm, "Test 1.2.3", "Test 1.2.4"), "note: its current version is 1.2.3, but its"},
      {"macOS: program", With(arm, 12, 2), "problem: library: it is not a dynamic library"},
      {"macOS: 32 bits", With(Universal(arm, intel), 48, 0xCE), "problem: library: it is not for a 64-bit"},
      {"macOS: second truncated", Universal(arm, intel).substr(0, arm.size() + 100),
       "problem: library: the file is tr"},
  };
  for (const auto& c : cases) {
    const std::string found = Inspected(Saved("library", c.bytes));
    EXPECT_NE(found.find(c.want), std::string::npos) << c.note << '\n' << found;
  }
}

// Every truncation is reported, and nothing is read past the end of the file.
TEST(Doctor, ReportsEveryTruncation) {
  const std::string linux = Careless();
  const doctor::Bytes file(linux);
  const auto header = file.Read<Elf64_Ehdr>(0);
  // The system does not load the bytes after the segments, so they may be missing.
  std::size_t loaded = 0;
  for (const auto& segment : file.ReadAll<Elf64_Phdr>(header.e_phoff, header.e_phnum))
    if (segment.p_type == PT_LOAD) loaded = std::max(loaded, segment.p_offset + segment.p_filesz);
  EXPECT_NO_THROW(doctor::ReadLibraries(linux.substr(0, loaded)));
  for (const std::string& whole : {linux.substr(0, loaded), MacLibrary("x86_64.dylib"), MacLibrary("careless.dylib")})
    for (std::size_t size = 0; size < whole.size(); ++size)
      ASSERT_THROW(doctor::ReadLibraries(std::string_view(whole).substr(0, size)), doctor::DamagedFile) << size;
}

TEST(Doctor, SurvivesAnyBytes) {
  std::mt19937 random(20261121);
  const std::string intel = MacLibrary("x86_64.dylib");
  for (const std::string& whole : {Careless(), Universal(intel, MacLibrary("careless.dylib"))}) {
    for (int i = 0; i < 3000; ++i) {
      std::string bytes = whole;
      // The code is in the middle of the file. The data that the doctor reads is at both ends.
      for (int change = 0; change < 4; ++change) {
        const std::size_t distance = random() % 2000;
        bytes[random() % 2 == 0 ? distance : bytes.size() - 1 - distance] = static_cast<char>(random());
      }
      try {
        doctor::ReadLibraries(bytes);
      } catch (const doctor::DamagedFile&) {
      }
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
