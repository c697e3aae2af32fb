#include "core/graphics.h"

#include <limits>
#include <memory>
#include <numbers>
#include <string>
#include <utility>

#include "core/classes.h"
#include "core/exceptions.h"
#include "core/folder_items.h"
#include "core/framework.h"
#include "core/strings.h"

namespace host {

namespace {

constexpr Type kGraphicsType = {TypeKind::kObject, false, "Graphics"};

bool MakeCanvas(REALobjectStruct* picture, std::int64_t width, std::int64_t height) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int16_t>::max();
  if (width < 1 || height < 1 || width > kMax || height > kMax) return false;
  // The context keeps the image alive.
  cairo_surface_t* const image =
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height));
  std::shared_ptr<cairo_t> context(cairo_create(image), cairo_destroy);
  cairo_surface_destroy(image);
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return false;
  ObjectRef graphics(MakeObject(FindClass("Graphics")));
  for (REALobjectStruct* const object : {picture, graphics.Get()}) {
    *FindProperty(object, "Width") = MakeValue(width);
    *FindProperty(object, "Height") = MakeValue(height);
  }
  graphics->target = std::move(context);
  *FindProperty(picture, "Graphics") = {kGraphicsType, std::move(graphics)};
  return true;
}

void Construct(REALobjectStruct* picture, std::int64_t width, std::int64_t height) {
  if (!MakeCanvas(picture, width, height)) Raise("OutOfMemoryException", "cannot create a picture of this size");
}

// The values of Xojo's Picture.Formats enumeration.
enum class Format : std::int64_t { kJPEG = 1, kPNG = 2 };

Value MakeFormat(Format format) {
  return {{TypeKind::kEnumeration, false, "Picture.Formats"}, static_cast<std::int64_t>(format)};
}

void Save(REALobjectStruct* picture, REALobjectStruct* file, std::int64_t format) {
  if (file == nullptr) return Raise("NilObjectException", "Save takes a FolderItem");
  if (static_cast<Format>(format) != Format::kPNG)
    return Raise("UnsupportedOperationException", "this host saves pictures as PNG only");
  cairo_t* const context = ContextOf(GraphicsOf(picture));
  const std::string path = PathOf(file);
  const cairo_status_t status = context != nullptr ? cairo_surface_write_to_png(cairo_get_target(context), path.c_str())
                                                   : CAIRO_STATUS_NULL_POINTER;
  if (status != CAIRO_STATUS_SUCCESS) Raise("IOException", path + ": " + cairo_status_to_string(status));
}

// Returns the drawing context. Plug-ins request it with its handle type.
void* Handle(const REALobjectStruct* graphics, std::int64_t kind) {
  constexpr std::int64_t kContextHandle = 5;
  return kind == kContextHandle ? ContextOf(graphics) : nullptr;
}

std::int64_t OlderHandle(const REALobjectStruct* graphics, std::int64_t kind) {
  return reinterpret_cast<std::int64_t>(Handle(graphics, kind));
}

// Calls `draw` with the ForeColor of the Graphics as the source color, and restores the context afterward.
template <class Draw>
void Paint(REALobjectStruct* graphics, Draw draw) {
  cairo_t* const context = ContextOf(graphics);
  if (context == nullptr) return;
  const auto color = static_cast<std::uint32_t>(FindProperty(graphics, "ForeColor")->Integer());
  const auto part = [&](int shift) { return static_cast<double>(color >> shift & 0xFF) / 255.0; };
  cairo_save(context);
  cairo_new_path(context);
  cairo_set_source_rgb(context, part(16), part(8), part(0));
  draw(context);
  cairo_restore(context);
}

void TraceOval(cairo_t* context, double x, double y, double width, double height) {
  if (width <= 0 || height <= 0) return;
  cairo_save(context);
  cairo_translate(context, x + width / 2, y + height / 2);
  cairo_scale(context, width / 2, height / 2);
  cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
  cairo_restore(context);
}

// Fills a shape. `trace` adds its path to the context.
template <auto* trace>
void Fill(REALobjectStruct* graphics, double x, double y, double width, double height) {
  Paint(graphics, [&](cairo_t* context) {
    trace(context, x, y, width, height);
    cairo_fill(context);
  });
}

// Draws an outline that is as wide as the pen and stays inside the shape's rectangle.
template <auto* trace>
void Outline(REALobjectStruct* graphics, double x, double y, double width, double height) {
  Paint(graphics, [&](cairo_t* context) {
    const double pen = FindProperty(graphics, "PenSize")->Real();
    cairo_set_line_width(context, pen);
    trace(context, x + pen / 2, y + pen / 2, width - pen, height - pen);
    cairo_stroke(context);
  });
}

void SelectFont(REALobjectStruct* graphics, cairo_t* context) {
  const bool isBold = FindProperty(graphics, "Bold")->Integer() != 0;
  const bool isItalic = FindProperty(graphics, "Italic")->Integer() != 0;
  const std::int64_t size = FindProperty(graphics, "TextSize")->Integer();
  constexpr std::int64_t kDefaultSize = 12;
  cairo_select_font_face(context, FindProperty(graphics, "TextFont")->Text().c_str(),
                         isItalic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                         isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context, static_cast<double>(size > 0 ? size : kDefaultSize));
}

