#include "runtime/string_builder.h"

#include "frame/contract/host_reference.h"
#include "frame/contract/plugin_state.h"
#include "runtime/debug_log.h"
#include "runtime/text_classification.h"

namespace zkt {

namespace {

// Hosts before 2012 build strings without an encoding, so the encoding is set afterwards.
REALstring BuildInEncoding(const void* bytes, long long count, unsigned int encoding) {
  if (rbversion >= 2012.0) return REALBuildStringWithEncoding(bytes, count, encoding);
  OwnedString built(originalREALBuildString(bytes, count));
  if (built) REALSetStringEncoding(built.Get(), encoding);
  return built.Release();
}

REALstring BuildFromUTF16(const void* bytes, long long count) {
  const OwnedString original(BuildInEncoding(bytes, count, kEncodingUTF16));
  if (!original) {
    if (rbversion < 2012.0) Trace("Out of memory in REALBuildUnicodeStringUTF16.");
    return nullptr;
  }
  return REALConvertString(original.Get(), kEncodingUTF8);
}

}  // namespace

REALstring BuildUnicodeString(const void* bytes, long long count, unsigned int encoding) {
  if (bytes == nullptr || count < 1) return nullptr;
  if (count >= 0x80000000LL) {
    Trace("Count too big for REALBuildUnicodeString.");
    return nullptr;
  }
  switch (encoding) {
    case kEncodingUTF16:
      return BuildFromUTF16(bytes, count);
    case kEncodingMacRoman:
    case kEncodingISOLatin1:
    case kEncodingWindowsLatin1:
    case kEncodingNone:
      if (IsASCII({static_cast<const char*>(bytes), static_cast<std::size_t>(count)})) encoding = kEncodingASCII;
      break;
    case kEncodingASCII:
    case kEncodingUTF8:
      break;
    default:
      Trace("Unknown encoding in REALBuildUnicodeString", encoding);
  }
  return BuildInEncoding(bytes, count, encoding);
}

}  // namespace zkt
