// The methods added to the host's Graphics class: text at any angle. The Graphics object determines the font, size,
// color, bold, italic and underline.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Draws text with its lower left corner at (x, y), or with its center there, rotated about that point by `Rotation`
// degrees counter-clockwise. `y` counts down from the top, or up from the lower edge with `NoSwapY` or if the host does
// not report a height of at least 1. The opacity `alpha` is passed to the system unchanged. `FontWidth` is ignored.
// Does nothing for an empty text or a Graphics that cannot be drawn on. Nil raises NilObjectException.
void DrawRotatedText(REALgraphics g, double Rotation, REALstring text, std::int64_t x, std::int64_t y,
                     REALboolean Center, double alpha, REALboolean NoSwapY, std::int64_t FontWidth);

// Measures the text as drawn without rotation, in units of the Graphics. Returns false and sets both values to 0 for an
// empty text, a text without extent, and a Graphics that cannot be drawn on. Nil raises NilObjectException.
REALboolean MeasureRotatedText(REALgraphics g, REALstring text, double* Width, double* Height, std::int64_t FontWidth);

}  // namespace zkt
