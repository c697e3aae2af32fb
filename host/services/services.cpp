#include "services/services.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "core/classes.h"
#include "services/missing.h"

namespace host {

namespace {

auto AllTables() { return std::array{RegistrationServices(), StringServices(), ObjectServices(), ArrayServices()}; }

}  // namespace

void* Resolve(const char* name) {
  const HoldHost hold;
  Host& host = Host::Current();
  ++host.lookupCounts[name];
  if (host.withheld.contains(name)) return Missing(name);
  static const auto services = [] {
    std::unordered_map<std::string_view, Service> all;
    for (const auto& table : AllTables())
      for (const Service& service : table) all.emplace(service.name, service);
    return all;
  }();
  const auto found = services.find(name);
  if (found == services.end()) return Missing(name);
  return host.instrumentsServices ? found->second.instrumented : found->second.function;
}

std::vector<std::string> WithholdableNames() {
  std::vector<std::string> names = {kLenB};
  for (const auto& table : AllTables())
    for (const Service& service : table) names.emplace_back(service.name);
  for (const ObjectClass* type : OwnClasses())
    for (const auto& [declaration, function] : type->methods) names.push_back(declaration);
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace host