// The point (x, y) is the left end of the baseline.
void DrawText(REALobjectStruct* graphics, const std::string& text, double x, double y) {
  Paint(graphics, [&](cairo_t* context) {
    SelectFont(graphics, context);
    cairo_move_to(context, x, y);
    cairo_show_text(context, text.c_str());
  });
}

double TextWidth(REALobjectStruct* graphics, const std::string& text) {
  cairo_text_extents_t extents = {};
  Paint(graphics, [&](cairo_t* context) {
    SelectFont(graphics, context);
    cairo_text_extents(context, text.c_str(), &extents);
  });
  return extents.x_advance;
}

void DrawPicture(REALobjectStruct* graphics, REALobjectStruct* picture, double x, double y) {
  cairo_t* const source = picture != nullptr ? ContextOf(GraphicsOf(picture)) : nullptr;
  if (source == nullptr) return Raise("NilObjectException", "DrawPicture takes a Picture");
  Paint(graphics, [&](cairo_t* context) {
    cairo_set_source_surface(context, cairo_get_target(source), x, y);
    cairo_paint(context);
  });
}

// The line is one unit wide and passes through pixel centers.
void DrawLine(REALobjectStruct* graphics, double x1, double y1, double x2, double y2) {
  Paint(graphics, [&](cairo_t* context) {
    constexpr double kMiddle = 0.5;
    cairo_set_line_width(context, 1);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
    cairo_move_to(context, x1 + kMiddle, y1 + kMiddle);
    cairo_line_to(context, x2 + kMiddle, y2 + kMiddle);
    cairo_stroke(context);
  });
}

}  // namespace

std::vector<ObjectClass*> GraphicsClasses() {
  const Value zero = MakeValue(0);
  const Value off = DefaultValue(kBooleanType);
  auto* const graphics = new ObjectClass{
      .name = "Graphics",
      .properties = {{"Bold", off},
                     {"Italic", off},
                     {"Underline", off},
                     {"ForeColor", DefaultValue(kColorType)},
                     {"TextUnit", zero},
                     {"TextSize", zero},
                     {"TextFont", DefaultValue(kStringType)},
                     {"Width", zero},
                     {"PenSize", MakeValue(1.0)},
                     {"Height", zero}},
      .methods = {{"Handle(type As Graphics.HandleTypes) as Ptr", Address(&Handle)},
                  {"Handle(type As Integer) as Integer", Address(&OlderHandle)}},
      .scriptMethods =
          {{"FillRect(x As Double, y As Double, width As Double, height As Double)", Address(&Fill<cairo_rectangle>)},
           {"FillRectangle(x As Double, y As Double, width As Double, height As Double)",
            Address(&Fill<cairo_rectangle>)},
           {"DrawRect(x As Double, y As Double, width As Double, height As Double)",
            Address(&Outline<cairo_rectangle>)},
           {"DrawRectangle(x As Double, y As Double, width As Double, height As Double)",
            Address(&Outline<cairo_rectangle>)},
           {"FillOval(x As Double, y As Double, width As Double, height As Double)", Address(&Fill<TraceOval>)},
           {"DrawOval(x As Double, y As Double, width As Double, height As Double)", Address(&Outline<TraceOval>)},
           {"DrawLine(x1 As Double, y1 As Double, x2 As Double, y2 As Double)", Address(&DrawLine)},
           {"DrawText(text As String, x As Double, y As Double)", Native<DrawText>()},
           {"DrawString(text As String, x As Double, y As Double)", Native<DrawText>()},
           {"TextWidth(text As String) As Double", Native<TextWidth>()},
           {"StringWidth(text As String) As Double", Native<TextWidth>()},
           {"DrawPicture(image As Picture, x As Double, y As Double)", Address(&DrawPicture)}},
      .aliases = {
          {"DrawingColor", "ForeColor"}, {"FontName", "TextFont"}, {"FontSize", "TextSize"}, {"FontUnit", "TextUnit"}}};
  auto* const picture = new ObjectClass{
      .name = "Picture",
      .properties = {{"Width", zero}, {"Height", zero}, {"Graphics", DefaultValue(kGraphicsType)}},
      .isReadOnly = true,
      .scriptMethods = {{"Constructor(width As Integer, height As Integer)", Address(&Construct)},
                        {"Save(file As FolderItem, format As Picture.Formats)", Address(&Save)}},
      .constants = {{"Formats.JPEG", MakeFormat(Format::kJPEG)}, {"Formats.PNG", MakeFormat(Format::kPNG)}}};
  return {graphics, picture};
}

ObjectRef MakePicture(std::int64_t width, std::int64_t height) {
  ObjectRef picture(MakeObject(FindClass("Picture")));
  return MakeCanvas(picture.Get(), width, height) ? std::move(picture) : ObjectRef();
}

REALobjectStruct* GraphicsOf(REALobjectStruct* picture) { return FindProperty(picture, "Graphics")->Object(); }

cairo_t* ContextOf(const REALobjectStruct* graphics) {
  return graphics != nullptr ? static_cast<cairo_t*>(graphics->target.get()) : nullptr;
}

}  // namespace host
