// Makes GNUstep's AppKit behave like Apple's AppKit where the two differ.
#pragma once

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

// Replaces a Core Graphics context: counts the calls and forwards them to the context that draws.
struct CGContext {
  NSGraphicsContext* target;
  int saves;
  int restores;
};

// Replaces the GNUstep methods that behave differently from Apple's. Must be called only once.
void InstallShim();
