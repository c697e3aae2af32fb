// Pages of the documentation that hold what the plug-in itself can tell: examples with their output, tables of facts.
#pragma once

#include <string>
#include <vector>

namespace host {

// A page as lines. Throws std::runtime_error if it cannot be read or written.
std::vector<std::string> ReadPage(const std::string& file);
void WritePage(const std::string& file, const std::vector<std::string>& lines);

// The text as lines; a last line break begins no line.
std::vector<std::string> SplitLines(const std::string& text);

// Replaces the lines from `begin` to before `end`.
void ReplaceLines(std::vector<std::string>& page, std::size_t begin, std::size_t end,
                  const std::vector<std::string>& lines);

}  // namespace host
