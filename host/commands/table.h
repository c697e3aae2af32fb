// A table of text for a terminal.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace host {

// Writes the cells in rows of `columns`. Columns are as wide as their content; long cells are shortened, and line
// breaks are shown as a symbol.
void WriteTable(std::ostream& out, std::span<const std::string> cells, std::size_t columns);

}  // namespace host
