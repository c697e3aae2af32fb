// Reads libraries of Linux as the loader does: by the program headers and the dynamic section, never by the sections,
// which a library need not have.
#include <elf.h>

#include <algorithm>
#include <map>

#include "doctor/library.h"

namespace doctor {

namespace {

// No plug-in comes near; they keep damaged counts from taking forever.
constexpr std::uint64_t kMostSymbols = 1'000'000;
constexpr std::uint64_t kMostVersionedLibraries = 1'000;

std::string ArchitectureOf(std::uint16_t machine) {
  switch (machine) {
    case EM_X86_64:
      return "x86-64";
    case EM_AARCH64:
      return "arm64";
    default:
      return "machine " + std::to_string(machine);
  }
}

class ElfReader {
 public:
  explicit ElfReader(Bytes file) : file_(file) {
    const auto head = file_.Read<Elf64_Ehdr>(0);
    if (head.e_ident[EI_CLASS] != ELFCLASS64 || head.e_ident[EI_DATA] != ELFDATA2LSB)
      throw DamagedFile("it is not for a 64-bit processor of little-endian order");
    if (head.e_type != ET_DYN) throw DamagedFile("it is not a shared library");
    library_.architecture = ArchitectureOf(head.e_machine);
    library_.size = file_.Size();
    for (unsigned i = 0; i < head.e_phnum; ++i)
      segments_.push_back(file_.Read<Elf64_Phdr>(head.e_phoff + i * sizeof(Elf64_Phdr)));
  }

  Library Read() {
    ReadDynamicSection();
    strings_ = file_.Part(FileOffset(Entry(DT_STRTAB)), Entry(DT_STRSZ));
    for (const std::uint64_t offset : needed_) library_.needed.push_back(strings_.Text(offset));
    if (Has(DT_SONAME)) library_.name = strings_.Text(Entry(DT_SONAME));
    ReadVersions();
    ReadExports();
    JudgeSegments();
    JudgeEntries();
    return std::move(library_);
  }

 private:
  bool Has(std::int64_t tag) const { return entries_.contains(tag); }

  std::uint64_t Entry(std::int64_t tag) const {
    const auto found = entries_.find(tag);
    if (found == entries_.end()) throw DamagedFile("its dynamic section lacks an entry");
    return found->second;
  }

  const Elf64_Phdr* Segment(std::uint32_t type) const {
    const auto found = std::find_if(segments_.begin(), segments_.end(),
                                    [type](const Elf64_Phdr& segment) { return segment.p_type == type; });
    return found != segments_.end() ? &*found : nullptr;
  }

  std::uint64_t FileOffset(std::uint64_t address) const {
    for (const Elf64_Phdr& segment : segments_) {
      if (segment.p_type == PT_LOAD && address >= segment.p_vaddr && address - segment.p_vaddr < segment.p_filesz)
        return address - segment.p_vaddr + segment.p_offset;
    }
    throw DamagedFile("an address lies outside its segments");
  }

  void ReadDynamicSection() {
    const Elf64_Phdr* const dynamic = Segment(PT_DYNAMIC);
    if (dynamic == nullptr) throw DamagedFile("it has no dynamic section");
    const Bytes section = file_.Part(dynamic->p_offset, dynamic->p_filesz);
    for (std::uint64_t offset = 0;; offset += sizeof(Elf64_Dyn)) {
      const auto entry = section.Read<Elf64_Dyn>(offset);
      if (entry.d_tag == DT_NULL) return;
      if (entry.d_tag == DT_NEEDED) {
        needed_.push_back(entry.d_un.d_val);
      } else {
        entries_[entry.d_tag] = entry.d_un.d_val;
      }
    }
  }

  // The highest version of the C library that a symbol asks for is the lowest that the library runs on.
  void ReadVersions() {
    if (!Has(DT_VERNEED)) return;
    std::uint64_t offset = FileOffset(Entry(DT_VERNEED));
    for (std::uint64_t left = std::min(Entry(DT_VERNEEDNUM), kMostVersionedLibraries); left > 0; --left) {
      const auto file = file_.Read<Elf64_Verneed>(offset);
      std::uint64_t versionOffset = offset + file.vn_aux;
      for (unsigned i = 0; i < file.vn_cnt; ++i) {
        const auto version = file_.Read<Elf64_Vernaux>(versionOffset);
        const std::string name = strings_.Text(version.vna_name);
        if (name.starts_with("GLIBC_")) library_.minimum = std::max(library_.minimum, VersionOf(name.substr(6)));
        versionOffset += version.vna_next;
      }
      offset += file.vn_next;
    }
  }

