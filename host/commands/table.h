// A table of text for a terminal.
#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace host {

// Writes the cells in rows of `columns`, each column as wide as it must be, long cells shortened, line breaks visible.
void WriteTable(std::ostream& out, std::span<const std::string> cells, std::size_t columns);

}  // namespace host
