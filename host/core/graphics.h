// The host's Picture and Graphics classes, which use Cairo. A Picture is an image in memory, and its Graphics draws on
// it. A Graphics without a Picture draws nothing.
#pragma once

#include <cairo/cairo.h>

#include <cstdint>

#include "core/objects.h"

namespace host {

// Makes a transparent Picture. Returns null if the width or height is not between 1 and 32,767 pixels, or if
// Cairo fails.
ObjectRef MakePicture(std::int64_t width, std::int64_t height);

// Returns the Graphics of a Picture. The Picture owns the Graphics.
REALobjectStruct* GraphicsOf(REALobjectStruct* picture);

// Returns the drawing context of a Graphics; null if the Graphics has no Picture. The origin of the context's user
// space is the upper left corner.
cairo_t* ContextOf(const REALobjectStruct* graphics);

}  // namespace host
