// The errors that end a script.
#pragma once

#include <stdexcept>
#include <string>

#include "core/exceptions.h"

namespace host {

// A position in the source. Lines and columns start at 1; columns count characters. Line 0 means unknown.
struct Position {
  int line = 0;
  int column = 0;
};

// Thrown if the script does not compile, or if it uses something that this host does not support.
class ScriptError : public std::runtime_error {
 public:
  explicit ScriptError(const std::string& message, Position at = {}) : runtime_error(message), at_(at) {}

  Position At() const { return at_; }
  // Sets the position, unless a more exact one is already known.
  void NotePosition(Position at) {
    if (at_.line == 0) at_ = at;
  }

 private:
  Position at_;
};

// Thrown if the source ends in the middle of a statement or block.
class IncompleteError : public ScriptError {
  using ScriptError::ScriptError;
};

// A Xojo exception, thrown as a C++ exception.
class XojoException : public std::runtime_error {
 public:
  explicit XojoException(RaisedException raised)
      : runtime_error(raised.className + ": " + raised.message + " (error " + std::to_string(raised.errorNumber) + ")"),
        raised_(std::move(raised)) {}
  XojoException(const char* className, const std::string& message)
      : XojoException(RaisedException{className, message, 0, {}}) {}

  const RaisedException& Raised() const { return raised_; }
  // The script line that raised the exception; 0 if none did.
  int Line() const { return line_; }
  void NoteLine(int line) {
    if (line_ == 0) line_ = line;
  }

 private:
  RaisedException raised_;
  int line_ = 0;
};

}  // namespace host
