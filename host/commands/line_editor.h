// A terminal line editor with history and name completion.
#pragma once

#include <histedit.h>

#include <memory>
#include <optional>
#include <string>

#include "language/interpreter.h"

namespace host {

// Only one instance may exist at a time.
class LineEditor {
 public:
  explicit LineEditor(const Interpreter& interpreter);

  // Reads a line. Returns nullopt at the end of the input.
  std::optional<std::string> Read(const char* prompt);
  // Whether Control-C dropped the last line that was read.
  bool IsDropped() const;

 private:
  std::unique_ptr<EditLine, decltype(&el_end)> editor_;
  std::unique_ptr<History, decltype(&history_end)> history_;
};

// Sets LC_CTYPE to a UTF-8 locale, which is required for editing non-ASCII characters. The other categories stay
// unchanged, so numbers are still written with a decimal point.
void SetCharacterType();

}  // namespace host
