#include "graphics/text_style.h"

#include <array>

#include "runtime/debug_log.h"

namespace zkt {

namespace {

template <auto& getter, class Value>
Value Read(REALgraphics g, const char* name, Value otherwise) {
  Value value = otherwise;
  return getter(g, name, &value) ? value : otherwise;
}

bool ReadFlag(REALgraphics g, const char* name) { return Read<REALGetPropValueBoolean>(g, name, REALboolean{0}) != 0; }

std::int64_t ReadInteger(REALgraphics g, const char* name, std::int64_t otherwise) {
  return Read<REALGetPropValueInteger>(g, name, otherwise);
}

void TraceTextUnit(std::int64_t unit) {
  constexpr std::array kNames = {"TextUnit Default", "TextUnit Pixel", "TextUnit Point", "TextUnit Inches",
                                 "TextUnit Millimeter"};
  if (unit >= 0 && unit < std::int64_t{kNames.size()}) Trace(kNames[static_cast<std::size_t>(unit)]);
}

}  // namespace

TextStyle ReadTextStyle(REALgraphics g, StyleUse use) {
  const TextStyle otherwise;
  return {.isBold = ReadFlag(g, "Bold"),
          .isItalic = ReadFlag(g, "Italic"),
          .isUnderlined = ReadFlag(g, "Underline"),
          .color = use == StyleUse::kDrawing ? Read<REALGetPropValueColor>(g, "ForeColor", otherwise.color)
                                             : otherwise.color,
          .textUnit = ReadInteger(g, "TextUnit", otherwise.textUnit),
          .textSize = ReadInteger(g, "TextSize", otherwise.textSize),
          .fontName = OwnedString(Read<REALGetPropValueString>(g, "TextFont", REALstring{}))};
}

void TraceTextStyle(const TextStyle& style, StyleUse use) {
  if (!IsDebugging()) return;
  REALstring const fontName = style.fontName.Get();
  Trace("textfont encoding", fontName != nullptr ? REALGetStringEncoding(fontName) : std::uint32_t{0});
  Trace("bold", style.isBold);
  Trace("italic", style.isItalic);
  Trace("underline", style.isUnderlined);
  if (use == StyleUse::kDrawing) Trace("ForeColor", style.color);
  Trace("TextUnit", style.textUnit);
  if (use == StyleUse::kMeasuring) TraceTextUnit(style.textUnit);
  Trace("TextSize", style.textSize);
}

std::int64_t ReadHeight(REALgraphics g) { return ReadInteger(g, "Height", -1); }

}  // namespace zkt
