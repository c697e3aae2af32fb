// The part of AppKit that the plug-in uses to draw and measure text.
#pragma once

#include <Foundation/Foundation.h>

typedef NSUInteger NSFontTraitMask;
enum {
  NSItalicFontMask = 1,
  NSBoldFontMask = 2,
};

@interface NSGraphicsContext : NSObject
+ (NSGraphicsContext*)currentContext;
+ (void)setCurrentContext:(NSGraphicsContext*)context;
+ (NSGraphicsContext*)graphicsContextWithGraphicsPort:(void*)port flipped:(BOOL)isFlipped __attribute__((deprecated));
@end

@interface NSAffineTransform (Drawing)
- (void)concat;
@end

@interface NSFont : NSObject
+ (CGFloat)systemFontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)boldSystemFontOfSize:(CGFloat)size;
@end

@interface NSFontManager : NSObject
+ (NSFontManager*)sharedFontManager;
- (NSFont*)fontWithFamily:(NSString*)family traits:(NSFontTraitMask)traits weight:(NSInteger)weight size:(CGFloat)size;
@end

@interface NSColor : NSObject
+ (NSColor*)colorWithDeviceRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
@end

@interface NSString (Drawing)
- (NSSize)sizeWithAttributes:(NSDictionary*)attributes;
- (void)drawAtPoint:(NSPoint)point withAttributes:(NSDictionary*)attributes;
@end

#ifdef __cplusplus
extern "C" {
#endif
extern NSString* const NSForegroundColorAttributeName;
extern NSString* const NSUnderlineStyleAttributeName;
extern NSString* const NSFontAttributeName;
#ifdef __cplusplus
}
#endif
