// The one function that the host knows by name. Start-up runs once, on the host's main thread, before any other call.
#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "frame/catalogue.h"
#include "frame/flags.h"
#include "frame/globals_module.h"
#include "frame/host_services.h"
#include "frame/plugin_state.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

constexpr const char* kName = "Util";

// Holds on to the record that the host goes on reading.
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

// A host that loads plug-ins has this service: nothing could be registered with one that has not.
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

// Whether the host takes global methods, and extensions of its classes, as members of a module of ours.
bool HostTakesGlobalsAsModule() { return rbversion >= 2013.0 && rbversion < 3000.0; }

void RegisterGlobalMethods() {
  const auto methods = GlobalMethods();
  for (REALmethodDefinition& method : methods) method.flags = FixedFlags(method.flags);
  if (HostTakesGlobalsAsModule()) {
    gGlobalsModule.Append(methods);
  } else {
    for (REALmethodDefinition& method : methods) REALRegisterMethod(&method);
  }
  if (gGlobalsModule.Record() != nullptr) REALRegisterModule(gGlobalsModule.Record());
}

void Start(Resolver resolver) {
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
  // Tables are trimmed here for old hosts; classes, modules and the class extension are registered before the globals.
  RegisterGlobalMethods();
}

}  // namespace

}  // namespace zkt

extern "C" void REALPluginMain(zkt::Resolver resolver) __attribute__((visibility("default")));

void REALPluginMain(zkt::Resolver resolver) { zkt::Start(resolver); }
