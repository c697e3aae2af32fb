// A line editor for a terminal, with history and completion of names.
#pragma once

#include <histedit.h>

#include <memory>
#include <optional>
#include <string>

#include "language/interpreter.h"

namespace host {

// There is one at a time.
class LineEditor {
 public:
  explicit LineEditor(const Interpreter& interpreter);

  // Reads a line; nothing at the end of the input.
  std::optional<std::string> Read(const char* prompt);
  // Whether Control-C dropped the line that was read last.
  bool IsDropped() const;

 private:
  std::unique_ptr<EditLine, decltype(&el_end)> editor_;
  std::unique_ptr<History, decltype(&history_end)> history_;
};

// Characters beyond ASCII can be edited in a UTF-8 locale only; numbers keep their point.
void SetCharacterType();

}  // namespace host
