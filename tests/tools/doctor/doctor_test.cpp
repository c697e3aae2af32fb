// What the doctor says of sound, careless, damaged and foreign files.
#include <elf.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "doctor/diagnosis.h"
#include "tools/doctor/macho_builder.h"

namespace {

using doctor::Diagnosis;
using doctor::PackagedFile;
using tests::MachO;

const std::string kLinuxFile = "ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so";
const std::string kLinuxArmFile = "ZKTUtil/Build Resources/Linux arm64/ZKTUtil.so";
const std::string kMacFile = "ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib";

std::string InWords(const std::vector<doctor::Finding>& findings) {
  std::string text;
  for (const doctor::Finding& finding : findings)
    text += (finding.isFault ? "FAULT: " : "note: ") + finding.text + '\n';
  return text;
}

std::string InWords(const Diagnosis& diagnosis) {
  std::string text;
  for (const doctor::Patient& patient : diagnosis.patients) text += InWords(patient.findings);
  return text + InWords(diagnosis.findings);
}

std::string Saved(const std::string& name, const std::string& bytes) {
  const std::string path = testing::TempDir() + name;
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::string Examine(const std::string& bytes) { return InWords(doctor::Diagnose(Saved("library", bytes), {})); }

// Another tag for one entry of a Linux library's dynamic section.
std::string WithTag(std::string bytes, std::int64_t from, std::int64_t to) {
  Elf64_Ehdr head;
  std::memcpy(&head, bytes.data(), sizeof(head));
  for (unsigned i = 0; i < head.e_phnum; ++i) {
    Elf64_Phdr segment;
    std::memcpy(&segment, &bytes[head.e_phoff + i * sizeof(segment)], sizeof(segment));
    if (segment.p_type != PT_DYNAMIC) continue;
    for (std::size_t at = segment.p_offset; at < segment.p_offset + segment.p_filesz; at += sizeof(Elf64_Dyn))
      if (std::memcmp(&bytes[at], &from, sizeof(from)) == 0) {
        std::memcpy(&bytes[at], &to, sizeof(to));
        return bytes;
      }
  }
  ADD_FAILURE() << "no such tag";
  return bytes;
}

std::string With(std::string bytes, std::string_view text, std::string_view other) {
  const std::size_t found = bytes.find(text);
  EXPECT_NE(found, std::string::npos) << text;
  return found != std::string::npos ? bytes.replace(found, text.size(), other) : bytes;
}

std::string With(std::string bytes, std::size_t offset, char byte) {
  bytes[offset] = byte;
  return bytes;
}

TEST(Doctor, TellsWhatALinuxLibraryIs) {
  const Diagnosis diagnosis = doctor::Diagnose(ZKT_PLUGIN, {});
  ASSERT_EQ(diagnosis.patients.size(), 1u);
  const doctor::Library& library = diagnosis.patients[0].library;
  EXPECT_EQ(library.system, doctor::System::Linux);
  EXPECT_EQ(library.architecture, doctor::ThisMachine().architecture);
  EXPECT_EQ(library.name, "ZKTUtil.so");
  EXPECT_EQ(library.exports, std::vector<std::string>{"REALPluginMain"});
  EXPECT_NE(std::find(library.needed.begin(), library.needed.end(), "libc.so.6"), library.needed.end());
  EXPECT_GT(library.minimum, (doctor::Version{2, 2}));
  EXPECT_LE(library.minimum, doctor::ThisMachine().libc);
}

TEST(Doctor, TellsWhatAMacLibraryIs) {
  const std::string intel = MachO{.processor = 0x01000007, .minimum = 10 << 16 | 13 << 8}.Build();
  const Diagnosis diagnosis = doctor::Diagnose(Saved("library", tests::Universal(MachO{}.Build(), intel)), {});
  EXPECT_EQ(InWords(diagnosis), "");
  ASSERT_EQ(diagnosis.patients.size(), 2u);
  const doctor::Library& arm = diagnosis.patients[0].library;
  EXPECT_EQ(arm.architecture + " " + ToText(arm.minimum) + " " + arm.name, "arm64 11.0 @rpath/ZKTUtil.dylib");
  EXPECT_EQ(arm.exports, std::vector<std::string>{"REALPluginMain"});
  EXPECT_EQ(arm.needed, std::vector<std::string>{"/usr/lib/libSystem.B.dylib"});
  EXPECT_EQ(arm.signature, doctor::CodeSignature::Intact);
  EXPECT_EQ(arm.size, MachO{}.Build().size());
  EXPECT_EQ(diagnosis.patients[1].library.architecture, "x86-64");
  EXPECT_EQ(diagnosis.patients[1].library.minimum, (doctor::Version{10, 13}));
}

TEST(Doctor, FindsWhatAilsALibrary) {
  const std::string careless = doctor::ReadWholeFile(ZKT_CARELESS);
  const std::string mac = MachO{}.Build();
  const struct {
    const char* note;
    std::string bytes;
    const char* want;
  } cases[] = {
      {"nothing", "", "FAULT: library: this is no library"},
      {"a text", "Readme\nfirst", "FAULT: library: this is no library"},
      {"a program", With(careless, offsetof(Elf64_Ehdr, e_type), ET_EXEC),
       "FAULT: library: it is not a shared library"},
      {"32 bits", With(careless, EI_CLASS, ELFCLASS32), "FAULT: library: it is not for a 64-bit"},
      {"another export", careless, "note: it exports kBuiltAt"},
      {"stack", careless, "note: it asks for an executable stack"},
      {"tables", careless, "note: its tables stay writable"},
      {"binding", careless, "note: a missing symbol shows at its first call"},
      {"search path", careless, "note: it carries a search path"},
      {"the builder's folder", careless, "note: library holds the text /home/somebody/plugin.cpp"},
      {"code", WithTag(careless, DT_RUNPATH, DT_TEXTREL), "note: loading changes its code"},
      {"missing library", With(careless, "libc.so.6", "libx.so.6"), "FAULT: it needs libx.so.6"},
      {"newer system", With(careless, "GLIBC_2.2.5", "GLIBC_9.2.5"), "FAULT: this machine's C library is older"},
      {"no entry point", With(careless, "REALPluginMain", "REALPluginMaim"),
       "FAULT: it does not export REALPluginMain"},
      {"macOS: no entry point", MachO{.exports = {"_Main"}}.Build(), "FAULT: it does not export REALPluginMain"},
      {"macOS: two", MachO{.exports = {"_A", "_REALPluginMain"}}.Build(), "note: it exports A"},
      {"macOS: library", MachO{.needed = {"/opt/lib/libx.dylib"}}.Build(), "FAULT: it needs /opt/lib/libx.dylib"},
      {"macOS: not signed", MachO{.isSigned = false}.Build(), "FAULT: it is not signed"},
      {"macOS: Intel, not signed", MachO{.processor = 0x01000007, .isSigned = false}.Build(), "note: it is not signed"},
      {"macOS: changed later", With(mac, "libSystem", "libsystem"), "FAULT: its signature does not fit"},
      {"macOS: other directory", With(mac, mac.size() - 1, '?'), "FAULT: its signature does not fit"},
      {"macOS: flat", MachO{.flags = 0}.Build(), "note: its symbols are looked up in every library"},
      {"macOS: identity", MachO{.hasIdentity = false}.Build(), "note: it has no identity"},
      {"macOS: program", MachO{.fileType = 2}.Build(), "FAULT: library: it is not a dynamic library"},
      {"macOS: second cut off", tests::Universal(mac, mac).substr(0, mac.size() + 100),
       "FAULT: library: the file is cut"},
  };
  for (const auto& c : cases)
    EXPECT_NE(Examine(c.bytes).find(c.want), std::string::npos) << c.note << '\n' << Examine(c.bytes);
}

// What is cut off is noticed wherever it is, and nothing is read beyond the end.
TEST(Doctor, NoticesEveryCut) {
  const std::string linux = doctor::ReadWholeFile(ZKT_CARELESS);
  const std::string mac = MachO{}.Build();
  for (std::size_t size = 0; size < mac.size(); ++size)
    ASSERT_THROW(doctor::ReadLibraries(doctor::Bytes(std::string_view(mac).substr(0, size))), doctor::DamagedFile)
        << size;
  // Behind the dynamic section lies what loading needs not.
  for (std::size_t size = 0; size < 4096; ++size)
    ASSERT_THROW(doctor::ReadLibraries(doctor::Bytes(std::string_view(linux).substr(0, size))), doctor::DamagedFile)
        << size;
}

TEST(Doctor, LeavesAnExportTreeThatRefersToItself) {
  const std::string_view tree("\0\2a\0\0b\0\0", 8);
  EXPECT_THROW(doctor::ReadExportTree(doctor::Bytes(tree)), doctor::DamagedFile);
}

TEST(Doctor, SurvivesAnyBytes) {
  std::mt19937 random(20261121);
  for (const std::string& whole :
       {doctor::ReadWholeFile(ZKT_CARELESS), tests::Universal(MachO{}.Build(), MachO{}.Build())}) {
    for (int i = 0; i < 3000; ++i) {
      std::string bytes = whole;
      const std::size_t head = std::min<std::size_t>(bytes.size(), 3000);
      for (int change = 0; change < 4; ++change) bytes[random() % head] = static_cast<char>(random());
      try {
        doctor::ReadLibraries(doctor::Bytes(bytes));
      } catch (const doctor::DamagedFile&) {
      }
    }
  }
}

std::vector<PackagedFile> GoodPackage() {
  const std::string linux = doctor::ReadWholeFile(ZKT_PLUGIN);
  const std::string intel = MachO{.processor = 0x01000007, .minimum = 10 << 16 | 13 << 8}.Build();
  return {{kLinuxFile, linux, 0}, {kMacFile, tests::Universal(MachO{}.Build(), intel), 0}};
}

TEST(Doctor, LooksAtThePlacesInAPackage) {
  const std::string mac = MachO{}.Build();
  const struct {
    const char* note;
    std::vector<PackagedFile> files;
    const char* want;
  } cases[] = {
      {"empty", {}, "FAULT: it holds no library"},
      {"wrong system",
       {{kLinuxFile, mac, 0}},
       "FAULT: ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so is not for x86-64"},
      {"one processor lacks", {{kMacFile, mac, 0}}, "ZKTUtil.dylib is not for x86-64"},
      {"unknown folder", {{"ZKTUtil/Build Resources/Mac/a.dylib", mac, 0}}, "note: nobody looks at ZKTUtil/"},
      {"outside", {{"../Linux arm64/a.so", mac, 0}}, "FAULT: its entry ../Linux arm64/a.so leads out"},
      {"absolute", {{"/Linux arm64/a.so", mac, 0}}, "FAULT: its entry /Linux arm64/a.so leads out"},
      {"times", {{kMacFile, mac, 0}, {kMacFile, mac, 1}}, "note: its files have different times"},
  };
  for (const auto& c : cases) {
    const std::string found = InWords(doctor::DiagnosePackage(c.files, {}));
    EXPECT_NE(found.find(c.want), std::string::npos) << c.note << '\n' << found;
  }
}

TEST(Doctor, HoldsThePackageToWhatIsPromised) {
  const auto promises = [](const std::vector<PackagedFile>& files) {
    return InWords(doctor::CheckPromises(doctor::DiagnosePackage(files, {})));
  };
  EXPECT_NE(promises(GoodPackage()).find("FAULT: there is no " + kLinuxArmFile), std::string::npos);
  EXPECT_EQ(promises(GoodPackage()).find("Mac Universal"), std::string::npos);
  std::vector<PackagedFile> files = GoodPackage();
  files[1].bytes = tests::Universal(MachO{.minimum = 12 << 16}.Build(), MachO{.name = "x.dylib"}.Build());
  EXPECT_NE(promises(files).find("for arm64 needs 12.0, promised is 11.0"), std::string::npos) << promises(files);
  EXPECT_NE(promises(files).find("FAULT: there is no " + kMacFile + " for x86-64"), std::string::npos);
  files.push_back({"ZKTUtil/Build Resources/Mac arm64/ZKTUtil.dylib", MachO{}.Build(), 0});
  files.push_back(files.back());
  EXPECT_NE(promises(files).find("there are further libraries"), std::string::npos);
}

TEST(Doctor, ReadsZips) {
  const std::string path = testing::TempDir() + "Test.xojo_plugin";
  std::filesystem::remove(path);
  const std::string library = MachO{}.Build();
  zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE, nullptr);
  ASSERT_NE(archive, nullptr);
  zip_source_t* const source = zip_source_buffer(archive, library.data(), library.size(), 0);
  const std::string name = "Test/Build Resources/Mac arm64/Test.dylib";
  const zip_int64_t index = zip_file_add(archive, name.c_str(), source, 0);
  ASSERT_EQ(zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0), 0);
  ASSERT_EQ(zip_close(archive), 0);
  EXPECT_EQ(InWords(doctor::Diagnose(path, {})), "");
  EXPECT_EQ(InWords(doctor::Diagnose(path, {"libSystem"})), "note: " + name + " holds the text libSystem.B.dylib\n");

  const std::string whole = doctor::ReadWholeFile(path);
  Saved("Test.xojo_plugin", With(whole, "libSystem", "libsystem"));
  EXPECT_EQ(InWords(doctor::Diagnose(path, {})), "FAULT: its entry " + name + " is damaged\n");
  Saved("Test.xojo_plugin", whole.substr(0, whole.size() / 2));
  EXPECT_EQ(InWords(doctor::Diagnose(path, {})), "FAULT: it is no zip, or a damaged one\n");
}

}  // namespace
