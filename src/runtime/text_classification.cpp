#include "runtime/text_classification.h"

#include <cstdint>
#include <cstring>

namespace zkt {

namespace {

using Byte = unsigned char;

bool IsBetween(Byte byte, Byte low, Byte high) { return byte >= low && byte <= high; }

// The bytes that must follow a lead byte: the range of the second byte, and the number of bytes after the lead byte.
struct Continuation {
  Byte secondLow;
  Byte secondHigh;
  std::size_t count;  // 0 if the byte is not a lead byte
};

Continuation ContinuationOf(Byte lead) {
  if (IsBetween(lead, 0xC2, 0xDF)) return {0x80, 0xBF, 1};
  if (lead == 0xE0) return {0xA0, 0xBF, 2};  // lower second bytes would form overlong sequences
  if (lead == 0xED) return {0x80, 0x9F, 2};  // higher second bytes would encode surrogates
  if (IsBetween(lead, 0xE1, 0xEF)) return {0x80, 0xBF, 2};
  if (lead == 0xF0) return {0x90, 0xBF, 3};  // lower second bytes would form overlong sequences
  if (IsBetween(lead, 0xF1, 0xF3)) return {0x80, 0xBF, 3};
  if (lead == 0xF4) return {0x80, 0x8F, 3};  // higher second bytes would exceed U+10FFFF
  return {0, 0, 0};
}

bool IsPrintableSingleByte(Byte byte) {
  return IsBetween(byte, 0x20, 0x7E) || byte == '\t' || byte == '\n' || byte == '\r';
}

}  // namespace

bool IsASCII(std::string_view bytes) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t position = 0;
  for (; bytes.size() - position >= 8; position += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes.data() + position, sizeof word);
    if ((word & kHighBits) != 0) return false;
  }
  for (; position < bytes.size(); ++position)
    if (static_cast<Byte>(bytes[position]) >= 0x80) return false;
  return true;
}

bool IsPrintableUTF8(std::string_view bytes) {
  std::size_t position = 0;
  const auto next = [&] { return static_cast<Byte>(bytes[position++]); };
  while (position < bytes.size()) {
    const Byte lead = next();
    if (IsPrintableSingleByte(lead)) continue;
    const Continuation continuation = ContinuationOf(lead);
    if (continuation.count == 0 || bytes.size() - position < continuation.count) return false;
    if (!IsBetween(next(), continuation.secondLow, continuation.secondHigh)) return false;
    for (std::size_t more = 1; more < continuation.count; ++more)
      if (!IsBetween(next(), 0x80, 0xBF)) return false;
  }
  return true;
}

}  // namespace zkt
