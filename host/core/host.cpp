#include "core/host.h"

#include <algorithm>
#include <span>

namespace host {

Host& Host::Current() {
  static Host host;
  return host;
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
