// The part of CoreFoundation that the plug-in uses, declared here so that the plug-in can be compiled for macOS on any
// machine.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef long CFIndex;
typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint16_t UniChar;
typedef uint32_t CFStringEncoding;
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;
typedef const struct __CFURL* CFURLRef;
typedef CFIndex CFStringNormalizationForm;
typedef CFIndex CFURLPathStyle;

extern const CFAllocatorRef kCFAllocatorDefault;

enum {
  kCFStringEncodingMacRoman = 0,
  kCFStringEncodingUTF8 = 0x08000100,
};
enum { kCFStringNormalizationFormD = 0 };
enum { kCFURLPOSIXPathStyle = 0 };

CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters, CFIndex count);
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex mostCharacters, CFStringRef string);
void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);
CFIndex CFStringGetLength(CFStringRef string);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isDirectory);
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef base);
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);

#ifdef __cplusplus
}
#endif
