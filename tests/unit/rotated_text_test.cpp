// Rotated text on Cairo images, by what is drawn.
#include "graphics/rotated_text.h"

#include <array>
#include <cmath>
#include <limits>
#include <sstream>

#include "core/graphics.h"
#include "graphics/graphics_handle.h"
#include "support/rotated_text_checks.h"

namespace {

using tests::CapturedLog;
using tests::Debugging;
using tests::Image;
using tests::MakeString;
using tests::Without;

class Sheet {
 public:
  Sheet() : picture_(host::MakePicture(tests::kSheetSize, tests::kSheetSize)) {
    cairo_set_source_rgb(Context(), 1, 1, 1);
    cairo_paint(Context());
  }

  REALobjectStruct* Graphics() const { return host::GraphicsOf(picture_.Get()); }
  cairo_t* Context() const { return host::ContextOf(Graphics()); }

  Image Take() const {
    cairo_surface_t* const surface = cairo_get_target(Context());
    cairo_surface_flush(surface);
    Image image{tests::kSheetSize, tests::kSheetSize, {}};
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    for (std::size_t row = 0; row < tests::kSheetSize; ++row)
      for (std::size_t column = 0; column < tests::kSheetSize; ++column) {
        const unsigned char* const bytes = cairo_image_surface_get_data(surface) + row * stride + column * 4;
        image.pixels.push_back({bytes[2], bytes[1], bytes[0]});
      }
    return image;
  }

 private:
  host::ObjectRef picture_;
};

using RotatedText = tests::HostTest;

TEST_F(RotatedText, StandsAtItsPoint) { tests::ExpectTextAtItsPoint<Sheet>(); }
TEST_F(RotatedText, IsMeasuredAsItIsDrawn) { tests::ExpectMeasuringAgreesWithInk<Sheet>(); }
TEST_F(RotatedText, HasTheStyleOfTheGraphics) { tests::ExpectStyles<Sheet>(13); }
TEST_F(RotatedText, HasColorAndOpacity) { tests::ExpectColorAndOpacity<Sheet>(); }

// Draws, and measures, on a sheet that is prepared first; the text is level, at (100, 150).
template <class Prepare>
Image DrawOn(const Sheet& sheet, Prepare prepare) {
  CapturedLog log;
  tests::SetStyle(sheet.Graphics(), {});
  prepare();
  zkt::DrawRotatedText(sheet.Graphics(), 0, MakeString("Hxgy").Get(), 100, 150, false, 1, false, 0);
  return sheet.Take();
}

bool CanMeasure(REALobjectStruct* graphics, REALstringStruct* text) {
  CapturedLog log;
  double width = 7;
  double height = 7;
  const bool isMeasured = zkt::MeasureRotatedText(graphics, text, &width, &height, 0) != 0;
  EXPECT_EQ(width > 0 && height > 0, isMeasured);
  EXPECT_TRUE(isMeasured || (width == 0 && height == 0));
  return isMeasured;
}

TEST_F(RotatedText, LeavesTheContextAsItWas) {
  const Sheet sheet;
  cairo_t* const context = sheet.Context();
  cairo_translate(context, 3, 5);
  cairo_rectangle(context, 0, 0, 250, 250);
  cairo_clip(context);
  cairo_set_source_rgba(context, 0.1, 0.2, 0.3, 0.4);
  cairo_move_to(context, 11, 12);
  DrawOn(sheet, [] {});
  EXPECT_TRUE(CanMeasure(sheet.Graphics(), MakeString("a").Get()));
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  EXPECT_EQ((std::array{matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0}),
            (std::array{1.0, 0.0, 0.0, 1.0, 3.0, 5.0}));
  std::array<double, 4> clip{};
  cairo_clip_extents(context, &clip[0], &clip[1], &clip[2], &clip[3]);
  EXPECT_EQ(clip, (std::array{0.0, 0.0, 250.0, 250.0}));
  std::array<double, 4> color{};
  cairo_pattern_get_rgba(cairo_get_source(context), &color[0], &color[1], &color[2], &color[3]);
  EXPECT_EQ(color, (std::array{0.1, 0.2, 0.3, 0.4}));
  std::array<double, 2> point{};
  cairo_get_current_point(context, &point[0], &point[1]);
  EXPECT_EQ(point, (std::array{11.0, 12.0}));
  EXPECT_EQ(cairo_status(context), CAIRO_STATUS_SUCCESS);
}

// The host's own transformation and clip go on under the text.
TEST_F(RotatedText, IsDrawnInTheSpaceOfTheHost) {
  const Image plain = DrawOn(Sheet(), [] {});
  const Sheet scaled;
  const Image image = DrawOn(scaled, [&] {
    cairo_scale(scaled.Context(), 0.5, 0.5);
    host::FindProperty(scaled.Graphics(), "Height")->payload = std::int64_t{600};
  });
  const tests::Ink large = tests::InkAround(plain, 100, 150, 0);
  const tests::Ink small = tests::InkAround(image, 50, 75, 0);
  EXPECT_NEAR(small.centerX, large.centerX / 2, 0.5);
  EXPECT_NEAR(small.centerY, large.centerY / 2, 0.5);
  EXPECT_NEAR(small.right, large.right / 2, 1.5);

  // The size is that of the letters, not of the pixels that they cover.
  CapturedLog log;
  std::array<double, 4> sizes{};
  const auto text = MakeString("Hxgy");
  zkt::MeasureRotatedText(scaled.Graphics(), text.Get(), &sizes[0], &sizes[1], 0);
  cairo_rotate(scaled.Context(), 1);
  zkt::MeasureRotatedText(scaled.Graphics(), text.Get(), &sizes[2], &sizes[3], 0);
  const tests::Measured plainSize = [&] {
    log.Take();
    return tests::Measure<Sheet>({}, "Hxgy");
  }();
  for (const std::size_t i : {0u, 2u}) {
    EXPECT_NEAR(sizes[i], plainSize.width, 0.02);
    EXPECT_NEAR(sizes[i + 1], plainSize.height, 0.02);
  }

  const Sheet clipped;
  const Image part = DrawOn(clipped, [&] {
    cairo_rectangle(clipped.Context(), 0, 0, 120, 300);
    cairo_clip(clipped.Context());
  });
  EXPECT_NEAR(tests::InkAround(part, 100, 150, 0).right, 20, 1);
  EXPECT_NEAR(tests::InkAround(part, 100, 150, 0).bottom, tests::InkAround(plain, 100, 150, 0).bottom, 6);
}

// A recording has no lower edge of its own: that of the clip counts.
TEST_F(RotatedText, StandsOnTheClipOfATargetWithoutBounds) {
  cairo_surface_t* const recording = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr);
  static cairo_t* context;
  context = cairo_create(recording);
  cairo_rectangle(context, 0, 0, tests::kSheetSize, tests::kSheetSize);
  cairo_clip(context);
  auto& methods = host::FindClass("Graphics")->methods;
  const auto saved = methods;
  methods["Handle(type As Graphics.HandleTypes) as Ptr"] =
      reinterpret_cast<void*>(+[](REALobjectStruct*, std::int64_t) { return static_cast<void*>(context); });
  DrawOn(Sheet(), [] {});
  methods = saved;
  const Sheet sheet;
  cairo_set_source_surface(sheet.Context(), recording, 0, 0);
  cairo_paint(sheet.Context());
  cairo_destroy(context);
  cairo_surface_destroy(recording);
  const tests::Ink plain = tests::InkAround(DrawOn(Sheet(), [] {}), 100, 150, 0);
  const tests::Ink replayed = tests::InkAround(sheet.Take(), 100, 150, 0);
  EXPECT_NEAR(replayed.centerX, plain.centerX, 0.5);
  EXPECT_NEAR(replayed.centerY, plain.centerY, 0.5);
}

