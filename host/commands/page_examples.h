// The examples in a documentation page. Every piece of Xojo code in a page must be one of these:
// - a block of code, followed by a block of text with its output;
// - a block that declares a method, which later examples on the page may call;
// - a table row, if the last two columns of the table are "Code" and "Result". A block of code before the table runs
//   before the code of each row.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host {

struct Example {
  std::size_t line;  // in the page
  std::string code;  // statements; in a row, everything before the last piece of code
  std::string last;  // the last piece of code in a row, an expression or a statement; empty for a block
  std::string methods;
  std::size_t begin, end;  // the range of the output in the page

  bool IsRow() const { return !last.empty(); }
};

// Throws std::runtime_error for code that belongs to no example, and for a block in an unknown language, because such a
// block could be unchecked Xojo code.
std::vector<Example> ReadExamples(const std::string& page);

}  // namespace host
