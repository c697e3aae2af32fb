// Compares the test for printable UTF-8 with an independent decoder. Input: the text.
#include <utf8proc.h>

#include "runtime/text_classification.h"
#include "target.h"

namespace {

bool IsPrintable(utf8proc_int32_t character) {
  return character == '\t' || character == '\n' || character == '\r' || (character >= 0x20 && character != 0x7F);
}

bool IsPrintableText(const std::uint8_t* bytes, std::size_t size) {
  const std::uint8_t* const end = bytes + size;
  while (bytes < end) {
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length = utf8proc_iterate(bytes, end - bytes, &character);
    if (length <= 0 || !IsPrintable(character)) return false;
    bytes += length;
  }
  return true;
}

bool IsSevenBit(std::string_view text) {
  for (const char byte : text)
    if ((byte & 0x80) != 0) return false;
  return true;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::Text(bytes, size);
  fuzz::Require(zkt::IsPrintableUTF8(text) == IsPrintableText(bytes, size), "the test agrees with the decoder");
  fuzz::Require(zkt::IsASCII(text) == IsSevenBit(text), "ASCII has no high bit");
  return 0;
}
