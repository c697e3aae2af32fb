// Xojo exceptions that native code raises.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/objects.h"

namespace host {

struct RaisedException {
  std::string className;
  std::string message;
  std::int64_t errorNumber;
  ObjectRef object;  // null if the host raised the exception and no script has caught it yet
};

// Raises an exception on the calling thread: the given object, or an exception of one of the host's own classes.
void Raise(REALobjectStruct* exception);
void Raise(std::string_view className, std::string_view message);

// Returns and clears the last exception raised on the calling thread.
std::optional<RaisedException> TakeRaised();

// Returns the class, message and error number of an exception object.
RaisedException Describe(const ObjectRef& exception);
// Sets the message and error number of an exception object.
void SetContent(REALobjectStruct* exception, const std::string& message, std::int64_t errorNumber);

}  // namespace host
