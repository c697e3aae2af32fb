// Reads Linux libraries as the loader does: from the program headers and the dynamic section, never from the section
// headers, which a library may lack.
#include <elf.h>

#include <algorithm>

#include "doctor/library.h"

namespace doctor {

namespace {

// More libraries than any library depends on. The limit bounds the time spent on a damaged list.
constexpr std::uint64_t kMaxVersionedLibraries = 1'000;

struct GnuHashHeader {
  std::uint32_t buckets, firstHashed, filterWords, filterShift;
};

class ElfFile {
 public:
  // The loader maps whole segments, so the file must contain every loadable segment completely.
  explicit ElfFile(Bytes file) : file_(file) {
    const auto header = file.Read<Elf64_Ehdr>(0);
    segments_ = file.ReadAll<Elf64_Phdr>(header.e_phoff, header.e_phnum);
    for (const Elf64_Phdr& segment : segments_)
      if (segment.p_type == PT_LOAD) file.Part(segment.p_offset, segment.p_filesz);
    const Elf64_Phdr* const dynamic = Segment(PT_DYNAMIC);
    if (dynamic == nullptr) throw DamagedFile("it has no dynamic section");
    entries_ =
        file.Part(dynamic->p_offset, dynamic->p_filesz).ReadAll<Elf64_Dyn>(0, dynamic->p_filesz / sizeof(Elf64_Dyn));
    entries_.erase(std::ranges::find(entries_, DT_NULL, &Elf64_Dyn::d_tag), entries_.end());
    strings_ = At(DT_STRTAB).Part(0, Entry(DT_STRSZ));
  }

  void ReadNames(Library& library) const {
    for (const Elf64_Dyn& entry : entries_)
      if (entry.d_tag == DT_NEEDED) library.needed.push_back(strings_.Text(entry.d_un.d_val));
    if (Has(DT_SONAME)) library.name = strings_.Text(Entry(DT_SONAME));
  }

  // The newest glibc version that any symbol requires is the oldest version that the library runs with.
  void ReadVersions(Library& library) const {
    if (!Has(DT_VERNEED)) return;
    const Bytes versions = At(DT_VERNEED);
    std::uint64_t fileOffset = 0;
    for (std::uint64_t i = std::min(Entry(DT_VERNEEDNUM), kMaxVersionedLibraries); i > 0; --i) {
      const auto file = versions.Read<Elf64_Verneed>(fileOffset);
      std::uint64_t offset = fileOffset + file.vn_aux;
      for (unsigned j = 0; j < file.vn_cnt; ++j) {
        const auto version = versions.Read<Elf64_Vernaux>(offset);
        const std::string name = strings_.Text(version.vna_name);
        if (name.starts_with("GLIBC_2.") && IsNewer(name.substr(6), library.minimum)) library.minimum = name.substr(6);
        offset += version.vna_next;
      }
      fileOffset += file.vn_next;
    }
  }

  // Notes are padded to a multiple of four bytes. A segment may hold several notes.
  void ReadBuildId(Library& library) const {
    for (const Elf64_Phdr& segment : segments_) {
      if (segment.p_type != PT_NOTE) continue;
      const Bytes notes = file_.Part(segment.p_offset, segment.p_filesz);
      for (std::uint64_t offset = 0; offset < notes.size();) {
        const auto note = notes.Read<Elf64_Nhdr>(offset);
        const std::uint64_t name = offset + sizeof(note), content = name + Padded(note.n_namesz);
        if (note.n_type == NT_GNU_BUILD_ID &&
            notes.Part(name, note.n_namesz) == std::string_view(ELF_NOTE_GNU, sizeof ELF_NOTE_GNU))
          library.buildId = Hexadecimal(notes.Part(content, note.n_descsz));
        offset = content + Padded(note.n_descsz);
      }
    }
  }

  void ReadExports(Library& library) const {
    for (const Elf64_Sym& symbol : At(DT_SYMTAB).ReadAll<Elf64_Sym>(0, SymbolCount())) {
      const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
      if (symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL && visibility != STV_HIDDEN &&
          visibility != STV_INTERNAL)
        library.exports.push_back(strings_.Text(symbol.st_name));
    }
    std::ranges::sort(library.exports);
  }

