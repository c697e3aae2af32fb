// Exceptions of the language that native code raises.
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
};

// Raises an exception on the calling thread: an object, or a new one of a class of the host's own.
void Raise(REALobjectStruct* exception);
void Raise(std::string_view className, std::string_view message);

// The exception that was raised last on the calling thread and has not been taken yet.
std::optional<RaisedException> TakeRaised();

std::vector<ObjectClass*> ExceptionClasses();

}  // namespace host
