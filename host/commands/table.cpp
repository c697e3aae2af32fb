#include "commands/table.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "core/utf8_locale.h"

namespace host {

namespace {

constexpr std::size_t kWidestColumn = 28;

struct Cell {
  std::string text;
  std::size_t width = 0;
};

// The cell's width is in terminal columns, as wcwidth counts them.
Cell MakeCell(const std::string& content) {
  const Utf8Locale locale;
  Cell cell;
  for (std::size_t at = 0; at < content.size();) {
    wchar_t character = 0;
    const std::size_t length = Utf8Locale::Read(std::string_view(content).substr(at), character);
    const bool isPrintable = length > 0 && character >= L' ';
    const std::string shown = isPrintable ? content.substr(at, length) : content[at] == '\n' ? "⏎" : " ";
    cell.width += isPrintable ? static_cast<std::size_t>(std::max(wcwidth(character), 0)) : 1;
    if (cell.width > kWidestColumn) return {cell.text + "…", kWidestColumn + 1};
    cell.text += shown;
    at += isPrintable ? length : 1;
  }
  return cell;
}

}  // namespace

void WriteTable(std::ostream& out, std::span<const std::string> cells, std::size_t columns) {
  std::vector<Cell> all;
  std::vector<std::size_t> widths(columns, 0);
  for (const std::string& content : cells) {
    all.push_back(MakeCell(content));
    std::size_t& width = widths[(all.size() - 1) % columns];
    width = std::max(width, all.back().width);
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    const bool isLast = i % columns == columns - 1 || i == all.size() - 1;
    out << (i % columns == 0 ? "  " : " | ") << all[i].text;
    out << (isLast ? "\n" : std::string(widths[i % columns] - all[i].width, ' '));
  }
}

}  // namespace host
