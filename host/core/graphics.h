// The host's classes Picture and Graphics, drawn with Cairo. A Picture is an image in memory, and its Graphics draws on
// it. A Graphics without a Picture has nothing to draw on.
#pragma once

#include <cairo/cairo.h>

#include <cstdint>
#include <vector>

#include "core/objects.h"

namespace host {

std::vector<ObjectClass*> GraphicsClasses();

// Makes a transparent Picture. Returns null if the width or height is not between 1 and 32,767 pixels, or if
// Cairo fails.
ObjectRef MakePicture(std::int64_t width, std::int64_t height);

// The Graphics of a Picture. The Picture owns it.
REALobjectStruct* GraphicsOf(REALobjectStruct* picture);

// The drawing context of a Graphics; null without a Picture. The origin of its user space is the upper left corner.
cairo_t* ContextOf(const REALobjectStruct* graphics);

}  // namespace host
