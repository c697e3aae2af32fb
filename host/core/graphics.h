// The host's classes Picture and Graphics, drawn with Cairo: a Picture is an image in memory, its Graphics draws on it.
// A Graphics that belongs to no Picture has nothing to draw on.
#pragma once

#include <cairo/cairo.h>

#include <cstdint>
#include <vector>

#include "core/objects.h"

namespace host {

std::vector<ObjectClass*> GraphicsClasses();

// Makes a transparent Picture; null for sizes that Cairo refuses. Sizes are in pixels.
ObjectRef MakePicture(std::int64_t width, std::int64_t height);

// The Graphics of a Picture, which keeps it.
REALobjectStruct* GraphicsOf(REALobjectStruct* picture);

// What a Graphics draws with; null without a Picture. Its user space begins at the upper left corner.
cairo_t* ContextOf(const REALobjectStruct* graphics);

}  // namespace host
