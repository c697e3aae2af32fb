#include "core/exceptions.h"

#include <utility>

#include "core/framework.h"

namespace host {

namespace {

thread_local std::optional<RaisedException> tRaised;

}  // namespace

void Raise(REALobjectStruct* exception) { tRaised = Describe(Retained(exception)); }

void Raise(std::string_view className, std::string_view message) {
  tRaised = {std::string(className), std::string(message), 0, {}};
}

std::optional<RaisedException> TakeRaised() { return std::exchange(tRaised, std::nullopt); }

RaisedException Describe(const ObjectRef& exception) {
  const Value* const message = FindProperty(exception.Get(), "Message");
  const Value* const number = FindProperty(exception.Get(), "ErrorNumber");
  return {exception->type->name, message != nullptr ? message->Text() : "", number != nullptr ? number->Integer() : 0,
          exception};
}

void SetContent(REALobjectStruct* exception, const std::string& message, std::int64_t errorNumber) {
  *FindProperty(exception, "Message") = MakeValue(message);
  *FindProperty(exception, "ErrorNumber") = MakeValue(errorNumber);
}

std::vector<ObjectClass*> ExceptionClasses() {
  auto* const base = new ObjectClass{
      .name = "RuntimeException",
      .properties = {{"Message", DefaultValue(kStringType)}, {"ErrorNumber", DefaultValue(kIntegerType)}},
      .scriptMethods = {{"Constructor(message As String = \"\", errorCode As Integer = 0)", Native<SetContent>()}}};
  std::vector<ObjectClass*> classes = {base};
  for (const char* const name :
       {"IllegalCastException", "InvalidArgumentException", "IOException", "NilObjectException", "OutOfBoundsException",
        "OutOfMemoryException", "StackOverflowException", "TypeMismatchException", "UnsupportedFormatException",
        "UnsupportedOperationException"})
    classes.push_back(new ObjectClass{.name = name, .super = base, .properties = base->properties});
  return classes;
}

}  // namespace host
