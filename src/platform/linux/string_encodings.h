// CoreFoundation's text encoding numbers. Names and values are Apple's.
#pragma once

#include <cstdint>

using CFStringEncoding = std::uint32_t;

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
