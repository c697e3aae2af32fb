// The subset of CoreFoundation's strings and URLs that the plug-in uses, for Linux. Names and meanings are Apple's, so
// the callers are written only once. Objects are reference counted, and immutable except for mutable copies.
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

// Both functions return a reference that the caller owns. Null for bytes that are not valid in the encoding, for an
// unknown encoding, and if memory runs out. An external representation may begin with a byte-order mark, which is used
// and removed. The allocator is ignored.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex count);

// Returns the length in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef string);

// Copies the text, zero-terminated, into the buffer. Returns false if it does not fit or is not valid in the encoding.
// Only UTF-8 is supported.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);

// Converts the code units of the range, which must be within the string, until the next character does not fit into the
// buffer. An unpaired surrogate becomes the loss byte. Returns the number of converted code units. `usedSize` may be
// null, and receives the number of bytes. Needs no heap memory. Only UTF-8 without a byte-order mark is supported.
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex bufferSize, CFIndex* usedSize);

// Returns a mutable copy that the caller owns, or null if memory runs out. The maximum length is ignored.
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength, CFStringRef string);

// Decomposes every character and puts its marks in canonical order. Only form D is supported. If memory runs out, the
// string does not change.
void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

// Create a URL from a file path, which is kept unchanged, or from the text of a URL, of which only the path is used;
// the base is ignored. The caller owns the reference. Null for an empty path, an invalid URL, and if memory runs out.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef base);

// Returns the path without escapes and without a trailing slash. The caller owns it. Null if memory runs out.
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
