// The system's drawing of styled text: AppKit on macOS, Pango and Cairo on Linux.
// Coordinates are unflipped: y grows upwards from the lower edge of what is drawn on, and angles turn
// counter-clockwise.
#pragma once

#include <memory>
#include <optional>

#include "platform/core_foundation.h"

namespace zkt {

// What the host draws with: a CGContextRef on macOS, a cairo_t* on Linux. It stays the host's.
using DrawingContext = void*;

// A font of the text system; lives as long as the TextSystem that it comes from.
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

// One use of the text system, from before it touches the host's context until everything is as it was.
class TextSystem {
 public:
  // Remembers what the system's drawing of this thread goes to.
  TextSystem();
  TextSystem(const TextSystem&) = delete;
  TextSystem& operator=(const TextSystem&) = delete;
  // Ends the drawing that has begun, and makes what was remembered current again.
  ~TextSystem();

  // Saves the state of the context, which must not be null, and draws there from now on. False, and nothing has
  // happened, if there is no text system or the context is out of order: then nothing below may be called.
  bool Begin(DrawingContext context);

  // Makes (x, y) the origin and turns the axes by an angle in degrees.
  void MoveAndTurn(double x, double y, double degrees);
  void Move(double x, double y);

  // Sizes are in units of the context. A family that the system does not have gives null.
  double SystemFontSize() const;
  TextFont FontOfFamily(CFStringRef family, bool isBold, bool isItalic, double size);
  TextFont SystemFont(double size);
  TextFont BoldSystemFont(double size);
  const void* FontManager();

  // The size of a text as it stands, whatever the axes are. Text that is null, or too large for the system's own
  // units, has none, and is not drawn.
  TextSize Measure(CFStringRef text, const TextAttributes& attributes);
  // Draws the text with its lower left corner at the origin, in its color; black without one.
  void Draw(CFStringRef text, const TextAttributes& attributes);

  // Write "label: value" to the system's log, whether or not debugging is on.
  void LogFontManager(const char* label);
  void LogFamily(const char* label, CFStringRef family);
  void LogFont(const char* label, TextFont font);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace zkt
