#include "core/graphics.h"

#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "core/exceptions.h"
#include "core/strings.h"

namespace host {

namespace {

constexpr Type kGraphicsType = {Basic::kObject, false, "Graphics"};
// The declarations by which plug-ins request the drawing context, and the number of that kind of handle.
constexpr const char* kHandle = "Handle(type As Graphics.HandleTypes) as Ptr";
constexpr const char* kOlderHandle = "Handle(type As Integer) as Integer";
constexpr std::int64_t kContextHandle = 5;

ObjectClass* GraphicsClass();

bool MakeCanvas(REALobjectStruct* picture, std::int64_t width, std::int64_t height) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int16_t>::max();
  if (width < 1 || height < 1 || width > kMax || height > kMax) return false;
  // The context keeps the image alive.
  cairo_surface_t* const image =
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height));
  std::shared_ptr<cairo_t> context(cairo_create(image), cairo_destroy);
  cairo_surface_destroy(image);
  if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return false;
  ObjectRef graphics(MakeObject(GraphicsClass()));
  for (REALobjectStruct* const object : {picture, graphics.Get()}) {
    *FindProperty(object, "Width") = MakeValue(width);
    *FindProperty(object, "Height") = MakeValue(height);
  }
  graphics->target = new std::shared_ptr<void>(std::move(context));
  *FindProperty(picture, "Graphics") = {kGraphicsType, std::move(graphics)};
  return true;
}

void Construct(REALobjectStruct* picture, std::int64_t width, std::int64_t height) {
  if (!MakeCanvas(picture, width, height)) Raise("OutOfMemoryException", "there is no picture of this size");
}

// Xojo's Save takes a FolderItem; this one takes a path.
void Save(REALobjectStruct* picture, const REALstringStruct* path) {
  cairo_t* const context = ContextOf(GraphicsOf(picture));
  const std::string file = ToUTF8(path);
  const cairo_status_t status = context != nullptr ? cairo_surface_write_to_png(cairo_get_target(context), file.c_str())
                                                   : CAIRO_STATUS_NULL_POINTER;
  if (status != CAIRO_STATUS_SUCCESS) Raise("RuntimeException", file + ": " + cairo_status_to_string(status));
}

void* Handle(const REALobjectStruct* graphics, std::int64_t kind) {
  return kind == kContextHandle ? ContextOf(graphics) : nullptr;
}

std::int64_t OlderHandle(const REALobjectStruct* graphics, std::int64_t kind) {
  return reinterpret_cast<std::int64_t>(Handle(graphics, kind));
}

// Draws in the color of the Graphics and restores the context afterward.
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

void FillRect(REALobjectStruct* graphics, double x, double y, double width, double height) {
  Paint(graphics, [&](cairo_t* context) {
    cairo_rectangle(context, x, y, width, height);
    cairo_fill(context);
  });
}

// One unit wide, through the centers of the pixels.
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

ObjectClass* GraphicsClass() {
  const Value zero = MakeValue(0);
  const Value off = DefaultValue(kBooleanType);
  static auto* const type = new ObjectClass{
      .name = "Graphics",
      .properties = {{"Bold", off},
                     {"Italic", off},
                     {"Underline", off},
                     {"ForeColor", DefaultValue(kColorType)},
                     {"TextUnit", zero},
                     {"TextSize", zero},
                     {"TextFont", DefaultValue(kStringType)},
                     {"Width", zero},
                     {"Height", zero}},
      .methods = {{kHandle, Address(&Handle)}, {kOlderHandle, Address(&OlderHandle)}},
      .scriptMethods = {{"FillRect(x As Double, y As Double, width As Double, height As Double)", Address(&FillRect)},
                        {"DrawLine(x1 As Double, y1 As Double, x2 As Double, y2 As Double)", Address(&DrawLine)}}};
  return type;
}

ObjectClass* PictureClass() {
  const Value zero = MakeValue(0);
  static auto* const type =
      new ObjectClass{.name = "Picture",
                      .properties = {{"Width", zero}, {"Height", zero}, {"Graphics", DefaultValue(kGraphicsType)}},
                      .isReadOnly = true,
                      .scriptMethods = {{"Constructor(width As Integer, height As Integer)", Address(&Construct)},
                                        {"Save(path As String)", Address(&Save)}}};
  return type;
}

}  // namespace

std::vector<ObjectClass*> GraphicsClasses() { return {GraphicsClass(), PictureClass()}; }

ObjectRef MakePicture(std::int64_t width, std::int64_t height) {
  ObjectRef picture(MakeObject(PictureClass()));
  return MakeCanvas(picture.Get(), width, height) ? std::move(picture) : ObjectRef();
}

REALobjectStruct* GraphicsOf(REALobjectStruct* picture) { return FindProperty(picture, "Graphics")->Object(); }

cairo_t* ContextOf(const REALobjectStruct* graphics) {
  if (graphics == nullptr || graphics->target == nullptr) return nullptr;
  return static_cast<cairo_t*>(graphics->target->get());
}

}  // namespace host
