#include "platform/linux/core_foundation.h"

#include <atomic>
#include <cstring>
#include <exception>
#include <string>

#include "platform/linux/text_decoding.h"

// CoreFoundation answers null when memory is out, so that no exception may leave these functions.

struct CFStringObject {
  mutable std::atomic<CFIndex> references{1};
  std::u16string text;

  explicit CFStringObject(std::u16string&& content) : text(std::move(content)) {}
};

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding encoding,
                                    Boolean isExternalRepresentation) {
  if (count < 0 || (bytes == nullptr && count != 0)) return nullptr;
  try {
    auto text = zkt::DecodeText({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)}, encoding,
                                isExternalRepresentation != 0);
    return text ? new CFStringObject(std::move(*text)) : nullptr;
  } catch (const std::exception&) {
    return nullptr;
  }
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
  if (count < 0 || (characters == nullptr && count != 0)) return nullptr;
  try {
    std::u16string text(static_cast<std::size_t>(count), u'\0');
    // The host does not promise that the bytes of a string are aligned.
    if (count > 0) std::memcpy(text.data(), characters, text.size() * sizeof(UniChar));
    return new CFStringObject(std::move(text));
  } catch (const std::exception&) {
    return nullptr;
  }
}

CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(string->text.size()); }

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding) {
  if (encoding != kCFStringEncodingUTF8) return false;
  try {
    const auto bytes = zkt::EncodeUTF8(string->text);
    if (!bytes || static_cast<CFIndex>(bytes->size()) >= bufferSize) return false;
    std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

CFTypeRef CFRetain(CFTypeRef object) {
  static_cast<CFStringRef>(object)->references.fetch_add(1, std::memory_order_relaxed);
  return object;
}

void CFRelease(CFTypeRef object) {
  const CFStringRef string = static_cast<CFStringRef>(object);
  if (string->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete string;
}
