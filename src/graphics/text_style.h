// The text style of a Graphics object, read from its properties by name.
#pragma once

#include <cstdint>

#include "frame/contract/host_reference.h"

namespace zkt {

// A member keeps its initial value if the host cannot provide the corresponding property of Graphics.
struct TextStyle {
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;
  std::uint32_t color = 0;     // 0x00RRGGBB
  std::int64_t textUnit = 1;   // logged, but otherwise unused
  std::int64_t textSize = 12;  // in points; below 1 means the system font size
  OwnedString fontName;        // a font family; empty means the system font
};

// Only drawing uses the color.
enum class StyleUse { kDrawing, kMeasuring };

TextStyle ReadTextStyle(REALgraphics g, StyleUse use);

// Writes the style to the debug log.
void TraceTextStyle(const TextStyle& style, StyleUse use);

// Returns the height of the drawing area, or -1 if the host cannot provide it.
std::int64_t ReadHeight(REALgraphics g);

}  // namespace zkt
