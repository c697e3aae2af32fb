// A terminal line editor with history and name completion.
#pragma once

#include <histedit.h>

#include <memory>
#include <string>

#include "language/interpreter.h"

namespace host {

// Only one instance may exist at a time.
class LineEditor {
 public:
  explicit LineEditor(const Interpreter& interpreter);

  // Reads a line. Returns false at the end of the input.
  bool Read(const char* prompt, std::string& line);
  // Whether Control-C dropped the last line that was read.
  bool IsDropped() const;

 private:
  std::unique_ptr<EditLine, decltype(&el_end)> editor_;
  std::unique_ptr<History, decltype(&history_end)> history_;
};

}  // namespace host
