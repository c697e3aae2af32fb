#include "core/objects.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "core/dates.h"
#include "core/folder_items.h"
#include "core/graphics.h"
#include "core/host.h"

namespace host {

namespace {

using Properties = std::map<std::string, Value, NameOrder>;
using InstanceFunction = void (*)(REALobjectStruct*);

// The host's own classes live as long as the process: objects point at them until the end.
std::map<std::string, ObjectClass, NameOrder>& AllOwnClasses() {
  static auto& classes = *[] {
    const Properties exceptionProperties = {{"Message", DefaultValue({Basic::kString, false, {}})},
                                            {"ErrorNumber", DefaultValue({Basic::kInt64, false, {}})}};
    auto* const all = new std::map<std::string, ObjectClass, NameOrder>;
    const auto add = [&](const char* className, const ObjectClass* super, const Properties& properties) {
      return &all->emplace(className, ObjectClass{className, super, properties, nullptr}).first->second;
    };
    const ObjectClass* const exception = add("RuntimeException", nullptr, exceptionProperties);
    for (const char* const className : {"NilObjectException", "OutOfBoundsException", "OutOfMemoryException",
                                        "UnsupportedFormatException", "UnsupportedOperationException"})
      add(className, exception, exceptionProperties);
    add("Object", nullptr, {});
    add("Delegate", nullptr, {});
    // Holds a value that is no object where an object is wanted.
    add("Variant", nullptr, {{"Value", {}}});
    all->emplace("FolderItem", MakeFolderItemClass());
    for (ObjectClass& date : MakeDateClasses()) all->emplace(date.name, std::move(date));
    for (ObjectClass& drawing : MakeGraphicsClasses()) all->emplace(drawing.name, std::move(drawing));
    return all;
  }();
  return classes;
}

ObjectClass* FindOwnClass(std::string_view name) {
  auto& classes = AllOwnClasses();
  const auto found = classes.find(name);
  return found != classes.end() ? &found->second : nullptr;
}

// From the class up to the one that everything else derives from.
template <class Visit>
void ForEachRecord(const ObjectClass* type, Visit visit) {
  for (; type != nullptr; type = type->super)
    if (type->record != nullptr) visit(*type->record);
}

}  // namespace

bool ObjectClass::IsA(std::string_view className) const {
  if (zkt::IsSameName(className, "Object")) return true;
  for (const ObjectClass* type = this; type != nullptr; type = type->super)
    if (zkt::IsSameName(type->name, className)) return true;
  return false;
}

ObjectClass* FindClass(std::string_view name) {
  for (const auto& registered : Host::Current().objectClasses)
    if (zkt::IsSameName(registered->name, name)) return registered.get();
  return FindOwnClass(name);
}

std::vector<const ObjectClass*> OwnClasses() {
  std::vector<const ObjectClass*> classes;
  for (const auto& [name, type] : AllOwnClasses()) classes.push_back(&type);
  return classes;
}

std::unique_ptr<ObjectClass> MakeClass(zkt::REALclassDefinition* record, std::size_t number) {
  auto type = std::make_unique<ObjectClass>();
  type->name = record->name;
  type->super = record->superName != nullptr ? FindClass(record->superName) : nullptr;
  if (type->super != nullptr) {
    type->properties = type->super->properties;
    type->initialize = type->super->initialize;
    type->assign = type->super->assign;
  }
  type->record = record;
  // The place differs from class to class, so that a plug-in cannot take one class's for another's.
  constexpr std::size_t kAlignment = 16;
  const std::size_t header = (sizeof(REALobjectStruct) + kAlignment - 1) / kAlignment * kAlignment;
  record->forSystemUse = header + kAlignment * (number % 8);
  return type;
}

REALobjectStruct* MakeObject(const ObjectClass* type) {
  std::size_t size = sizeof(REALobjectStruct);
  ForEachRecord(type, [&](const zkt::REALclassDefinition& record) {
    size = std::max<std::size_t>(size, record.forSystemUse + record.dataSize);
  });
  auto* const object = static_cast<REALobjectStruct*>(std::calloc(1, size));
  if (object == nullptr) return nullptr;
  object->type = type;
  object->properties = new Properties(type->properties);
  Enter(object, Kind::kObject);
  if (type->initialize != nullptr) type->initialize(object);
  ForEachRecord(type, [&](const zkt::REALclassDefinition& record) {
    if (record.constructor != nullptr) reinterpret_cast<InstanceFunction>(record.constructor)(object);
  });
  return object;
}

ObjectRef MakeNativeDelegate(void* invoker, std::shared_ptr<void> target) {
  ObjectRef delegate(MakeObject(FindClass("Delegate")));
  delegate->invoker = invoker;
  if (target) delegate->target = new std::shared_ptr<void>(std::move(target));
  return delegate;
}

void* FindMethod(const REALobjectStruct* object, const std::string& declaration) {
  for (const ObjectClass* type = object != nullptr ? object->type : nullptr; type != nullptr; type = type->super)
    if (const auto found = type->methods.find(declaration); found != type->methods.end()) return found->second;
  return nullptr;
}

Value* FindProperty(REALobjectStruct* object, std::string_view name) {
  if (object == nullptr) return nullptr;
  const auto found = object->properties->find(name);
  return found != object->properties->end() ? &found->second : nullptr;
}

bool AssignProperty(REALobjectStruct* object, std::string_view name, const Value& value) {
  Value* const property = FindProperty(object, name);
  if (property == nullptr || property->type.basic != value.type.basic) return false;
  if (object->type->assign != nullptr) return object->type->assign(object, name, value);
  *property = value;
  return true;
}

void DestroyContent(REALobjectStruct* object) {
  ForEachRecord(object->type, [&](const zkt::REALclassDefinition& record) {
    if (record.destructor != nullptr) reinterpret_cast<InstanceFunction>(record.destructor)(object);
  });
  delete object->properties;
  delete object->target;
  object->properties = nullptr;
  object->target = nullptr;
}

}  // namespace host
