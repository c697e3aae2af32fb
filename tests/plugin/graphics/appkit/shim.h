// Makes GNUstep's AppKit behave as Apple's where the two differ.
#pragma once

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

// A Core Graphics context is what stands in for one: it passes on to the context that draws, and counts.
struct CGContext {
  NSGraphicsContext* target;
  int saves;
  int restores;
};

// Replaces, once, the methods of GNUstep that differ.
void InstallShim();
