// Tests the doctor's reports about good, careless, damaged, and unrelated files.
#include <elf.h>

#include <algorithm>
#include <random>

#include "tools/doctor/doctor_files.h"

namespace {

using namespace tests;

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

}  // namespace
