#include "validate/exports.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace host::validate {

namespace {

class ElfFile {
 public:
  explicit ElfFile(const std::string& path) : path_(path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    const auto header = At<Elf64_Ehdr>(0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64) Fail();
    for (std::size_t i = 0; i < header.e_shnum; ++i)
      sections_.push_back(At<Elf64_Shdr>(header.e_shoff + i * header.e_shentsize));
  }

  std::vector<std::string> Exports() const {
    std::vector<std::string> names;
    for (const Elf64_Shdr& section : sections_) {
      if (section.sh_type != SHT_DYNSYM) continue;
      if (section.sh_link >= sections_.size()) Fail();
      for (std::uint64_t offset = 0; offset < section.sh_size; offset += sizeof(Elf64_Sym)) {
        const auto symbol = At<Elf64_Sym>(section.sh_offset + offset);
        if (IsExported(symbol)) names.push_back(Text(sections_[section.sh_link].sh_offset + symbol.st_name));
      }
    }
    return names;
  }

 private:
  static bool IsExported(const Elf64_Sym& symbol) {
    const int visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    return symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
  }

  template <class Record>
  Record At(std::uint64_t offset) const {
    Record record;
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof record) Fail();
    std::memcpy(&record, bytes_.data() + offset, sizeof record);
    return record;
  }

  std::string Text(std::uint64_t offset) const {
    if (offset >= bytes_.size()) Fail();
    return {bytes_.data() + offset, ::strnlen(bytes_.data() + offset, bytes_.size() - offset)};
  }

  [[noreturn]] void Fail() const { throw std::runtime_error(path_ + " is no library"); }

  std::string path_;
  std::vector<char> bytes_;
  std::vector<Elf64_Shdr> sections_;
};

}  // namespace

std::vector<std::string> ExportsOf(const std::string& library) { return ElfFile(library).Exports(); }

}  // namespace host::validate