  void NoteRisks(Findings& findings) const {
    const Elf64_Phdr* const stack = Segment(PT_GNU_STACK);
    const bool hasWritableCode = std::ranges::any_of(segments_, [](const Elf64_Phdr& segment) {
      return segment.p_type == PT_LOAD && (segment.p_flags & PF_W) != 0 && (segment.p_flags & PF_X) != 0;
    });
    const bool bindsAtLoading = Has(DT_BIND_NOW) || HasFlag(DT_FLAGS, DF_BIND_NOW) || HasFlag(DT_FLAGS_1, DF_1_NOW);
    findings.NoteIf(stack == nullptr || (stack->p_flags & PF_X) != 0, "it requires an executable stack",
                    kExecutableStack);
    findings.NoteIf(Segment(PT_GNU_RELRO) == nullptr, "its relocated tables stay writable after loading (no RELRO)",
                    kNoRelro);
    findings.NoteIf(hasWritableCode, "it has memory that is both writable and executable", kWritableCode);
    findings.NoteIf(Has(DT_TEXTREL) || HasFlag(DT_FLAGS, DF_TEXTREL),
                    "it has text relocations, so loading changes its code (TEXTREL)", kChangedCode);
    findings.NoteIf(Has(DT_RPATH) || Has(DT_RUNPATH), "it has its own search path for libraries (RUNPATH)",
                    kLibrarySearch);
    findings.NoteIf(!bindsAtLoading, "its symbols are bound on the first call, not at load time (no BIND_NOW)",
                    kLateBinding);
  }

 private:
  static std::uint64_t Padded(std::uint64_t size) { return (size + 3) & ~std::uint64_t{3}; }

  const Elf64_Phdr* Segment(std::uint32_t type) const {
    const auto found = std::ranges::find(segments_, type, &Elf64_Phdr::p_type);
    return found != segments_.end() ? &*found : nullptr;
  }

  bool Has(std::int64_t tag) const { return std::ranges::count(entries_, tag, &Elf64_Dyn::d_tag) != 0; }
  bool HasFlag(std::int64_t tag, std::uint64_t flag) const { return Has(tag) && (Entry(tag) & flag) != 0; }

  std::uint64_t Entry(std::int64_t tag) const {
    const auto found = std::ranges::find(entries_, tag, &Elf64_Dyn::d_tag);
    if (found == entries_.end()) throw DamagedFile("its dynamic section is incomplete");
    return found->d_un.d_val;
  }

  // Returns the data to which the entry with this tag points, up to the end of the segment.
  Bytes At(std::int64_t tag) const {
    const std::uint64_t address = Entry(tag);
    for (const Elf64_Phdr& segment : segments_) {
      if (segment.p_type == PT_LOAD && address >= segment.p_vaddr && address - segment.p_vaddr < segment.p_filesz)
        return file_.Part(segment.p_offset, segment.p_filesz).From(address - segment.p_vaddr);
    }
    throw DamagedFile("an address lies outside its segments");
  }

  // A GNU hash table covers the defined symbols, which come last in the symbol table. It stores hashes in chains; the
  // lowest bit of a hash marks the end of its chain.
  std::uint64_t SymbolCount() const {
    if (Has(DT_HASH)) return At(DT_HASH).Read<std::uint32_t>(4);
    const Bytes table = At(DT_GNU_HASH);
    const auto header = table.Read<GnuHashHeader>(0);
    const std::uint64_t bucketOffset = sizeof(header) + header.filterWords * sizeof(std::uint64_t);
    const auto buckets = table.ReadAll<std::uint32_t>(bucketOffset, header.buckets);
    std::uint64_t last = buckets.empty() ? 0 : std::ranges::max(buckets);
    if (last < header.firstHashed) return header.firstHashed;
    const Bytes chains = table.From(bucketOffset + buckets.size() * sizeof(std::uint32_t));
    while ((chains.Read<std::uint32_t>((last - header.firstHashed) * sizeof(std::uint32_t)) & 1) == 0) ++last;
    return last + 1;
  }

  Bytes file_;
  std::vector<Elf64_Phdr> segments_;
  std::vector<Elf64_Dyn> entries_;  // entries of the dynamic section
  Bytes strings_;
};

}  // namespace

Library ReadElf(Bytes file) {
  const auto header = file.Read<Elf64_Ehdr>(0);
  if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_ident[EI_DATA] != ELFDATA2LSB)
    throw DamagedFile("it is not for a 64-bit little-endian processor");
  if (header.e_type != ET_DYN) throw DamagedFile("it is not a shared library");
  Library library;
  library.architecture = "machine " + std::to_string(header.e_machine);
  if (header.e_machine == EM_X86_64) library.architecture = "x86-64";
  if (header.e_machine == EM_AARCH64) library.architecture = "arm64";
  library.size = file.size();
  const ElfFile elf(file);
  elf.ReadNames(library);
  elf.ReadVersions(library);
  elf.ReadExports(library);
  elf.ReadBuildId(library);
  library.version = FindVersion(file);
  elf.NoteRisks(library.findings);
  return library;
}

}  // namespace doctor
