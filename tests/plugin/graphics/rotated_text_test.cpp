// Draws rotated text on Cairo images and checks the pixels.
#include <array>
#include <cmath>
#include <limits>
#include <sstream>

#include "plugin/graphics/cairo_sheet.h"

namespace {

using namespace tests;

using RotatedText = tests::HostTest;

TEST_F(RotatedText, IsDrawnAtItsPoint) { tests::ExpectTextAtItsPoint<Sheet>(); }
TEST_F(RotatedText, IsMeasuredAsItIsDrawn) { tests::ExpectMeasuringAgreesWithInk<Sheet>(); }
TEST_F(RotatedText, HasTheStyleOfTheGraphics) { tests::ExpectStyles<Sheet>(13); }
TEST_F(RotatedText, HasColorAndOpacity) { tests::ExpectColorAndOpacity<Sheet>(); }

TEST_F(RotatedText, RestoresTheContext) {
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

// The host's own transformation and clip apply to the text.
TEST_F(RotatedText, IsDrawnInTheCoordinatesOfTheHost) {
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

  // The size is measured in the text's own units, not in the pixels that the text covers.
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

// Large coordinates are drawn if the host's transformation maps them to pixels within reach.
TEST_F(RotatedText, IsDrawnAtLargeCoordinatesOfTheHost) {
  const Sheet sheet;
  const Image blank = sheet.Take();
  cairo_translate(sheet.Context(), -8900, 0);
  cairo_scale(sheet.Context(), 0.001, 0.001);
  tests::SetStyle(sheet.Graphics(), {.size = 20'000});
  host::FindProperty(sheet.Graphics(), "Height")->payload = std::int64_t{300'000};
  const auto draw = [&](std::int64_t x) {
    CapturedLog log;
    zkt::DrawRotatedText(sheet.Graphics(), 0, MakeString("Hi").Get(), x, 150'000, false, 1, false, 0);
    return sheet.Take();
  };
  EXPECT_EQ(draw(INT64_MAX), blank);
  EXPECT_NE(draw(9'000'000), blank);
}

// A recording surface has no lower edge, so the lower edge of the clip is used.
TEST_F(RotatedText, IsPlacedByTheClipOfATargetWithoutBounds) {
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

// Pango's line width and total height overflow at about two million pixels.
TEST_F(RotatedText, IsNeitherMeasuredNorDrawnWhenTooLarge) {
  const struct {
    const char* note;
    const char* piece;
    int count;
    std::int64_t textSize;
    bool fits;
  } cases[] = {
      {"wide", "HHHHHHHHHH", 10'000, 12, true},
      {"too wide", "HHHHHHHHHH", 40'000, 12, false},
      {"so wide that the overflowing sum is positive", "HHHHHHHHHH", 60'000, 12, false},
      {"each line is narrow enough", "HHHHHHHHHHHHHHHHHHHH\n", 20, 10'000, true},
      {"high", "H\n", 50, 30'000, true},
      {"largest font", "H", 1, 32'767, true},
      {"too large a font", "H", 1, 32'768, false},
      {"too high", "H\n", 100, 30'000, false},
  };
  for (const auto& c : cases) {
    const Sheet sheet;
    tests::SetStyle(sheet.Graphics(), {.size = c.textSize});
    const Image blank = sheet.Take();
    std::string text;
    for (int i = 0; i < c.count; ++i) text += c.piece;
    CapturedLog log;
    double width = 1;
    double height = 1;
    const bool isMeasured = zkt::MeasureRotatedText(sheet.Graphics(), MakeString(text).Get(), &width, &height, 0) != 0;
    EXPECT_EQ(isMeasured, c.fits) << c.note;
    EXPECT_EQ(width > 0 && height > 0, c.fits) << c.note << ' ' << width << ' ' << height;
    if (c.fits) continue;
    for (const bool isCentered : {false, true})
      zkt::DrawRotatedText(sheet.Graphics(), 0, MakeString(text).Get(), 10, 100, isCentered, 1, false, 0);
    EXPECT_EQ(sheet.Take(), blank) << c.note;
  }
}

TEST_F(RotatedText, SurvivesExtremeArguments) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
  constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
  const Sheet sheet;
  const Image blank = sheet.Take();
  const auto text = MakeString("Hxgy");
  CapturedLog log;
  for (const double angle : {kInfinity, -kInfinity, std::nan("")})
    zkt::DrawRotatedText(sheet.Graphics(), angle, text.Get(), 100, 150, true, 1, false, 0);
  for (const std::int64_t far : {kMax, kMin, std::int64_t{9'000'000}})
    for (const auto& [x, y] : {std::pair{far, far}, {far, std::int64_t{150}}, {std::int64_t{100}, far}})
      zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), x, y, true, 1, false, 0);
  EXPECT_EQ(sheet.Take(), blank);
  tests::SetStyle(sheet.Graphics(), {.size = kMax, .height = kMax});
  zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 0, kMin, true, 1, false, 0);
  EXPECT_EQ(cairo_status(sheet.Context()), CAIRO_STATUS_SUCCESS) << "the host can continue drawing";
  std::istringstream lines(log.Take());
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(line.starts_with("font: ")) << line;

  cairo_scale(sheet.Context(), 0, 0);
  ASSERT_NE(cairo_status(sheet.Context()), CAIRO_STATUS_SUCCESS);
  EXPECT_FALSE(CanMeasure(sheet.Graphics(), text.Get())) << "the context is in an error state";
  zkt::DrawRotatedText(sheet.Graphics(), 30, text.Get(), 0, 0, true, 1, false, 0);
}

}  // namespace
