// How a Graphics object writes, read from its properties by name.
#pragma once

#include <cstdint>

#include "frame/contract/host_reference.h"

namespace zkt {

// What a property is when the host cannot tell stands beside it.
struct TextStyle {
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;
  std::uint32_t color = 0;     // 0x00RRGGBB
  std::int64_t textUnit = 1;   // told in the log, and of no consequence
  std::int64_t textSize = 12;  // in points; below 1 for the size of the system font
  OwnedString fontName;        // of a family; empty for the system font
};

// The color matters for drawing only.
enum class StyleUse { kDrawing, kMeasuring };

TextStyle ReadTextStyle(REALgraphics g, StyleUse use);

// Tells it in the debug log.
void TraceTextStyle(const TextStyle& style, StyleUse use);

// The height of what is drawn on; -1 when the host cannot tell.
std::int64_t ReadHeight(REALgraphics g);

}  // namespace zkt
