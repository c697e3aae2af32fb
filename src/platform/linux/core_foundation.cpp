#include "platform/linux/core_foundation.h"

#include <atomic>
#include <cstring>
#include <exception>
#include <string>

#include "platform/linux/decomposition.h"
#include "platform/linux/file_url.h"
#include "platform/linux/text_decoding.h"

// CoreFoundation returns null when memory runs out, so no exception may escape from these functions.

struct CFObject {
  mutable std::atomic<CFIndex> references{1};

  CFObject() = default;
  CFObject(const CFObject&) = delete;
  CFObject& operator=(const CFObject&) = delete;
  virtual ~CFObject() = default;
};

struct CFStringObject : CFObject {
  std::u16string text;

  explicit CFStringObject(std::u16string&& content) : text(std::move(content)) {}
};

struct CFURLObject : CFObject {
  std::u16string path;  // decoded

  explicit CFURLObject(std::u16string&& content) : path(std::move(content)) {}
};

namespace {

// Every object begins with a CFObject, so the reference count is accessible through an untyped reference.
const CFObject* ObjectOf(CFTypeRef object) { return static_cast<const CFObject*>(object); }

}  // namespace

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
    // The host does not guarantee that the bytes of a string are aligned.
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

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte, Boolean,
                         UInt8* buffer, CFIndex bufferSize, CFIndex* usedSize) {
  if (encoding != kCFStringEncodingUTF8) return 0;
  const std::u16string_view text =
      std::u16string_view(string->text)
          .substr(static_cast<std::size_t>(range.location), static_cast<std::size_t>(range.length));
  const zkt::Encoded encoded = zkt::EncodeUTF8Into(
      {reinterpret_cast<char*>(buffer), static_cast<std::size_t>(bufferSize)}, text, static_cast<char>(lossByte));
  if (usedSize != nullptr) *usedSize = static_cast<CFIndex>(encoded.bytes);
  return static_cast<CFIndex>(encoded.units);
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef string) {
  try {
    return new CFStringObject(std::u16string(string->text));
  } catch (const std::exception&) {
    return nullptr;
  }
}

void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form) {
  if (form != kCFStringNormalizationFormD) return;
  try {
    string->text = zkt::DecomposeCanonically(string->text);
  } catch (const std::exception&) {
    return;
  }
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean) {
  if (style != kCFURLPOSIXPathStyle || path->text.empty()) return nullptr;
  try {
    return new CFURLObject(std::u16string(path->text));
  } catch (const std::exception&) {
    return nullptr;
  }
}

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef text, CFURLRef) {
  try {
    const auto bytes = zkt::EncodeUTF8(text->text);
    const auto path = bytes ? zkt::PathOfURL(*bytes) : std::nullopt;
    auto decoded = path ? zkt::DecodeText(*path, kCFStringEncodingUTF8, false) : std::nullopt;
    return decoded ? new CFURLObject(std::move(*decoded)) : nullptr;
  } catch (const std::exception&) {
    return nullptr;
  }
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style) {
  if (style != kCFURLPOSIXPathStyle) return nullptr;
  try {
    std::u16string path = url->path;
    if (path.size() > 1 && path.back() == u'/') path.pop_back();
    return new CFStringObject(std::move(path));
  } catch (const std::exception&) {
    return nullptr;
  }
}

CFTypeRef CFRetain(CFTypeRef object) {
  ObjectOf(object)->references.fetch_add(1, std::memory_order_relaxed);
  return object;
}

void CFRelease(CFTypeRef object) {
  const CFObject* const counted = ObjectOf(object);
  if (counted->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete counted;
}
