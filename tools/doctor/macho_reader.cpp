// Reads libraries of macOS: 64-bit, one processor or universal. The layout is Apple's; the numbers are in little-endian
// order but for the head of universal files.
#include <algorithm>

#include "doctor/library.h"

namespace doctor {

namespace {

constexpr std::uint32_t kUniversalMagic = 0xCAFEBABE;
constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
constexpr std::uint32_t kDynamicLibrary = 6;
constexpr std::uint32_t kTwoLevelNames = 0x80;
constexpr std::uint32_t kProcessorX86_64 = 0x01000007;
constexpr std::uint32_t kProcessorArm64 = 0x0100000C;
// Universal files hold one slice for each processor there is; what claims more is a Java class, which begins alike.
constexpr std::uint32_t kMostSlices = 8;

enum Command : std::uint32_t {
  kLoadLibrary = 0xC,
  kOwnName = 0xD,
  kLoadWeakLibrary = 0x80000018,
  kReexportLibrary = 0x8000001F,
  kSearchPath = 0x8000001C,
  kCodeSignature = 0x1D,
  kIdentity = 0x1B,
  kLoadingInfo = 0x80000022,
  kExportTree = 0x80000033,
  kMinimumMacOS = 0x24,
  kBuildVersion = 0x32,
};

struct Head {
  std::uint32_t magic, processor, processorKind, fileType, commandCount, commandSize, flags, reserved;
};

struct CommandHead {
  std::uint32_t command, size;
};

std::string ArchitectureOf(std::uint32_t processor) {
  if (processor == kProcessorX86_64) return "x86-64";
  if (processor == kProcessorArm64) return "arm64";
  return "processor " + std::to_string(processor);
}

Version UnpackVersion(std::uint32_t packed) { return {packed >> 16, packed >> 8 & 0xFF}; }

class SliceReader {
 public:
  explicit SliceReader(Bytes slice) : slice_(slice) {}

  Library Read() {
    const auto head = slice_.Read<Head>(0);
    if (head.magic != kMagic64) throw DamagedFile("it is not for a 64-bit processor");
    if (head.fileType != kDynamicLibrary) throw DamagedFile("it is not a dynamic library");
    library_.system = System::MacOS;
    library_.architecture = ArchitectureOf(head.processor);
    library_.size = slice_.Size();
    library_.signature = CodeSignature::Missing;
    std::uint64_t offset = sizeof(Head);
    for (std::uint32_t i = 0; i < head.commandCount; ++i) {
      const auto command = slice_.Read<CommandHead>(offset);
      if (command.size < sizeof(CommandHead)) throw DamagedFile("a load command has no size");
      ReadCommand(command.command, slice_.Part(offset, command.size));
      offset += command.size;
    }
    if ((head.flags & kTwoLevelNames) == 0) Weakness("its symbols are looked up in every library (flat name space)");
    if (!hasIdentity_) Weakness("it has no identity for crash reports (LC_UUID)");
    std::sort(library_.exports.begin(), library_.exports.end());
    return std::move(library_);
  }

 private:
  void ReadCommand(std::uint32_t kind, Bytes command) {
    const auto number = [&command](std::uint64_t offset) { return command.Read<std::uint32_t>(offset); };
    switch (kind) {
      case kLoadLibrary:
      case kLoadWeakLibrary:
      case kReexportLibrary:
        library_.needed.push_back(command.Text(number(8)));
        break;
      case kOwnName:
        library_.name = command.Text(number(8));
        break;
      case kSearchPath:
        Weakness("it carries a search path for libraries (LC_RPATH)");
        break;
      case kCodeSignature:
        library_.signature = CheckSignature(slice_, number(8), number(12));
        break;
      case kIdentity:
        hasIdentity_ = true;
        break;
      case kLoadingInfo:
        ReadExports(number(40), number(44));
        break;
      case kExportTree:
        ReadExports(number(8), number(12));
        break;
      case kMinimumMacOS:
        library_.minimum = UnpackVersion(number(8));
        break;
      case kBuildVersion:
        library_.minimum = UnpackVersion(number(12));
        break;
      default:
        break;
    }
  }

  // The names begin with the underscore that C puts before every one on macOS.
  void ReadExports(std::uint32_t offset, std::uint32_t size) {
    for (const std::string& name : ReadExportTree(slice_.Part(offset, size)))
      library_.exports.push_back(name.starts_with('_') ? name.substr(1) : name);
  }

  void Weakness(std::string text) { library_.weaknesses.push_back(std::move(text)); }

  Bytes slice_;
  bool hasIdentity_ = false;
  Library library_;
};

}  // namespace

bool IsMachO(Bytes file) {
  if (file.Size() < 8) return false;
  const bool isUniversal = file.ReadBig32(0) == kUniversalMagic && file.ReadBig32(4) <= kMostSlices;
  return isUniversal || file.Read<std::uint32_t>(0) == kMagic64;
}

std::vector<Library> ReadMachO(Bytes file) {
  if (file.ReadBig32(0) != kUniversalMagic) return {SliceReader(file).Read()};
  std::vector<Library> slices;
  for (std::uint32_t i = 0; i < file.ReadBig32(4); ++i) {
    const Bytes entry = file.Part(8 + std::uint64_t{i} * 20, 20);
    slices.push_back(SliceReader(file.Part(entry.ReadBig32(8), entry.ReadBig32(12))).Read());
  }
  return slices;
}

}  // namespace doctor
