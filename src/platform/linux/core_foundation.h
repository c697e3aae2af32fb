// The subset of CoreFoundation's string and URL functions that the plug-in uses, implemented for Linux. Names and
// behavior are the same as on macOS, so callers need no platform-specific code. Objects are reference counted. All
// except mutable copies are immutable.
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

// Create a string. The caller owns the reference. Return null if the bytes are not valid in the encoding, if the
// encoding is unknown, or if memory runs out. An external representation may begin with a byte-order mark, which is
// honored and removed. The allocator is ignored.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex count);

// Returns the length in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef string);

// Copies the string into the buffer with a terminating zero. Returns false if the string does not fit or cannot be
// encoded. Only UTF-8 is supported.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);

// Converts the code units in the range, which must be within the string. Stops before the first character that does not
// fit into the buffer. `lossByte` replaces each unpaired surrogate. Returns the number of code units converted.
// `usedSize` receives the number of bytes written and may be null. Needs no heap memory. Only UTF-8 without a
// byte-order mark is supported.
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex bufferSize, CFIndex* usedSize);

// Returns a mutable copy that the caller owns, or null if memory runs out. The maximum length is ignored.
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength, CFStringRef string);

// Decomposes every character and puts combining marks in canonical order. Only form D is supported. If memory runs out,
// the string does not change.
void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

// Create a URL from a file path, which is kept unchanged, or from a URL string, of which only the path is used. The
// base URL is ignored. The caller owns the reference. Return null for an empty file path, for an invalid URL, or if
// memory runs out.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef base);

// Returns the decoded path without a trailing slash, or null if memory runs out. The caller owns the result.
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
