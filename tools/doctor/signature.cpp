// On Apple silicon, macOS rejects code whose pages do not match the hashes in its signature. Numbers in a signature are
// big-endian.
#include <sha2.h>

#include <algorithm>

#include "doctor/library.h"

namespace doctor {

namespace {

constexpr std::uint32_t kSignatureMagic = 0xFADE0CC0;
constexpr std::uint32_t kCodeDirectory = 0;
constexpr std::uint8_t kSha256 = 2;

struct SignatureHeader {
  Big32 magic, size, count;
};

struct SignatureEntry {
  Big32 type, offset;
};

struct CodeDirectory {
  Big32 magic, size, version, flags, hashes, identifier, specialCount, pageCount, codeSize;
  std::uint8_t hashSize, hashType, platform, pageBits;
};

// Returns the hash in hexadecimal digits.
std::string HashOf(std::string_view bytes) {
  char digits[SHA256_DIGEST_STRING_LENGTH];
  return ::SHA256Data(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), digits);
}

Signature CompareHashes(Bytes directory, std::string_view code) {
  const auto header = directory.Read<CodeDirectory>(0);
  if (header.hashType != kSha256 || header.hashSize != SHA256_DIGEST_LENGTH || header.pageBits < 12 ||
      header.pageBits > 16 || header.codeSize != code.size())
    return Signature::Invalid;
  std::string hashes;
  for (; !code.empty(); code.remove_prefix(std::min(code.size(), std::size_t{1} << header.pageBits)))
    hashes += HashOf(code.substr(0, std::size_t{1} << header.pageBits));
  const Bytes stored = directory.Part(header.hashes, std::uint64_t{header.pageCount} * SHA256_DIGEST_LENGTH);
  return Hexadecimal(stored) == hashes ? Signature::Valid : Signature::Invalid;
}

}  // namespace

Signature CheckSignature(Bytes library, std::uint64_t offset, std::uint64_t size) {
  const Bytes signature = library.Part(offset, size);
  const auto header = signature.Read<SignatureHeader>(0);
  if (header.magic != kSignatureMagic) return Signature::Invalid;
  const auto entries = signature.ReadAll<SignatureEntry>(sizeof(header), header.count);
  const auto directory = std::ranges::find(entries, kCodeDirectory, &SignatureEntry::type);
  if (directory == entries.end()) return Signature::Invalid;
  return CompareHashes(signature.From(directory->offset), library.Part(0, offset));
}

}  // namespace doctor
