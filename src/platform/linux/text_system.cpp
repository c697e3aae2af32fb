// Draws text with Pango and Cairo. Cairo's y axis points down from the upper edge, so every y coordinate is flipped
// here.
#include "platform/text_system.h"

#include <strings.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "platform/linux/pango_calls.h"
#include "platform/system_log.h"

namespace zkt {

namespace {

// The same size as AppKit's system font.
constexpr double kSystemFontSize = 13;
constexpr const char* kSystemFamily = "Sans";
// Larger font sizes would overflow Pango's integers and Cairo's coordinates.
constexpr double kLargestSize = 32767;
// Device coordinates slightly larger than this would overflow in Cairo.
constexpr double kFurthest = 8'000'000;

// Returns an empty string if the text is null or invalid.
std::string UTF8Of(CFStringRef text) {
  if (text == nullptr) return {};
  constexpr std::size_t kMaxBytesPerUnit = 3;
  std::string bytes(static_cast<std::size_t>(CFStringGetLength(text)) * kMaxBytesPerUnit + 1, '\0');
  if (CFStringGetCString(text, bytes.data(), static_cast<CFIndex>(bytes.size()), kCFStringEncodingUTF8) == 0) return {};
  bytes.resize(bytes.find('\0'));
  return bytes;
}

// Returns the lower edge of the drawing area in user space. For a target without bounds, returns the lower edge of the
// clip region.
double LowerEdge(const PangoCalls& calls, cairo_t* context) {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
  calls.cairo_save(context);
  calls.cairo_reset_clip(context);
  calls.cairo_identity_matrix(context);
  calls.cairo_clip_extents(context, &left, &top, &right, &bottom);
  calls.cairo_restore(context);
  if (bottom < kFurthest) {
    calls.cairo_device_to_user(context, &left, &bottom);
  } else {
    calls.cairo_clip_extents(context, &left, &top, &right, &bottom);
  }
  return bottom;
}

}  // namespace

struct TextSystem::State {
  const PangoCalls* calls = nullptr;
  cairo_t* context = nullptr;
  PangoLayout* layout = nullptr;
  cairo_path_t* path = nullptr;  // the host's path, which cairo_save does not save
  double lowerEdge = 0;
  bool isOutOfReach = false;    // whether text at the origin would be invisible or could not be placed
  bool isFontTooLarge = false;  // all fonts of one drawing have the same size
  std::vector<PangoFontDescription*> fonts;

