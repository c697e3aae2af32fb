// The extension of the host's Graphics class.
#include <iterator>

#include "frame/catalogue/catalogue.h"
#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "graphics/rotated_text.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    ObjectMethod("DrawRotatedTextZKT(Rotation as double, text as string, x as integer, y as integer, Center as Boolean = false, alpha as double = 1.0, NoSwapY as boolean = false, FontWidth as Integer = 0)", DrawRotatedText, kDesktop),
    ObjectMethod("MeasureRotatedTextZKT(text as string, byref Width as double, byref Height as double, FontWidth as Integer = 0) as Boolean", MeasureRotatedText, kDesktop),
};
// clang-format on

REALclassDefinition gExtension = {
    .version = kCurrentREALControlVersion,
    .name = "Graphics",
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .flags = kDesktop,
};

}  // namespace

REALclassDefinition* GraphicsExtension() { return &gExtension; }

}  // namespace zkt
