// The plug-in's only exported function, and the start-up code that it runs. Start-up runs once, on the host's main
// thread, before any other call.
#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "frame/catalogue/catalogue.h"
#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "frame/registration/globals_module.h"
#include "frame/registration/registrar.h"
#include "frame/registration/trimming.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr const char* kName = "Util";

// Never destroyed, because the host continues to read the module's record.
constinit GlobalsModule gGlobalsModule;

double AskHostVersion() {
  using GetVersion = double (*)();
  const auto getVersion = reinterpret_cast<GetVersion>(ResolveHostService("REALGetRBVersion"));
  return getVersion != nullptr ? getVersion() : 0.0;
}

std::int32_t InterfaceLevelFor(double hostVersion) {
  if (hostVersion >= 2013.04) return 13;
  if (hostVersion >= 2013.03) return 12;
  if (hostVersion >= 2013.0) return 11;
  if (hostVersion >= 2012.0) return 10;
  return 9;
}

// There is no null check, because every host that loads plug-ins has this service. Nothing can be registered without
// it.
void AnnounceInterfaceLevel() {
  using RegisterVersion = void (*)(std::int32_t level);
  const auto registerVersion = reinterpret_cast<RegisterVersion>(ResolveHostService("RegisterPluginVersion"));
  registerVersion(CurrentREALControlVersion);
}

void ReadDebugSwitch() {
  const char* const value = std::getenv("ZKTDEBUG");
  if (value == nullptr) return;
  for (const char* const on : {"1", "true", "yes"})
    if (::strcasecmp(value, on) == 0) setDebugging(true);
}

void LogLoading() {
  if (IsDebugging() && !REALinRuntime())
    LogMessageX("Loading %s in Xojo %.2f and plugin SDK version %d...", kName, rbversion, CurrentREALControlVersion);
  for (const char* c = gpartname; *c != '\0'; ++c)
    if (*c == ' ') LogMessageX("%s%s %s", kTracePrefix, "Warning: plugin name containts space character", gpartname);
}

// All tables are trimmed before the first registration, because a declaration may name a type from another table.
void RegisterCatalogue() {
  const auto trim = [](auto* record) { TrimForHost(record); };
  for (const ClassOrModule& record : DeclarationsSince2013()) std::visit(trim, record);
  std::for_each(Classes().begin(), Classes().end(), trim);
  const std::span<REALmethodDefinition> globalMethods = TrimForHost(GlobalMethods());

  struct Register {
    void operator()(REALclassDefinition* definition) const { MyREALRegisterClass(definition); }
    void operator()(REALmoduleDefinition* definition) const { MyREALRegisterModule(definition); }
  };
  if (rbversion >= 2013.0)
    for (const ClassOrModule& record : DeclarationsSince2013()) std::visit(Register(), record);
  if (REALclassDefinition* const extension = GraphicsExtension()) RegisterClassExtension(extension, gGlobalsModule);
  for (REALclassDefinition* definition : Classes()) MyREALRegisterClass(definition);
  RegisterGlobalMethods(globalMethods, gGlobalsModule);
}

// A second call does nothing, because everything is already registered and the host may be reading the tables.
void Start(Resolver resolver) {
  if (gplugin) return;
  gResolver.store(resolver, std::memory_order_relaxed);
  rbversion = AskHostVersion();
  CurrentREALControlVersion = InterfaceLevelFor(rbversion);
  if (resolver == nullptr) return;
  AnnounceInterfaceLevel();
  gpartname = kName;
  gpluginname = kName;
  gplugin = true;
  ReadDebugSwitch();
  LogLoading();
  RegisterCatalogue();
}

}  // namespace

}  // namespace zkt

extern "C" void REALPluginMain(zkt::Resolver resolver) __attribute__((visibility("default")));

void REALPluginMain(zkt::Resolver resolver) { zkt::Start(resolver); }
