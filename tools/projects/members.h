// Formats members of Xojo items in Xojo's text format.
#pragma once

#include "script.h"

namespace projects {

struct Scope {
  const char* flags;
  const char* word;  // precedes the declaration
};
inline constexpr Scope kProtected{"&h1", "Protected "};
inline constexpr Scope kPrivate{"&h21", "Private "};

// Indents code for use inside a tag.
std::string Indented(const Lines& lines);

// Indents the lines by one more level.
Lines Deeper(const Lines& lines);

// Formats methods with the given scope, separated by empty lines.
std::string Methods(const std::vector<Lines>& methods, const Scope& scope);

// Formats a module with these methods. All are protected, so they are called as Name.Method.
std::string Module(const std::string& name, const std::vector<Lines>& methods);

// Replaces a word in code, except in string literals and comments.
Lines WithWord(Lines lines, const std::string& word, const std::string& replacement);

}  // namespace projects
