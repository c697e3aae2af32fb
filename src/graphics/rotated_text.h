// The methods for rotated text that the plug-in adds to the host's Graphics class. Properties of the Graphics object
// determine the font, size, color and style of the text.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Draws text with its lower-left corner at (x, y), or with its center there if `Center` is true. The text is rotated
// about that point by `Rotation` degrees counterclockwise. `y` is measured down from the upper edge of the drawing
// area, or up from the lower edge if `NoSwapY` is true or the host does not report a height of at least 1. `alpha` is
// the opacity and is passed to the system unchanged. `FontWidth` is ignored. Does nothing if the text is empty or the
// Graphics object cannot be drawn on. Raises NilObjectException if `g` is nil.
void DrawRotatedText(REALgraphics g, double Rotation, REALstring text, std::int64_t x, std::int64_t y,
                     REALboolean Center, double alpha, REALboolean NoSwapY, std::int64_t FontWidth);

// Measures the unrotated text in units of the Graphics object. Returns false and sets both dimensions to 0 if the text
// is empty or has no extent, or if the Graphics object cannot be drawn on. Raises NilObjectException if `g` is nil.
REALboolean MeasureRotatedText(REALgraphics g, REALstring text, double* Width, double* Height, std::int64_t FontWidth);

}  // namespace zkt
