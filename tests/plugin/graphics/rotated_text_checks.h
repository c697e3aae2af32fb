// Checks of rotated text that hold for every text system. A `Sheet` owns a picture of kSheetSize by kSheetSize pixels,
// which is white at first. It provides a Graphics object that draws on the picture, and returns the resulting image.
#pragma once

#include <optional>
#include <string>

#include "graphics/rotated_text.h"
#include "plugin/graphics/ink.h"
#include "support/host_fixture.h"

namespace tests {

inline constexpr int kSheetSize = 300;

struct Style {
  const char* font = "DejaVu Sans";
  std::int64_t size = 24;
  bool isBold = false, isItalic = false, isUnderlined = false;
  std::uint32_t color = 0;
  std::int64_t height = kSheetSize;
};

struct Placement {
  double angle = 0;
  std::int64_t x = 100, y = 150;
  bool isCentered = false;
  double alpha = 1;
  bool keepsY = false;
};

inline void SetStyle(REALobjectStruct* graphics, const Style& style) {
  const auto set = [&](const char* name, std::int64_t value) {
    ASSERT_NE(host::FindProperty(graphics, name), nullptr) << name;
    host::FindProperty(graphics, name)->payload = value;
  };
  set("Bold", style.isBold), set("Italic", style.isItalic), set("Underline", style.isUnderlined);
  set("ForeColor", style.color), set("TextSize", style.size), set("Height", style.height);
  ASSERT_TRUE(host::AssignProperty(graphics, "TextFont", host::MakeValue(std::string_view(style.font))));
}

template <class Sheet>
Image Draw(const Style& style, std::string_view text, const Placement& at = {}) {
  CapturedLog log;  // every call logs its font
  Sheet sheet;
  SetStyle(sheet.Graphics(), style);
  zkt::DrawRotatedText(sheet.Graphics(), at.angle, MakeString(text).Get(), at.x, at.y, at.isCentered, at.alpha,
                       at.keepsY, 0);
  return sheet.Take();
}

struct Measured {
  bool isSuccess;
  double width, height;
};

template <class Sheet>
Measured Measure(const Style& style, std::string_view text) {
  CapturedLog log;
  Sheet sheet;
  SetStyle(sheet.Graphics(), style);
  Measured size{false, -1, -1};
  size.isSuccess = zkt::MeasureRotatedText(sheet.Graphics(), MakeString(text).Get(), &size.width, &size.height, 0) != 0;
  return size;
}

// The ink lies inside the measured box and fills it, except for the space that the font leaves around its letters.
template <class Sheet>
void ExpectMeasuringAgreesWithInk() {
  const struct {
    const char* note;
    const char* text;
    Style style;
  } cases[] = {
      {"plain", "Hxgy", {}},
      {"bold", "Hxgy", {.isBold = true}},
      {"large", "Hxgy", {.size = 48}},
      {"Arabic", "مرحبا", {}},
      {"Japanese", "一語一", {.font = "Sawarabi Gothic"}},
      {"system font", "Hxgy", {.font = ""}},
  };
  for (const auto& c : cases) {
    const Measured size = Measure<Sheet>(c.style, c.text);
    ASSERT_TRUE(size.isSuccess) << c.note;
    const Ink ink = InkAround(Draw<Sheet>(c.style, c.text), 100, 150, 0);
    const double bearing = 0.14 * static_cast<double>(c.style.size);
    EXPECT_NEAR(ink.left, 0, bearing) << c.note;
    EXPECT_NEAR(ink.right, size.width, bearing) << c.note;
    EXPECT_GE(ink.bottom, -1.5) << c.note;
    EXPECT_LE(ink.top, size.height + 1.5) << c.note;
    EXPECT_GE(ink.top - ink.bottom, 0.4 * size.height) << c.note;
  }
}

// The text looks the same at every angle and is rotated around the expected point.
template <class Sheet>
void ExpectTextAtItsPoint() {
  const struct {
    const char* note;
    Placement at;
    std::int64_t height;
    double fromTop;
  } cases[] = {
      {"level", {.angle = 0, .y = 120}, 300, 120},
      {"30 degrees", {.angle = 30, .y = 120}, 300, 120},
      {"90 degrees", {.angle = 90, .y = 120}, 300, 120},
      {"upside down", {.angle = 180, .y = 120}, 300, 120},
      {"downwards", {.angle = 270, .y = 120}, 300, 120},
      {"sloping down", {.angle = -45, .y = 120}, 300, 120},
      {"more than a turn", {.angle = 750, .y = 120}, 300, 120},
      {"centered", {.angle = 0, .y = 120, .isCentered = true}, 300, 120},
      {"centered, 30", {.angle = 30, .y = 120, .isCentered = true}, 300, 120},
      {"centered, 90", {.angle = 90, .y = 120, .isCentered = true}, 300, 120},
      {"centered, 180", {.angle = 180, .y = 120, .isCentered = true}, 300, 120},
      {"centered, -45", {.angle = -45, .y = 120, .isCentered = true}, 300, 120},
      {"from the lower edge", {.angle = 30, .y = 120, .keepsY = true}, 300, 180},
      {"centered from the lower edge", {.angle = 90, .y = 120, .isCentered = true, .keepsY = true}, 300, 180},
      {"another height", {.angle = 30, .y = 120}, 200, 220},
      {"height 1", {.angle = 0, .y = -99}, 1, 200},
      {"height 0 means unknown", {.angle = 30, .y = 120}, 0, 180},
      {"height -1 means unknown", {.angle = 0, .y = 120}, -1, 180},
  };
  const char* const text = "Hxgy";
  const Measured size = Measure<Sheet>({}, text);
  const Ink level = InkAround(Draw<Sheet>({}, text), 100, 150, 0);
  for (const auto& c : cases) {
    const Image image = Draw<Sheet>({.height = c.height}, text, c.at);
    const Ink ink = InkAround(image, static_cast<double>(c.at.x), c.fromTop, c.at.angle);
    const double x = c.at.isCentered ? size.width / 2 : 0;
    const double y = c.at.isCentered ? size.height / 2 : 0;
    EXPECT_NEAR(ink.left + x, level.left, 1.5) << c.note;
    EXPECT_NEAR(ink.right + x, level.right, 1.5) << c.note;
    EXPECT_NEAR(ink.bottom + y, level.bottom, 1.5) << c.note;
    EXPECT_NEAR(ink.top + y, level.top, 1.5) << c.note;
    // Horizontal text is aligned to whole pixels; rotated text is not.
    EXPECT_NEAR(ink.centerX + x, level.centerX, 1) << c.note;
    EXPECT_NEAR(ink.centerY + y, level.centerY, 1) << c.note;
  }
}

template <class Sheet>
void ExpectStyles(std::int64_t systemFontSize) {
  const auto drawn = [](const Style& style) { return Draw<Sheet>(style, "Hxgy"); };
  const Image plain = drawn({});
  EXPECT_GT(plain.Ink(), 0);
  EXPECT_GT(static_cast<double>(drawn({.isBold = true}).Ink()), 1.2 * static_cast<double>(plain.Ink()));
  EXPECT_NE(drawn({.isItalic = true}), plain);
  EXPECT_NE(drawn({.isBold = true, .isItalic = true}), drawn({.isBold = true}));
  EXPECT_NE(drawn({.font = "DejaVu Serif"}), plain);

  const Image underlined = drawn({.isUnderlined = true});
  EXPECT_GT(underlined.Ink(), plain.Ink() + 30 * 128) << "a line under the whole text";
  EXPECT_TRUE(Measure<Sheet>({.isUnderlined = true}, "Hxgy").isSuccess);

  EXPECT_NEAR(Measure<Sheet>({.size = 48}, "Hxgy").width, 2 * Measure<Sheet>({.size = 24}, "Hxgy").width, 2.5);
  for (const std::int64_t size : {0, -1}) {
    EXPECT_EQ(drawn({.font = "", .size = size}), drawn({.font = "", .size = systemFontSize}));
    EXPECT_EQ(drawn({.size = size}), drawn({.size = systemFontSize})) << "only the size is replaced, not the font";
  }
  for (const bool isBold : {false, true}) {
    const Image system = drawn({.font = "", .isBold = isBold});
    EXPECT_EQ(drawn({.font = "No Such Font", .isBold = isBold}), system);
    EXPECT_EQ(drawn({.font = "No Such Font", .isBold = isBold, .isItalic = true}), system);
    EXPECT_EQ(drawn({.font = "", .isBold = isBold, .isItalic = true}), system);
  }
  EXPECT_NE(drawn({.font = "", .isBold = true}), drawn({.font = ""}));
}

template <class Sheet>
void ExpectColorAndOpacity() {
  const struct {
    double alpha;
    int darkest;
  } cases[] = {{0, 0}, {0.5, 128}, {1, 255}, {2, 255}, {-1, 0}};
  for (const auto& c : cases) {
    const Image image = Draw<Sheet>({.size = 48, .color = 0xFF0000}, "HI", {.alpha = c.alpha});
    EXPECT_NEAR(image.Darkest(), c.darkest, 2) << c.alpha;
    for (const Pixel p : image.pixels) {
      ASSERT_EQ(p.red, 255) << c.alpha;
      ASSERT_EQ(p.green, p.blue) << c.alpha;
    }
  }
  bool isFound = false;
  for (const Pixel p : Draw<Sheet>({.size = 48, .color = 0x20A040}, "HI").pixels)
    isFound = isFound || p == Pixel{0x20, 0xA0, 0x40};
  EXPECT_TRUE(isFound);
}

}  // namespace tests
