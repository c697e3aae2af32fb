#include "commands/table.h"

#include <locale.h>
#include <wchar.h>

#include <algorithm>
#include <cwchar>
#include <ostream>
#include <vector>

namespace host {

namespace {

constexpr std::size_t kWidestColumn = 28;

// The columns of a terminal that a character takes, by the C library's table for UTF-8.
class TerminalWidth {
 public:
  TerminalWidth() : former_(uselocale(utf8_)) {}
  TerminalWidth(const TerminalWidth&) = delete;
  TerminalWidth& operator=(const TerminalWidth&) = delete;
  ~TerminalWidth() {
    uselocale(former_);
    freelocale(utf8_);
  }

  std::size_t Of(wchar_t character) const { return static_cast<std::size_t>(std::max(wcwidth(character), 0)); }

 private:
  locale_t utf8_ = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  locale_t former_;
};

struct Cell {
  std::string text;
  std::size_t width = 0;
};

Cell MakeCell(const std::string& content, const TerminalWidth& terminal) {
  Cell cell;
  std::mbstate_t state = {};
  for (std::size_t at = 0; at < content.size();) {
    wchar_t character;
    const std::size_t length = std::mbrtowc(&character, content.data() + at, content.size() - at, &state);
    const bool isPrintable = length <= content.size() && length > 0 && character >= L' ';
    std::string shown = isPrintable ? content.substr(at, length) : content[at] == '\n' ? "⏎" : " ";
    cell.width += isPrintable ? terminal.Of(character) : 1;
    if (cell.width > kWidestColumn) return {cell.text + "…", kWidestColumn + 1};
    cell.text += shown;
    at += isPrintable ? length : 1;
  }
  return cell;
}

}  // namespace

void WriteTable(std::ostream& out, std::span<const std::string> cells, std::size_t columns) {
  const TerminalWidth terminal;
  std::vector<Cell> all;
  std::vector<std::size_t> widths(columns, 0);
  for (const std::string& content : cells) {
    all.push_back(MakeCell(content, terminal));
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
