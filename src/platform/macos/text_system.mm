// Draws text with AppKit, whose default coordinate space is unflipped.
#include "platform/text_system.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

namespace zkt {

namespace {

NSString* AsNSString(CFStringRef string) { return (NSString*)string; }
NSFont* AsFont(TextFont font) { return (NSFont*)font; }

NSDictionary* DictionaryOf(const TextAttributes& attributes) {
  NSMutableDictionary* const dictionary = [NSMutableDictionary dictionaryWithCapacity:10];
  if (attributes.color) {
    const TextColor& color = *attributes.color;
    [dictionary setValue:[NSColor colorWithDeviceRed:color.red green:color.green blue:color.blue alpha:color.alpha]
                  forKey:NSForegroundColorAttributeName];
  }
  if (attributes.isUnderlined) [dictionary setValue:[NSNumber numberWithInt:1] forKey:NSUnderlineStyleAttributeName];
  [dictionary setValue:AsFont(attributes.font) forKey:NSFontAttributeName];
  return dictionary;
}

// Calls the older of two equivalent methods. The newer method requires macOS 10.10. The tests on GNUstep replace the
// older method with their own.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
NSGraphicsContext* ContextOn(CGContextRef context) {
  return [NSGraphicsContext graphicsContextWithGraphicsPort:context flipped:NO];
}
#pragma clang diagnostic pop

}  // namespace

struct TextSystem::State {
  // The host's threads may have no autorelease pool.
  NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
  NSGraphicsContext* former = [[NSGraphicsContext currentContext] retain];
  CGContextRef context = nullptr;
};

TextSystem::TextSystem() : state_(std::make_unique<State>()) {}

TextSystem::~TextSystem() {
  if (state_->context != nullptr) CGContextRestoreGState(state_->context);
  [NSGraphicsContext setCurrentContext:state_->former];
  [state_->former release];
  [state_->pool drain];
}

bool TextSystem::Begin(DrawingContext context) {
  state_->context = static_cast<CGContextRef>(context);
  CGContextSaveGState(state_->context);
  [NSGraphicsContext setCurrentContext:ContextOn(state_->context)];
  return true;
}

void TextSystem::MoveAndTurn(double x, double y, double degrees) {
  NSAffineTransform* const transform = [NSAffineTransform transform];
  [transform translateXBy:x yBy:y];
  [transform rotateByDegrees:degrees];
  [transform concat];
}

void TextSystem::Move(double x, double y) {
  NSAffineTransform* const transform = [NSAffineTransform transform];
  [transform translateXBy:x yBy:y];
  [transform concat];
}

double TextSystem::SystemFontSize() const { return [NSFont systemFontSize]; }

TextFont TextSystem::FontOfFamily(CFStringRef family, bool isBold, bool isItalic, double size) {
  const NSFontTraitMask traits = (isItalic ? NSItalicFontMask : 0u) | (isBold ? NSBoldFontMask : 0u);
  return [[NSFontManager sharedFontManager] fontWithFamily:AsNSString(family) traits:traits weight:0 size:size];
}

TextFont TextSystem::SystemFont(double size) { return [NSFont systemFontOfSize:size]; }

TextFont TextSystem::BoldSystemFont(double size) { return [NSFont boldSystemFontOfSize:size]; }

const void* TextSystem::FontManager() { return [NSFontManager sharedFontManager]; }

TextSize TextSystem::Measure(CFStringRef text, const TextAttributes& attributes) {
  if (text == nullptr) return {};
  const NSSize size = [AsNSString(text) sizeWithAttributes:DictionaryOf(attributes)];
  return {size.width, size.height};
}

void TextSystem::Draw(CFStringRef text, const TextAttributes& attributes) {
  [AsNSString(text) drawAtPoint:NSMakePoint(0, 0) withAttributes:DictionaryOf(attributes)];
}

void TextSystem::LogFontManager(const char* label) { NSLog(@"%s: %@\n", label, [NSFontManager sharedFontManager]); }

void TextSystem::LogFamily(const char* label, CFStringRef family) { NSLog(@"%s: %@\n", label, AsNSString(family)); }

void TextSystem::LogFont(const char* label, TextFont font) { NSLog(@"%s: %@\n", label, AsFont(font)); }

}  // namespace zkt
