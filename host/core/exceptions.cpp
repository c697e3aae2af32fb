#include "core/exceptions.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

thread_local std::optional<RaisedException> tRaised;

}  // namespace

void Raise(REALobjectStruct* exception) {
  const Value* const message = FindProperty(exception, "Message");
  const Value* const number = FindProperty(exception, "ErrorNumber");
  tRaised = {exception->type->name, message != nullptr ? message->Text() : "",
             number != nullptr ? number->Integer() : 0};
}

void Raise(std::string_view className, std::string_view message) {
  tRaised = {std::string(className), std::string(message), 0};
}

std::optional<RaisedException> TakeRaised() { return std::exchange(tRaised, std::nullopt); }

std::vector<ObjectClass*> ExceptionClasses() {
  auto* const base = new ObjectClass{
      .name = "RuntimeException",
      .properties = {{"Message", DefaultValue(kStringType)}, {"ErrorNumber", DefaultValue(kIntegerType)}}};
  std::vector<ObjectClass*> classes = {base};
  for (const char* const name : {"NilObjectException", "OutOfBoundsException", "OutOfMemoryException",
                                 "UnsupportedFormatException", "UnsupportedOperationException"})
    classes.push_back(new ObjectClass{.name = name, .super = base, .properties = base->properties});
  return classes;
}

}  // namespace host
