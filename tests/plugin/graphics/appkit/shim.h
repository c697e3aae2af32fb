// Makes GNUstep's AppKit behave like Apple's where the two differ.
#pragma once

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

// The stand-in for a Core Graphics context: forwards to the context that draws, and counts.
struct CGContext {
  NSGraphicsContext* target;
  int saves;
  int restores;
};

// Replaces the methods of GNUstep that differ. Call it once.
void InstallShim();
