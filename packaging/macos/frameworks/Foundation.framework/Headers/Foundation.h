// The part of Foundation that the plug-in uses. Other methods and classes cannot be used until they are declared here,
// which keeps this list short and complete.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#if defined(__aarch64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#define nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
  NSPoint point = {x, y};
  return point;
}

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
+ (BOOL)respondsToSelector:(SEL)selector;
- (instancetype)init;
- (instancetype)retain;
- (oneway void)release;
@end

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end

@interface NSString : NSObject
- (instancetype)initWithUTF8String:(const char*)text;
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithInt:(int)value;
@end

@interface NSDictionary : NSObject
@end

@interface NSMutableDictionary : NSDictionary
+ (instancetype)dictionaryWithCapacity:(NSUInteger)count;
- (void)setValue:(id)value forKey:(NSString*)key;
@end

@interface NSException : NSObject
@end

@interface NSAffineTransform : NSObject
+ (NSAffineTransform*)transform;
- (void)translateXBy:(CGFloat)x yBy:(CGFloat)y;
- (void)rotateByDegrees:(CGFloat)angle;
@end

#ifdef __cplusplus
extern "C"
#endif
    void
    NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
