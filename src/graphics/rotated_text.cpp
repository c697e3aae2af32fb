#include "graphics/rotated_text.h"

#include "frame/contract/host_services.h"
#include "graphics/cocoa_init.h"
#include "graphics/graphics_handle.h"
#include "graphics/text_style.h"
#include "platform/text_system.h"
#include "runtime/cf_string.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/log_text.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

struct Placement {
  double rotation;
  std::int64_t x;
  std::int64_t y;
  bool isCentered;
  double alpha;
  bool keepsY;
};

void TraceText(REALstring text) {
  if (IsDebugging()) Trace("text", LogText(rbText(text).GetUTF8()).Get());
}

void TraceOrigin(REALgraphics g) {
  if (!IsDebugging()) return;
  std::int64_t x = 0;
  std::int64_t y = 0;
  if (g != nullptr) REALGetGraphicsOrigin(g, &x, &y);
  Trace("originX", x);
  Trace("originY", y);
}

// Returns whether the text is not empty and there is a Graphics object. Raises an exception if only the Graphics object
// is missing.
bool AreUsable(REALgraphics g, REALstring text) {
  if (text == nullptr) {
    Trace("text is empty.");
    return false;
  }
  if (g == nullptr) {
    Trace("g", "is nil");
    RaiseException("NilObjectException", "Graphics is nil");
    return false;
  }
  return true;
}

void LogFontSources(TextSystem& system, CFStringRef family, double size) {
  const void* const manager = system.FontManager();
  const TextFont plain = system.SystemFont(size);
  Trace("fontManager", manager);
  Trace("systemfont", plain);
  system.LogFontManager("fontManager");
  system.LogFamily("tf", family);
  system.LogFont("systemfont", plain);
}

// Returns the font for the style, or the system font if the style names no family that the system has.
TextFont ChooseFont(TextSystem& system, const TextStyle& style, CFStringRef family) {
  double size = static_cast<double>(style.textSize);
  if (style.textSize < 1) {
    size = system.SystemFontSize();
    Trace("Using default TextSize");
  }
  if (IsDebugging()) LogFontSources(system, family, size);
  TextFont font = nullptr;
  if (family != nullptr && CFStringGetLength(family) > 0) {
    font = system.FontOfFamily(family, style.isBold, style.isItalic, size);
    Trace("fontWithFamily", font);
  }
  if (font == nullptr) {
    font = style.isBold ? system.BoldSystemFont(size) : system.SystemFont(size);
    Trace(style.isBold ? "boldSystemFontOfSize" : "systemFontOfSize", font);
  }
  // Logged even while debugging is off, because support relies on this line to identify the font.
  system.LogFont("font", font);
  return font;
}

TextColor ColorOf(std::uint32_t color, double alpha) {
  const auto part = [&](int shift) { return static_cast<double>(color >> shift & 0xFF) / 255.0; };
  return {part(16), part(8), part(0), alpha};
}

void MoveToCenter(TextSystem& system, CFStringRef text, const TextAttributes& attributes) {
  const TextSize size = system.Measure(text, attributes);
  const double x = -size.width / 2;
  const double y = -size.height / 2;
  Trace("x", x);
  Trace("y", y);
  system.Move(x, y);
}

void Draw(REALgraphics g, REALstring text, const Placement& placement) {
  const TextStyle style = ReadTextStyle(g, StyleUse::kDrawing);
  TraceTextStyle(style, StyleUse::kDrawing);
  TextSystem system;
  const DrawingContext context = getCGContextRef(g);
  Trace("context", static_cast<const void*>(context));
  if (context == nullptr) return;
  CocoaInit();
  const std::int64_t height = placement.keepsY ? -1 : ReadHeight(g);
  // `y` is converted to double before the subtraction, so the subtraction cannot overflow.
  const double y = static_cast<double>(placement.y);
  if (!system.Begin(context)) return;
  system.MoveAndTurn(static_cast<double>(placement.x), height >= 1 ? static_cast<double>(height) - y : y,
                     placement.rotation);
  const CFStringRef family = RBString2CFString(style.fontName.Get());
  const fmCFReleaseLater releaseFamily(family);
  const CFStringRef line = RBString2CFString(text);
  const fmCFReleaseLater releaseLine(line);
  const TextAttributes attributes = {ColorOf(style.color, placement.alpha), style.isUnderlined,
                                     ChooseFont(system, style, family)};
  if (placement.isCentered) MoveToCenter(system, line, attributes);
  system.Draw(line, attributes);
}

TextSize Measure(REALgraphics g, REALstring text) {
  const TextStyle style = ReadTextStyle(g, StyleUse::kMeasuring);
  TraceTextStyle(style, StyleUse::kMeasuring);
  TextSystem system;
  const DrawingContext context = getCGContextRef(g);
  Trace("context", static_cast<const void*>(context));
  if (context == nullptr || !system.Begin(context)) return {};
  const CFStringRef family = RBString2CFString(style.fontName.Get());
  const fmCFReleaseLater releaseFamily(family);
  const CFStringRef line = RBString2CFString(text);
  const fmCFReleaseLater releaseLine(line);
  return system.Measure(line, {std::nullopt, style.isUnderlined, ChooseFont(system, style, family)});
}

}  // namespace

void DrawRotatedText(REALgraphics g, double Rotation, REALstring text, std::int64_t x, std::int64_t y,
                     REALboolean Center, double alpha, REALboolean NoSwapY, std::int64_t /*FontWidth*/) {
  TranslateExceptions([&] {
    Trace("DrawRotatedText");
    Trace("g", static_cast<const void*>(g));
    Trace("Rotation", Rotation);
    TraceText(text);
    Trace("x", x);
    Trace("y", y);
    TraceOrigin(g);
    if (AreUsable(g, text)) Draw(g, text, {Rotation, x, y, Center != 0, alpha, NoSwapY != 0});
  });
}

REALboolean MeasureRotatedText(REALgraphics g, REALstring text, double* Width, double* Height,
                               std::int64_t /*FontWidth*/) {
  *Width = 0;
  *Height = 0;
  return TranslateExceptions([&] {
    Trace("MeasureRotatedText");
    Trace("g", static_cast<const void*>(g));
    TraceText(text);
    if (!AreUsable(g, text)) return REALboolean{0};
    const TextSize size = Measure(g, text);
    if (!(size.width > 0 && size.height > 0)) return REALboolean{0};
    *Width = size.width;
    *Height = size.height;
    return REALboolean{1};
  });
}

}  // namespace zkt
