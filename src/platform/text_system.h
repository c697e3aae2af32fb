// The system's drawing of styled text: AppKit on macOS, Pango and Cairo on Linux. Coordinates are unflipped: y points
// up from the lower edge of the drawing area, and angles are counter-clockwise.
#pragma once

#include <memory>
#include <optional>

#include "platform/core_foundation.h"

namespace zkt {

// The host's drawing context: a CGContextRef on macOS, a cairo_t* on Linux. The host keeps ownership.
using DrawingContext = void*;

// A font of the text system. It is valid as long as the TextSystem that created it.
using TextFont = const void*;

struct TextColor {
  double red, green, blue;  // 0 to 1
  double alpha;             // as given by the caller
};

struct TextAttributes {
  std::optional<TextColor> color;
  bool isUnderlined = false;
  TextFont font = nullptr;
};

struct TextSize {
  double width = 0;
  double height = 0;
};

// One use of the text system, from before it touches the host's context until everything is restored.
class TextSystem {
 public:
  // Saves the current drawing target of this thread.
  TextSystem();
  TextSystem(const TextSystem&) = delete;
  TextSystem& operator=(const TextSystem&) = delete;
  // Ends the drawing, if it has begun, and restores the saved target.
  ~TextSystem();

  // Saves the state of the context, which must not be null, and draws there from now on. Returns false and changes
  // nothing without a text system or if the context is in an error state. Then do not call the functions below.
  bool Begin(DrawingContext context);

  // Moves the origin to (x, y) and rotates the axes by an angle in degrees.
  void MoveAndTurn(double x, double y, double degrees);
  void Move(double x, double y);

  // Sizes are in units of the context. Returns null for a family that the system does not have.
  double SystemFontSize() const;
  TextFont FontOfFamily(CFStringRef family, bool isBold, bool isItalic, double size);
  TextFont SystemFont(double size);
  TextFont BoldSystemFont(double size);
  const void* FontManager();

  // Returns the size of a text without rotation. Null text, and text too large for the system's units, has no size and
  // is not drawn.
  TextSize Measure(CFStringRef text, const TextAttributes& attributes);
  // Draws the text with its lower left corner at the origin, in its color, or black by default.
  void Draw(CFStringRef text, const TextAttributes& attributes);

  // Write "label: value" to the system log, even while debugging is off.
  void LogFontManager(const char* label);
  void LogFamily(const char* label, CFStringRef family);
  void LogFont(const char* label, TextFont font);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace zkt
