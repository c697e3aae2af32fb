// The part of CoreFoundation's strings and URLs that the plug-in uses, for Linux. Names and meanings are Apple's, so
// that the code above is written once; objects are reference counted, and immutable but for mutable copies.
#pragma once

#include <cstdint>

#include "platform/linux/string_encodings.h"

using CFIndex = long;
using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using UniChar = std::uint16_t;
using CFTypeRef = const void*;
using CFAllocatorRef = const void*;
using CFStringRef = const struct CFStringObject*;
using CFMutableStringRef = struct CFStringObject*;
using CFURLRef = const struct CFURLObject*;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

struct CFRange {
  CFIndex location;
  CFIndex length;
};

enum CFStringNormalizationForm : CFIndex { kCFStringNormalizationFormD = 0 };
enum CFURLPathStyle : CFIndex { kCFURLPOSIXPathStyle = 0 };

// Both create functions give one reference to the caller; null for bytes that are no text of the encoding, for an
// encoding that is not known, and when memory is out. An external representation may begin with a byte-order mark,
// which is used and dropped. The allocator is ignored.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex count);

// The length in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef string);

// Copies the text, zero-terminated, into the buffer; false when it does not fit or is no text of the encoding.
// Only UTF-8 can be asked for.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);

// Converts the code units of the range, which lies within the string, as far as whole characters fit into the buffer.
// An unpaired surrogate becomes the loss byte. Returns the number of code units that were converted; `usedSize` may be
// null and receives the number of bytes. Needs no memory. Only UTF-8 without a byte-order mark can be asked for.
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex bufferSize, CFIndex* usedSize);

// A copy that can be changed, with one reference for the caller; null when memory is out. The longest length is
// ignored.
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength, CFStringRef string);

// Takes every character apart, the marks in canonical order. Form D is the only one that can be asked for. Without
// memory the string stays as it is.
void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

// URLs of a file's path, which is kept as it is, and of a URL's text, of which the path counts and the base is ignored.
// One reference for the caller; null for an empty path, for what is no URL, and when memory is out.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef base);

// The path without escapes and without a slash at its end, with one reference for the caller; null when memory is out.
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
