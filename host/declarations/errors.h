// What ends a line of a script.
#pragma once

#include <stdexcept>

#include "core/exceptions.h"

namespace host {

// The script is wrong, or asks for what the host does not know.
class ScriptError : public std::runtime_error {
  using runtime_error::runtime_error;
};

// An exception of the language that nobody caught.
class XojoException : public std::runtime_error {
 public:
  explicit XojoException(RaisedException raised)
      : runtime_error(raised.className + ": " + raised.message + " (error " + std::to_string(raised.errorNumber) + ")"),
        raised_(std::move(raised)) {}

  const RaisedException& Raised() const { return raised_; }

 private:
  RaisedException raised_;
};

}  // namespace host
