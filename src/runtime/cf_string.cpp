#include "runtime/cf_string.h"

#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "runtime/debug_log.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

CFStringRef FromHost(REALstring string) {
  if constexpr (!kHostHasCFStrings) return nullptr;
  if (rbversion >= 2012.0)
    if (const void* const copied = REALCopyStringCFString(string)) return static_cast<CFStringRef>(copied);
  return static_cast<CFStringRef>(REALGetStringCFString(string));
}

CFStringRef FromBytes(const rbData& raw, std::uint32_t encoding) {
  return CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(raw.Bytes()), raw.Count(),
                                 encoding, true);
}

}  // namespace

CFStringRef RBString2CFString(REALstring string) {
  if (string == nullptr) return nullptr;
  const std::uint32_t encoding = REALGetStringEncoding(string);
  if (encoding == kEncodingNone) return FromBytes(rbData(string), kEncodingMacRoman);
  if (const CFStringRef given = FromHost(string)) return given;
  const rbData raw(string);
  switch (encoding) {
    case kEncodingUTF16:
      return CFStringCreateWithCharacters(kCFAllocatorDefault, reinterpret_cast<const UniChar*>(raw.Bytes()),
                                          raw.Count() / 2);
    case kEncodingWindowsLatin1:
    case kEncodingUTF8:
    case kEncodingUTF32:
    case kEncodingMacRoman:
    case kEncodingISOLatin1:
      break;
    default:
      Trace("other encoding", encoding);
  }
  return FromBytes(raw, encoding);
}

}  // namespace zkt
