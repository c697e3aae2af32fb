// A text table for a terminal.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace host {

// Writes the cells in rows of `columns` cells. Each column is as wide as its content. Long cells are truncated, and
// line breaks are shown as a symbol.
void WriteTable(std::ostream& out, std::span<const std::string> cells, std::size_t columns);

}  // namespace host
