// A picture of ratios: a bar for each benchmark, from 1 to the right where ours is faster, to the left where it is
// slower.
#pragma once

#include <string>
#include <utility>
#include <vector>

// Writes an SVG file. The ratios are shown on a logarithmic scale; 1 is a line down the picture.
void WritePlot(const std::string& file, const std::vector<std::pair<std::string, double>>& ratios);