  // The hash table holds the defined symbols only and is sorted into chains; the last chain ends with the last symbol.
  std::uint64_t SymbolCount() const {
    if (Has(DT_HASH)) return file_.Read<std::uint32_t>(FileOffset(Entry(DT_HASH)) + 4);
    const std::uint64_t table = FileOffset(Entry(DT_GNU_HASH));
    const auto buckets = file_.Read<std::uint32_t>(table);
    const auto firstHashed = file_.Read<std::uint32_t>(table + 4);
    const auto filterWords = file_.Read<std::uint32_t>(table + 8);
    const std::uint64_t bucketTable = table + 16 + std::uint64_t{filterWords} * 8;
    const std::uint64_t chains = bucketTable + std::uint64_t{buckets} * 4;
    std::uint64_t last = 0;
    for (std::uint32_t i = 0; i < buckets; ++i)
      last = std::max<std::uint64_t>(last, file_.Read<std::uint32_t>(bucketTable + std::uint64_t{i} * 4));
    if (last < firstHashed) return firstHashed;
    while ((file_.Read<std::uint32_t>(chains + (last - firstHashed) * 4) & 1) == 0) ++last;
    return last + 1;
  }

  void ReadExports() {
    const std::uint64_t symbols = FileOffset(Entry(DT_SYMTAB));
    const std::uint64_t count = SymbolCount();
    if (count > kMostSymbols) throw DamagedFile("its symbol table is larger than any");
    for (std::uint64_t i = 1; i < count; ++i) {
      const auto symbol = file_.Read<Elf64_Sym>(symbols + i * sizeof(Elf64_Sym));
      const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
      if (symbol.st_shndx == SHN_UNDEF || ELF64_ST_BIND(symbol.st_info) == STB_LOCAL) continue;
      if (visibility == STV_HIDDEN || visibility == STV_INTERNAL) continue;
      library_.exports.push_back(strings_.Text(symbol.st_name));
    }
    std::sort(library_.exports.begin(), library_.exports.end());
  }

  void JudgeSegments() {
    const Elf64_Phdr* const stack = Segment(PT_GNU_STACK);
    if (stack == nullptr || (stack->p_flags & PF_X) != 0) Weakness("it asks for an executable stack");
    if (Segment(PT_GNU_RELRO) == nullptr) Weakness("its tables stay writable after loading (no RELRO)");
    if (std::any_of(segments_.begin(), segments_.end(), [](const Elf64_Phdr& segment) {
          return segment.p_type == PT_LOAD && (segment.p_flags & PF_W) != 0 && (segment.p_flags & PF_X) != 0;
        }))
      Weakness("it has memory that is writable and executable");
  }

  void JudgeEntries() {
    const std::uint64_t flags = Has(DT_FLAGS) ? Entry(DT_FLAGS) : 0;
    const std::uint64_t moreFlags = Has(DT_FLAGS_1) ? Entry(DT_FLAGS_1) : 0;
    if (Has(DT_TEXTREL) || (flags & DF_TEXTREL) != 0) Weakness("loading changes its code (TEXTREL)");
    if (Has(DT_RPATH) || Has(DT_RUNPATH)) Weakness("it carries a search path for libraries (RUNPATH)");
    if (!Has(DT_BIND_NOW) && (flags & DF_BIND_NOW) == 0 && (moreFlags & DF_1_NOW) == 0)
      Weakness("a missing symbol shows at its first call only (no BIND_NOW)");
  }

  void Weakness(std::string text) { library_.weaknesses.push_back(std::move(text)); }

  Bytes file_;
  std::vector<Elf64_Phdr> segments_;
  std::map<std::int64_t, std::uint64_t> entries_;
  std::vector<std::uint64_t> needed_;
  Bytes strings_;
  Library library_;
};

}  // namespace

bool IsElf(Bytes file) { return file.View().starts_with(std::string_view(ELFMAG, SELFMAG)); }

std::vector<Library> ReadElf(Bytes file) { return {ElfReader(file).Read()}; }

}  // namespace doctor
