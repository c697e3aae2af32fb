// A bar chart of ratios. Each bar extends from 1 to the right if the plug-in is faster than the reference, and to the
// left if it is slower.
#pragma once

#include <string>
#include <utility>
#include <vector>

// Writes an SVG file. The scale is logarithmic, and a darker vertical line marks 1.
void WritePlot(const std::string& file, const std::vector<std::pair<std::string, double>>& ratios);
