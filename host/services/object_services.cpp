// Objects: references, instances, properties, exceptions. Arrays are locked and unlocked as objects.
#include "core/host.h"
#include "core/objects.h"
#include "core/strings.h"
#include "services/services.h"

namespace host {

namespace {

void LockObject(Counted* object) { Lock(object); }
void UnlockObject(Counted* object) { Unlock(object); }

REALobjectStruct* NewInstance(const char* className) {
  const ObjectClass* const type = FindClass(className);
  return type != nullptr ? MakeObject(type) : nullptr;
}

void RaiseException(REALobjectStruct* exception) { Host::Current().Raise(exception); }

// Properties have one type, which a plug-in has to meet.
bool SetProperty(REALobjectStruct* object, const char* name, Value value) {
  Value* const property = FindProperty(object, name);
  if (property == nullptr || property->type.basic != value.type.basic) return false;
  *property = std::move(value);
  return true;
}

bool SetPropertyInteger(REALobjectStruct* object, const char* name, std::int64_t value) {
  return SetProperty(object, name, MakeValue(value));
}

bool SetPropertyString(REALobjectStruct* object, const char* name, REALstringStruct* value) {
  Lock(value);
  return SetProperty(object, name, {{Basic::kString, false, {}}, Owned<Counted>(value)});
}

void* GetDelegateInvoker(const REALobjectStruct* delegate, std::int64_t /*reserved*/) {
  return delegate != nullptr ? delegate->invoker : nullptr;
}

}  // namespace

std::span<const Service> ObjectServices() {
  static const Service services[] = {
      MakeService("REALLockObject", LockObject),
      MakeService("REALUnlockObject", UnlockObject),
      MakeService("PluginNewInstance", NewInstance),
      MakeService("RuntimeRaiseException", RaiseException),
      MakeService("PluginGetDelegateInvoker", GetDelegateInvoker),
      MakeService("REALSetPropValueInteger", SetPropertyInteger),
      MakeService("REALSetPropValueString", SetPropertyString),
  };
  return services;
}

}  // namespace host