TEST_F(RotatedText, NeedsATextAndAGraphics) {
  const Sheet sheet;
  const Image blank = sheet.Take();
  const auto draw = [](REALobjectStruct* graphics, REALstringStruct* text) {
    CapturedLog log;
    zkt::DrawRotatedText(graphics, 10, text, 100, 150, true, 1, false, 0);
  };
  const auto something = MakeString("text");
  const auto nothing = MakeString("");
  const auto broken = MakeString("a\xC3");
  for (REALstringStruct* const text : {static_cast<REALstringStruct*>(nullptr), nothing.Get(), broken.Get()}) {
    draw(sheet.Graphics(), text);
    EXPECT_FALSE(CanMeasure(sheet.Graphics(), text));
    EXPECT_FALSE(TakeRaised());
  }
  EXPECT_EQ(sheet.Take(), blank);

  draw(nullptr, nullptr);
  EXPECT_FALSE(CanMeasure(nullptr, nullptr));
  EXPECT_FALSE(TakeRaised()) << "an empty text comes first";
  for (const bool isMeasuring : {false, true}) {
    if (isMeasuring)
      EXPECT_FALSE(CanMeasure(nullptr, something.Get()));
    else
      draw(nullptr, something.Get());
    const auto raised = TakeRaised();
    ASSERT_TRUE(raised);
    EXPECT_EQ(raised->className, "NilObjectException");
    EXPECT_EQ(raised->message, "Graphics is nil");
    EXPECT_EQ(raised->errorNumber, 0);
  }

  const host::ObjectRef withoutPicture(host::MakeObject(host::FindClass("Graphics")));
  draw(withoutPicture.Get(), something.Get());
  EXPECT_FALSE(CanMeasure(withoutPicture.Get(), something.Get()));
  EXPECT_FALSE(TakeRaised());
}

