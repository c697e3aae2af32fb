// The part of Core Graphics that the plug-in uses, on 64-bit systems.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef double CGFloat;
typedef struct CGPoint {
  CGFloat x, y;
} CGPoint;
typedef struct CGSize {
  CGFloat width, height;
} CGSize;
typedef struct CGContext* CGContextRef;

void CGContextSaveGState(CGContextRef context);
void CGContextRestoreGState(CGContextRef context);

#ifdef __cplusplus
}
#endif
