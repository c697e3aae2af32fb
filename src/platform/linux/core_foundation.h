// The part of CoreFoundation's string interface that the plug-in uses, for Linux. Names and meanings are Apple's, so
// that the code above is written once; objects are reference counted and immutable.
#pragma once

#include <cstdint>

using CFIndex = long;
using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using UniChar = std::uint16_t;
using CFStringEncoding = std::uint32_t;
using CFTypeRef = const void*;
using CFAllocatorRef = const void*;
using CFStringRef = const struct CFStringObject*;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

enum : CFStringEncoding {
  kCFStringEncodingMacRoman = 0x0000,
  kCFStringEncodingUTF16 = 0x0100,
  kCFStringEncodingISOLatin1 = 0x0201,
  kCFStringEncodingWindowsLatin1 = 0x0500,
  kCFStringEncodingASCII = 0x0600,
  kCFStringEncodingUTF8 = 0x08000100,
  kCFStringEncodingUTF32 = 0x0C000100,
  kCFStringEncodingUTF16BE = 0x10000100,
  kCFStringEncodingUTF16LE = 0x14000100,
  kCFStringEncodingUTF32BE = 0x18000100,
  kCFStringEncodingUTF32LE = 0x1C000100,
};

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

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
