#include "shim.h"

#import <CoreFoundation/CoreFoundation.h>
#include <objc/runtime.h>

namespace {

NSStringEncoding EncodingOf(CFStringEncoding encoding) {
  switch (encoding) {
    case 0x0000:
      return NSMacOSRomanStringEncoding;
    case 0x0201:
      return NSISOLatin1StringEncoding;
    case 0x0500:
      return NSWindowsCP1252StringEncoding;
    case 0x0600:
      return NSASCIIStringEncoding;
    default:
      return NSUTF8StringEncoding;
  }
}

// GNUstep would create a context that draws nothing.
id WrappedContext(id, SEL, void* port, BOOL) { return static_cast<CGContextRef>(port)->target; }

// GNUstep has no plain fonts of weight 0. Apple treats weight 0 as the ordinary weight, which is 5.
using FontMethod = id (*)(id, SEL, NSString*, NSFontTraitMask, NSInteger, CGFloat);
FontMethod gFontWithFamily;
id FontOfOrdinaryWeight(id self, SEL selector, NSString* family, NSFontTraitMask traits, NSInteger weight,
                        CGFloat size) {
  return gFontWithFamily(self, selector, family, traits, weight != 0 ? weight : 5, size);
}

}  // namespace

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding encoding,
                                    Boolean) {
  return (CFStringRef)[[NSString alloc] initWithBytes:bytes
                                               length:static_cast<NSUInteger>(count)
                                             encoding:EncodingOf(encoding)];
}
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
  return (CFStringRef)[[NSString alloc] initWithCharacters:characters length:static_cast<NSUInteger>(count)];
}
CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>([(NSString*)string length]); }
void CFRelease(CFTypeRef object) { [(id)object release]; }

void CGContextSaveGState(CGContextRef context) {
  ++context->saves;
  [context->target saveGraphicsState];
}
void CGContextRestoreGState(CGContextRef context) {
  ++context->restores;
  [context->target restoreGraphicsState];
}
}

void InstallShim() {
  if (gFontWithFamily != nullptr) return;
  const auto replace = [](Method method, auto function) {
    return method_setImplementation(method, reinterpret_cast<IMP>(function));
  };
  replace(class_getClassMethod([NSGraphicsContext class], @selector(graphicsContextWithGraphicsPort:flipped:)),
          WrappedContext);
  gFontWithFamily = reinterpret_cast<FontMethod>(
      replace(class_getInstanceMethod([NSFontManager class], @selector(fontWithFamily:traits:weight:size:)),
              FontOfOrdinaryWeight));
}
