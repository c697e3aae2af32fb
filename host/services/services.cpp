#include "services/services.h"

#include <unordered_map>

namespace host {

void* FindService(std::string_view name) {
  static const auto services = [] {
    std::unordered_map<std::string_view, void*> all;
    for (const auto& table : {RegistrationServices(), StringServices(), ObjectServices(), ArrayServices()})
      for (const Service& service : table) all.emplace(service.name, service.function);
    return all;
  }();
  const auto found = services.find(name);
  return found != services.end() ? found->second : nullptr;
}

}  // namespace host
