// A white in-memory picture, drawn with Cairo, for tests of rotated text.
#pragma once

#include "core/classes.h"
#include "core/graphics.h"
#include "plugin/graphics/rotated_text_checks.h"

namespace tests {

class Sheet {
 public:
  Sheet() : picture_(host::MakePicture(kSheetSize, kSheetSize)) {
    cairo_set_source_rgb(Context(), 1, 1, 1);
    cairo_paint(Context());
  }

  REALobjectStruct* Graphics() const { return host::GraphicsOf(picture_.Get()); }
  cairo_t* Context() const { return host::ContextOf(Graphics()); }

  Image Take() const {
    cairo_surface_t* const surface = cairo_get_target(Context());
    cairo_surface_flush(surface);
    Image image{kSheetSize, kSheetSize, {}};
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
    for (std::size_t row = 0; row < kSheetSize; ++row)
      for (std::size_t column = 0; column < kSheetSize; ++column) {
        const unsigned char* const bytes = cairo_image_surface_get_data(surface) + row * stride + column * 4;
        image.pixels.push_back({bytes[2], bytes[1], bytes[0]});
      }
    return image;
  }

 private:
  host::ObjectRef picture_;
};

template <class Prepare>
Image DrawOn(const Sheet& sheet, Prepare prepare) {
  CapturedLog log;
  SetStyle(sheet.Graphics(), {});
  prepare();
  zkt::DrawRotatedText(sheet.Graphics(), 0, MakeString("Hxgy").Get(), 100, 150, false, 1, false, 0);
  return sheet.Take();
}

// Returns whether the text can be measured. If not, its size must be 0 by 0.
inline bool CanMeasure(REALobjectStruct* graphics, REALstringStruct* text) {
  CapturedLog log;
  double width = 7;
  double height = 7;
  const bool isMeasured = zkt::MeasureRotatedText(graphics, text, &width, &height, 0) != 0;
  EXPECT_EQ(width > 0 && height > 0, isMeasured);
  EXPECT_TRUE(isMeasured || (width == 0 && height == 0));
  return isMeasured;
}

}  // namespace tests
