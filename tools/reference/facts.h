// Generates the tables of declarations for the reference pages.
#pragma once

#include <string>
#include <vector>

namespace reference {

// The lines that enclose a table on its page.
inline constexpr const char* kBegin = "<!-- facts: made by xojo-reference --update -->\n";
inline constexpr const char* kBeginOfMatrix = "<!-- element types: made by xojo-reference --update -->\n";
inline constexpr const char* kEnd = "<!-- end of facts -->\n";

// A Markdown table for the page of a module or class.
struct Table {
  std::string owner;
  const char* begin;
  std::string text;
};
using Tables = std::vector<Table>;

// Loads the plug-in. Returns a table for each module and class that it registers, and the matrix of array methods and
// element types.
Tables MakeTables(const std::string& plugin);

}  // namespace reference
