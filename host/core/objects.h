// Host objects. Each is an instance of a class and has named properties and the instance data of plug-in classes.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ref_counted.h"
#include "core/value.h"
#include "frame/contract/plugin_interface.h"

namespace host {

struct ObjectClass {
  std::string name;
  const ObjectClass* super = nullptr;
  // The properties that the host stores, with their initial values. They include the properties of the super class.
  std::map<std::string, Value, NameOrder> properties = {};
  // The record that a plug-in has registered; null for the host's own classes.
  const zkt::REALclassDefinition* record = nullptr;
  bool isReadOnly = false;  // properties cannot be assigned
  // These functions are null if the class does not need them. `initialize` fills a new object. `assign` assigns a value
  // of the property's type and updates dependent properties, or returns false.
  void (*initialize)(REALobjectStruct* object) = nullptr;
  bool (*assign)(REALobjectStruct* object, std::string_view property, const Value& value) = nullptr;
  // The native functions that plug-ins load, by their exact declarations. Each takes the object as its first argument.
  // Derived classes inherit them.
  std::map<std::string, void*> methods = {};
  // The methods that scripts may call, in the same form. `New` calls "Constructor".
  std::map<std::string, void*> scriptMethods = {};
  // Enumeration constants, such as "PathModes.Native".
  std::map<std::string, Value, NameOrder> constants = {};
  // Names that Xojo later gave to properties, mapped to the original names.
  std::map<std::string, std::string, NameOrder> aliases = {};

  bool IsA(std::string_view className) const;
};

}  // namespace host

struct REALobjectStruct : host::RefCounted {
  const host::ObjectClass* type;
  std::map<std::string, host::Value, host::NameOrder> properties;
  // The function through which plug-ins call a delegate; null for other objects.
  void* invoker = nullptr;
  // Data that lives as long as the object: a delegate's target, a Graphics' drawing context or a text stream; null for
  // other objects.
  std::shared_ptr<void> target = nullptr;
};

namespace host {

extern const RefCountedKind kObjectKind;

inline REALobjectStruct* Value::Object() const { return static_cast<REALobjectStruct*>(Reference()); }

using ObjectRef = Ref<REALobjectStruct>;

// The Object, Delegate and Variant classes. The host's own classes are never destroyed, because objects point to them
// until the process ends.
std::vector<ObjectClass*> BasicClasses();

// Makes an instance and runs its initializers. The caller owns one reference.
REALobjectStruct* MakeObject(const ObjectClass* type);

// Makes a delegate that plug-ins call through `invoker`, a function that takes the delegate, followed by the arguments
// of the delegate's type. The delegate keeps the target, if any, alive.
ObjectRef MakeNativeDelegate(void* invoker, std::shared_ptr<void> target = nullptr);

// Returns the value as a Variant. Strings and non-reference values are wrapped in a box, an object of a separate class.
Value Boxed(const Value& value);

// Returns the content of a box, and any other value unchanged.
const Value& Unboxed(const Value& value);

// Returns a native function in the form that the class tables store.
template <class Function>
void* Address(Function* function) {
  return reinterpret_cast<void*>(function);
}

// A constructor for scripts that leaves the new object unchanged.
inline void ConstructNothing(REALobjectStruct*) {}

// Looks up a declaration in the object's class and its super classes. Returns the native function; null if there is
// none.
void* FindMethod(const REALobjectStruct* object, const std::string& declaration);

// Returns the initial value of a property that the host stores; null if the class has no such property.
const Value* FindDefault(const ObjectClass& type, std::string_view name);

// Returns the property if the host stores it for the object, otherwise null.
Value* FindProperty(REALobjectStruct* object, std::string_view name);

// Assigns to a property that the host stores. Returns false if no property has that name and type, or if it is
// read-only.
bool AssignProperty(REALobjectStruct* object, std::string_view name, const Value& value);

}  // namespace host
