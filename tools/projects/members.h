// Members of Xojo items in the text format.
#pragma once

#include "script.h"

namespace projects {

struct Scope {
  const char* flags;
  const char* word;  // in front of the declaration
};
inline constexpr Scope kProtected{"&h1", "Protected "};
inline constexpr Scope kPrivate{"&h21", "Private "};

// Code as it is indented inside of a tag.
std::string Indented(const Lines& lines);

// The lines one level deeper.
Lines Deeper(const Lines& lines);

// Methods in the given scope, separated by empty lines.
std::string Methods(const std::vector<Lines>& methods, const Scope& scope);

// A module with these methods, all protected: they are called as Name.Method.
std::string Module(const std::string& name, const std::vector<Lines>& methods);

// Code with a word replaced, except in string literals and comments.
Lines WithWord(Lines lines, const std::string& word, const std::string& replacement);

}  // namespace projects
