// Reads 64-bit macOS libraries in files for one processor and in universal files. Numbers are little-endian, except in
// the header of a universal file.
#include <algorithm>
#include <set>

#include "doctor/library.h"

namespace doctor {

namespace {

constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
constexpr std::uint32_t kUniversalMagic = 0xCAFEBABE;
constexpr std::uint32_t kDynamicLibrary = 6;
constexpr std::uint32_t kTwoLevelNames = 0x80;
constexpr std::uint32_t kProcessorX86_64 = 0x01000007;
constexpr std::uint32_t kProcessorArm64 = 0x0100000C;
// A universal file has one library per processor. A Java class file starts with the same bytes, but the number that
// follows them is larger.
constexpr std::uint32_t kMaxProcessors = 8;
// More than any library needs. The limit stops the reading of an export trie that refers to itself.
constexpr std::uint64_t kMaxTrieMemory = 64u << 20;

struct Header {
  std::uint32_t magic, processor, processorKind, fileType, commandCount, commandSize, flags, reserved;
};

struct UniversalHeader {
  Big32 magic, count;
};

struct UniversalEntry {
  Big32 processor, processorKind, offset, size, alignment;
};

enum Command : std::uint32_t {
  kNeededLibrary = 0xC,
  kOwnName = 0xD,
  kSegment = 0x19,
  kUuid = 0x1B,
  kCodeSignature = 0x1D,
  kMinimumMacOS = 0x24,
  kBuildVersion = 0x32,
  kWeakLibrary = 0x80000018,
  kSearchPath = 0x8000001C,
  kReexportedLibrary = 0x8000001F,
  kLoadingInfo = 0x80000022,
  kExportTrie = 0x80000033,
};

// Reads a ULEB128 number (seven bits per byte, lowest first) and moves the offset past it.
std::uint64_t ReadNumber(Bytes trie, std::uint64_t& offset) {
  std::uint64_t number = 0;
  for (unsigned shift = 0; shift < 63; shift += 7) {
    const auto byte = trie.Read<std::uint8_t>(offset++);
    number |= std::uint64_t{byte & 0x7Fu} << shift;
    if ((byte & 0x80) == 0) return number;
  }
  throw DamagedFile("its export table has an unterminated number");
}

// A symbol's name consists of the edge labels from the root to the symbol's node. C prefixes every name with an
// underscore.
void ReadExports(Bytes trie, std::vector<std::string>& exports) {
  std::vector<std::pair<std::uint64_t, std::string>> pending;  // nodes, as offset and name
  if (!trie.empty()) pending.emplace_back();
  for (std::uint64_t memory = 0; !pending.empty();) {
    auto [offset, name] = std::move(pending.back());
    pending.pop_back();
    const std::uint64_t size = ReadNumber(trie, offset);
    if (size != 0) exports.push_back(name.starts_with('_') ? name.substr(1) : name);
    offset += size;
    for (auto edges = trie.Read<std::uint8_t>(offset++); edges > 0; --edges) {
      const std::string label = trie.Text(offset);
      offset += label.size() + 1;
      memory += sizeof(pending[0]) + name.size() + label.size();
      if (memory > kMaxTrieMemory) throw DamagedFile("its export table refers to itself or is too large");
      pending.emplace_back(ReadNumber(trie, offset), name + label);
    }
  }
}

void ReadCommand(Bytes file, std::uint32_t kind, Bytes command, Library& library) {
  const auto number = [command](std::uint64_t offset) { return command.Read<std::uint32_t>(offset); };
  const auto version = [number](std::uint64_t offset) {
    return std::to_string(number(offset) >> 16) + "." + std::to_string(number(offset) >> 8 & 0xFF);
  };
  if (kind == kNeededLibrary || kind == kWeakLibrary || kind == kReexportedLibrary)
    library.needed.push_back(command.Text(number(8)));
  if (kind == kOwnName) {
    library.name = command.Text(number(8));
    const std::string current = version(16) + "." + std::to_string(number(16) & 0xFF);
    library.findings.NoteIf(!library.version.empty() && library.version.find(' ' + current) == std::string::npos,
                            "its current version is " + current + ", but its text says " + library.version, kVersion);
  }
  if (kind == kUuid) library.buildId = Hexadecimal(command.Part(8, 16));
  if (kind == kMinimumMacOS) library.minimum = version(8);
  if (kind == kBuildVersion) library.minimum = version(12);
  if (kind == kExportTrie) ReadExports(file.Part(number(8), number(12)), library.exports);
  if (kind == kLoadingInfo) ReadExports(file.Part(number(40), number(44)), library.exports);
  if (kind == kCodeSignature) library.signature = CheckSignature(file, number(8), number(12));
  if (kind == kSegment)
    file.Part(command.Read<std::uint64_t>(40), command.Read<std::uint64_t>(48));  // the file must contain the segment
}

Library ReadOne(Bytes file) {
  const auto header = file.Read<Header>(0);
  if (header.magic != kMagic64) throw DamagedFile("it is not for a 64-bit processor");
  if (header.fileType != kDynamicLibrary) throw DamagedFile("it is not a dynamic library");
  Library library;
  library.system = System::MacOS;
  library.architecture = "processor " + std::to_string(header.processor);
  if (header.processor == kProcessorX86_64) library.architecture = "x86-64";
  if (header.processor == kProcessorArm64) library.architecture = "arm64";
  library.size = file.size();
  library.signature = Signature::Missing;
  library.version = FindVersion(file);
  std::set<std::uint32_t> kinds;
  std::uint64_t offset = sizeof(Header);
  for (std::uint32_t i = 0; i < header.commandCount; ++i) {
    const auto kind = file.Read<std::uint32_t>(offset);
    const auto size = file.Read<std::uint32_t>(offset + 4);
    if (size < 8) throw DamagedFile("a load command is too short");
    ReadCommand(file, kind, file.Part(offset, size), library);
    kinds.insert(kind);
    offset += size;
  }
  std::ranges::sort(library.exports);
  Findings& findings = library.findings;
  findings.NoteIf((header.flags & kTwoLevelNames) == 0, "its symbols are looked up in every library (flat namespace)",
                  kFlatNamespace);
  findings.NoteIf(!kinds.contains(kUuid), "it has no UUID for crash reports (LC_UUID)", kNoUuid);
  findings.NoteIf(kinds.contains(kSearchPath), "it has its own search path for libraries (LC_RPATH)", kLibrarySearch);
  return library;
}

}  // namespace

std::vector<Library> ReadMachO(Bytes file) {
  const auto header = file.Read<UniversalHeader>(0);
  if (header.magic != kUniversalMagic) return {ReadOne(file)};
  if (header.count == 0 || header.count > kMaxProcessors) throw DamagedFile("it is not a library for Linux or macOS");
  std::vector<Library> libraries;
  for (const auto& entry : file.ReadAll<UniversalEntry>(sizeof(header), header.count))
    libraries.push_back(ReadOne(file.Part(entry.offset, entry.size)));
  return libraries;
}

}  // namespace doctor
