// What the host's class Graphics is given.
#include <iterator>

#include "frame/catalogue.h"
#include "frame/rows.h"
#include "graphics/rotated_text.h"

namespace zkt {

namespace {

// For projects with windows.
constexpr std::uint32_t kDesktop = 0x200;

// clang-format off
REALmethodDefinition gMethods[] = {
    ObjectMethod("DrawRotatedTextZKT(Rotation as double, text as string, x as integer, y as integer, Center as Boolean = false, alpha as double = 1.0, NoSwapY as boolean = false, FontWidth as Integer = 0)", DrawRotatedText, kDesktop),
    ObjectMethod("MeasureRotatedTextZKT(text as string, byref Width as double, byref Height as double, FontWidth as Integer = 0) as Boolean", MeasureRotatedText, kDesktop),
};
// clang-format on

REALclassDefinition gExtension = [] {
  REALclassDefinition extension = {};
  extension.version = 15;
  extension.name = "Graphics";
  extension.methods = gMethods;
  extension.methodCount = std::size(gMethods);
  extension.flags = kDesktop;
  return extension;
}();

}  // namespace

REALclassDefinition* GraphicsExtension() { return &gExtension; }

}  // namespace zkt
