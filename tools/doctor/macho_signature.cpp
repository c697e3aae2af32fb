// macOS refuses to run code for Apple's processors whose pages do not have the hashes that its signature names. The
// records of a signature are in big-endian order.
#include <sha2.h>

#include <algorithm>
#include <array>

#include "doctor/library.h"

namespace doctor {

namespace {

constexpr std::uint32_t kSignatureMagic = 0xFADE0CC0;
constexpr std::uint32_t kCodeDirectory = 0;
constexpr std::uint8_t kSha256 = 2;

std::string HashOf(std::string_view bytes) {
  SHA2_CTX context;
  std::array<std::uint8_t, SHA256_DIGEST_LENGTH> digest{};
  SHA256Init(&context);
  SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  SHA256Final(digest.data(), &context);
  return {digest.begin(), digest.end()};
}

// The pages before the signature must be all there is, each with its hash.
bool ArePagesIntact(Bytes slice, Bytes directory, std::uint64_t end) {
  const std::uint64_t hashes = directory.ReadBig32(16);
  const std::uint64_t count = directory.ReadBig32(28);
  const std::uint64_t limit = directory.ReadBig32(32);
  const auto hashSize = directory.Read<std::uint8_t>(36);
  const auto hashKind = directory.Read<std::uint8_t>(37);
  const auto pageBits = directory.Read<std::uint8_t>(39);
  if (hashKind != kSha256 || hashSize != SHA256_DIGEST_LENGTH || pageBits < 12 || pageBits > 16 || limit != end)
    return false;
  const std::uint64_t page = std::uint64_t{1} << pageBits;
  if (count != (limit + page - 1) / page) return false;
  for (std::uint64_t i = 0; i < count; ++i) {
    const Bytes bytes = slice.Part(i * page, std::min(page, limit - i * page));
    if (HashOf(bytes.View()) != directory.Part(hashes + i * hashSize, hashSize).View()) return false;
  }
  return true;
}

}  // namespace

CodeSignature CheckSignature(Bytes slice, std::uint64_t offset, std::uint64_t size) {
  const Bytes signature = slice.Part(offset, size);
  if (signature.ReadBig32(0) != kSignatureMagic) return CodeSignature::Wrong;
  const std::uint32_t count = signature.ReadBig32(8);
  for (std::uint64_t i = 0; i < count; ++i) {
    if (signature.ReadBig32(12 + i * 8) != kCodeDirectory) continue;
    const std::uint64_t start = signature.ReadBig32(16 + i * 8);
    const Bytes directory = signature.Part(start, size - std::min(start, size));
    return ArePagesIntact(slice, directory, offset) ? CodeSignature::Intact : CodeSignature::Wrong;
  }
  return CodeSignature::Wrong;
}

}  // namespace doctor
