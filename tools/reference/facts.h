// Generates the tables of declarations for the reference pages.
#pragma once

#include <map>
#include <string>

namespace reference {

// The lines that enclose a table in its page.
inline constexpr const char* kBegin = "<!-- facts: made by xojo-reference --update -->\n";
inline constexpr const char* kEnd = "<!-- end of facts -->\n";

// Loads the plug-in and returns a Markdown table for each module and class that it registers, by name.
std::map<std::string, std::string> MakeTables(const std::string& plugin);

}  // namespace reference
