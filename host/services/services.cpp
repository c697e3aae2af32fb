#include "services/services.h"

#include <map>
#include <set>

#include "core/classes.h"
#include "services/missing.h"

namespace host {

namespace {

const std::map<std::string_view, Service>& Services() {
  static const auto services = [] {
    std::map<std::string_view, Service> all;
    for (const auto& part : {RegistrationServices(), StringServices(), ObjectServices(), ArrayServices()})
      for (const Service& service : part) all.emplace(service.name, service);
    return all;
  }();
  return services;
}

}  // namespace

void* Resolve(const char* name) {
  const HoldHost hold;
  Host& host = Host::Current();
  ++host.lookupCounts[name];
  if (host.withheld.contains(name)) return Missing(name);
  const auto found = Services().find(name);
  if (found == Services().end()) return Missing(name);
  return host.instrumentsServices ? found->second.instrumented : found->second.function;
}

std::vector<std::string> WithholdableNames() {
  std::set<std::string> names = {kLenB};
  for (const auto& [name, service] : Services()) names.emplace(name);
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [declaration, function] : type->methods) names.insert(declaration);
  return {names.begin(), names.end()};
}

}  // namespace host
