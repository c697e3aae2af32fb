// Measures what has been drawn on a white picture: the position and darkness of the ink.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

namespace tests {

struct Pixel {
  std::uint8_t red, green, blue;
  friend bool operator==(const Pixel&, const Pixel&) = default;
};

// The pixels are in rows from top to bottom.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<Pixel> pixels;

  static int InkOf(Pixel p) { return 255 - std::min({p.red, p.green, p.blue}); }
  int Darkest() const {
    int most = 0;
    for (const Pixel p : pixels) most = std::max(most, InkOf(p));
    return most;
  }
  std::int64_t Ink() const {
    std::int64_t sum = 0;
    for (const Pixel p : pixels) sum += InkOf(p);
    return sum;
  }
  friend bool operator==(const Image&, const Image&) = default;
};

// The bounding box and the center of the ink, in the coordinates of text that starts at a point and is rotated around
// it.
struct Ink {
  double left = 1e9, right = -1e9, bottom = 1e9, top = -1e9;
  double centerX = 0, centerY = 0;
};

// `x` and `y` are in pixels from the upper left corner; the angle is counterclockwise.
inline Ink InkAround(const Image& image, double x, double y, double degrees) {
  constexpr int kVisible = 100;
  const double cosine = std::cos(degrees * std::numbers::pi / 180);
  const double sine = std::sin(degrees * std::numbers::pi / 180);
  Ink ink;
  double sum = 0;
  for (int row = 0; row < image.height; ++row) {
    for (int column = 0; column < image.width; ++column) {
      const int strength = Image::InkOf(image.pixels[static_cast<std::size_t>(row * image.width + column)]);
      const double right = column + 0.5 - x;
      const double up = y - row - 0.5;
      const double along = right * cosine + up * sine;
      const double across = up * cosine - right * sine;
      ink.centerX += along * strength;
      ink.centerY += across * strength;
      sum += strength;
      if (strength < kVisible) continue;
      ink.left = std::min(ink.left, along - 0.5);
      ink.right = std::max(ink.right, along + 0.5);
      ink.bottom = std::min(ink.bottom, across - 0.5);
      ink.top = std::max(ink.top, across + 0.5);
    }
  }
  ink.centerX /= sum;
  ink.centerY /= sum;
  return ink;
}

}  // namespace tests
