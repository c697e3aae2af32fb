#include "runtime/text_builder.h"

#include <string_view>

#include "runtime/exceptions.h"
#include "runtime/string_builder.h"
#include "runtime/text_classification.h"

namespace zkt {

REALstring REALBuildUnicodeString(const void* bytes, long long count, unsigned int encoding) {
  return TranslateExceptions([&] { return BuildUnicodeString(bytes, count, encoding); });
}

REALstring CString2RB_detect_encoding(const char* text) {
  if (text == nullptr || *text == '\0') return nullptr;
  const std::string_view bytes = text;
  const Encoding encoding = IsASCII(bytes)           ? kEncodingASCII
                            : IsPrintableUTF8(bytes) ? kEncodingUTF8
                                                     : kEncodingMacRoman;
  return REALBuildUnicodeString(text, static_cast<long long>(bytes.size()), encoding);
}

}  // namespace zkt