  PangoContext* FontContext() const { return calls->pango_layout_get_context(layout); }
  PangoFontMap* FontMap() const { return calls->pango_context_get_font_map(FontContext()); }
  void MakeLayout();
  bool HasFamily(const std::string& name) const;
  TextFont MakeFont(const char* family, bool isBold, bool isItalic, double size);
  bool Arrange(CFStringRef text, const TextAttributes& attributes) const;
  bool FitsIntegers() const;
  TextSize SizeOfLayout() const;
};

void TextSystem::State::MakeLayout() {
  layout = calls->pango_cairo_create_layout(context);
  // Rounding to whole pixels is turned off, so that glyphs keep their positions and sizes at any angle.
  if (calls->pango_context_set_round_glyph_positions != nullptr)
    calls->pango_context_set_round_glyph_positions(FontContext(), 0);
}

// Returns whether the system has the family. For a missing family, Pango would silently substitute another one.
bool TextSystem::State::HasFamily(const std::string& name) const {
  PangoFontFamily** families = nullptr;
  int count = 0;
  calls->pango_font_map_list_families(FontMap(), &families, &count);
  const bool isThere = std::any_of(families, families + count, [&](PangoFontFamily* family) {
    return ::strcasecmp(calls->pango_font_family_get_name(family), name.c_str()) == 0;
  });
  calls->g_free(families);
  return isThere;
}

TextFont TextSystem::State::MakeFont(const char* family, bool isBold, bool isItalic, double size) {
  fonts.reserve(fonts.size() + 1);
  PangoFontDescription* const font = calls->pango_font_description_new();
  fonts.push_back(font);
  calls->pango_font_description_set_family(font, family);
  if (isBold) calls->pango_font_description_set_weight(font, kPangoWeightBold);
  if (isItalic) calls->pango_font_description_set_style(font, kPangoStyleItalic);
  isFontTooLarge = size > kLargestSize;
  // An absolute size is in units of the context. A relative size would be scaled by the screen resolution.
  calls->pango_font_description_set_absolute_size(font, std::min(size, kLargestSize) * kPangoScale);
  return font;
}

// Lays out the text. Returns false if it is too large to measure or draw.
bool TextSystem::State::Arrange(CFStringRef text, const TextAttributes& attributes) const {
  if (isFontTooLarge) return false;
  const std::string bytes = UTF8Of(text);
  calls->pango_layout_set_font_description(layout, static_cast<const PangoFontDescription*>(attributes.font));
  PangoAttrList* const list = calls->pango_attr_list_new();
  if (attributes.isUnderlined)
    calls->pango_attr_list_insert(list, calls->pango_attr_underline_new(kPangoUnderlineSingle));
  calls->pango_layout_set_attributes(layout, list);
  calls->pango_attr_list_unref(list);
  calls->pango_layout_set_text(layout, bytes.c_str(), -1);
  return FitsIntegers();
}

// Returns whether the size of the layout fits in Pango's integers, which overflow at about two million units of the
// context. The extents of a single cluster or line do not overflow, so they can be added up here.
bool TextSystem::State::FitsIntegers() const {
  PangoLayoutIter* const iterator = calls->pango_layout_get_iter(layout);
  const PangoLayoutLine* line = nullptr;
  std::int64_t width = 0;  // width of the current line so far
  std::int64_t height = 0;
  bool fits = true;
  do {
    PangoRectangle extents{};
    if (line != calls->pango_layout_iter_get_line_readonly(iterator)) {
      line = calls->pango_layout_iter_get_line_readonly(iterator);
      calls->pango_layout_iter_get_line_extents(iterator, nullptr, &extents);
      height += extents.height;
      width = 0;
    }
    calls->pango_layout_iter_get_cluster_extents(iterator, nullptr, &extents);
    width += extents.width;
    fits = width <= INT_MAX && height <= INT_MAX;
  } while (fits && calls->pango_layout_iter_next_cluster(iterator) != 0);
  calls->pango_layout_iter_free(iterator);
  return fits;
}

TextSize TextSystem::State::SizeOfLayout() const {
  int width = 0;
  int height = 0;
  calls->pango_layout_get_size(layout, &width, &height);
  return {static_cast<double>(width) / kPangoScale, static_cast<double>(height) / kPangoScale};
}

TextSystem::TextSystem() : state_(std::make_unique<State>()) {}

TextSystem::~TextSystem() {
  if (state_->context == nullptr) return;
  for (PangoFontDescription* const font : state_->fonts) state_->calls->pango_font_description_free(font);
  state_->calls->g_object_unref(state_->layout);
  state_->calls->cairo_restore(state_->context);
  state_->calls->cairo_new_path(state_->context);
  state_->calls->cairo_append_path(state_->context, state_->path);
  state_->calls->cairo_path_destroy(state_->path);
}

bool TextSystem::Begin(DrawingContext context) {
  state_->calls = FindPango();
  if (state_->calls == nullptr) return false;
  // A context's error state is permanent, and Pango does not check for it.
  if (state_->calls->cairo_status(static_cast<cairo_t*>(context)) != kCairoSuccess) return false;
  state_->context = static_cast<cairo_t*>(context);
  state_->lowerEdge = LowerEdge(*state_->calls, state_->context);
  state_->path = state_->calls->cairo_copy_path(state_->context);
  state_->calls->cairo_new_path(state_->context);
  state_->calls->cairo_save(state_->context);
  state_->MakeLayout();
  return true;
}

void TextSystem::MoveAndTurn(double x, double y, double degrees) {
  const double down = state_->lowerEdge - y;
  double deviceX = x;
  double deviceY = down;
  state_->calls->cairo_user_to_device(state_->context, &deviceX, &deviceY);
  // A non-finite angle would make the context unusable, even for the host. Coordinates that are too large would wrap
  // around.
  const bool isNear = std::abs(deviceX) <= kFurthest && std::abs(deviceY) <= kFurthest;
  state_->isOutOfReach = !std::isfinite(degrees) || !isNear;
  if (state_->isOutOfReach) return;
  state_->calls->cairo_translate(state_->context, x, down);
  state_->calls->cairo_rotate(state_->context, -degrees * std::numbers::pi / 180);
}

void TextSystem::Move(double x, double y) { state_->calls->cairo_translate(state_->context, x, -y); }

double TextSystem::SystemFontSize() const { return kSystemFontSize; }

TextFont TextSystem::FontOfFamily(CFStringRef family, bool isBold, bool isItalic, double size) {
  const std::string name = UTF8Of(family);
  return state_->HasFamily(name) ? state_->MakeFont(name.c_str(), isBold, isItalic, size) : nullptr;
}

TextFont TextSystem::SystemFont(double size) { return state_->MakeFont(kSystemFamily, false, false, size); }

TextFont TextSystem::BoldSystemFont(double size) { return state_->MakeFont(kSystemFamily, true, false, size); }

const void* TextSystem::FontManager() { return state_->FontMap(); }

TextSize TextSystem::Measure(CFStringRef text, const TextAttributes& attributes) {
  return state_->Arrange(text, attributes) ? state_->SizeOfLayout() : TextSize();
}

void TextSystem::Draw(CFStringRef text, const TextAttributes& attributes) {
  if (state_->isOutOfReach) return;
  const PangoCalls& calls = *state_->calls;
  cairo_t* const context = state_->context;
  if (!state_->Arrange(text, attributes)) return;
  calls.pango_cairo_update_layout(context, state_->layout);
  const TextColor color = attributes.color.value_or(TextColor{0, 0, 0, 1});
  calls.cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
  calls.cairo_move_to(context, 0, -state_->SizeOfLayout().height);
  calls.pango_cairo_show_layout(context, state_->layout);
}

void TextSystem::LogFontManager(const char* label) {
  char line[256];
  std::snprintf(line, sizeof line, "%s: Pango %p", label, FontManager());
  WriteSystemLog(line);
}

void TextSystem::LogFamily(const char* label, CFStringRef family) {
  WriteSystemLog((std::string(label) + ": " + (family != nullptr ? UTF8Of(family) : "(null)")).c_str());
}

void TextSystem::LogFont(const char* label, TextFont font) {
  char* const description =
      state_->calls->pango_font_description_to_string(static_cast<const PangoFontDescription*>(font));
  WriteSystemLog((std::string(label) + ": " + description).c_str());
  state_->calls->g_free(description);
}

}  // namespace zkt
