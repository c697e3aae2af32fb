// The examples of a page of the documentation. All Xojo code of a page belongs to one of them:
// - a block of code with a block of text, its output, after it;
// - a block that declares a method, which later examples of the page may call;
// - a row of a table whose last columns are "Code" and "Result". A block of code before the table prepares its rows.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host {

struct Example {
  std::size_t line;  // of the page
  std::string code;  // statements and, in a row, everything before the last piece of code
  std::string last;  // the last piece of code of a row, a value or a statement; empty in a block
  std::string methods;
  std::size_t begin, end;  // where the page shows the output

  bool IsRow() const { return !last.empty(); }
};

// Throws std::runtime_error for code that belongs to no example, and for a block in an unknown language, which could be
// code that nothing checks.
std::vector<Example> ReadExamples(const std::string& page);

}  // namespace host
