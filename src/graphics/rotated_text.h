// The methods that the host's Graphics class is given: text at any angle.
// The style comes from the Graphics object: its font, size, color, bold, italic and underline.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Draws text with its lower left corner at (x, y), or with its center there, turned about that point by `Rotation`
// degrees counter-clockwise. `y` counts down from the top; it counts up from the lower edge with `NoSwapY`, and where
// the host does not tell a height of at least 1. The opacity `alpha` is passed to the system as it is, `FontWidth` is
// ignored. An empty text and a Graphics that cannot be drawn on leave everything as it is; nil raises
// NilObjectException.
void DrawRotatedText(REALgraphics g, double Rotation, REALstring text, std::int64_t x, std::int64_t y,
                     REALboolean Center, double alpha, REALboolean NoSwapY, std::int64_t FontWidth);

// Measures a text as it would be drawn without rotation, in units of the Graphics. False, and both 0, for an empty
// text, for one that has no extent, and for a Graphics that cannot be drawn on; nil raises NilObjectException.
REALboolean MeasureRotatedText(REALgraphics g, REALstring text, double* Width, double* Height, std::int64_t FontWidth);

}  // namespace zkt
