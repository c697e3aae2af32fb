// Startup services: version queries and registration.
#include "core/classes.h"
#include "services/services.h"

namespace host {

namespace {

double GetVersion() { return Host::Current().version; }
void RegisterPluginVersion(std::int32_t level) { Host::Current().interfaceLevel = level; }
bool InRuntime() { return Host::Current().isBuiltApplication; }
void RegisterModule(zkt::REALmoduleDefinition* module) { Host::Current().registrations.push_back(module); }
void RegisterClass(zkt::REALclassDefinition* type) {
  Host& host = Host::Current();
  host.registrations.push_back(type);
  if (type->name != nullptr) host.objectClasses.push_back(MakeClass(type, host.objectClasses.size()));
}
void RegisterClassExtension(zkt::REALclassDefinition* type) {
  Host::Current().registrations.push_back(ClassExtension{type});
}
void RegisterMethod(zkt::REALmethodDefinition* method) { Host::Current().registrations.push_back(method); }

}  // namespace

std::vector<Service> RegistrationServices() {
  return {
      MakeService<GetVersion>("REALGetRBVersion"),
      MakeService<RegisterPluginVersion>("RegisterPluginVersion"),
      MakeService<InRuntime>("REALinRuntime"),
      MakeService<RegisterModule>("PluginRegisterModule"),
      MakeService<RegisterClass>("PluginRegisterClass"),
      MakeService<RegisterClassExtension>("PluginRegisterClassExtension"),
      MakeService<RegisterMethod>("PluginRegisterMethod"),
  };
}

}  // namespace host