TEST_F(RotatedText, FindsTheContextByEitherHandle) {
  constexpr const char* kNewer = "Handle(type As Graphics.HandleTypes) as Ptr";
  constexpr const char* kOlder = "Handle(type As Integer) as Integer";
  const Sheet sheet;
  const auto text = MakeString("text");
  const struct {
    std::set<std::string, std::less<>> withheld;
    bool isFound;
  } cases[] = {
      {{}, true}, {{kNewer}, true}, {{kOlder}, true}, {{kNewer, kOlder}, false}, {{"REALLoadObjectMethod"}, false}};
  for (const auto& c : cases) {
    zkt::HostBindingTestAccess::Forget(zkt::REALLoadObjectMethod);
    host::Host::Current().withheld = c.withheld;
    EXPECT_EQ(zkt::getCGContextRef(sheet.Graphics()), c.isFound ? sheet.Context() : nullptr);
    EXPECT_EQ(CanMeasure(sheet.Graphics(), text.Get()), c.isFound);
    EXPECT_EQ(DrawOn(Sheet(), [] {}).Ink() > 0, c.isFound);
    const Debugging debugging;
    CapturedLog log;
    zkt::getCGContextRef(sheet.Graphics());
    const std::string lines = log.Take();
    EXPECT_EQ(lines.find("ZKT Debug: getCGContextRef 0x"), 0u);
    EXPECT_EQ(lines.find("\nZKT Debug: Query for graphics.handle failed.\n") != std::string::npos, !c.isFound);
  }
  host::Host::Current().withheld.clear();
}

// Each getter by itself: its properties are as if the host had never set them.
TEST_F(RotatedText, GoesOnWithoutPropertyGetters) {
  const tests::Style rich = {
      .font = "DejaVu Serif", .size = 30, .isBold = true, .isItalic = true, .isUnderlined = true, .color = 0x0000FF};
  const auto without = [](auto& change) {
    return [&change](tests::Style style) {
      change(style);
      return style;
    };
  };
  auto flags = [](tests::Style& style) { style.isBold = style.isItalic = style.isUnderlined = false; };
  auto color = [](tests::Style& style) { style.color = 0; };
  auto integers = [](tests::Style& style) { style.size = 12, style.height = -1; };
  auto string = [](tests::Style& style) { style.font = ""; };
  const auto expectAs = [&](auto& service, const char* name, auto& change) {
    const Image want = tests::Draw<Sheet>(without(change)(rich), "Hxgy");
    const tests::Measured wantSize = tests::Measure<Sheet>(without(change)(rich), "Hxgy");
    const Without withheld(service, name);
    EXPECT_EQ(tests::Draw<Sheet>(rich, "Hxgy"), want) << name;
    EXPECT_EQ(tests::Measure<Sheet>(rich, "Hxgy").width, wantSize.width) << name;
    EXPECT_NE(tests::Draw<Sheet>(rich, "Hxgy").Ink(), 0) << name;
  };
  expectAs(zkt::REALGetPropValueBoolean, "REALGetPropValueBool", flags);
  expectAs(zkt::REALGetPropValueColor, "REALGetPropValueColor", color);
  expectAs(zkt::REALGetPropValueInteger, "REALGetPropValueInteger", integers);
  expectAs(zkt::REALGetPropValueString, "REALGetPropValueString", string);

  const Image want = tests::Draw<Sheet>(without(integers)(rich), "Hxgy");
  zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueInteger,
                                   [](REALobject, const char*, std::int64_t* value) -> REALboolean {
                                     *value = 77;
                                     return 0;
                                   });
  EXPECT_EQ(tests::Draw<Sheet>(rich, "Hxgy"), want) << "what a getter leaves that fails does not count";
  zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueInteger);
}

TEST_F(RotatedText, SurvivesExtremeArguments) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
  const Sheet sheet;
  const Image blank = sheet.Take();
  const auto text = MakeString("Hxgy");
  CapturedLog log;
  for (const double angle : {kInfinity, -kInfinity, std::nan("")})
    zkt::DrawRotatedText(sheet.Graphics(), angle, text.Get(), 100, 150, true, 1, false, 0);
  for (const std::int64_t far : {kMost, kLeast})
    zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), far, far, true, 1, false, 0);
  EXPECT_EQ(sheet.Take(), blank);
  tests::SetStyle(sheet.Graphics(), {.size = kMost, .height = kMost});
  zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 0, kLeast, true, 1, false, 0);
  EXPECT_EQ(cairo_status(sheet.Context()), CAIRO_STATUS_SUCCESS) << "the host goes on drawing";
  std::istringstream lines(log.Take());
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(line.starts_with("font: ")) << line;

  cairo_scale(sheet.Context(), 0, 0);
  ASSERT_NE(cairo_status(sheet.Context()), CAIRO_STATUS_SUCCESS);
  EXPECT_FALSE(CanMeasure(sheet.Graphics(), text.Get())) << "a context in error";
  zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 0, 0, true, 1, false, 0);
}

