// Objects: references, instances, properties, exceptions. Arrays are locked and unlocked as objects.
#include "core/host.h"
#include "core/objects.h"
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

bool SetPropertyInteger(REALobjectStruct* object, const char* name, std::int64_t value) {
  std::int64_t* const property = FindProperty<std::int64_t>(object, name);
  if (property == nullptr) return false;
  *property = value;
  return true;
}

bool SetPropertyString(REALobjectStruct* object, const char* name, REALstringStruct* value) {
  StringRef* const property = FindProperty<StringRef>(object, name);
  if (property == nullptr) return false;
  Lock(value);
  *property = StringRef(value);
  return true;
}

}  // namespace

std::span<const Service> ObjectServices() {
  static const Service services[] = {
      MakeService("REALLockObject", LockObject),
      MakeService("REALUnlockObject", UnlockObject),
      MakeService("PluginNewInstance", NewInstance),
      MakeService("RuntimeRaiseException", RaiseException),
      MakeService("REALSetPropValueInteger", SetPropertyInteger),
      MakeService("REALSetPropValueString", SetPropertyString),
  };
  return services;
}

}  // namespace host
