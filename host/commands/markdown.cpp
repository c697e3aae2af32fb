#include "commands/markdown.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace host {

std::vector<std::string> ReadPage(const std::string& file) {
  std::ifstream input(file, std::ios::binary);
  if (!input) throw std::runtime_error("cannot read " + file);
  return SplitLines(std::string(std::istreambuf_iterator<char>(input), {}));
}

void WritePage(const std::string& file, const std::vector<std::string>& lines) {
  std::ofstream output(file, std::ios::binary);
  for (const std::string& line : lines) output << line << '\n';
  if (!output.flush()) throw std::runtime_error("cannot write " + file);
}

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream input(text);
  for (std::string line; std::getline(input, line);) lines.push_back(line);
  return lines;
}

void ReplaceLines(std::vector<std::string>& page, std::size_t begin, std::size_t end,
                  const std::vector<std::string>& lines) {
  const auto first = page.begin();
  const auto at = page.erase(first + static_cast<std::ptrdiff_t>(begin), first + static_cast<std::ptrdiff_t>(end));
  page.insert(at, lines.begin(), lines.end());
}

}  // namespace host
