// What ends a script.
#pragma once

#include <stdexcept>
#include <string>

#include "core/exceptions.h"

namespace host {

// Where something is in the source. Both count from 1; columns count characters. Line 0: not known.
struct Position {
  int line = 0;
  int column = 0;
};

// The script does not compile, or uses something that this host does not support.
class ScriptError : public std::runtime_error {
 public:
  explicit ScriptError(const std::string& message, Position at = {}) : runtime_error(message), at_(at) {}

  Position At() const { return at_; }
  // Adds the position, unless there is a more exact one.
  void NotePosition(Position at) {
    if (at_.line == 0) at_ = at;
  }

 private:
  Position at_;
};

// The source ends where more has to follow.
class IncompleteError : public ScriptError {
  using ScriptError::ScriptError;
};

// An exception of the language.
class XojoException : public std::runtime_error {
 public:
  explicit XojoException(RaisedException raised)
      : runtime_error(raised.className + ": " + raised.message + " (error " + std::to_string(raised.errorNumber) + ")"),
        raised_(std::move(raised)) {}
  XojoException(const char* className, const std::string& message)
      : XojoException(RaisedException{className, message, 0, {}}) {}

  const RaisedException& Raised() const { return raised_; }
  // The line of the script that raised it; 0 if no script did.
  int Line() const { return line_; }
  void NoteLine(int line) {
    if (line_ == 0) line_ = line;
  }

 private:
  RaisedException raised_;
  int line_ = 0;
};

// The object that scripts catch; it is made if native code raised none.
ObjectRef ObjectOf(const RaisedException& raised);

}  // namespace host
