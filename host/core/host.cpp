#include "core/host.h"

#include <algorithm>
#include <span>
#include <utility>

#include "core/strings.h"
#include "services/services.h"

namespace host {

namespace {

thread_local std::optional<RaisedException> tRaised;

}  // namespace

Host& Host::Current() {
  static Host host;
  return host;
}

void Host::Raise(REALobjectStruct* exception) {
  const Value* const message = FindProperty(exception, "Message");
  const Value* const number = FindProperty(exception, "ErrorNumber");
  tRaised = {exception->type->name,
             message != nullptr ? ToUTF8(static_cast<REALstringStruct*>(message->Reference())) : "",
             number != nullptr ? number->Integer() : 0};
}

std::optional<RaisedException> Host::TakeRaised() { return std::exchange(tRaised, std::nullopt); }

void* Resolve(const char* name) {
  Host& host = Host::Current();
  ++host.questions[name];
  if (host.withheld.contains(name)) return nullptr;
  return FindService(name);
}

void* FindNativeFunction(const Host& host, std::string_view methodName) {
  const auto hasName = [&](const zkt::REALmethodDefinition& method) {
    const std::string_view declaration = method.declaration;
    return declaration.substr(0, declaration.find_first_of(" (")) == methodName;
  };
  for (const zkt::REALmoduleDefinition* module : host.modules) {
    const std::span methods(module->methods, module->methodCount);
    const auto found = std::find_if(methods.begin(), methods.end(), hasName);
    if (found != methods.end()) return found->function;
  }
  const auto found = std::find_if(host.globalMethods.begin(), host.globalMethods.end(),
                                  [&](const zkt::REALmethodDefinition* method) { return hasName(*method); });
  return found != host.globalMethods.end() ? (*found)->function : nullptr;
}

}  // namespace host
