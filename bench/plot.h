// A chart of ratios: a bar for each benchmark, from 1 to the right if the plug-in is faster, and to the left if it is
// slower.
#pragma once

#include <string>
#include <utility>
#include <vector>

// Writes an SVG file. The ratios have a logarithmic scale, and 1 is a vertical line.
void WritePlot(const std::string& file, const std::vector<std::pair<std::string, double>>& ratios);
