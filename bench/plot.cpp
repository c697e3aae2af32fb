#include "plot.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace {

constexpr int kLabelWidth = 330;
constexpr int kPlotWidth = 520;
constexpr int kRowHeight = 17;
constexpr int kTop = 40;
constexpr double kMin = 0.5;
constexpr double kMax = 64;

// Returns the horizontal position of a ratio, in pixels from the left edge.
double PlaceOf(double ratio) {
  const double part = std::log(std::clamp(ratio, kMin, kMax) / kMin) / std::log(kMax / kMin);
  return kLabelWidth + part * kPlotWidth;
}

}  // namespace

void WritePlot(const std::string& file, const std::vector<std::pair<std::string, double>>& ratios) {
  std::ofstream out(file);
  const int height = kTop + kRowHeight * static_cast<int>(ratios.size()) + 10;
  out << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" << kLabelWidth + kPlotWidth + 60 << R"(" height=")"
      << height << R"(" font-family="DejaVu Sans, sans-serif" font-size="11">)" << '\n'
      << R"(<rect width="100%" height="100%" fill="white"/>)" << '\n'
      << R"(<text x="10" y="18" font-size="13">How many times faster than the reference (logarithmic)</text>)" << '\n';
  for (double mark = kMin; mark <= kMax; mark *= 2)
    out << R"(<line x1=")" << PlaceOf(mark) << R"(" x2=")" << PlaceOf(mark) << R"(" y1=")" << kTop - 8 << R"(" y2=")"
        << height - 6 << R"(" stroke=")" << (mark == 1 ? "#495057" : "#dee2e6") << R"("/><text x=")" << PlaceOf(mark)
        << R"(" y=")" << kTop - 11 << R"(" text-anchor="middle" fill="#868e96">)" << mark << "</text>\n";
  int y = kTop;
  for (const auto& [name, ratio] : ratios) {
    const double left = std::min(PlaceOf(1), PlaceOf(ratio));
    const double width = std::max(1.0, std::abs(PlaceOf(ratio) - PlaceOf(1)));
    char figure[32];
    std::snprintf(figure, sizeof figure, ratio < 10 ? "%.2f" : "%.0f", ratio);
    out << R"(<text x=")" << kLabelWidth - 8 << R"(" y=")" << y + 12 << R"(" text-anchor="end">)" << name
        << R"(</text><rect x=")" << left << R"(" y=")" << y + 3 << R"(" width=")" << width << R"(" height=")"
        << kRowHeight - 5 << R"(" fill=")" << (ratio < 0.95 ? "#e8590c" : "#4dabf7") << R"("/><text x=")"
        << left + width + 4 << R"(" y=")" << y + 12 << R"(" fill="#495057">)" << figure << "</text>\n";
    y += kRowHeight;
  }
  out << "</svg>\n";
}
