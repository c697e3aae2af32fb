// Exceptions of the Xojo language that native code raises.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/objects.h"

namespace host {

struct RaisedException {
  std::string className;
  std::string message;
  std::int64_t errorNumber;
  ObjectRef object;  // null for one of the host's own that no script has caught yet
};

// Raises an exception on the calling thread: the object, or a new object of one of the host's own classes.
void Raise(REALobjectStruct* exception);
void Raise(std::string_view className, std::string_view message);

// Returns and clears the exception that was raised last on the calling thread.
std::optional<RaisedException> TakeRaised();

// What an exception object says.
RaisedException Describe(const ObjectRef& exception);
// Makes an exception object say it.
void SetContent(REALobjectStruct* exception, const std::string& message, std::int64_t errorNumber);

std::vector<ObjectClass*> ExceptionClasses();

}  // namespace host