// Addresses differ from run to run.
std::string WithoutAddresses(std::string log) {
  for (std::size_t at = 0; (at = log.find("0x", at)) != std::string::npos; ++at)
    log.replace(at, log.find_first_not_of("0123456789abcdef", at + 2) - at, "@");
  return log;
}

TEST_F(RotatedText, TellsTheFontAlwaysAndTheRestWhileDebugging) {
  const Sheet sheet;
  const auto text = MakeString("Hi");
  tests::SetStyle(sheet.Graphics(), {.font = "No Such Font", .size = 0, .isBold = true, .color = 0x010203});
  zkt::HostBindingTestAccess::Bind(zkt::REALGetGraphicsOrigin,
                                   [](REALobject, std::int64_t* x, std::int64_t* y) -> REALboolean {
                                     *x = 8, *y = 9;
                                     return 1;
                                   });
  const auto logOf = [&](auto call) {
    CapturedLog log;
    call();
    return WithoutAddresses(log.Take());
  };
  const auto draw = [&] { zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 1, 2, true, 1, false, 0); };
  double width = 0;
  double height = 0;
  const auto measure = [&] { zkt::MeasureRotatedText(sheet.Graphics(), text.Get(), &width, &height, 0); };
  EXPECT_EQ(logOf(draw), "font: Sans Bold 13px\n");
  EXPECT_EQ(logOf(measure), "font: Sans Bold 13px\n");
  char offsets[100];
  std::snprintf(offsets, sizeof offsets, "ZKT Debug: x %f\nZKT Debug: y %f\n", -width / 2, -height / 2);

  const Debugging debugging;
  const std::string fonts =
      "ZKT Debug: Using default TextSize\n"
      "ZKT Debug: fontManager @\n"
      "ZKT Debug: systemfont @\n"
      "fontManager: Pango @\n"
      "tf: No Such Font\n"
      "systemfont: Sans 13px\n"
      "ZKT Debug: fontWithFamily (nil)\n"
      "ZKT Debug: boldSystemFontOfSize @\n"
      "font: Sans Bold 13px\n";
  EXPECT_EQ(logOf(draw),
            "ZKT Debug: DrawRotatedText\nZKT Debug: g @\nZKT Debug: Rotation 30.000000\nZKT Debug: text Hi\n"
            "ZKT Debug: x 1\nZKT Debug: y 2\nZKT Debug: originX 8\nZKT Debug: originY 9\n"
            "ZKT Debug: textfont encoding 134217984\nZKT Debug: bold 1\nZKT Debug: italic 0\n"
            "ZKT Debug: underline 0\nZKT Debug: ForeColor 66051\nZKT Debug: TextUnit 0\nZKT Debug: TextSize 0\n"
            "ZKT Debug: getCGContextRef @\nZKT Debug: context @\n" +
                fonts + offsets);
  host::FindProperty(sheet.Graphics(), "TextUnit")->payload = std::int64_t{4};
  EXPECT_EQ(logOf(measure),
            "ZKT Debug: MeasureRotatedText\nZKT Debug: g @\nZKT Debug: text Hi\n"
            "ZKT Debug: textfont encoding 134217984\nZKT Debug: bold 1\nZKT Debug: italic 0\n"
            "ZKT Debug: underline 0\nZKT Debug: TextUnit 4\nZKT Debug: TextUnit Millimeter\nZKT Debug: TextSize 0\n"
            "ZKT Debug: getCGContextRef @\nZKT Debug: context @\n" +
                fonts);
  EXPECT_EQ(logOf([&] { zkt::DrawRotatedText(nullptr, 0, text.Get(), 1, 2, false, 1, false, 0); }),
            "ZKT Debug: DrawRotatedText\nZKT Debug: g (nil)\nZKT Debug: Rotation 0.000000\nZKT Debug: text Hi\n"
            "ZKT Debug: x 1\nZKT Debug: y 2\nZKT Debug: g is nil\n");
  EXPECT_EQ(logOf([&] { zkt::MeasureRotatedText(nullptr, nullptr, &width, &height, 0); }),
            "ZKT Debug: MeasureRotatedText\nZKT Debug: g (nil)\nZKT Debug: text \nZKT Debug: text is empty.\n");
  TakeRaised();
  zkt::HostBindingTestAccess::Forget(zkt::REALGetGraphicsOrigin);
}

}  // namespace
