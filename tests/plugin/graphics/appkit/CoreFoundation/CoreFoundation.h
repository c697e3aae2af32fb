// CoreFoundation's strings for tests on GNUstep, where a CFStringRef is an NSString; names and meanings are Apple's.
#pragma once

#include <cstdint>

using CFIndex = long;
using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using UniChar = std::uint16_t;
using CFStringEncoding = std::uint32_t;
using CFTypeRef = const void*;
using CFAllocatorRef = const struct __CFAllocator*;
using CFStringRef = const struct __CFString*;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

extern "C" {
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding, Boolean);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count);
CFIndex CFStringGetLength(CFStringRef);
void CFRelease(CFTypeRef);
}
