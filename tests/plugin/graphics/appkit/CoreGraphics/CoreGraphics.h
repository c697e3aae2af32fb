// The two calls of Core Graphics that AppKit code makes directly, for tests on GNUstep.
#pragma once

using CGContextRef = struct CGContext*;

extern "C" {
void CGContextSaveGState(CGContextRef);
void CGContextRestoreGState(CGContextRef);
}
