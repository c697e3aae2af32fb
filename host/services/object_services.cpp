// Object services: references (including those to arrays), instances, properties and exceptions.
#include "core/classes.h"
#include "core/exceptions.h"
#include "core/strings.h"
#include "services/missing.h"
#include "services/services.h"

namespace host {

namespace {

REALobjectStruct* NewInstance(const char* className) {
  if (Host::Current().creationFailures.ShouldFail()) return nullptr;
  const ObjectClass* const type = FindClass(className);
  return type != nullptr ? MakeObject(type) : nullptr;
}

void RaiseException(REALobjectStruct* exception) { Raise(exception); }

// Reads a property. Plug-ins must request its exact type. The caller owns a returned string reference.
template <TypeKind kKind, class Native>
bool GetProperty(REALobjectStruct* object, const char* name, Native* result) {
  const Value* const property = FindProperty(object, name);
  if (property == nullptr || property->type.isArray || property->type.kind != kKind) return false;
  if (property->type.IsReference()) Retain(property->Reference());
  WriteNative(*property, result);
  return true;
}

bool SetPropertyInteger(REALobjectStruct* object, const char* name, std::int64_t value) {
  return AssignProperty(object, name, MakeValue(value));
}

bool SetPropertyString(REALobjectStruct* object, const char* name, REALstringStruct* value) {
  return AssignProperty(object, name, {kStringType, Retained<RefCounted>(value)});
}

// Methods can be withheld by declaration, just like framework functions.
void* LoadObjectMethod(const REALobjectStruct* object, const char* declaration) {
  void* const method = Host::Current().withheld.contains(declaration) ? nullptr : FindMethod(object, declaration);
  return method != nullptr ? method : Missing(declaration);
}

// The origin is always the upper left corner of the picture.
bool GetGraphicsOrigin(const REALobjectStruct* graphics, std::int64_t* x, std::int64_t* y) {
  if (graphics == nullptr || !graphics->type->IsA("Graphics")) return false;
  *x = *y = 0;
  return true;
}

void* GetDelegateInvoker(const REALobjectStruct* delegate, std::int64_t /*reserved*/) {
  return delegate != nullptr ? delegate->invoker : nullptr;
}

}  // namespace

std::vector<Service> ObjectServices() {
  return {
      MakeService<Retain, false>("REALLockObject"),
      MakeService<Release, false>("REALUnlockObject"),
      MakeService<NewInstance>("PluginNewInstance"),
      MakeService<RaiseException>("RuntimeRaiseException"),
      MakeService<GetDelegateInvoker>("PluginGetDelegateInvoker"),
      MakeService<LoadObjectMethod>("REALLoadObjectMethod"),
      MakeService<GetGraphicsOrigin>("REALGetGraphicsOrigin"),
      MakeService<GetProperty<TypeKind::kInt64, std::int64_t>>("REALGetPropValueInteger"),
      MakeService<GetProperty<TypeKind::kDouble, double>>("REALGetPropValueDouble"),
      MakeService<GetProperty<TypeKind::kString, REALstringStruct*>>("REALGetPropValueString"),
      MakeService<GetProperty<TypeKind::kBoolean, std::uint8_t>>("REALGetPropValueBool"),
      MakeService<GetProperty<TypeKind::kColor, std::uint32_t>>("REALGetPropValueColor"),
      MakeService<SetPropertyInteger>("REALSetPropValueInteger"),
      MakeService<SetPropertyString>("REALSetPropValueString"),
  };
}

}  // namespace host
