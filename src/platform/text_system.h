// Draws styled text with AppKit on macOS, and with Pango and Cairo on Linux. Coordinates are unflipped: y points up
// from the lower edge of the drawing area, and angles are counterclockwise.
#pragma once

#include <memory>
#include <optional>

#include "platform/core_foundation.h"

namespace zkt {

// The host's drawing context: a CGContextRef on macOS, a cairo_t* on Linux. The host keeps ownership.
using DrawingContext = void*;

// A font of the text system. It is valid as long as the TextSystem that created it exists.
using TextFont = const void*;

struct TextColor {
  double red, green, blue;  // 0 to 1
  double alpha;             // not clamped
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

// One use of the text system. The destructor restores the host's drawing state.
class TextSystem {
 public:
  // Saves this thread's current drawing target.
  TextSystem();
  TextSystem(const TextSystem&) = delete;
  TextSystem& operator=(const TextSystem&) = delete;
  // Ends drawing if Begin has succeeded, and restores the saved target.
  ~TextSystem();

  // Saves the state of the context, which must not be null, and makes the context the drawing target. If there is no
  // text system or the context is in an error state, returns false and changes nothing. In that case, the functions
  // below must not be called.
  bool Begin(DrawingContext context);

  // Moves the origin to (x, y) and rotates the axes by an angle in degrees.
  void MoveAndTurn(double x, double y, double degrees);
  void Move(double x, double y);

  // Font sizes are in units of the context. FontOfFamily returns null if the system does not have the family.
  double SystemFontSize() const;
  TextFont FontOfFamily(CFStringRef family, bool isBold, bool isItalic, double size);
  TextFont SystemFont(double size);
  TextFont BoldSystemFont(double size);
  const void* FontManager();

  // Returns the size of the unrotated text. If the text is null or too large for the system's units, the size is 0 and
  // Draw does nothing.
  TextSize Measure(CFStringRef text, const TextAttributes& attributes);
  // Draws the text with its lower-left corner at the origin, in the given color, or in black if no color is given.
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
