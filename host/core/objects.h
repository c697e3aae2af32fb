// Objects of the host: an instance of a class, with properties by name and the instance data of plug-in classes.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/counted.h"
#include "core/value.h"
#include "frame/contract/plugin_interface.h"

namespace host {

struct ObjectClass {
  std::string name;
  const ObjectClass* super = nullptr;
  // The properties that the host holds itself, with what they are at first; those of the super class belong to them.
  std::map<std::string, Value, NameOrder> properties = {};
  // What a plug-in has registered; null for the host's own classes.
  const zkt::REALclassDefinition* record = nullptr;
  bool isReadOnly = false;  // nothing can be assigned to the properties
  // For classes whose properties depend on each other, else null: what fills a new object, and what assigns a value of
  // the property's type to one of them, or refuses it.
  void (*initialize)(REALobjectStruct* object) = nullptr;
  bool (*assign)(REALobjectStruct* object, std::string_view property, const Value& value) = nullptr;
  // What plug-ins may load by declaration, in exactly that text: native functions that take the object first. The
  // classes derived from this one have them too.
  std::map<std::string, void*> methods = {};
  // What scripts may call, in the same form; "Constructor" is what New calls.
  std::map<std::string, void*> scriptMethods = {};
  // The constants of enumerations, as "PathModes.Native".
  std::map<std::string, Value, NameOrder> constants = {};

  bool IsA(std::string_view className) const;
};

}  // namespace host

struct REALobjectStruct : host::Counted {
  const host::ObjectClass* type;
  std::map<std::string, host::Value, host::NameOrder>* properties;
  // What plug-ins call a delegate through; null for other objects.
  void* invoker;
  // What lives as long as the object: the target of a delegate, the canvas of a Graphics; null for other objects.
  std::shared_ptr<void>* target;
};

namespace host {

extern const CountedKind kObjectKind;

inline REALobjectStruct* Value::Object() const { return static_cast<REALobjectStruct*>(Reference()); }

using ObjectRef = Owned<REALobjectStruct>;

// The classes Object, Delegate and Variant. The host's own classes live as long as the process: objects point at them
// until the end.
std::vector<ObjectClass*> BasicClasses();

// Makes an instance that carries one reference for the caller; the class's initializer has run.
REALobjectStruct* MakeObject(const ObjectClass* type);

// Makes a delegate that plug-ins call through `invoker`, a function that takes the delegate and then what the
// delegate's type says. The target, if there is one, lives as long as the delegate.
ObjectRef MakeNativeDelegate(void* invoker, std::shared_ptr<void> target = nullptr);

// A value in a Variant, which holds what is no object in an object of a class of its own.
Value Boxed(const Value& value);

// What such an object holds; any other value itself.
const Value& Unboxed(const Value& value);

// A native function as the classes hold it.
template <class Function>
void* Address(Function* function) {
  return reinterpret_cast<void*>(function);
}

// A constructor for scripts that leaves the object as it is made.
inline void ConstructNothing(REALobjectStruct*) {}

// The native function that an object's class, or one that it derives from, has for a declaration; null if there is
// none.
void* FindMethod(const REALobjectStruct* object, const std::string& declaration);

// The property that the host holds for an object, or null.
Value* FindProperty(REALobjectStruct* object, std::string_view name);

// Assigns to a property that the host holds. False if there is none of that name and type, or it is read-only.
bool AssignProperty(REALobjectStruct* object, std::string_view name, const Value& value);

}  // namespace host
