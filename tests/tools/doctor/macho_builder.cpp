#include "tools/doctor/macho_builder.h"

#include <sha2.h>

#include <array>

namespace tests {

namespace {

constexpr std::size_t kPage = 4096;

std::string Little(std::initializer_list<std::uint32_t> numbers) {
  std::string bytes;
  for (const std::uint32_t number : numbers)
    for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

std::string Big(std::initializer_list<std::uint32_t> numbers) {
  std::string bytes;
  for (const std::uint32_t number : numbers) bytes += Little({__builtin_bswap32(number)});
  return bytes;
}

std::uint32_t Size(const std::string& bytes) { return static_cast<std::uint32_t>(bytes.size()); }

std::string Padded(std::string bytes, std::size_t multiple) {
  bytes.resize((bytes.size() + multiple - 1) / multiple * multiple);
  return bytes;
}

std::string NameCommand(std::uint32_t command, const std::string& name) {
  const std::string text = Padded(name + '\0', 8);
  return Little({command, 24 + Size(text), 24, 0, 0, 0}) + text;
}

// A root with one edge for each name, and a leaf behind each. Every offset fits in one byte.
std::string ExportTree(const std::vector<std::string>& names) {
  std::size_t rootSize = 2;
  for (const std::string& name : names) rootSize += name.size() + 2;
  std::string root = {'\0', static_cast<char>(names.size())};
  std::string leaves;
  for (const std::string& name : names) {
    root += name + '\0' + static_cast<char>(rootSize + leaves.size());
    leaves += std::string("\2\0\0\0", 4);
  }
  return Padded(root + leaves, 8);
}

std::string Signature(const std::string& code) {
  std::string hashes;
  for (std::size_t at = 0; at < code.size(); at += kPage) {
    const std::string page = code.substr(at, kPage);
    std::array<std::uint8_t, SHA256_DIGEST_LENGTH> digest{};
    SHA2_CTX context;
    SHA256Init(&context);
    SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(page.data()), page.size());
    SHA256Final(digest.data(), &context);
    hashes.append(digest.begin(), digest.end());
  }
  const std::uint32_t count = Size(hashes) / SHA256_DIGEST_LENGTH;
  const std::string directory = Big({0xFADE0C02, 44 + Size(hashes), 0x20400, 2, 44, 0, 0, count, Size(code)}) +
                                std::string("\x20\2\0\x0c", 4) + Big({0}) + hashes;
  return Big({0xFADE0CC0, 20 + Size(directory), 1, 0, 20}) + directory;
}

}  // namespace

std::string MachO::Build() const {
  std::string commands = NameCommand(0xD, name);
  std::uint32_t count = 1;
  const auto add = [&](const std::string& command) {
    commands += command;
    ++count;
  };
  for (const std::string& library : needed) add(NameCommand(0xC, library));
  if (hasIdentity) add(Little({0x1B, 24, 1, 2, 3, 4}));
  add(Little({0x32, 24, 1, minimum, minimum, 0}));
  const std::string tree = ExportTree(exports);
  const std::uint32_t treeOffset = 32 + Size(commands) + 16 + (isSigned ? 16 : 0);
  add(Little({0x80000033, 16, treeOffset, Size(tree)}));
  const std::uint32_t end = treeOffset + Size(tree);
  if (isSigned) add(Little({0x1D, 16, end, Size(Signature(std::string(end, '\0')))}));
  const std::string code =
      Little({0xFEEDFACF, processor, 0, fileType, count, Size(commands), flags, 0}) + commands + tree;
  return isSigned ? code + Signature(code) : code;
}

std::string Universal(const std::string& first, const std::string& second) {
  const std::uint32_t start = 48;
  const std::string head = Big({0xCAFEBABE, 2, 0x0100000C, 0, start, Size(first), 0}) +
                           Big({0x01000007, 0, start + Size(first), Size(second), 0});
  return head + first + second;
}

}  // namespace tests
